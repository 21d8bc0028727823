// peer_requests URL COUNT: gets the address again and again, one call after the other, and reads
// the JSON that comes. A bare loop over libcurl, in one thread, or handed from thread to thread.

#include "common/Clocks.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <curl/curl.h>

#include <atomic>
#include <cstdio>
#include <thread>

namespace {

//! One call over the connection that is kept.
class Caller
{
public:
    explicit Caller(const char *url)
    {
        curl_easy_setopt(m_call, CURLOPT_URL, url);
        curl_easy_setopt(m_call, CURLOPT_USERAGENT, "vant-ios;client-st;");
        curl_easy_setopt(m_call, CURLOPT_WRITEFUNCTION, &append);
        curl_easy_setopt(m_call, CURLOPT_WRITEDATA, &m_body);
    }

    void start()
    {
        m_body.clear();
        curl_multi_add_handle(m_multi, m_call);
    }
    //! Null while the answer is not there.
    const QByteArray *turn()
    {
        int running = 0;
        curl_multi_perform(m_multi, &running);
        if (const CURLMsg *end = curl_multi_info_read(m_multi, &running)) {
            if (end->data.result != CURLE_OK)
                qFatal("a call failed");
            curl_multi_remove_handle(m_multi, m_call);
            return &m_body;
        }
        curl_multi_poll(m_multi, nullptr, 0, 1000, nullptr);
        return nullptr;
    }
    void wake() { curl_multi_wakeup(m_multi); }

private:
    static size_t append(char *data, size_t size, size_t count, void *body)
    {
        static_cast<QByteArray *>(body)->append(data, qsizetype(size * count));
        return size * count;
    }

    CURLM *m_multi = curl_multi_init();
    CURL *m_call = curl_easy_init();
    QByteArray m_body;
};

void check(const QByteArray &body)
{
    const QJsonObject answer = QJsonDocument::fromJson(body).object();
    if (answer[QLatin1String("code")].toInt() != 200
        || answer[QLatin1String("data")][QLatin1String("site_name")].toString().isEmpty())
        qFatal("a call failed");
}

void inOneThread(Caller &caller, int count)
{
    for (; count > 0; --count) {
        caller.start();
        const QByteArray *body = nullptr;
        while (!body)
            body = caller.turn();
        check(*body);
    }
}

//! The same, each call ordered from a thread with an event loop and answered there.
void inTwoThreads(Caller &caller, int left)
{
    std::atomic<bool> isOrdered = false;
    std::atomic<bool> isEnding = false;
    QObject mainThread;
    const auto order = [&] {
        if (left-- == 0)
            return QCoreApplication::quit();
        isOrdered = true;
        caller.wake();
    };
    const auto answer = [&](const QByteArray &body) {
        check(body);
        order();
    };
    std::thread thread([&] {
        while (!isEnding) {
            if (isOrdered.exchange(false))
                caller.start();
            if (const QByteArray *body = caller.turn())
                QMetaObject::invokeMethod(
                    &mainThread, [&answer, body = *body] { answer(body); }, Qt::QueuedConnection);
        }
    });
    order();
    QCoreApplication::exec();
    isEnding = true;
    caller.wake();
    thread.join();
}

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3)
        qFatal("usage: peer_requests URL COUNT [two]");
    const Clocks clocks;
    Caller caller(argv[1]);
    const bool two = arguments.size() > 3;
    (two ? inTwoThreads : inOneThread)(caller, arguments[2].toInt());
    std::printf(R"({"wall_ms": %f, "cpu_ms": %f})", clocks.wall(), clocks.processor());
    return 0;
}
