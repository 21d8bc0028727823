#pragma once

#include <QObject>
#include <QUrl>

//! The answer to an authorisation request; an empty code means refused or cancelled.
struct SendAuthResp
{
    QString code;
    QString state;

    bool operator==(const SendAuthResp &) const = default;
};

//! Who asks for an authorisation: what travels as its state.
namespace WXAuthState {

inline const QString loginScreen = QStringLiteral("123");
//! A page of the portal, which takes its own answer.
inline const QString page = QStringLiteral("8888");

}

//! WeChat's open interface: asks for an authorisation, and takes the answer from a URL callback.
class WXApi : public QObject
{
    Q_OBJECT

public:
    virtual bool registerApp(const QString &appId, const QString &universalLink) = 0;
    //! Asks for an authorisation; false when it cannot be asked for on this device. One at a time:
    //! a later one takes the place of the one before, whose answer is of no effect then.
    virtual bool sendAuthReq(const QString &scope, const QString &state) = 0;
    //! What was asked for is not wanted any more: its answer is of no effect.
    virtual void cancelPendingRequest() = 0;
    //! Whether the URL was the answer to what was asked; it comes by onResp, before this returns.
    virtual bool handleOpenURL(const QUrl &url) = 0;
    virtual bool handleOpenUniversalLink(const QUrl &link) = 0;

Q_SIGNALS:
    void onResp(const SendAuthResp &response);
};
