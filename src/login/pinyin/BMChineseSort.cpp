#include "login/pinyin/BMChineseSort.h"

#include "login/pinyin/MandarinLatin.h"

#include <algorithm>
#include <vector>

namespace {

struct ReadName
{
    qsizetype position;
    QString section; // empty: begins with no letter
    QString reading; // syllables with blanks between, so that one character's names stay together
};

QStringList syllablesOf(
    const QString &name, const BMChineseSortSetting &setting, MandarinLatin &latin)
{
    // Of two entries that both fit, the longer one comes later in the table and wins.
    QStringList syllables;
    qsizetype mapped = 0;
    for (auto entry = setting.polyphoneMapping.cbegin(); entry != setting.polyphoneMapping.cend();
         ++entry) {
        if (!entry.key().isEmpty() && name.startsWith(entry.key())) {
            syllables = {entry.value()};
            mapped = entry.key().size();
        }
    }
    return syllables + latin.syllables(QStringView(name).mid(mapped));
}

ReadName read(qsizetype position, const QString &name, const BMChineseSortSetting &setting,
    MandarinLatin &latin)
{
    const QString reading = syllablesOf(name, setting, latin).join(u' ').toUpper();
    const bool beginsWithLetter
        = !reading.isEmpty() && reading.front() >= u'A' && reading.front() <= u'Z';
    return {position, beginsWithLetter ? reading.left(1) : QString(), reading};
}

}

BMChineseSort::SectionsOfNames BMChineseSort::sortAndGroup(
    const QStringList &names, const BMChineseSortSetting &setting)
{
    MandarinLatin latin;
    std::vector<ReadName> order;
    order.reserve(names.size());
    for (qsizetype position = 0; position < names.size(); ++position) {
        const QString &name = names.at(position);
        const QString &ignored = setting.ignoreModelWithPrefix;
        if (ignored.isEmpty() || !name.startsWith(ignored))
            order.push_back(read(position, name, setting, latin));
    }

    const bool specialFirst = setting.specialCharPositionIsFront;
    std::sort(order.begin(), order.end(), [&](const ReadName &a, const ReadName &b) {
        if (a.section.isEmpty() != b.section.isEmpty())
            return a.section.isEmpty() == specialFirst;
        if (const int byReading = a.reading.compare(b.reading); byReading != 0)
            return byReading < 0;
        const int byName = setting.needStable ? 0 : names[a.position].compare(names[b.position]);
        return byName != 0 ? byName < 0 : a.position < b.position;
    });

    SectionsOfNames sections;
    for (const ReadName &name : order) {
        const QString &title
            = name.section.isEmpty() ? setting.specialCharSectionTitle : name.section;
        if (sections.firstLetterArray.isEmpty() || sections.firstLetterArray.last() != title) {
            sections.firstLetterArray.append(title);
            sections.sortedModelArr.emplaceBack();
        }
        sections.sortedModelArr.last().append(name.position);
    }
    return sections;
}
