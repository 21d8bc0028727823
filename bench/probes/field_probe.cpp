// Preloaded into a program: as soon as a text field has been painted, clicks it and presses a key,
// frame after frame until the field shows the letter, and then says when that was.

#include "Report.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace {

// Less than this cannot be seen well enough to be used.
constexpr double leastOpacity = 0.95;

QQuickItem *visibleField(QQuickItem *item, double opacity)
{
    opacity *= item->opacity();
    if (!item->isVisible() || opacity < leastOpacity)
        return nullptr;
    if (item->inherits("QQuickTextInput") && item->isEnabled())
        return item;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *field = visibleField(child, opacity))
            return field;
    }
    return nullptr;
}

class FieldProbe : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        auto *window = qobject_cast<QQuickWindow *>(receiver);
        if (event->type() == QEvent::Expose && window && !m_window) {
            m_window = window;
            connect(
                window, &QQuickWindow::frameSwapped, this, [this] { tryKey(); },
                Qt::QueuedConnection);
        }
        return false;
    }

private:
    void tryKey()
    {
        if (m_isDone)
            return;
        QQuickItem *field = visibleField(m_window->contentItem(), 1);
        if (!field || !m_window->isActive())
            return m_window->update();
        const QPointF middle = field->mapToScene(field->boundingRect().center());
        QTest::mouseClick(m_window, Qt::LeftButton, {}, middle.toPoint());
        QTest::keyClick(m_window, Qt::Key_A);
        if (!field->property("text").toString().contains(QLatin1Char('a')))
            return m_window->update();
        m_isDone = true;
        report("usable");
    }

    QQuickWindow *m_window = nullptr;
    bool m_isDone = false;
};

void install()
{
    // Not for the children.
    qunsetenv("LD_PRELOAD");
    QCoreApplication::instance()->installEventFilter(new FieldProbe(QCoreApplication::instance()));
}

}

Q_COREAPP_STARTUP_FUNCTION(install)
