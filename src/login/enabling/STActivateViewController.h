#pragma once

#include "login/enabling/ActivateFormViewController.h"

//! The first step for pupils and staff, whom the school knows by their number.
class STActivateViewController : public ActivateFormViewController
{
    Q_OBJECT

public:
    explicit STActivateViewController(const LoginEnvironment &environment);

    QString userNo() const { return holder(); }
    QString holderPlaceholder() const override { return QStringLiteral("学号/工号"); }

private:
    QString missingHolder() const override { return QStringLiteral("请输入您的学号或者工号"); }
    void verify(
        const QString &userNo, const QString &cartNo, const ResponseCallback &response) override;
};
