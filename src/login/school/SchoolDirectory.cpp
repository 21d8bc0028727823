#include "login/school/SchoolDirectory.h"

#include "login/pinyin/BMChineseSort.h"
#include "login/pinyin/MandarinLatin.h"
#include "login/pinyin/PinyinSearchKey.h"

#include <QStringMatcher>

namespace {

// No key contains it, and no typed text may.
constexpr QChar separator(u'\0');

BMChineseSort::Sections<DataModel> sorted(const QList<DataModel> &schools)
{
    BMChineseSortSetting setting;
    setting.sortMode = BMChineseSortSetting::SortMode::Transliteration;
    return BMChineseSort::sortAndGroup(schools, "aName", setting);
}

}

SchoolDirectory::SchoolDirectory(const QList<DataModel> &schools)
{
    const auto sections = sorted(schools);
    m_firstLetterArray = sections.firstLetterArray;

    MandarinLatin latin;
    m_schools.reserve(schools.size());
    for (qsizetype section = 0; section < sections.sortedModelArr.size(); ++section) {
        for (const DataModel &school : sections.sortedModelArr.at(section)) {
            m_schools.append(school);
            m_sections.push_back(section);
            m_keys += PinyinSearchKey::transformToPinyin(
                          school.aName, PinyinSearchKey::QuanPin::No, latin)
                          .toCaseFolded()
                + separator;
            m_keyEnds.push_back(m_keys.size());
        }
    }
}

std::vector<qsizetype> SchoolDirectory::rowsContaining(const QString &text) const
{
    std::vector<qsizetype> rows;
    if (text.contains(separator))
        return rows;
    const QStringMatcher matcher(text.toCaseFolded());
    qsizetype row = 0;
    qsizetype at = matcher.indexIn(m_keys);
    while (at >= 0 && at < m_keys.size()) {
        while (m_keyEnds[row] <= at)
            ++row;
        rows.push_back(row);
        at = matcher.indexIn(m_keys, m_keyEnds[row]);
    }
    return rows;
}
