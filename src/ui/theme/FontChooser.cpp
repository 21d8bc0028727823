#include "ui/theme/FontChooser.h"

#include "ui/Logging.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>

namespace {
constexpr double largestOrdinarySize = 12;
constexpr double unitSize = 10;
constexpr double smallestScale = 0.5;
constexpr double largestScale = 3;

QString firstOf(const QStringList &known, const QStringList &available)
{
    const auto found = std::find_if(known.begin(), known.end(),
        [&](const QString &family) { return available.contains(family, Qt::CaseInsensitive); });
    return found != known.end() ? *found : QString();
}
} // namespace

QString FontChooser::chineseFamily(
    const QStringList &available, const QStringList &simplifiedChinese)
{
    static const QStringList known {QStringLiteral("Noto Sans CJK SC"),
        QStringLiteral("Noto Sans SC"), QStringLiteral("Source Han Sans SC"),
        QStringLiteral("Source Han Sans CN"), QStringLiteral("PingFang SC"),
        QStringLiteral("Microsoft YaHei"), QStringLiteral("HarmonyOS Sans SC"),
        QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("WenQuanYi Zen Hei"),
        QStringLiteral("Droid Sans Fallback")};
    const QString found = firstOf(known, available);
    return found.isEmpty() ? simplifiedChinese.value(0) : found;
}

QString FontChooser::chineseSerifFamily(const QStringList &available)
{
    static const QStringList known {QStringLiteral("Noto Serif CJK SC"),
        QStringLiteral("Noto Serif SC"), QStringLiteral("Source Han Serif SC"),
        QStringLiteral("Source Han Serif CN"), QStringLiteral("Songti SC"),
        QStringLiteral("SimSun"), QStringLiteral("AR PL UMing CN")};
    return firstOf(known, available);
}

double FontChooser::textScale(double systemPointSize, const QString &environment)
{
    bool isNumber = false;
    const double wanted = environment.toDouble(&isNumber);
    if (isNumber && wanted >= smallestScale && wanted <= largestScale)
        return wanted;
    if (!environment.isNull())
        qCWarning(lcUi) << "not a text scale from 0.5 to 3:" << environment;
    if (systemPointSize <= largestOrdinarySize)
        return 1;
    return std::min(systemPointSize / unitSize, largestScale);
}

void FontChooser::apply()
{
    QFont font = QGuiApplication::font();
    const QString family = chineseFamily(
        QFontDatabase::families(), QFontDatabase::families(QFontDatabase::SimplifiedChinese));
    if (family.isEmpty())
        qCWarning(lcUi)
            << "no font with Chinese glyphs is installed; install one, for example Noto Sans CJK";
    else
        font.setFamilies({family});

    const double scale = textScale(
        QFontInfo(QGuiApplication::font()).pointSizeF(), qEnvironmentVariable("VANT_FONT_SCALE"));
    font.setPixelSize(qRound(bodyPixelSize * scale));
    QGuiApplication::setFont(font);
}
