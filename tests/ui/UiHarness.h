#pragma once

#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "ui/shell/Shell.h"

#include <QQuickItem>
#include <QQuickView>

//! A window with a shell under a manual clock: the whole of RootView.
class UiHarness
{
public:
    //! \a textScale: as the application's font carries it.
    explicit UiHarness(QSize size = {390, 844}, double textScale = 1);

    //! Shows RootView, with SampleScreen registered as "Sample".
    void showRootView() { showRootView(&shell); }
    void showRootView(Shell *anotherShell);

    //! All visible items, from the back to the front.
    QList<QQuickItem *> items() const;
    //! What a screen reader says of the item, or else its text.
    static QString textOf(QQuickItem *item);
    //! The outermost visible item of that text: a button, not the label in it; null when there is
    //! none.
    QQuickItem *itemWithText(const QString &text) const;
    void click(const QQuickItem *item);

    ManualMainQueue queue;
    Shell shell {queue};
    QQuickView view;

private:
    void show();
};
