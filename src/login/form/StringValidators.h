#pragma once

#include <QString>

//! What a text has to look like to be taken for something. Every rule is about the whole text.
//!
//! Digits and letters are those of ASCII, except in names: the platform compares what it is sent
//! byte by byte, so digits of other scripts or full-width ones would only be refused later.
namespace StringValidators {

bool isEmail(const QString &text);
bool isUrl(const QString &text);
//! Eleven digits, the first one not 0.
bool isMobilephone(const QString &text);
//! 2 to 16 ideographs from U+4E00 to U+9FA5.
bool isChineseName(const QString &text);
//! 15 or 18 characters, the last a digit or an x of either case. Neither the check digit nor the
//! date is looked at.
bool isIdentityCard(const QString &text);
//! A mobile number, or a fixed line with its area code, of the number plans that the platform
//! knows: the ranges 14x, 16x, 17x and 19x are refused on purpose.
bool isTelephone(const QString &text);
//! Four parts between dots, each at most 254; an empty part counts as 0. So masks and broadcast
//! addresses are refused: deliberate.
bool isIPAddress(const QString &text);

}
