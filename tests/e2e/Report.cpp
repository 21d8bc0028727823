#include "e2e/Report.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cstdio>

using namespace Qt::StringLiterals;

Report::Report(const QString &folder)
    : m_filePath(folder + u"/tour.json"_s)
{
}

QJsonArray Report::entries() const
{
    QFile file(m_filePath);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array()
                                          : QJsonArray();
}

void Report::add(const StepResult &result)
{
    QJsonArray all = entries();
    if (!all.isEmpty() && all.last()[u"step"] == result.step)
        all.removeLast();
    all << QJsonObject {{u"step"_s, result.step}, {u"ok"_s, result.ok}, {u"ms"_s, result.ms},
        {u"screenshot"_s, result.screenshot}, {u"detail"_s, result.detail}};
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(all).toJson()) < 0
        || !file.commit())
        qFatal("%s cannot be written: %s", qUtf8Printable(m_filePath),
            qUtf8Printable(file.errorString()));
    std::printf("%-4s %-32s %6lld ms  %s\n", result.ok ? "ok" : "FAIL", qUtf8Printable(result.step),
        result.ms, qUtf8Printable(result.detail));
    std::fflush(stdout);
}

QMap<QString, bool> Report::outcomes() const
{
    QMap<QString, bool> outcomes;
    for (const QJsonValue &entry : entries())
        outcomes.insert(entry[u"step"].toString(), entry[u"ok"].toBool());
    return outcomes;
}
