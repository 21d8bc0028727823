#pragma once

#include <QMetaType>
#include <QString>

//! The single sign-on identity of a login answer's "ssoinfo"; the session itself travels as
//! cookies.
struct SsoModel
{
    Q_GADGET
    Q_PROPERTY(QString ck_LoginId MEMBER ck_LoginId)
    Q_PROPERTY(QString ck_LoginName MEMBER ck_LoginName)
    Q_PROPERTY(QString ck_RoleIds MEMBER ck_RoleIds)
    Q_PROPERTY(QString ck_roleNames MEMBER ck_roleNames)

public:
    QString ck_LoginId;
    QString ck_LoginName;
    QString ck_RoleIds;
    QString ck_roleNames;

    bool operator==(const SsoModel &) const = default;
};
