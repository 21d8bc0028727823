#pragma once

#include <QMetaType>
#include <QString>

//! The signed-in user as a login answer's "user" tells; absent members are null strings.
struct UserModel
{
    Q_GADGET
    Q_PROPERTY(int user_type MEMBER user_type)
    Q_PROPERTY(QString card_no MEMBER card_no)
    Q_PROPERTY(QString email MEMBER email)
    Q_PROPERTY(QString organ_id MEMBER organ_id)
    Q_PROPERTY(QString user_id MEMBER user_id)
    Q_PROPERTY(QString user_code MEMBER user_code)
    Q_PROPERTY(QString user_name MEMBER user_name)
    Q_PROPERTY(QString user_no MEMBER user_no)
    Q_PROPERTY(QString user_sex MEMBER user_sex)
    Q_PROPERTY(QString full_head_url MEMBER full_head_url)
    Q_PROPERTY(QString head_url MEMBER head_url)
    Q_PROPERTY(QString mobile MEMBER mobile)
    Q_PROPERTY(QString site_id MEMBER site_id)

public:
    //! The role whose accounts may not use this edition.
    static constexpr int refusedType = 5;
    static constexpr int teacherType = 2;

    int user_type = 0; //!< role of the account
    QString card_no; //!< identity card number
    QString email;
    QString organ_id; //!< organisation (school) id
    QString user_id;
    QString user_code; //!< account (login name)
    QString user_name; //!< display name
    QString user_no; //!< student or staff number
    QString user_sex;
    QString full_head_url; //!< absolute address of the avatar
    QString head_url; //!< avatar address as the server stores it
    QString mobile;
    QString site_id;

    bool operator==(const UserModel &) const = default;
};
