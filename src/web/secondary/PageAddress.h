#pragma once

#include <QString>
#include <QUrl>

//! Addresses of pages as texts of other pages name them.
namespace PageAddress {

//! What no address may contain as it stands is percent-escaped as UTF-8; an escape that is there
//! already stays one.
QUrl escaped(const QString &text);
//! Escapes backquote, # % ^ { } " [ ] | \ < > and blank, whatever they stand for, and leaves the
//! rest: an escape that is there already is escaped once more.
QUrl withFourteenEscaped(const QString &text);

}
