#pragma once

#include <QMetaType>
#include <QString>

//! Whom the platform has found for a number or a name and an identity card.
struct VerifiedAccount
{
    Q_GADGET
    Q_PROPERTY(QString user_id MEMBER user_id)
    Q_PROPERTY(QString user_no MEMBER user_no)
    Q_PROPERTY(int user_type MEMBER user_type)
    Q_PROPERTY(QString user_name MEMBER user_name)

public:
    static constexpr int pupilType = 1;

    QString user_id;
    QString user_no; //!< the pupil's or the employee's number
    int user_type = 0;
    QString user_name;

    bool operator==(const VerifiedAccount &) const = default;
};
