#include "support/PageServer.h"
#include "support/Patience.h"
#include "web/HomeHarness.h"
#include "web/WebTestMain.h"

#include <QQuickWebEngineProfile>
#include <QSignalSpy>
#include <QWebEngineCookieStore>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! The home container, where the tour through the whole application does not look.
class HomeContainerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PageServer> m_server;
    std::unique_ptr<HomeHarness> m_home;

private Q_SLOTS:
    void init()
    {
        m_home.reset();
        m_server = std::make_unique<PageServer>();
        m_server->setPage("/portal/index.html",
            "<!doctype html><title>portal</title><script>window.answers = {};"
            "function call(name, data) { WebViewJavascriptBridge.callHandler(name, data,"
            "  answer => { window.answers[name] = JSON.stringify(answer) }) }"
            "WVJBCallbacks = [bridge => ['onQrResult2H5', 'onGetBDLocation', 'onWechatResult2H5',"
            "  'onSlicingUpload'].forEach(name => bridge.registerHandler(name,"
            "    data => { window.answers[name] = JSON.stringify(data) }))]"
            "</script>");
        m_server->setPage("/other.html", "<title>other</title>");
        m_home = std::make_unique<HomeHarness>();
        m_home->setPortal(m_server->url("/portal/index.html"));
    }

    void onlyTheRequestForThePortalThatALoginLoadsHasTheMarker()
    {
        const QByteArray path = "/portal/index.html";
        m_home->addCookie("mo", "m1", u"127.0.0.1"_s);
        m_home->addCookie("elsewhere", "x", u"127.0.0.9"_s);
        m_home->show();
        QVERIFY(m_home->waitForPage(u"portal"_s));
        // Gone with the end of the load: the same page asked for by itself goes without it.
        m_home->evaluate(u"fetch('/portal/index.html?again').then(r => r.text())"_s);
        TRY_COMPARE(m_server->requestsFor(path).size(), 2);
        m_home->addCookie("mo", "fresh", u"127.0.0.1"_s);
        m_home->stage.loginModel.setIsLogin(true);
        TRY_COMPARE(m_server->requestsFor(path).size(), 3);
        QVERIFY(m_home->waitForPage(u"portal"_s));
        // And so does a page that takes the portal's place.
        m_home->stage.loginModel.setIsLogin(true);
        m_home->controller.quickLogin(m_server->url("/portal/index.html?from=quick"));
        TRY_COMPARE(m_server->requestsFor(path).size(), 4);
        QList<QByteArrayList> sent;
        for (const PageServer::Request &request : m_server->requestsFor(path)) {
            sent << request.cookie().replace(" ", "").split(';');
            std::sort(sent.last().begin(), sent.last().end());
        }
        QCOMPARE(sent,
            (QList<QByteArrayList> {
                {"mo=m1", "rblgin=1"}, {"mo=m1"}, {"mo=fresh", "rblgin=1"}, {"mo=fresh"}}));
        QCOMPARE(m_home->stage.services.locationInits, 1);
    }

    void cookiesOfPagesComeBackAndSignedOutOnesGo()
    {
        m_server->setPage("/portal/index.html", "<title>portal</title>", "text/html",
            {"Set-Cookie: tmo=renewed; Path=/; Max-Age=1000"});
        m_home->addCookie("mo", "m1", u"127.0.0.1"_s);
        m_home->show();
        QVERIFY(m_home->waitForPage(u"portal"_s));
        const auto value = [this](const char *name) {
            for (const QNetworkCookie &cookie : m_home->stage.session.cookieStorage->cookies()) {
                if (cookie.name() == name)
                    return cookie.value();
            }
            return QByteArray();
        };
        TRY_COMPARE(value("tmo"), "renewed");
        QVERIFY(value("rblgin").isEmpty());

        m_home->stage.session.account.ssoCookies.handleCookie();
        m_home->controller.logout();
        QVERIFY(!m_home->stage.loginModel.isLogin());
        QVERIFY(!m_home->stage.defaults.objectForKey(u"vantCookies"_s).isValid());
        QCOMPARE(value("mo") + value("tmo"), QByteArray());
        TRY_COMPARE(m_home->controller.webView()->url(), QUrl(u"about:blank"_s));

        m_home->controller.webView()->load(QUrl(m_server->url("/other.html")));
        QVERIFY(m_home->waitForPage(u"other"_s));
        QCOMPARE(m_server->requestsFor("/other.html").constLast().cookie(), QByteArray());
        // Nor does the history lead back to whoever was there.
        QCOMPARE(m_home->evaluate(u"history.length"_s).toInt(), 1);
    }

    void whatASessionLeavesGoesWithItAndWithItsUser()
    {
        HomeStage &stage = m_home->stage;
        m_home->show();
        QVERIFY(m_home->waitForPage(u"portal"_s));
        const QString mark
            = u"localStorage.setItem('whose', 'the former'); document.cookie = 'p=1'"_s;
        const QString read = u"localStorage.getItem('whose') + document.cookie"_s;
        m_home->evaluate(mark);
        stage.notifications.postNotificationName(
            u"GeTuiPushLoadNewWeb"_s, QVariantMap {{u"payload"_s, m_server->url("/other.html")}});
        m_home->controller.slicingUpload({});
        for (const bool sameUser : {true, false}) {
            m_home->controller.changeStatusColor(u"#ff0000"_s);
            m_home->controller.longClickSaveImgAble = true;
            stage.session.account.session.expire();
            QCOMPARE(m_home->controller.statusBarColor(), QColor(u"#3dd187"_s));
            QVERIFY(!m_home->controller.longClickSaveImgAble);
            QVERIFY(!stage.shell.actionSheet()->isVisible());
            QVERIFY(!stage.shell.alertView()->isVisible());
            TRY_COMPARE(m_home->controller.webView()->url(), QUrl(u"about:blank"_s));
            // An answer that was on its way to the page when the session ended.
            QWebEngineCookieStore *engine
                = stage.portal.pageProfiles.home()->engineProfile()->cookieStore();
            QSignalSpy added(engine, &QWebEngineCookieStore::cookieAdded);
            const auto hasCome = [&added] {
                return std::any_of(added.cbegin(), added.cend(), [](const QVariantList &of) {
                    return of[0].value<QNetworkCookie>().value() == "late";
                });
            };
            engine->setCookie(QNetworkCookie("mo", "late"), QUrl(m_server->url("/")));
            TRY_VERIFY(hasCome());
            QVERIFY(!stage.session.cookieStorage->holdsCookieNamed({"mo"}));
            engine->deleteCookie(QNetworkCookie("mo", "late"), QUrl(m_server->url("/")));
            stage.notifications.postNotificationName(u"backGeTuiPushLoadNewWeb"_s,
                QVariantMap {{u"payload"_s, m_server->url("/other.html")}});
            if (!sameUser)
                m_home->changeUser();
            stage.session.account.session.resume();
            stage.loginModel.setIsLogin(true);
            QVERIFY(m_home->waitForPage(u"portal"_s));
            TRY_COMPARE(
                m_home->evaluate(read).toString(), sameUser ? u"the formerp=1"_s : u"null"_s);
        }
        QCOMPARE(m_server->requestsFor("/other.html").size(), 0);
        const QDir folders(stage.session.folder.filePath(u"web"_s));
        const auto onlyTheNewIsThere = [&] {
            stage.mainQueue.advance(2s);
            return folders.entryList(QDir::Dirs | QDir::NoDotAndDotDot) == QStringList {u"1"_s};
        };
        TRY_VERIFY(onlyTheNewIsThere());
    }

    void aFormerUsersPagesThatAKillHasLeftGoAtTheNextStart()
    {
        const QTemporaryDir folder;
        const QDir web(folder.filePath(u"web"_s));
        for (const char *left : {"1", "2", "home"})
            QVERIFY(QDir().mkpath(web.filePath(QString::fromLatin1(left)) + u"/storage"_s));
        UserDefaults defaults(folder.filePath(u"settings.ini"_s));
        defaults.setObject(2, u"PageFolder"_s);
        const PageProfiles profiles(
            web.path(), m_home->stage.session.cookieStorage, &defaults, &m_home->stage.mainQueue);
        TRY_COMPARE(web.entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList {u"2"_s});
    }

    void showsTheErrorViewWhereNoPageCanBe_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("no page") << QString();
        QTest::newRow("nobody listens") << QString(u"closed"_s);
        QTest::newRow("a certificate nobody vouches for") << QString(u"secret"_s);
    }

    void showsTheErrorViewWhereNoPageCanBe()
    {
        QFETCH(QString, address);
        PageServer secret("127.0.0.1", PageServer::Tls::SelfSigned);
        if (address == u"secret")
            address = secret.url("/");
        else if (address == u"closed")
            address = PageServer().url("/");
        m_home->setPortal(address);
        if (!address.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a page could not be loaded"_s));
        m_home->show();
        TRY_VERIFY(m_home->controller.errorView()->isVisible());
        QCOMPARE(secret.requests().size(), 0);
        m_home->setPortal(m_server->url("/portal/index.html"));
        m_home->clickText(u"重新加载"_s);
        QVERIFY(m_home->waitForPage(u"portal"_s));
        QVERIFY(!m_home->controller.errorView()->isVisible());
        QVERIFY(m_server->requestsFor("/portal/index.html")[0].cookie().contains("rblgin=1"));
    }

    void onlyNotificationsOfAPageOpenOneAndOnlyOnAYes()
    {
        // The one that launched the program takes the portal's place.
        m_home->delegate.pushDictionary
            = QVariantMap {{u"payload"_s, m_server->url("/other.html")}};
        m_home->show();
        QVERIFY(m_home->waitForPage(u"other"_s));
        QVERIFY(!m_home->delegate.pushDictionary);

        AlertView *alert = m_home->stage.shell.alertView();
        NotificationCenter &notifications = m_home->stage.notifications;
        QVariantList nothings {QVariant(), QVariantMap()};
        for (const QVariant &payload : {QVariant(u""_s), QVariant(5),
                 QVariant(u"javascript:document.title='x'"_s), QVariant(u"file:///etc/passwd"_s)})
            nothings << QVariantMap {{u"payload"_s, payload}};
        for (const QVariant &nothing : std::as_const(nothings)) {
            for (const QString &name : {u"GeTuiPushLoadNewWeb"_s, u"backGeTuiPushLoadNewWeb"_s})
                notifications.postNotificationName(name, nothing);
            QVERIFY(!alert->isVisible());
        }
        notifications.postNotificationName(u"GeTuiPushLoadNewWeb"_s,
            QVariantMap {{u"payload"_s, m_server->url("/portal/index.html")}});
        alert->press(0);
        QCOMPARE(m_home->evaluate(u"document.title"_s).toString(), u"other"_s);
    }

    void thePushTimerRunsUntilAClientIdComes()
    {
        m_home->stage.defaults.setObject(u"getCidFailed"_s, u"GTPushCid"_s);
        m_home->show();
        QVERIFY(m_home->waitForPage(u"portal"_s));
        m_home->stage.mainQueue.advance(120s);
        QCOMPARE(m_home->delegate.pushStarts, 3);
        m_home->stage.notifications.postNotificationName(u"STOPNSTimer"_s);
        m_home->stage.mainQueue.advance(600s);
        QCOMPARE(m_home->delegate.pushStarts, 3);
    }

    void handlersAnswerByTheirContract()
    {
        m_home->stage.reachability.status = NetworkReachabilityManager::Status::NotReachable;
        m_home->show();
        QVERIFY(m_home->waitForPage(u"portal"_s));
        const auto answer = [this](const QString &name) {
            return m_home->evaluate(u"window.answers."_s + name).toString();
        };
        // The identifier is not there before the keychain has answered; the page waits for it.
        m_home->evaluate(u"call('getAppInfo')"_s);
        m_home->evaluate(u"call('detectOnline')"_s);
        TRY_COMPARE(answer(u"detectOnline"_s), u"{\"result\":0}"_s);
        QVERIFY(answer(u"getAppInfo"_s).isEmpty());
        m_home->stage.session.account.studentIdentifier.prepare();
        TRY_VERIFY(!answer(u"getAppInfo"_s).isEmpty());
        QVERIFY(!m_home->stage.session.account.studentIdentifier.uuid().isEmpty());
        QVERIFY(answer(u"getAppInfo"_s)
                    .contains(m_home->stage.session.account.studentIdentifier.uuid()));

        for (const bool onPurpose : {false, true}) {
            m_home->stage.session.account.session.resume();
            m_home->stage.loginModel.setIsLogin(true);
            m_home->stage.loginModel.setIsLoginOut(false);
            QVERIFY(m_home->waitForPage(u"portal"_s));
            // What comes with it, after it, is not served any more.
            const QString leave = onPurpose ? u"call('jump2LoginPage')"_s : u"call('logout')"_s;
            m_home->evaluate(leave + u"; call('setLongClickSaveImg', {able: 1})"_s);
            TRY_VERIFY(!m_home->stage.loginModel.isLogin());
            QVERIFY(!m_home->controller.longClickSaveImgAble);
            QCOMPARE(m_home->stage.loginModel.isLoginOut(), onPurpose);
        }
    }

    void resultsGoToTheDocumentThatAskedOrNowhere_data()
    {
        QTest::addColumn<QString>("handler");
        QTest::addColumn<QString>("function");
        QTest::newRow("code") << u"scanQrCode"_s << u"onQrResult2H5"_s;
        QTest::newRow("place") << u"getBDLocation"_s << u"onGetBDLocation"_s;
        QTest::newRow("WeChat") << u"getWechatAuthCode"_s << u"onWechatResult2H5"_s;
        QTest::newRow("upload") << u"slicingUpload"_s << u"onSlicingUpload"_s;
    }

    void resultsGoToTheDocumentThatAskedOrNowhere()
    {
        QFETCH(const QString, handler);
        QFETCH(const QString, function);
        HomeStage &stage = m_home->stage;
        WebView &view = *m_home->controller.webView();
        const auto *bridge = qobject_cast<WebViewJavascriptBridge *>(view.bridge());
        const auto ask = [this](const QString &name) {
            m_home->evaluate(u"call('%1')"_s.arg(name));
            m_home->evaluate(u"call('detectOnline')"_s);
            return waitFor([this] { return answered(u"detectOnline"_s); });
        };
        const auto authorise = [&stage](const QString &code, const QString &state) {
            stage.notifications.postNotificationName(
                u"WechatAuthCode"_s, QVariantMap {{u"code"_s, code}, {u"state"_s, state}});
        };
        m_home->show();
        QVERIFY(m_home->waitForPage(u"portal"_s));
        authorise(u"nobody asked"_s, u"8888"_s);
        QVERIFY(ask(handler));
        const auto deliver = [&, asker = bridge->document()](const QString &text) {
            for (const auto &answer : std::as_const(stage.services.answers))
                answer(text);
            authorise(text, u"8888"_s);
            authorise(u"of another state"_s, u"123"_s);
            authorise({}, u"8888"_s);
            Q_EMIT stage.portal.slicingUpload.onSlicingUpload(text, asker);
        };
        QVERIFY(!answered(function));
        deliver(u"in time"_s);
        TRY_COMPARE(m_home->evaluate(u"window.answers."_s + function).toString(),
            u"{\"result\":\"in time\"}"_s);

        QSignalSpy finished(&view, &WebView::didFinishNavigation);
        view.load(QUrl(m_server->url("/portal/index.html?again")));
        QVERIFY(finished.wait(patienceMs));
        deliver(u"late"_s);
        QVERIFY(ask(u"getRequestUrl"_s));
        QVERIFY(!answered(function));
    }

private:
    bool answered(const QString &name)
    {
        return m_home->evaluate(u"'%1' in window.answers"_s.arg(name)).toBool();
    }
};

VANT_WEB_TEST_MAIN(HomeContainerTest)
#include "HomeContainerTest.moc"
