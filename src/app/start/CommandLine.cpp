#include "app/start/CommandLine.h"

#include <QCommandLineParser>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// What follows the scheme may be a code that signs in.
QString problemWith(const QString &url)
{
    static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]*:"_s);
    const auto found = scheme.match(url);
    return found.hasMatch() ? u"not a URL: %1…"_s.arg(found.captured())
                            : u"not a URL: there is no scheme"_s;
}

}

std::variant<CommandLine, QString> CommandLine::parse(const QStringList &arguments)
{
    const QCommandLineOption config(u"config"_s, u""_s, u"FILE"_s);
    const QCommandLineOption profile(u"profile"_s, u""_s, u"DIR"_s);
    const QCommandLineOption sandbox(u"sandbox"_s);
    const QCommandLineOption cameraFeed(u"camera-feed"_s, u""_s, u"FILE"_s);
    const QCommandLineOption push(u"push"_s, u""_s, u"JSON"_s);
    const QCommandLineOption version(u"version"_s);
    QCommandLineParser parser;
    parser.addOptions({config, profile, sandbox, cameraFeed, push, version});
    if (!parser.parse(QStringList {u"vant-student"_s} + arguments))
        return parser.errorText();

    CommandLine line;
    if (parser.isSet(config))
        line.configFile = parser.value(config);
    if (parser.isSet(profile))
        line.profile = parser.value(profile);
    if (parser.isSet(cameraFeed))
        line.cameraFeed = parser.value(cameraFeed);
    line.sandbox = parser.isSet(sandbox);
    line.version = parser.isSet(version);
    if (parser.isSet(push)) {
        const QJsonDocument userInfo = QJsonDocument::fromJson(parser.value(push).toUtf8());
        if (!userInfo.isObject())
            return u"--push: the value is no JSON object"_s;
        line.push = userInfo.object().toVariantMap();
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1)
        return u"one URL at the most, not %1"_s.arg(positional.size());
    if (!positional.isEmpty()) {
        line.url = QUrl(positional.first(), QUrl::StrictMode);
        if (!line.url.isValid() || line.url.scheme().isEmpty())
            return problemWith(positional.first());
    }
    return line;
}
