#include "net/NetClient.h"
#include "net/catalogue/SiteConfiguration.h"
#include "net/request/LogMask.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/http/HTTPSessionManager.h"
#include "platform/http/HTTPTask.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"
#include "support/Table.h"

#include <QJsonArray>
#include <QLoggingCategory>
#include <QTcpServer>

namespace {

constexpr auto undefined = QJsonValue::Undefined;

Answer refused(qint64 code, const QString &text)
{
    return {1, undefined, ResponseErrorInfo::createErrorInfoWithCode(code, text)};
}

const Answer unreadable = refused(0, u"请求错误"_qs);

//! The code of a transport error is the transport's business, but it has one.
void compareWithTransportError(const Answer &answer)
{
    QVERIFY(answer.error && answer.error->code != 0);
    QCOMPARE(answer, refused(answer.error->code, u"请求错误"_qs));
}

}

//! What a call is answered with, be the server good, bad or gone; when, how often, and what stays
//! behind.
class AnswerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_platform.reset();
        m_client = std::make_unique<NetClient>(m_platform.hosts());
    }

    void mapsTheBody()
    {
        const Answer noObject {1, undefined, {}};
        const std::pair<QByteArray, Answer> rows[] {
            {R"({"code":200,"msg":"ok","data":{"a":1}})", {200, QJsonObject {{u"a"_qs, 1}}, {}}},
            {R"({"code":200})", {200, undefined, {}}},
            {R"({"code":200,"data":null})", {200, QJsonValue::Null, {}}},
            {R"({"code":200,"data":false})", {200, false, {}}},
            {R"({"code":"200","data":9007199254740993})", {200, qint64(9007199254740993), {}}},
            {"\xEF\xBB\xBF\r\n {\"code\":\"8888\",\"data\":[1]} \n", {8888, QJsonArray {1}, {}}},

            {R"({"code":"401","msg":"系统繁忙","data":1})", refused(401, u"系统繁忙"_qs)},
            {R"({"code":500})", refused(500, u"(null)"_qs)},
            {R"({"code":500,"msg":12})", refused(500, u"12"_qs)},
            {R"({"code":1,"msg":""})", refused(1, u""_qs)},
            {R"({"code":"oops","msg":"x"})", refused(0, u"x"_qs)},
            {R"({"code":1e300,"msg":"x"})", refused(0, u"x"_qs)},
            // 200 and 8888 once cut to 32 bits.
            {R"({"code":4294967496,"msg":"x"})", refused(4294967496, u"x"_qs)},
            {R"({"code":"4294976184","msg":"x"})", refused(4294976184, u"x"_qs)},
            {"{}", refused(0, u"(null)"_qs)},

            {"[{\"code\":200}]", noObject},
            {"12", noObject},
            {"\"x],[\"", noObject},
            {"null", noObject},
            {"", unreadable},
            {"\xEF\xBB\xBF", unreadable},
            {R"({"code":200,"data":{"a":)", unreadable},
            {R"({"code":200},)", unreadable},
            {R"({"code":200}{})", unreadable},
            {"1],[2", unreadable},
            {"<html><body>502</body></html>", unreadable},
            {QByteArray(200'000, '[') + QByteArray(200'000, ']'), unreadable},
        };
        for (const auto &[body, answer] : rows)
            QCOMPARE(std::pair(body.left(60), answerTo({{u"body"_qs, QString::fromUtf8(body)}})),
                std::pair(body.left(60), answer));
    }

    void mapsTheReply()
    {
        const auto ofReply = [&](int status, const QString &type) {
            return answerTo({{u"body"_qs, u"{\"code\":200,\"data\":1}"_qs}, {u"status"_qs, status},
                {u"headers"_qs,
                    QJsonObject {{u"Content-Type"_qs, type}, {u"Location"_qs, u"mailto:a@b"_qs}}}});
        };
        const QString json = u"application/json"_qs;
        for (const QString &type :
            {json, u"text/json"_qs, u"text/plain"_qs, u"Text/HTML; charset=utf-8"_qs})
            QCOMPARE(ofReply(200, type), (Answer {200, 1, {}}));
        for (const QString &type : {u"application/xml"_qs, u"application/json2"_qs})
            compareWithTransportError(ofReply(200, type));
        for (const int status : {201, 299})
            QCOMPARE(ofReply(status, json), unreadable);
        for (const int status : {300, 302, 304, 404, 503})
            compareWithTransportError(ofReply(status, json));
        QCOMPARE(answerTo({{u"body"_qs, u""_qs}, {u"status"_qs, 204}}), unreadable);
        constexpr qint64 limit = HTTPSessionManager::defaultMaximumBodySize;
        compareWithTransportError(answerTo({{u"huge"_qs, 2 * limit}}));
        QCOMPARE(answerTo({{u"huge"_qs, limit - 1024}}).status, 200);
    }

    void survivesTheWire_data()
    {
        constexpr bool fails = false, succeeds = true;
        // On a fresh connection and on a kept one, which the server may have closed meanwhile.
        Wires::rows({
            {"lost", {{u"lose"_qs, true}}, {fails, 1}, {succeeds, 2}},
            {"reset", {{u"reset"_qs, true}}, {fails, 1}, {succeeds, 2}},
            {"lost twice", {{u"lose"_qs, true}, {u"times"_qs, 2}}, {fails, 1}, {fails, 2}},
            {"cut off", {{u"cut"_qs, true}}, {fails, 1}, {fails, 1}},
            {"dribbling", {{u"dribble_ms"_qs, 30}}, {succeeds, 1}, {succeeds, 1}},
            {"dribbling to an end", {{u"dribble_ms"_qs, 30}, {u"cut"_qs, true}}, {fails, 1},
                {fails, 1}},
        });
    }

    void survivesTheWire()
    {
        const auto [fault, fresh, kept] = Wires::row();
        QJsonObject described = fault;
        described[u"start"] = m_start;
        for (const auto &[isSuccess, requests] : {fresh, kept}) {
            m_platform.reset();
            m_platform.addFault(described);
            const Answer answer = m_client->connect(m_action, m_start);
            if (isSuccess)
                QCOMPARE(answer.data[u"list"].toArray().size(), 12);
            else
                compareWithTransportError(answer);
            QCOMPARE(m_platform.takeRequests().size(), requests);
            m_platform.reset();
            QCOMPARE(m_client->connect(m_action, m_start).status, 200);
        }
    }

    // Whoever sends on is waited for, however slowly.
    void onlySilenceIsTooSlow()
    {
        HTTPSessionManager manager(&m_client->network);
        manager.setTimeoutInterval(std::chrono::milliseconds(400));
        const QString address
            = m_platform.address() + u"do?action=%1&start=%2"_qs.arg(m_action, m_start);
        for (const int pause : {40, 600'000}) {
            m_platform.addFault({{u"start"_qs, m_start}, {u"dribble_ms"_qs, pause}});
            QCOMPARE(answerOf<bool>([&](const auto &then) {
                manager.GET(
                    address, {}, [then](const auto &) { then(true); },
                    [then](const auto &, const auto &) { then(false); });
            }),
                pause == 40);
        }
    }

    void unreachableServer()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString closedPort = u"http://127.0.0.1:%1/"_qs.arg(closed.serverPort());
        closed.close();
        DeploymentConfiguration::Hosts hosts = m_platform.hosts();
        for (const QString &address : {closedPort, m_platform.address(PlatformProcess::Tls),
                 u"gopher://127.0.0.1/"_qs, QString(), u"http://[::/"_qs}) {
            hosts.rb = address;
            NetClient client(hosts);
            compareWithTransportError(client.connect(m_action, m_start));
            QVERIFY(client.manager.connectItems().empty());
        }
    }

    void eachCallCompletesOnceWithItsOwnAnswer()
    {
        constexpr int count = 40;
        QStringList expected;
        QStringList answers;
        const auto ask = [&](const QString &number, const std::function<void()> &then) {
            expected << number;
            m_client->requests.checkAppUpdateWithCurNo(
                number, u"a"_qs, [&, then](int, const QJsonValue &data, const auto &) {
                    answers << data[u"bulid_no"].toString();
                    if (then)
                        then();
                });
        };
        // Started from completions, so that the table of calls grows while one of them is being
        // delivered.
        for (int i = 0; i < count; ++i)
            ask(QString::number(i), [&, i] { ask(QString::number(count + i), {}); });
        QVERIFY(answers.isEmpty());
        QCOMPARE(m_client->manager.connectItems().size(), size_t(count));

        TRY_VERIFY(m_client->manager.connectItems().empty());
        expected.sort();
        answers.sort();
        QCOMPARE(answers, expected);
        // Nobody needs to listen.
        m_client->manager.connectWithAction(m_action, m_start, RequestItem::Get, {}, {});
        TRY_VERIFY(m_client->manager.connectItems().empty());
        QCOMPARE(m_platform.takeRequests().size(), 2 * count + 1);
    }

    void silentAfterManagerOrNetworkIsGone()
    {
        // So long that all of this is before the answer.
        m_platform.addFault({{u"start"_qs, m_start}, {u"delay_ms"_qs, 20'000}});
        bool answered = false;
        auto network = std::make_unique<HTTPNetwork>();
        const auto started = [&] {
            auto manager = std::make_unique<BaseRequestManager>(
                network.get(), &m_client->loginModel, &m_client->defaults, m_platform.hosts());
            manager->connectWithAction(m_action, m_start, RequestItem::Get, {},
                [&](int, const QJsonValue &, const auto &) { answered = true; });
            return manager;
        };
        started().reset();
        TRY_VERIFY(network->findChildren<HTTPTask *>().isEmpty());

        const auto manager = started();
        network.reset();
        manager->connectItems().begin()->second->cancel();
        QCoreApplication::processEvents();
        QVERIFY(!answered);
    }

    void logsNoSecret()
    {
        static QStringList logged;
        QLoggingCategory::setFilterRules(u"vant.*=true"_qs);
        const auto handler = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &line) { logged << line; });
        m_client->requests.setOrganization(u"school01"_qs);
        m_platform.addFault({{u"start"_qs, u"login"_qs}, {u"times"_qs, 2},
            {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, u"mo=secret; Path=/"_qs}}}});
        HTTPParameters sent {{u"user_code"_qs, u"student01"_qs}, {u"sign"_qs, QString()}};
        QJsonObject answered {{u"user_id"_qs, 7}, {u"code"_qs, 200}};
        for (const QString &name :
            {u"user_pwd"_qs, u"login_token"_qs, u"c_id"_qs, u"card_no"_qs, u"open_id"_qs}) {
            sent[name] = u"secret"_qs;
            answered[name] = 42;
        }
        sent[u"code"_qs] = u"secret"_qs;
        for (int i = 0; i < 2; ++i)
            m_client->connect(u"rb/h5/login"_qs, u"login"_qs, RequestItem::Get, sent);
        qInstallMessageHandler(handler);
        QLoggingCategory::setFilterRules({});

        const QString all = logged.join(u'\n');
        QVERIFY2(!all.contains(u"secret"), qPrintable(all));
        QVERIFY(all.contains(u"\"user_code\":\"student01\"") && all.contains(u"\"sign\":\"\""));
        QVERIFY(all.contains(u"mipushCookie:(null)") && all.contains(u"mipushCookie:***"));
        const QJsonObject told = LogMask::answer(answered).toObject();
        for (const QString &name : told.keys()) {
            const bool isOpen = name == u"user_id" || name == u"code";
            QCOMPARE(told[name], isOpen ? answered[name] : QJsonValue(u"***"_qs));
        }
        QCOMPARE(LogMask::answer(QJsonArray {1}), QJsonValue(QJsonArray {1}));
    }

    void storesTheAddressesAndForgetsAMissingOne()
    {
        QCOMPARE(load().rows.size(), 12);
        const QString content = m_platform.address(PlatformProcess::Content);
        QCOMPARE(addresses(),
            (QStringList {content + u"terminal/"_qs, content + u"rb/"_qs, content + u"base/"_qs,
                content + u"register/"_qs, content + u"zzrb/"_qs, content + u"qe/"_qs}));
        const QJsonArray list {QJsonObject {{u"full_name"_qs, u"一中"_qs}, {u"site_code"_qs, 12},
                                   {u"is_local"_qs, 1}, {u"url"_qs, u"http://u"_qs},
                                   {u"url_qe"_qs, u"http://q"_qs}, {u"site_id"_qs, 10001}},
            u"no school"_qs, QJsonValue::Null,
            QJsonObject {{u"full_name"_qs, u"二中"_qs}, {u"url"_qs, QJsonValue::Null}}};
        m_platform.setAnswer({{u"start"_qs, u"cndSite"_qs},
            {u"data"_qs,
                QJsonObject {{u"terminal_cdn"_qs, u"t"_qs}, {u"rb_cdn"_qs, QJsonValue::Null},
                    {u"base_cdn"_qs, QJsonArray {1}}, {u"list"_qs, list}}}});

        QCOMPARE(load().rows,
            (QList<DataModel> {
                {u"一中"_qs, u"12"_qs, true, u"http://u"_qs, u"http://q"_qs, u"10001"_qs},
                {u"二中"_qs, {}, false, {}, {}, {}}}));
        QCOMPARE(addresses(), (QStringList {u"t"_qs, {}, {}, {}, {}, {}}));
        QVERIFY(m_client->loginModel.qeCDN().isNull());
    }

    void failureLeavesTheAddressesAlone()
    {
        load();
        const QStringList before = addresses();
        const std::tuple<QString, int, QString> rows[] {
            {uR"({"code":500,"msg":"维护中"})"_qs, 1, u"维护中"_qs},
            {uR"({"code":8888,"data":{}})"_qs, 8888, {}},
            {uR"({"code":200,"data":{"rb_cdn":"x")"_qs, 1, u"请求错误"_qs},
            {uR"({"code":200})"_qs, 1, u"请求错误"_qs},
            {uR"({"code":200,"data":[]})"_qs, 1, u"请求错误"_qs},
        };
        for (const auto &[body, status, text] : rows) {
            m_platform.addFault({{u"start"_qs, m_start}, {u"body"_qs, body}});
            const Loaded loaded = load();
            QCOMPARE(loaded.status, status);
            QCOMPARE(loaded.error ? loaded.error->errorDescription : QString(), text);
            QVERIFY(loaded.rows.isEmpty());
            QCOMPARE(addresses(), before);
        }
    }

