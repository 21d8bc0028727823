#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

//! What is shared.
struct ShareContent
{
    enum class Type { Image = 2, WebPage = 3 };

    QString title;
    QString text;
    QString url; //!< where the share leads; empty: nowhere
    QByteArray image; //!< encoded; empty: none
    QString imageUrl; //!< where the image can be had; empty: nowhere
    Type type = Type::WebPage;
};

//! The share service: hands content to other people's programs.
class ShareSDK
{
public:
    enum class Platform { WeChatSession, WeChatTimeline, QQFriend, Album };
    //! HandedOver: the person goes on elsewhere, and nothing tells how it ends.
    enum class State { HandedOver, Success, Failure };
    //! Called once. \a message: what went wrong, for the person; null unless it is a failure.
    using StateChanged = std::function<void(State state, const QString &message)>;

    virtual ~ShareSDK() = default;

    //! The applications under which is shared, and the link by which each comes back.
    struct Platforms
    {
        QString qqAppId;
        QString qqAppKey;
        QString wechatAppId;
        QString universalLink;
    };

    //! False when sharing is not available.
    virtual bool registerPlatforms(const Platforms &platforms) = 0;
    //! Reports the user's consent to the collection of data.
    virtual void uploadPrivacyPermissionStatus(bool agreed) = 0;
    virtual void share(Platform platform, const ShareContent &content, StateChanged changed) = 0;
};
