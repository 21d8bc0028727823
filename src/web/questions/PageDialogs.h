#pragma once

#include "web/questions/PermissionQuestions.h"

#include <QHash>
#include <QObject>
#include <qqmlregistration.h>

class AlertView;
class MainQueue;
class QUrl;
struct Alert;

//! The alerts, questions and requests for a text, a colour or a login of the pages of one view,
//! each under the name of the host that asks. They go with their document. From the third in a row
//! on the user may refuse all further ones of the document. Owned by WebView.
class PageDialogs : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by WebView.")
    Q_PROPERTY(PermissionQuestions *permissions READ permissions CONSTANT)

public:
    PageDialogs(AlertView *alertView, MainQueue *mainQueue, PagePermissions *permissions);
    ~PageDialogs() override;

    PermissionQuestions *permissions() { return &m_permissions; }

    //! Shows a dialog of a page or a frame of this origin. The answer comes as answered() with the
    //! number that is returned here. 0: the user wants no more, the dialog counts as refused.
    Q_INVOKABLE int showAlert(const QUrl &origin, const QString &message);
    Q_INVOKABLE int showConfirm(const QUrl &origin, const QString &message);
    Q_INVOKABLE int showPrompt(
        const QUrl &origin, const QString &message, const QString &defaultText);
    //! \a colour: "#rrggbb", as is the answer's input.
    Q_INVOKABLE int showColour(const QUrl &origin, const QString &colour);
    //! For the server of the address, or for the proxy on the way to it, where \a proxy names one.
    Q_INVOKABLE int showLogin(const QUrl &address, const QString &realm, const QString &proxy);

    //! Whether the page waits for an answer.
    bool areShown() const { return !m_shown.isEmpty(); }
    //! Refuses what is shown or waits; the next document begins anew.
    void documentGone();

Q_SIGNALS:
    void answered(int id, bool accepted, const QString &input, const QString &password);

private:
    int show(const QString &origin, Alert alert);
    void finish(int id, bool accepted, const Alert &filled);

    AlertView *m_alertView;
    MainQueue *m_mainQueue;
    PermissionQuestions m_permissions;
    QHash<int, int> m_shown; // the alert's number by that of the dialog
    int m_lastDialog = 0;
    int m_inARow = 0;
    bool m_refused = false;
};
