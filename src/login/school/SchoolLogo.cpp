#include "login/school/SchoolLogo.h"

#include "login/Logging.h"
#include "login/form/LoginViewModel.h"
#include "platform/http/HTTPSessionManager.h"

#include <QBuffer>
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace {

const QUrl placeholder(u"qrc:/assets/logo.png"_s);
// A server's picture is not trusted to be small.
constexpr qint64 maximumBytes = 2 * 1024 * 1024;
constexpr int maximumSide = 4096;

//! An address that holds the picture itself; empty when the bytes are no picture of a sane size.
QUrl sourceOf(const QByteArray &picture)
{
    QBuffer buffer;
    buffer.setData(picture);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!reader.canRead() || !size.isValid() || qMax(size.width(), size.height()) > maximumSide)
        return {};
    return QUrl(
        QString::fromLatin1("data:image/" + reader.format() + ";base64," + picture.toBase64()));
}

}

SchoolLogo::SchoolLogo(LoginViewModel *viewModel, HTTPNetwork *network, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_network(network)
    , m_source(placeholder)
{
}

QString SchoolLogo::address(const QString &h5_logo)
{
    if (h5_logo.isEmpty() || h5_logo.startsWith(u"http"))
        return h5_logo;
    return u"https:"_s + h5_logo;
}

void SchoolLogo::request(const QString &siteId)
{
    show(placeholder);
    const quint64 request = ++m_newestRequest;
    CommandObserver observer;
    observer.next = [self = QPointer(this), request](const QJsonValue &answer) {
        if (self)
            self->load(address(answer[u"h5_logo"].toString()), request);
    };
    m_viewModel->logoCommand(siteId, observer);
}

void SchoolLogo::load(const QString &address, quint64 request)
{
    if (address.isEmpty() || request != m_newestRequest)
        return;
    HTTPSessionManager session(m_network);
    session.setMaximumBodySize(maximumBytes);
    session.GET(
        address, {},
        [self = QPointer(this), request](const HTTPResponse &response) {
            if (!self || request != self->m_newestRequest)
                return;
            if (const QUrl source = sourceOf(response.body); !source.isEmpty())
                self->show(source);
            else
                qCInfo(lcLogin) << "the school's logo is no usable picture";
        },
        [](const HTTPResponse &, const HTTPError &error) {
            qCInfo(lcLogin).noquote() << "no logo of the school:" << error.description;
        });
}

void SchoolLogo::show(const QUrl &source)
{
    if (source == m_source)
        return;
    m_source = source;
    Q_EMIT sourceChanged();
}
