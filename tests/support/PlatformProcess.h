#pragma once

#include "model/DeploymentConfiguration.h"
#include "support/TracedRequest.h"

#include <QJsonObject>
#include <QList>
#include <QNetworkAccessManager>
#include <QProcess>

//! The school platform as a child process on a free port, for the life of this object. Its own
//! calls wait in an event loop, and the platform never traces them.
class PlatformProcess
{
public:
    //! The hosts by their last number.
    enum Host { Rb = 1, Regions, Public, Base, Official, Content, Upload, Storage, Local, Tls };

    //! Starts it and waits until it listens.
    explicit PlatformProcess(const QStringList &arguments = {});
    ~PlatformProcess();

    QString authority(Host host) const;
    QString address(Host host = Rb) const;
    //! The hosts as a client of this platform is configured.
    DeploymentConfiguration::Hosts hosts() const;

    //! The requests received since the last call or the start, in the order of their answers.
    QList<TracedRequest> takeRequests();

    //! Spoils answers: {"action", "start" or "path"; "times", "status", "body", "headers",
    //! "delay_ms", "cut", "huge"}.
    void addFault(const QJsonObject &fault);
    //! Sets the "data" or the whole "envelope" of an operation: {"start", "data" | "envelope"}.
    void setAnswer(const QJsonObject &answer);
    //! Takes back all faults and answers, and empties the trace.
    void reset();

    //! GETs of the platform's controls, or POSTs the JSON there: "_control/trace".
    QByteArray control(const QString &path, const QByteArray &body = {}) const;

private:
    QProcess m_process;
    mutable QNetworkAccessManager m_network;
    int m_port = 0;
    int m_taken = 0;
};
