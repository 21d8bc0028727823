#include "e2e/Report.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>

Report::Report(const QString &filePath)
    : m_filePath(filePath)
{
}

void Report::add(const StepResult &result)
{
    m_results << result;
    QJsonArray entries;
    for (const StepResult &one : m_results)
        entries << one.toJson();
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(entries).toJson()) < 0
        || !file.commit())
        qFatal("%s cannot be written: %s", qUtf8Printable(m_filePath),
            qUtf8Printable(file.errorString()));
}

QList<StepResult> Report::read(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<StepResult> results;
    const QJsonArray entries = QJsonDocument::fromJson(file.readAll()).array();
    for (const QJsonValue &entry : entries)
        results << StepResult::fromJson(entry.toObject());
    return results;
}

bool Report::allOk() const
{
    return std::all_of(m_results.begin(), m_results.end(), [](const auto &one) { return one.ok; });
}
