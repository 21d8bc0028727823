#pragma once

#include "launch/notices/LaunchEnvironment.h"
#include "ui/navigation/ViewController.h"

class QJsonValue;

//! The guide's agreement tip: without the agreements nobody gets past the guide. Shown over it;
//! owned by the navigator once it is shown, and deleted when it has gone.
class UserGuideAuthorizationTipView : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")

public:
    explicit UserGuideAuthorizationTipView(const LaunchEnvironment &environment);

    static bool isAccepted(const UserDefaults &defaults);

    void show();
    Q_INVOKABLE void agree();
    //! Ends the process.
    Q_INVOKABLE void refuse();
    //! The link's name: "protocol" or "privacy". The agreement's page is the platform's to name.
    Q_INVOKABLE void didSelectLink(const QString &name);

    bool isOverlay() const override { return true; }
    bool staysOverRoots() const override { return true; }
    //! Back to the guide.
    bool handleBack() override { return false; }

Q_SIGNALS:
    //! Stored; the tip is on its way out.
    void accepted();

private:
    void openAgreement(const QString &title, const QJsonValue &answer, const QString &error);

    LaunchEnvironment m_environment;
    bool m_agreementRequested = false;
};
