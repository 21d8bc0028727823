#include "app/start/ConfigurationFile.h"

#include <QFile>
#include <QUrl>

#include <toml++/toml.h>

#include <functional>
#include <map>

using namespace Qt::StringLiterals;

namespace {

// Null: the value was taken.
using Reader = std::function<QString(const toml::node &)>;
using Table = std::map<std::string, Reader, std::less<>>;

QString textOf(const toml::node &node)
{
    const auto value = node.value_exact<std::string>();
    return value ? QString::fromStdString(*value) : QString();
}

Reader text(QString *target)
{
    return [target](const toml::node &node) {
        if (!node.is_string())
            return u"a text in quotes is wanted"_s;
        *target = textOf(node);
        return QString();
    };
}

bool isWebAddress(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty()
        && (url.scheme() == u"http" || url.scheme() == u"https");
}

Reader host(QString *target)
{
    return [target](const toml::node &node) {
        const QString address = textOf(node);
        if (!isWebAddress(QUrl(address, QUrl::StrictMode)) || !address.endsWith(u'/'))
            return u"a base address is wanted, such as \"https://host.example/\""_s;
        *target = address;
        return QString();
    };
}

Reader choice(QString *target, const QStringList &choices)
{
    return [target, choices](const toml::node &node) {
        if (!choices.contains(textOf(node)))
            return u"one of these is wanted: %1"_s.arg(choices.join(u", "));
        *target = textOf(node);
        return QString();
    };
}

Reader boolean(bool *target)
{
    return [target](const toml::node &node) {
        const auto value = node.value_exact<bool>();
        if (!value)
            return u"true or false is wanted"_s;
        *target = *value;
        return QString();
    };
}

Reader origins(QStringList *target)
{
    return [target](const toml::node &node) {
        const QString wanted = u"a list of origins is wanted, such as [\"https://host.example\"]"_s;
        if (!node.is_array())
            return wanted;
        QStringList list;
        for (const toml::node &element : *node.as_array()) {
            if (!isWebAddress(QUrl(textOf(element), QUrl::StrictMode)))
                return wanted;
            list << textOf(element);
        }
        *target = list;
        return QString();
    };
}

std::map<std::string, Table, std::less<>> readers(DeploymentConfiguration &c)
{
    return {
        {"hosts",
            {{"regions", host(&c.hosts.regions)}, {"rb", host(&c.hosts.rb)},
                {"public", host(&c.hosts.publicConfiguration)}, {"base", host(&c.hosts.base)},
                {"portal", host(&c.hosts.portal)}, {"official", host(&c.hosts.official)},
                {"content", host(&c.hosts.content)}}},
        {"app",
            {{"build", text(&c.app.build)}, {"display_name", text(&c.app.displayName)},
                {"login_screen", choice(&c.app.loginScreen, {u"current"_s, u"older"_s})},
                {"patriarch", boolean(&c.app.patriarch)}}},
        {"service", {{"customer_service_account", text(&c.customerServiceAccount)}}},
        {"push",
            {{"broker", text(&c.push.broker)}, {"app_id", text(&c.push.appId)},
                {"app_key", text(&c.push.appKey)}, {"app_secret", text(&c.push.appSecret)}}},
        {"location",
            {{"map_key", text(&c.location.mapKey)},
                {"regeocode_url", text(&c.location.regeocodeUrl)}}},
        {"wechat",
            {{"app_id", text(&c.wechat.appId)}, {"universal_link", text(&c.wechat.universalLink)},
                {"authorise_url", text(&c.wechat.authoriseUrl)}}},
        {"qq",
            {{"app_id", text(&c.qq.appId)}, {"app_key", text(&c.qq.appKey)},
                {"share_url", text(&c.qq.shareUrl)}}},
        {"tls", {{"extra_ca_file", text(&c.extraCaFile)}}},
        {"bridge", {{"trusted_origins", origins(&c.trustedOrigins)}}},
        {"web", {{"foreign_pages", choice(&c.foreignPages, {u"here"_s, u"browser"_s})}}},
    };
}

QString located(const QString &name, const toml::source_region &at, const QString &what)
{
    return u"%1:%2: %3"_s.arg(name).arg(at.begin.line).arg(what);
}

}

std::variant<QByteArray, QString> ConfigurationFile::read(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return u"%1: %2"_s.arg(filePath, file.errorString());
    return file.readAll();
}

std::variant<DeploymentConfiguration, QString> ConfigurationFile::parse(
    const QByteArray &text, const QString &name, const DeploymentConfiguration &base)
{
    DeploymentConfiguration configuration = base;
    const auto known = readers(configuration);
    try {
        const toml::table document
            = toml::parse(std::string_view(text.data(), size_t(text.size())));
        for (const auto &[sectionName, section] : document) {
            const auto knownSection = known.find(sectionName.str());
            const QString path = QString::fromUtf8(sectionName.str());
            if (knownSection == known.end() || !section.is_table())
                return located(name, sectionName.source(), u"there is no section [%1]"_s.arg(path));
            for (const auto &[key, value] : *section.as_table()) {
                const QString keyPath = path + u'.' + QString::fromUtf8(key.str());
                const auto reader = knownSection->second.find(key.str());
                if (reader == knownSection->second.end())
                    return located(name, key.source(), u"there is no key %1"_s.arg(keyPath));
                if (const QString problem = reader->second(value); !problem.isNull())
                    return located(name, key.source(), keyPath + u": "_s + problem);
            }
        }
    } catch (const toml::parse_error &error) {
        return located(name, error.source(), QString::fromUtf8(error.description()));
    }
    return configuration;
}