private:
    using Outcome = std::pair<bool, int>; // whether it succeeds, after how many requests
    using Wires = Table<QJsonObject, Outcome, Outcome>;
    struct Loaded
    {
        int status = 0;
        QList<DataModel> rows;
        std::optional<ResponseErrorInfo> error;
    };

    Loaded load()
    {
        const SiteConfiguration configuration(&m_client->requests, &m_client->loginModel);
        return answerOf<Loaded>([&](const auto &then) {
            configuration.load([then](int status, const QList<DataModel> &rows, const auto &error) {
                then({status, rows, error});
            });
        });
    }

    //! In the order in which the server names them: terminal, rb, base, register, zzrb, qe.
    QStringList addresses() const
    {
        const LoginModel &model = m_client->loginModel;
        return {model.terminalCDN(), model.rbCDN(), model.baseCDN(), model.registerCDN(),
            model.zzrbCDN(), model.qeCDN()};
    }

    Answer answerTo(const QJsonObject &fault)
    {
        QJsonObject described = fault;
        described[u"start"] = m_start;
        m_platform.addFault(described);
        // On a connection of its own: a fault on a used one is made good by sending again.
        NetClient client(m_platform.hosts());
        return client.connect(m_action, m_start);
    }

    PlatformProcess m_platform {{u"--schools"_qs, u"12"_qs}};
    std::unique_ptr<NetClient> m_client;
    const QString m_action = u"rb/platform/site"_qs;
    const QString m_start = u"cndSite"_qs;
};

QTEST_GUILESS_MAIN(AnswerTest)
#include "AnswerTest.moc"
