#include "ui/theme/HexColor.h"

#include <algorithm>

QColor colorWithHexString(const QString &text)
{
    QString digits = text.trimmed();
    if (digits.startsWith(u'#'))
        digits.remove(0, 1);
    const bool isHex = std::all_of(digits.begin(), digits.end(),
        [](QChar c) { return c.unicode() < 128 && isxdigit(c.unicode()); });
    if (!isHex || (digits.size() != 3 && digits.size() != 6 && digits.size() != 8))
        return Qt::transparent;
    return QColor(u'#' + digits);
}

QColor colorOrShellColor(const QString &text)
{
    return colorWithHexString(text.isEmpty() ? shellColor : text);
}
