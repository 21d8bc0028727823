#pragma once

#include "support/ManualMainQueue.h"
#include "ui/Shell.h"

#include <QQuickItem>
#include <QQuickView>

//! A window with a shell under a manual clock: the whole of RootView, or one sample.
class UiHarness
{
public:
    static constexpr QSize phone {390, 844};

    //! \a textScale: as the application's font carries it.
    explicit UiHarness(QSize size = phone, double textScale = 1);

    //! Shows RootView, with SampleScreen registered as "Sample".
    void showRootView();
    void show(const QUrl &source, const QVariantMap &properties = {});

    //! The visible items that have the property, from the back to the front.
    QList<QQuickItem *> itemsWith(const char *property) const;
    //! The outermost visible item of that text: a button, not the label in it; null when there is
    //! none.
    QQuickItem *itemWithText(const QString &text) const;
    //! By object name, hidden ones included; null when there is none or more than one.
    QQuickItem *itemNamed(const QString &objectName) const;
    void click(const QQuickItem *item);

    ManualMainQueue queue;
    Shell shell {queue};
    QQuickView view;
};
