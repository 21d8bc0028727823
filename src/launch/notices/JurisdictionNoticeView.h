#pragma once

#include "launch/notices/NoticeViewController.h"

//! The notice over the login screen: which personal data is collected and what for.
class JurisdictionNoticeView : public NoticeViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString prompt READ prompt CONSTANT)

public:
    explicit JurisdictionNoticeView(const LaunchEnvironment &environment);

    //! Shows the notice, unless the person has agreed before.
    static void showUntilAccepted(const LaunchEnvironment &environment);

    // The closing mark is the opening one again: deliberate.
    QString prompt() const { return QStringLiteral("如您同意，请点击“同意“开始使用"); }
};
