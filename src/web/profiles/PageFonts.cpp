#include "web/profiles/PageFonts.h"

#include "ui/theme/FontChooser.h"

#include <QFontDatabase>

#include <fontconfig/fontconfig.h>

using namespace Qt::StringLiterals;

namespace {

// Only a question without a weight is meant, which is how the engine's defaults are found: what is
// drawn has a weight, and a test of all values holds where there are none.
const QString rule = QStringLiteral(
    "<match target=\"pattern\">"
    "<test name=\"family\"><string>%1</string></test>"
    "<test qual=\"all\" name=\"weight\"><int>-1</int></test>"
    "<edit name=\"family\" mode=\"prepend_first\" binding=\"strong\"><string>%2</string></edit>"
    "</match>");

QString ruleFor(const QString &generic, const QString &family)
{
    return family.isEmpty() ? QString() : rule.arg(generic, family.toHtmlEscaped());
}

}

void PageFonts::choose()
{
    static bool isDone = false;
    if (std::exchange(isDone, true))
        return;
    const QStringList available = QFontDatabase::families();
    const QString sans = FontChooser::chineseFamily(
        available, QFontDatabase::families(QFontDatabase::SimplifiedChinese));
    const QString serif = FontChooser::chineseSerifFamily(available);
    const QByteArray rules = (u"<fontconfig>"_s + ruleFor(u"sans-serif"_s, sans)
        + ruleFor(u"serif"_s, serif.isEmpty() ? sans : serif) + u"</fontconfig>"_s)
                                 .toUtf8();
    FcConfigParseAndLoadFromMemory(
        FcConfigGetCurrent(), reinterpret_cast<const FcChar8 *>(rules.constData()), FcTrue);
}
