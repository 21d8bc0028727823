#include "web/secondary/PageAddress.h"

using namespace Qt::StringLiterals;

QUrl PageAddress::escaped(const QString &text)
{
    return QUrl(text.trimmed(), QUrl::TolerantMode);
}

QUrl PageAddress::withFourteenEscaped(const QString &text)
{
    QString address;
    for (const QChar character : text) {
        if (u"`#%^{}\"[]|\\<> "_s.contains(character))
            address += u"%%1"_s.arg(int(character.unicode()), 2, 16, QChar(u'0')).toUpper();
        else
            address += character;
    }
    return QUrl(address, QUrl::TolerantMode);
}
