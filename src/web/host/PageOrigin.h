#pragma once

#include <QString>

class QUrl;

//! Where something of a page comes from, as the user is told.
namespace PageOrigin {

//! Host, and port where it is not the usual one: of an address of the network, or of the page that
//! made a blob. Others have no host: "网页".
QString name(const QUrl &address);

}
