#pragma once

#include "login/enabling/ActivateFormViewController.h"

//! The first step for parents, whom the school knows by their name.
class PActivateViewController : public ActivateFormViewController
{
    Q_OBJECT

public:
    explicit PActivateViewController(const LoginEnvironment &environment);

    QString holderPlaceholder() const override { return QStringLiteral("姓名"); }

private:
    QString missingHolder() const override { return QStringLiteral("请输入您的姓名"); }
    void verify(
        const QString &userName, const QString &cartNo, const ResponseCallback &response) override;
};
