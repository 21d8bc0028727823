#include "login/pinyin/PinyinSearchKey.h"

#include "login/pinyin/MandarinLatin.h"

using namespace Qt::StringLiterals;

namespace {

QString initial(const QString &name, const QStringList &syllables)
{
    if (syllables.isEmpty())
        return {};
    switch (name.front().unicode()) {
    case u'长':
        return u"c"_s;
    case u'厦':
        return u"x"_s;
    default:
        return syllables.front().left(1);
    }
}

}

QString PinyinSearchKey::transformToPinyin(
    const QString &name, QuanPin isQuanPin, MandarinLatin &latin)
{
    const QStringList syllables = latin.syllables(name);
    QString key;
    if (isQuanPin == QuanPin::Yes) {
        for (qsizetype marked = 0; marked < syllables.size(); ++marked) {
            QStringList entry = syllables;
            entry[marked].prepend(u'#');
            key += entry.join(QString()) + u',';
        }
    }
    return key + u'#' + initial(name, syllables) + u",#"_s + name;
}
