#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <memory>

//! A small web server on loopback for the pages of a test; remembers what was asked of it.
class PageServer
{
public:
    struct Request
    {
        QByteArray path;
        QMap<QByteArray, QByteArray> headers; //!< lower-case names

        QByteArray cookie() const { return headers.value("cookie"); }
    };

    //! \a host: any loopback address. With Tls::SelfSigned it shows a certificate that nobody
    //! vouches for.
    enum class Tls { Off, SelfSigned };
    explicit PageServer(const char *host = "127.0.0.1", Tls tls = Tls::Off);
    ~PageServer();

    //! Serves the content under the path from now on. Headers as "name: value"; a Location
    //! redirects, a WWW-Authenticate asks for a login, whatever it be.
    void setPage(const QByteArray &path, const QByteArray &content,
        const QByteArray &type = "text/html; charset=utf-8", const QList<QByteArray> &headers = {});

    QString url(const QByteArray &path) const;
    int port() const;
    //! The PEM of the certificate shown, for a test that trusts it.
    QByteArray certificate() const;

    QList<Request> requests() const;
    QList<Request> requestsFor(const QByteArray &path) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
