#pragma once

#include "launch/notices/LaunchEnvironment.h"
#include "launch/notices/SensitiveInformation.h"
#include "ui/navigation/ViewController.h"

//! What every notice about personal data has. Laid over a screen, owned by the navigator from then
//! on, and deleted when it has gone. The back key does not take it away.
class NoticeViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The base of the notices' controllers.")
    Q_PROPERTY(SensitiveInformation information READ information CONSTANT)
    Q_PROPERTY(QString refuseText READ refuseText CONSTANT)
    Q_PROPERTY(QString agreeText READ agreeText CONSTANT)

public:
    //! Lays the notice over what the window's root shows, beneath everything that covers it.
    void showInViewController();
    Q_INVOKABLE void onHide();
    Q_INVOKABLE void agree();
    //! Ends the process.
    Q_INVOKABLE void refuse();
    //! The link's name: "privacy".
    Q_INVOKABLE void didSelectLink(const QString &name);

    bool isOverlay() const override { return true; }
    bool handleBack() override { return true; }

    SensitiveInformation information() const { return {}; }
    virtual QString refuseText() const { return QStringLiteral("暂不使用"); }
    QString agreeText() const { return QStringLiteral("同意"); }

protected:
    //! \a screenName: the view in notices/.
    NoticeViewController(const LaunchEnvironment &environment, const QString &screenName);

private:
    LaunchEnvironment m_environment;
    QString m_screenName;
};
