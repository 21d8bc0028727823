#include "e2e/TourOptions.h"

#include "e2e/steps/Steps.h"

#include <QCommandLineParser>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr int smallestSide = 200;
constexpr int largestSide = 4000;

std::optional<QSize> sizeOf(const QString &text)
{
    static const QRegularExpression form(u"^(\\d{3,4})x(\\d{3,4})$"_s);
    const auto match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const auto fits = [](int side) { return side >= smallestSide && side <= largestSide; };
    return fits(size.width()) && fits(size.height()) ? std::optional(size) : std::nullopt;
}

}

std::variant<TourOptions, QString> TourOptions::parse(const QStringList &arguments)
{
    const QCommandLineOption outOption(u"out"_s, {}, u"DIR"_s);
    const QCommandLineOption onlyOption(u"only"_s, {}, u"STEP"_s);
    const QCommandLineOption sizeOption(u"size"_s, {}, u"WxH"_s);
    const QCommandLineOption helpOption(u"help"_s);
    const QCommandLineOption lifeOption(u"life"_s, {}, u"N"_s);
    const QCommandLineOption platformOption(u"school-platform"_s, {}, u"URL"_s);
    const QCommandLineOption profileOption(u"profile"_s, {}, u"DIR"_s);
    QCommandLineParser parser;
    parser.addOptions(
        {outOption, onlyOption, sizeOption, helpOption, lifeOption, platformOption, profileOption});
    if (!parser.parse(QStringList {u"vant-tour"_s} + arguments))
        return parser.errorText();

    TourOptions options;
    options.help = parser.isSet(helpOption);
    if (options.help)
        return options;
    options.out = parser.value(outOption);
    if (options.out.isEmpty())
        return u"--out DIR is missing"_s;
    options.only = parser.values(onlyOption) + parser.positionalArguments();
    if (!options.only.isEmpty() && !parser.isSet(onlyOption))
        return u"not an option: %1"_s.arg(options.only.join(u' '));
    const Journey journey = wholeJourney();
    for (const QString &name : options.only) {
        if (!journey.find(name))
            return u"there is no step \"%1\", see --help"_s.arg(name);
    }
    if (parser.isSet(sizeOption)) {
        const auto size = sizeOf(parser.value(sizeOption));
        if (!size)
            return u"--size: a size such as 390x844 is wanted"_s;
        options.size = *size;
    }
    if (parser.isSet(lifeOption)) {
        options.life = {parser.value(lifeOption).toInt(), QUrl(parser.value(platformOption)),
            parser.value(profileOption)};
    }
    return options;
}

QString TourOptions::usage()
{
    QString text
        = u"Usage: vant-tour --out DIR [--size WxH] [--only STEP...]\n"
          "Goes through the client as a person would and photographs each step: DIR/NN-step.png, "
          "DIR/tour.json.\n"
          "Exits 0 only if every step was seen to hold. --only takes the named steps and those "
          "that lead to them.\n"
          "VANT_FONT_SCALE and VANT_SAFE_AREA=top,bottom act as for the client.\n\nSteps:\n"_s;
    const Journey journey = wholeJourney();
    for (const Step &step : journey.steps())
        text += u"  %1\n"_s.arg(step.name);
    return text;
}

QStringList TourOptions::forLife(const Life &life) const
{
    QStringList arguments {u"--out"_s, out, u"--size"_s,
        u"%1x%2"_s.arg(size.width()).arg(size.height()), u"--life"_s, QString::number(life.number),
        u"--school-platform"_s, life.platform.toString(), u"--profile"_s, life.profile};
    for (const QString &step : only)
        arguments << u"--only"_s << step;
    return arguments;
}
