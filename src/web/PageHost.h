#pragma once

#include <QObject>
#include <QString>
#include <qqmlregistration.h>

class Shell;
class ViewController;
struct Alert;

//! What pages ask of the window around them: questions to the user, and files to keep.
//! Shared by the views of all pages; owned by the application.
class PageHost : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(QString downloadDirectory READ downloadDirectory CONSTANT)

public:
    PageHost(Shell *shell, const QString &downloadDirectory);

    QString downloadDirectory() const { return m_downloadDirectory; }

    //! Shows an alert, a question or a request for a text of a page. The answer comes as
    //! dialogAnswered() with the number that is returned here.
    Q_INVOKABLE int showAlert(const QString &message);
    Q_INVOKABLE int showConfirm(const QString &message);
    Q_INVOKABLE int showPrompt(const QString &message, const QString &defaultText);
    //! Takes the screen of a page away.
    void close(ViewController *page);
    //! Tells the user how the download of a file went.
    Q_INVOKABLE void downloadEnded(const QString &fileName, bool completed);

Q_SIGNALS:
    void dialogAnswered(int id, bool accepted, const QString &input);

private:
    int show(const Alert &alert);

    Shell *m_shell;
    QString m_downloadDirectory;
    int m_lastDialog = 0;
};
