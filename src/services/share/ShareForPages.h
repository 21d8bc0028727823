#pragma once

#include "platform/services/ShareSDK.h"
#include "services/share/OMShareView.h"

#include <QPointer>

#include <memory>

class HTTPNetwork;

//! Shares what a page names: asks for the target with the share panel and tells the outcome. Owned
//! by the application; what it is given must outlive it.
class ShareForPages : public QObject
{
    Q_OBJECT

public:
    ShareForPages(Shell *shell, ShareSDK *sdk, HTTPNetwork *network);

    //! A picture. It is loaded while the panel is there; one that has not come when a target is
    //! chosen, or has more than 20 MiB, is shared as none.
    void action(const QUrl &imageUrl);
    void linkShareAction(
        const QString &url, const QString &title, const QString &content, const QString &imageUrl);

private:
    using Share = std::function<void(ShareSDK::Platform platform)>;

    //! In the place of an earlier one.
    void showPanel(OMShareView::Download download, const QUrl &imageUrl, Share share);
    //! Puts the picture where it is looked for when a target is chosen, as long as the panel
    //! stands.
    void load(const QUrl &url, const std::shared_ptr<QByteArray> &image);
    void showResult(ShareSDK::State state, const QString &message);

    Shell *m_shell;
    ShareSDK *m_sdk;
    HTTPNetwork *m_network;
    QPointer<OMShareView> m_panel;
};
