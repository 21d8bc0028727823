#pragma once

#include <QMetaType>
#include <QString>

struct SchoolModel;

//! A row of the school chooser.
struct DataModel
{
    Q_GADGET
    Q_PROPERTY(QString aName MEMBER aName)
    Q_PROPERTY(QString aSiteCode MEMBER aSiteCode)

public:
    static DataModel fromSchool(const SchoolModel &school);

    QString aName; //!< the school's full name, the sort key
    QString aSiteCode;
    bool isLocal = false; //!< the school runs a server of its own
    QString url; //!< that server's address
    QString url_qe; //!< that server's address for the qe module
    QString site_id;

    bool operator==(const DataModel &) const = default;
};
