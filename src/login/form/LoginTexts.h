#pragma once

#include <QString>

//! What more than one login screen says.
namespace LoginTexts {

inline const QString signingIn = QStringLiteral("登录中");
inline const QString schoolFirst = QStringLiteral("请先选择学校");
inline const QString accountMissing = QStringLiteral("请输入您的账号");

}
