#pragma once

#include <QString>

class MandarinLatin;

//! The text in which the school search looks: a name's initial and the name itself.
namespace PinyinSearchKey {

enum class QuanPin { No, Yes };

//! "#" + initial + ",#" + name. With full pinyin, one entry a syllable goes before it:
//! "#abc,a#bc,ab#c," for three. The initial of 长 is c and that of 厦 is x, whatever their general
//! reading.
QString transformToPinyin(const QString &name, QuanPin isQuanPin, MandarinLatin &latin);

}
