#include "support/PageServer.h"

#include <httplib.h>

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

struct Page
{
    QByteArray content;
    QByteArray type;
    QList<QByteArray> headers;

    bool isRedirect() const
    {
        return std::any_of(headers.cbegin(), headers.cend(),
            [](const QByteArray &header) { return header.startsWith("Location: "); });
    }
};

struct Identity
{
    EVP_PKEY *key;
    X509 *certificate;

    explicit Identity(const char *host)
        : key(EVP_RSA_gen(2048))
        , certificate(X509_new())
    {
        X509_set_version(certificate, 2);
        ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
        X509_gmtime_adj(X509_getm_notBefore(certificate), 0);
        X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
        X509_set_pubkey(certificate, key);
        X509_NAME *name = X509_get_subject_name(certificate);
        X509_NAME_add_entry_by_txt(
            name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char *>(host), -1, -1, 0);
        X509_set_issuer_name(certificate, name);
        const std::string alternative = std::string("IP:") + host;
        add(NID_subject_alt_name, alternative.c_str());
        add(NID_basic_constraints, "critical,CA:TRUE");
        X509_sign(certificate, key, EVP_sha256());
    }

    ~Identity()
    {
        X509_free(certificate);
        EVP_PKEY_free(key);
    }

    Identity(const Identity &) = delete;
    Identity &operator=(const Identity &) = delete;

    void add(int nid, const char *value)
    {
        X509_EXTENSION *extension = X509V3_EXT_conf_nid(nullptr, nullptr, nid, value);
        X509_add_ext(certificate, extension, -1);
        X509_EXTENSION_free(extension);
    }

    QByteArray pem() const
    {
        BIO *bio = BIO_new(BIO_s_mem());
        PEM_write_bio_X509(bio, certificate);
        char *data = nullptr;
        const long size = BIO_get_mem_data(bio, &data);
        const QByteArray text(data, size);
        BIO_free(bio);
        return text;
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
        if (page->isRedirect())
            response.status = 302;
        for (const QByteArray &header : page->headers) {
            const qsizetype colon = header.indexOf(": ");
            response.headers.emplace(
                header.left(colon).toStdString(), header.mid(colon + 2).toStdString());
        }
        response.set_content(page->content.toStdString(), page->type.constData());
    }
};

PageServer::PageServer(const char *host, Tls tls)
    : d(std::make_unique<Private>())
{
    if (tls == Tls::SelfSigned) {
        d->identity = std::make_unique<Identity>(host);
        d->server
            = std::make_unique<httplib::SSLServer>(d->identity->certificate, d->identity->key);
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
