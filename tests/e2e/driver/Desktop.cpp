#include "e2e/driver/Desktop.h"

#include "e2e/driver/StepFailed.h"
#include "platform/desktop/DesktopUrlOpener.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeoutMs = 20'000;
const QString browser = QStringLiteral("tour-browser");
const QString notes = QStringLiteral("opened.txt");

void write(const QString &path, const QString &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0)
        throw StepFailed {u"%1 cannot be written"_s.arg(path)};
}

}

Desktop::Desktop(const QString &profile)
    : m_profile(profile)
    , m_data(profile + u"/desktop"_s)
{
}

void Desktop::furnish() const
{
    m_data.mkpath(u"applications"_s);
    m_data.mkpath(u"config"_s);
    const QString program = m_data.filePath(browser);
    write(program,
        u"#!/bin/sh\nprintf '%s\\n' \"$1\" >> '%1'\n"_s.replace(u"%1"_s, m_data.filePath(notes)));
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString types = u"x-scheme-handler/http;x-scheme-handler/https;"_s;
    write(m_data.filePath(u"applications/%1.desktop"_s.arg(browser)),
        u"[Desktop Entry]\nType=Application\nName=Browser\nExec=\"%1\" %u\nMimeType=%2\n"_s
            .replace(u"%1"_s, program)
            .replace(u"%2"_s, types));
    write(m_data.filePath(u"applications/mimeapps.list"_s),
        u"[Default Applications]\nx-scheme-handler/http=%1.desktop\nx-scheme-handler/https=%1.desktop\n"_s
            .arg(browser));
}

QMap<QString, QString> Desktop::environment() const
{
    return {
        {u"XDG_DATA_HOME"_s, m_data.path()}, {u"XDG_CONFIG_HOME"_s, m_data.filePath(u"config"_s)}};
}

QList<QUrl> Desktop::opened() const
{
    QList<QUrl> urls;
    QFile file(m_data.filePath(notes));
    if (!file.open(QIODevice::ReadOnly))
        return urls;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty())
            urls << QUrl::fromEncoded(line);
    }
    return urls;
}

void Desktop::follow(const QUrl &url) const
{
    if (!DesktopUrlOpener().openURL(url))
        throw StepFailed {u"no program takes %1"_s.arg(url.toString())};
}

void Desktop::start(const QStringList &arguments) const
{
    QProcess client;
    client.setProcessChannelMode(QProcess::ForwardedChannels);
    client.start(QCoreApplication::applicationDirPath() + u"/vant-student"_s,
        QStringList {u"--profile"_s, m_profile} + arguments);
    const bool ended = client.waitForFinished(startTimeoutMs);
    if (!ended)
        client.kill();
    client.waitForFinished();
    if (!ended || client.exitStatus() != QProcess::NormalExit || client.exitCode() != 0)
        throw StepFailed {
            u"the second start does not hand over and end: %1"_s.arg(client.errorString())};
}
