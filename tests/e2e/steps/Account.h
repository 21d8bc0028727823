#pragma once

#include <QString>

//! Who travels: an account and a school of the school platform.
namespace Account {

inline const QString school = QStringLiteral("厦门实验小学");
inline const QString siteCode = QStringLiteral("school01");
inline const QString siteId = QStringLiteral("10001");
inline const QString userCode = QStringLiteral("student01");
inline const QString password = QStringLiteral("vant1234");
inline const QString userName = QStringLiteral("林晓彤");

}
