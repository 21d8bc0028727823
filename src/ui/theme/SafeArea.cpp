#include "ui/theme/SafeArea.h"

#include "ui/Logging.h"

#include <QStringList>

namespace {
constexpr double largestInset = 200;
}

SafeArea::SafeArea(QObject *parent)
    : QObject(parent)
{
    if (qEnvironmentVariableIsSet("VANT_SAFE_AREA"))
        setInsets(qEnvironmentVariable("VANT_SAFE_AREA"));
}

bool SafeArea::setInsets(const QString &text)
{
    const QStringList parts = text.split(u',');
    QList<double> insets;
    for (const QString &part : parts) {
        bool ok = false;
        const double inset = part.trimmed().toDouble(&ok);
        if (ok && inset >= 0 && inset <= largestInset)
            insets << inset;
    }
    if (insets.size() != parts.size() || (parts.size() != 2 && parts.size() != 4)) {
        qCWarning(lcUi) << "not a safe area (top,bottom[,left,right]):" << text;
        return false;
    }
    insets.resize(4);
    m_top = insets[0];
    m_bottom = insets[1];
    m_left = insets[2];
    m_right = insets[3];
    Q_EMIT changed();
    return true;
}
