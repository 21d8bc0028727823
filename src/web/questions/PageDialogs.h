#pragma once

#include <QHash>
#include <QObject>
#include <qqmlregistration.h>

class AlertView;
class MainQueue;
class QUrl;
struct Alert;

//! The alerts, questions and requests for a text of the pages of one view, each under the name of
//! the host that asks. They go with their document. From the third in a row on the user may refuse
//! all further ones of the document. Owned by WebView.
class PageDialogs : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by WebView.")

public:
    PageDialogs(AlertView *alertView, MainQueue *mainQueue);
    ~PageDialogs() override;

    //! Shows a dialog of a page or a frame of this origin. The answer comes as answered() with the
    //! number that is returned here. 0: the user wants no more, the dialog counts as refused.
    Q_INVOKABLE int showAlert(const QUrl &origin, const QString &message);
    Q_INVOKABLE int showConfirm(const QUrl &origin, const QString &message);
    Q_INVOKABLE int showPrompt(
        const QUrl &origin, const QString &message, const QString &defaultText);

    //! Whether the page waits for an answer.
    bool areShown() const { return !m_shown.isEmpty(); }
    //! Refuses what is shown or waits; the next document begins anew.
    void documentGone();

Q_SIGNALS:
    void answered(int id, bool accepted, const QString &input);

private:
    int show(const QUrl &origin, Alert alert);
    void finish(int id, bool accepted, const QString &input);

    AlertView *m_alertView;
    MainQueue *m_mainQueue;
    QHash<int, int> m_shown; // the alert's number by that of the dialog
    int m_lastDialog = 0;
    int m_inARow = 0;
    bool m_refused = false;
};
