#pragma once

#include <QAccessible>

using QAccessible::Button;
using QAccessible::CheckBox;
using QAccessible::EditableText;
using QAccessible::Heading;
using QAccessible::Link;
using QAccessible::ListItem;

//! Who travels: an account and a school of the school platform.
namespace Pupil {

inline const QString school = QStringLiteral("厦门实验小学");
inline const QString siteCode = QStringLiteral("school01");
inline const QString siteId = QStringLiteral("10001");
inline const QString userCode = QStringLiteral("student01");
inline const QString password = QStringLiteral("vant1234");
inline const QString userName = QStringLiteral("林晓彤");

}

//! The client's texts that more than one step looks for.
namespace Texts {

inline const QString chooseSchool = QStringLiteral("选择学校");
inline const QString accountField = QStringLiteral("请输入账号/工号/学号");
inline const QString passwordField = QStringLiteral("请输入密码");
inline const QString loginButton = QStringLiteral("登录");
inline const QString agreementBox
    = QStringLiteral("登录即代表您已阅读同意《用户协议》和《隐私政策》");
inline const QString searchField = QStringLiteral("请输入学校首字母或名称");
inline const QString pushQuestion = QStringLiteral("你收到一条消息，是否点击查看？");
inline const QString back = QStringLiteral("返回");
inline const QString close = QStringLiteral("关闭");
inline const QString cancel = QStringLiteral("取消");
inline const QString confirm = QStringLiteral("确定");

}
