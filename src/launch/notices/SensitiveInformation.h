#pragma once

#include <QObject>
#include <QStringList>
#include <qqmlregistration.h>

//! What every form of the notice says about the personal data that is collected.
class SensitiveInformation
{
    Q_GADGET
    QML_VALUE_TYPE(sensitiveInformation)
    Q_PROPERTY(QString lead MEMBER lead CONSTANT)
    Q_PROPERTY(QStringList items MEMBER items CONSTANT)
    Q_PROPERTY(QString closing MEMBER closing CONSTANT)

public:
    QString lead = QStringLiteral(
        "为了向您提供核心功能 (例如，绑定家长用户，学生成长手册，推送提醒，找回密码等)，"
        "我们向您收集以下敏感个人信息：");
    QStringList items {QStringLiteral("用户证件号"), QStringLiteral("出生日期"),
        QStringLiteral("手机号码"), QStringLiteral("联系电话"), QStringLiteral("电子邮箱")};
    QString closing = QStringLiteral(
        "您的信息仅用于学校管理，我方不擅自使用与泄露您的个人信息。如果您不向我们提供上述敏感个人信"
        "息"
        "或者您不同意我们收集和使用此类信息，产品 (或服务) "
        "可能无法正常运行，并且我们将无法为您提供服务，"
        "如果同意我们承诺我们所搜集的内容信息将通过国密算法加密保证您的信息安全性。");
};
