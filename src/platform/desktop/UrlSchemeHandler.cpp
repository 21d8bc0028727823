#include "platform/desktop/UrlSchemeHandler.h"

#include "platform/Logging.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <memory>

// The library's headers use a word that Qt has made a macro.
#undef signals
#include <gio/gdesktopappinfo.h>

using namespace Qt::StringLiterals;

namespace {

// As the desktop entries' own syntax wants it.
QString quoted(QString argument)
{
    for (const QChar c : {u'\\', u'"', u'`', u'$'})
        argument.replace(c, u"\\"_s + c);
    argument.replace(u'%', u"%%"_s);
    // The value as a whole is escaped once more.
    return u'"' + argument.replace(u'\\', u"\\\\"_s) + u'"';
}

}

UrlSchemeHandler::UrlSchemeHandler(const QString &program, const QStringList &arguments)
    : m_program(program)
    , m_arguments(arguments)
{
}

UrlSchemeHandler::~UrlSchemeHandler()
{
    if (m_type.isNull())
        return;
    g_app_info_reset_type_associations(m_type.toUtf8().constData());
    QFile::remove(m_desktopFile);
}

bool UrlSchemeHandler::registerScheme(const QString &scheme)
{
    const QString type = u"x-scheme-handler/"_s + scheme;
    if (m_type == type)
        return true;
    const QDir folder(
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/applications"_s);
    folder.mkpath(u"."_s);
    m_desktopFile = folder.filePath(u"vant-student-%1.desktop"_s.arg(scheme));
    if (!writeDesktopFile(type)) {
        qCWarning(lcPlatform) << m_desktopFile << "cannot be written";
        return false;
    }
    const std::unique_ptr<GDesktopAppInfo, decltype(&g_object_unref)> entry(
        g_desktop_app_info_new_from_filename(QFile::encodeName(m_desktopFile).constData()),
        &g_object_unref);
    GError *error = nullptr;
    if (!entry
        || !g_app_info_set_as_default_for_type(
            G_APP_INFO(entry.get()), type.toUtf8().constData(), &error)) {
        qCWarning(lcPlatform) << "callbacks will not come:"
                              << (error ? error->message : "the program cannot be started");
        g_clear_error(&error);
        return false;
    }
    m_type = type;
    return true;
}

bool UrlSchemeHandler::writeDesktopFile(const QString &type)
{
    QStringList command {quoted(m_program)};
    for (const QString &argument : std::as_const(m_arguments))
        command << quoted(argument);
    const QStringList lines {u"[Desktop Entry]"_s, u"Type=Application"_s, u"Name=VANT Student"_s,
        u"NoDisplay=true"_s, u"Exec=%1 %u"_s.replace(u"%1"_s, command.join(u' ')),
        u"MimeType=%1;"_s.arg(type), QString()};
    QSaveFile file(m_desktopFile);
    return file.open(QIODevice::WriteOnly) && file.write(lines.join(u'\n').toUtf8()) >= 0
        && file.commit();
}
