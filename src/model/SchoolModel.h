#pragma once

#include <QMetaType>
#include <QString>

//! One site as the server lists it; absent and null members are null strings.
struct SchoolModel
{
    Q_GADGET
    Q_PROPERTY(QString full_name MEMBER full_name)
    Q_PROPERTY(QString site_code MEMBER site_code)
    Q_PROPERTY(QString site_id MEMBER site_id)
    Q_PROPERTY(QString regions_id MEMBER regions_id)
    Q_PROPERTY(QString is_local MEMBER is_local)
    Q_PROPERTY(QString url MEMBER url)
    Q_PROPERTY(QString url_qe MEMBER url_qe)
    Q_PROPERTY(QString ver MEMBER ver)

public:
    QString full_name;
    QString site_code;
    QString site_id;
    QString regions_id;
    QString is_local; //!< yes: the school runs a server of its own; see DictionaryMapper::boolean
    QString url;
    QString url_qe;
    QString ver;

    bool operator==(const SchoolModel &) const = default;
};
