#pragma once

#include <QMap>
#include <QString>

//! How names are read, grouped and ordered.
struct BMChineseSortSetting
{
    enum class SortMode {
        Transliteration = 1, //!< Mandarin to Latin, tone marks stripped
        PinyinTable
        = 2, //!< a pinyin table of its own; read by the same conversion, which has every character
    };

    SortMode sortMode = SortMode::PinyinTable;
    //! The section of names that begin with no letter, and whether it stands before the letters.
    QString specialCharSectionTitle = QStringLiteral("#");
    bool specialCharPositionIsFront = true;
    //! Names of equal reading keep the order they came in; otherwise their characters decide.
    bool needStable = false;
    //! Names with this prefix are left out; empty: none are.
    QString ignoreModelWithPrefix;
    //! The reading of names that begin with these.
    QMap<QString, QString> polyphoneMapping {
        {QStringLiteral("重庆"), QStringLiteral("CQ")},
        {QStringLiteral("厦门"), QStringLiteral("XM")},
        {QStringLiteral("长"), QStringLiteral("C")},
        {QStringLiteral("沈"), QStringLiteral("S")},
    };

    bool operator==(const BMChineseSortSetting &) const = default;
};
