#pragma once

#include "launch/notices/NoticeViewController.h"

//! The short form of the notice, with a link to the agreement. No screen shows it at present.
class JurisdictionNoticeAlertView : public NoticeViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(QString linkTitle READ linkTitle CONSTANT)

public:
    explicit JurisdictionNoticeAlertView(const LaunchEnvironment &environment);

    QString text() const
    {
        return QStringLiteral("需同意《用户和隐私协议》后我们才能为您提供服务！");
    }
    QString linkTitle() const { return QStringLiteral("用户和隐私协议"); }
    QString refuseText() const override { return QStringLiteral("退出应用"); }
};
