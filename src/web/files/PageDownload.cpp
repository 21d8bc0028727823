#include "web/files/PageDownload.h"

#include "platform/time/MainQueue.h"
#include "ui/feedback/AlertView.h"
#include "web/host/PageHost.h"
#include "web/host/PageOrigin.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QLocale>
#include <QUuid>
#include <QWebEngineDownloadRequest>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto engineMayWrite = 10s;

QString originOf(const QUrl &file, const QUrl &page)
{
    // Data in the address itself is the page's own.
    return PageOrigin::name(file.scheme() == u"data" ? page : file);
}

QString freeName(const QDir &folder, const QString &name)
{
    const QFileInfo wanted(name);
    const QString suffix = wanted.suffix().isEmpty() ? QString() : u'.' + wanted.suffix();
    QString free = name;
    for (int number = 1; folder.exists(free); ++number)
        free = u"%1 (%2)%3"_s.arg(wanted.completeBaseName()).arg(number).arg(suffix);
    return free;
}

}

PageDownload::PageDownload(QWebEngineDownloadRequest *request, const QUrl &page, PageHost *host)
    : QObject(host)
    , m_host(host)
    , m_name(request->downloadFileName())
    , m_fetched(u".%1"_s.arg(QUuid::createUuid().toString(QUuid::WithoutBraces)))
{
    goOn(request);
    ask(originOf(request->url(), page), request->totalBytes());
}

void PageDownload::goOn(QWebEngineDownloadRequest *request)
{
    if (m_request)
        disconnect(m_request, nullptr, this, nullptr);
    m_request = request;
    request->setDownloadDirectory(m_host->downloadDirectory());
    request->setDownloadFileName(m_fetched);
    // The engine wants its answer at once. What is small has come before it pauses.
    request->accept();
    if (!m_agreed)
        request->pause();
    connect(request, &QWebEngineDownloadRequest::stateChanged, this, &PageDownload::stateChanged);
    connect(request, &QObject::destroyed, this, &PageDownload::fail);
}

void PageDownload::ask(const QString &origin, qint64 size)
{
    QString message = u"来自 %1：\n%2"_s.arg(origin, m_name);
    if (size > 0)
        message += u"，"_s + QLocale::c().formattedDataSize(size, 0, QLocale::DataSizeSIFormat);
    const Alert alert = Alert::question(u"下载文件"_s, message);
    m_question = m_host->alertView()->show(alert, [self = QPointer(this)](int button) {
        if (self && !self->m_ended)
            self->didAnswer(button);
    });
}

void PageDownload::didAnswer(int button)
{
    if (button == Alert::confirmButton)
        return agree();
    if (button == Alert::cancelButton)
        Q_EMIT refused();
    refuse();
}

void PageDownload::withdraw()
{
    if (!m_agreed)
        m_host->alertView()->withdraw(m_question);
}

void PageDownload::agree()
{
    m_agreed = true;
    if (m_request->state() == QWebEngineDownloadRequest::DownloadCompleted)
        keep();
    else
        m_request->resume();
}

void PageDownload::refuse()
{
    m_ended = true;
    m_request->cancel();
    removeFetched();
    deleteLater();
}

void PageDownload::stateChanged()
{
    switch (m_request->state()) {
    case QWebEngineDownloadRequest::DownloadCompleted:
        if (m_agreed)
            keep();
        return;
    case QWebEngineDownloadRequest::DownloadCancelled:
    case QWebEngineDownloadRequest::DownloadInterrupted:
        return fail();
    default:
        return;
    }
}

void PageDownload::keep()
{
    QDir folder(m_host->downloadDirectory());
    const QString name = freeName(folder, m_name);
    if (!folder.rename(m_fetched, name))
        return fail();
    m_ended = true;
    m_host->downloadKept(name);
    deleteLater();
}

void PageDownload::fail()
{
    if (std::exchange(m_ended, true))
        return;
    withdraw();
    if (m_request)
        m_request->cancel();
    removeFetched();
    m_host->downloadFailed(m_name);
    deleteLater();
}

// For a while, for the engine's own thread may be about to write it or to give it its name.
void PageDownload::removeFetched()
{
    const auto remove = [path = m_host->downloadDirectory() + u'/' + m_fetched] {
        QFile::remove(path);
        QFile::remove(path + u".download"_s); // the engine's name until all has come
    };
    auto *watcher = new QFileSystemWatcher({m_host->downloadDirectory()}, m_host);
    connect(watcher, &QFileSystemWatcher::directoryChanged, watcher, remove);
    remove();
    m_host->mainQueue()->after(engineMayWrite, watcher, [watcher] { watcher->deleteLater(); });
}
