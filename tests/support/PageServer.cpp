#include "support/PageServer.h"

#include <httplib.h>

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

struct Page
{
    QByteArray content;
    QByteArray type;
    QList<QByteArray> headers;
};

template <auto release>
struct Freed
{
    void operator()(auto *thing) const { release(thing); }
};

//! A key, and the certificate in which it vouches for itself.
struct Identity
{
    std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>> key {EVP_RSA_gen(2048)};
    std::unique_ptr<X509, Freed<X509_free>> certificate {X509_new()};

    explicit Identity(const QByteArray &host)
    {
        X509 *made = certificate.get();
        X509_set_version(made, 2);
        ASN1_INTEGER_set(X509_get_serialNumber(made), 1);
        X509_gmtime_adj(X509_getm_notBefore(made), 0);
        X509_gmtime_adj(X509_getm_notAfter(made), 3600);
        X509_set_pubkey(made, key.get());
        X509_NAME_add_entry_by_txt(X509_get_subject_name(made), "CN", MBSTRING_ASC,
            reinterpret_cast<const unsigned char *>(host.constData()), -1, -1, 0);
        X509_set_issuer_name(made, X509_get_subject_name(made));
        add(NID_subject_alt_name, "IP:" + host);
        add(NID_basic_constraints, "critical,CA:TRUE");
        X509_sign(made, key.get(), EVP_sha256());
    }

    void add(int nid, const QByteArray &value)
    {
        X509_EXTENSION *extension = X509V3_EXT_conf_nid(nullptr, nullptr, nid, value.constData());
        X509_add_ext(certificate.get(), extension, -1);
        X509_EXTENSION_free(extension);
    }

    QByteArray pem() const
    {
        const std::unique_ptr<BIO, Freed<BIO_free>> bio(BIO_new(BIO_s_mem()));
        PEM_write_bio_X509(bio.get(), certificate.get());
        char *data = nullptr;
        const long size = BIO_get_mem_data(bio.get(), &data);
        return {data, size};
    }
};

}

struct PageServer::Private
{
    std::unique_ptr<Identity> identity;
    std::unique_ptr<httplib::Server> server;
    std::thread thread;
    QString base;
    int port = 0;
    mutable std::mutex mutex;
    QMap<QByteArray, Page> pages;
    QList<Request> requests;

    void handle(const httplib::Request &request, httplib::Response &response)
    {
        Request seen {QByteArray::fromStdString(request.path), {}};
        for (const auto &[name, value] : request.headers)
            seen.headers.insert(
                QByteArray::fromStdString(name).toLower(), QByteArray::fromStdString(value));
        const std::lock_guard lock(mutex);
        requests.append(seen);
        const auto page = pages.constFind(seen.path);
        if (page == pages.cend()) {
            response.status = 404;
            response.set_content("nothing here", "text/plain");
            return;
        }
        for (const QByteArray &header : page->headers) {
            const qsizetype colon = header.indexOf(": ");
            response.set_header(
                header.left(colon).toStdString(), header.mid(colon + 2).toStdString());
            if (header.startsWith("Location: "))
                response.status = 302;
            if (header.startsWith("WWW-Authenticate: ") && !seen.headers.contains("authorization"))
                response.status = 401;
        }
        response.set_content(page->content.toStdString(), page->type.constData());
    }
};

PageServer::PageServer(const char *host, Tls tls)
    : d(std::make_unique<Private>())
{
    if (tls == Tls::SelfSigned) {
        d->identity = std::make_unique<Identity>(host);
        d->server = std::make_unique<httplib::SSLServer>(
            d->identity->certificate.get(), d->identity->key.get());
    } else {
        d->server = std::make_unique<httplib::Server>();
    }
    d->server->Get(".*", [this](const httplib::Request &request, httplib::Response &response) {
        d->handle(request, response);
    });
    d->port = d->server->bind_to_any_port(host);
    d->base = u"%1://%2:%3"_s
                  .arg(tls == Tls::SelfSigned ? u"https"_s : u"http"_s, QString::fromLatin1(host))
                  .arg(d->port);
    d->thread = std::thread([this] { d->server->listen_after_bind(); });
    // A server that is stopped before it runs never hears of it.
    while (!d->server->is_running())
        std::this_thread::yield();
}

PageServer::~PageServer()
{
    d->server->stop();
    d->thread.join();
}

void PageServer::setPage(const QByteArray &path, const QByteArray &content, const QByteArray &type,
    const QList<QByteArray> &headers)
{
    const std::lock_guard lock(d->mutex);
    d->pages.insert(path, {content, type, headers});
}

QString PageServer::url(const QByteArray &path) const
{
    return d->base + QString::fromUtf8(path);
}

int PageServer::port() const
{
    return d->port;
}

QByteArray PageServer::certificate() const
{
    return d->identity->pem();
}

QList<PageServer::Request> PageServer::requests() const
{
    const std::lock_guard lock(d->mutex);
    return d->requests;
}

QList<PageServer::Request> PageServer::requestsFor(const QByteArray &path) const
{
    QList<Request> matching = requests();
    matching.removeIf([&path](const Request &request) { return request.path != path; });
    return matching;
}
