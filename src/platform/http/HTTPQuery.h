#pragma once

#include "platform/transport/HTTPTypes.h"

#include <QUrl>

//! Parameters as they travel in a query or a form body.
namespace HTTPQuery {

//! "name=value" pairs joined by "&", in the order of the names, UTF-8, every reserved character
//! escaped. A parameter without a value (an invalid QVariant or a null string) is left out.
QByteArray encoded(const HTTPParameters &parameters);

//! The address with the parameters appended to its query; an address that ends with "?" gets no
//! second one.
QUrl urlWithQuery(const QString &address, const HTTPParameters &parameters);

}
