#pragma once

#include "platform/services/ShareSDK.h"
#include "ui/navigation/ViewController.h"

#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

class Shell;

//! The share panel: a button for each target at the lower edge of what is shown. Owned by the
//! navigator once it is shown, and deleted when it has gone.
class OMShareView : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The panel is made in C++.")
    Q_PROPERTY(QStringList titleArray MEMBER titleArray CONSTANT)
    Q_PROPERTY(QStringList imageArray MEMBER imageArray CONSTANT)
    Q_PROPERTY(bool leaving READ isLeaving NOTIFY leavingChanged)

public:
    enum class Download { Offered, Hidden };

    //! \a imageUrl: the picture to share. \a buttonEventBlock gets the pressed button's target,
    //! when the panel has gone: what it shows must not stand above a panel that leaves.
    OMShareView(Shell *shell, Download download, const QUrl &imageUrl,
        std::function<void(ShareSDK::Platform target)> buttonEventBlock);

    void show();
    Q_INVOKABLE void dismiss();
    Q_INVOKABLE void buttonClicked(int tag);
    //! For the view: it has moved out.
    Q_INVOKABLE void left();

    bool isOverlay() const override { return true; }
    bool handleBack() override;
    bool isLeaving() const { return m_leaving; }

    QStringList titleArray;
    QStringList imageArray;
    const QUrl imageUrl;

Q_SIGNALS:
    void leavingChanged();

private:
    Shell *m_shell;
    std::function<void(ShareSDK::Platform target)> m_buttonEventBlock;
    QList<ShareSDK::Platform> m_targets; // of each button
    std::optional<ShareSDK::Platform> m_pressed;
    bool m_leaving = false;
};
