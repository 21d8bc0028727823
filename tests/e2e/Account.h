#pragma once

#include <QString>

//! Who travels: an account and a school of the school platform.
namespace Account {

const QString school = QStringLiteral("厦门实验小学");
const QString siteCode = QStringLiteral("school01");
const QString siteId = QStringLiteral("10001");
const QString userCode = QStringLiteral("student01");
const QString password = QStringLiteral("vant1234");
const QString userName = QStringLiteral("林晓彤");

}
