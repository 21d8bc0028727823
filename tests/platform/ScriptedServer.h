#pragma once

#include <QTcpServer>

//! A server on loopback that answers every request with the bytes it was given, be they HTTP or not, and remembers
//! what it received.
class ScriptedServer : public QTcpServer
{
    Q_OBJECT

public:
    enum class Then { KeepOpen, Close };

    //! Null bytes: never answers.
    explicit ScriptedServer(const QByteArray &answer = {}, Then then = Then::KeepOpen);

    QString address(const QString &path = QStringLiteral("/")) const;

    //! The requests as they came, head and body.
    QByteArrayList requests;

private:
    void accept();
    void read(QTcpSocket *socket);

    QByteArray m_answer;
    Then m_then;
};
