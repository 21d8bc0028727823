#include "support/ManualMainQueue.h"
#include "support/PageServer.h"
#include "web/HomeHarness.h"
#include "web/WebTestMain.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class HomeContainerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theFirstRequestCarriesTheSessionAndTheMarker();
    void everyLoginLoadsThePortalAgain();
    void cookiesOfPagesComeBackAndSignedOutOnesGo();
    void withoutAPageTheErrorViewOffersAnotherTry();
    void aServerThatCannotBeReachedShowsTheErrorView();
    void aCertificateNobodyVouchesForIsRefused();
    void aRefusalWithAPageOfItsOwnIsAPage();
    void aNewWindowOpensInThisViewAndLinksGoToTheSystem();
    void notificationsOpenTheirPages();
    void theLaunchNotificationTakesThePortalsPlace();
    void thePushTimerRunsUntilAClientIdComes();
    void aLongPressSavesTheImageWhereThePageAllowsIt();
    void handlersAnswerByTheirContract();
    void theWechatCodeGoesToThePageThatAsked();

private:
    std::unique_ptr<PageServer> m_server;
    std::unique_ptr<HomeHarness> m_home;
};

void HomeContainerTest::init()
{
    m_home.reset();
    m_server = std::make_unique<PageServer>();
    m_server->setPage("/portal/index.html",
        "<!doctype html><title>portal</title><script>"
        "window.cookieAtStart = document.cookie; window.answers = {};"
        "function call(name, data) { WebViewJavascriptBridge.callHandler(name, data,"
        "  answer => { window.answers[name] = JSON.stringify(answer) }) }"
        "for (const name of ['onWechatResult2H5'])"
        "  WebViewJavascriptBridge.registerHandler(name, data => { window.answers[name] = JSON.stringify(data) })"
        "</script><img src=/portal/index.html/pixel.png><script src=/portal/more.js></script>");
    m_server->setPage("/other.html", "<title>other</title>");
    m_home = std::make_unique<HomeHarness>();
    m_home->setPortal(m_server->url("/portal/index.html"));
}

void HomeContainerTest::theFirstRequestCarriesTheSessionAndTheMarker()
{
    m_home->addCookie("mo", "m1", u"127.0.0.1"_s);
    m_home->addCookie("tmo", "t1", u"127.0.0.1"_s);
    m_home->addCookie("elsewhere", "x", u"127.0.0.9"_s);
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));

    const auto pages = m_server->requestsFor("/portal/index.html");
    QCOMPARE(pages.size(), 1);
    QByteArrayList sent = pages[0].cookie().split(';');
    for (QByteArray &cookie : sent)
        cookie = cookie.trimmed();
    std::sort(sent.begin(), sent.end());
    QCOMPARE(sent, (QByteArrayList {"mo=m1", "rblgin=1", "tmo=t1"}));
    QVERIFY(pages[0].headers.value("user-agent").endsWith(" VANT-IOS iphone"));
    QVERIFY(pages[0].headers.value("user-agent").startsWith("Mozilla/5.0"));

    QVERIFY(!m_home->evaluate(u"window.cookieAtStart"_s).toString().contains(u"rblgin"));
    const auto scripts = m_server->requestsFor("/portal/more.js");
    QCOMPARE(scripts.size(), 1);
    QVERIFY(!scripts[0].cookie().contains("rblgin") && scripts[0].cookie().contains("mo=m1"));

    // Gone with the end of the load: the same page asked for by the page itself goes without it.
    m_home->evaluate(u"fetch('/portal/index.html?again').then(r => r.text())"_s);
    QTRY_COMPARE(m_server->requestsFor("/portal/index.html").size(), 2);
    QVERIFY(!m_server->requestsFor("/portal/index.html")[1].cookie().contains("rblgin"));
}

void HomeContainerTest::everyLoginLoadsThePortalAgain()
{
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    m_home->addCookie("mo", "fresh", u"127.0.0.1"_s);
    m_home->login.setIsLogin(true);
    QTRY_COMPARE(m_server->requestsFor("/portal/index.html").size(), 2);
    const QByteArray cookie = m_server->requestsFor("/portal/index.html")[1].cookie();
    QVERIFY2(cookie.contains("mo=fresh") && cookie.contains("rblgin=1"), cookie);
}

void HomeContainerTest::cookiesOfPagesComeBackAndSignedOutOnesGo()
{
    m_server->setPage("/portal/index.html", "<title>portal</title>", "text/html",
        {"Set-Cookie: tmo=renewed; Path=/; Max-Age=1000"});
    m_home->addCookie("mo", "m1", u"127.0.0.1"_s);
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    const auto value = [this](const char *name) {
        for (const QNetworkCookie &cookie : m_home->cookies.cookies()) {
            if (cookie.name() == name)
                return cookie.value();
        }
        return QByteArray();
    };
    QTRY_COMPARE(value("tmo"), "renewed");
    QVERIFY(value("rblgin").isEmpty());

    m_home->ssoCookies.handleCookie();
    m_home->delegate.urlStr = u"http://h/"_s;
    m_home->controller.logout();
    QVERIFY(!m_home->login.isLogin());
    QVERIFY(m_home->delegate.urlStr.isNull());
    QVERIFY(!m_home->defaults.objectForKey(u"vantCookies"_s).isValid());
    QCOMPARE(value("mo") + value("tmo"), QByteArray());
    QTRY_COMPARE(m_home->controller.webView()->url(), QUrl(u"about:blank"_s));

    m_home->controller.webView()->load(QUrl(m_server->url("/other.html")));
    QVERIFY(m_home->waitForPage(u"other"_s));
    QCOMPARE(m_server->requestsFor("/other.html").constLast().cookie(), QByteArray());
}

void HomeContainerTest::withoutAPageTheErrorViewOffersAnotherTry()
{
    m_home->setPortal({});
    m_home->show();
    QTRY_VERIFY(m_home->controller.errorViewVisible());
    m_home->setPortal(m_server->url("/portal/index.html"));
    m_home->clickText(u"重新加载"_s);
    QVERIFY(m_home->waitForPage(u"portal"_s));
    QVERIFY(!m_home->controller.errorViewVisible());
    QVERIFY(m_server->requestsFor("/portal/index.html")[0].cookie().contains("rblgin=1"));
}

void HomeContainerTest::aServerThatCannotBeReachedShowsTheErrorView()
{
    int closedPort = 0;
    {
        PageServer gone;
        closedPort = gone.port();
    }
    m_home->setPortal(u"http://127.0.0.1:%1/"_s.arg(closedPort));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a page could not be loaded"_s));
    m_home->show();
    QTRY_VERIFY(m_home->controller.errorViewVisible());
}

void HomeContainerTest::aCertificateNobodyVouchesForIsRefused()
{
    PageServer secret("127.0.0.1", PageServer::Tls::SelfSigned);
    secret.setPage("/", "<title>secret</title>");
    m_home->setPortal(secret.url("/"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a page could not be loaded"_s));
    m_home->show();
    QTRY_VERIFY(m_home->controller.errorViewVisible());
    QCOMPARE(secret.requests().size(), 0);
}

void HomeContainerTest::aRefusalWithAPageOfItsOwnIsAPage()
{
    m_home->setPortal(m_server->url("/missing"));
    m_home->show();
    QTRY_COMPARE(m_home->evaluate(u"document.body.innerText"_s).toString(), u"nothing here"_s);
    QVERIFY(!m_home->controller.errorViewVisible());
}

void HomeContainerTest::aNewWindowOpensInThisViewAndLinksGoToTheSystem()
{
    m_server->setPage("/portal/index.html",
        "<title>portal</title><a id=new target=_blank href=/other.html>n</a>"
        "<a id=tel href=tel:10086>t</a><a id=app href=otherapp://x>a</a>");
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));

    m_home->urlOpener.handled = {u"tel"_s};
    m_home->evaluate(u"document.getElementById('tel').click()"_s);
    QTRY_COMPARE(m_home->urlOpener.opened, QList<QUrl> {QUrl(u"tel:10086"_s)});
    m_home->urlOpener.handled = {u"tel"_s, u"telprompt"_s, u"otherapp"_s};
    m_home->evaluate(u"document.getElementById('tel').click()"_s);
    QTRY_COMPARE(m_home->urlOpener.opened.value(1), QUrl(u"telprompt:10086"_s));
    // A program that nobody named is neither opened nor does the page go.
    m_home->evaluate(u"document.getElementById('app').click()"_s);
    m_home->evaluate(u"document.getElementById('new').click()"_s);
    QVERIFY(m_home->waitForPage(u"other"_s));
    QCOMPARE(m_home->urlOpener.opened.size(), 2);
    QVERIFY(!m_home->controller.errorViewVisible());
}

void HomeContainerTest::notificationsOpenTheirPages()
{
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    const QVariantMap userInfo {{u"payload"_s, m_server->url("/other.html")}};
    AlertView *alert = m_home->shell.alertView();

    for (const QVariant &nothing : {QVariant(), QVariant(QVariantMap()),
             QVariant(QVariantMap {{u"payload"_s, u""_s}}), QVariant(QVariantMap {{u"payload"_s, 5}}),
             QVariant(QVariantMap {{u"payload"_s, u"javascript:document.title='x'"_s}}),
             QVariant(QVariantMap {{u"payload"_s, u"file:///etc/passwd"_s}})}) {
        m_home->notifications.postNotificationName(u"GeTuiPushLoadNewWeb"_s, nothing);
        m_home->notifications.postNotificationName(u"backGeTuiPushLoadNewWeb"_s, nothing);
        QVERIFY(!alert->isVisible());
    }

    m_home->notifications.postNotificationName(u"GeTuiPushLoadNewWeb"_s, userInfo);
    QCOMPARE(alert->title(), u"提醒"_s);
    QCOMPARE(alert->message(), u"你收到一条消息，是否点击查看？"_s);
    QCOMPARE(alert->buttons(), (QStringList {u"取消"_s, u"确定"_s}));
    alert->press(0);
    QCOMPARE(m_home->evaluate(u"document.title"_s).toString(), u"portal"_s);

    m_home->login.userModel = UserModel();
    m_home->login.userModel->user_type = UserModel::teacherType;
    m_home->notifications.postNotificationName(u"GeTuiPushLoadNewWeb"_s, userInfo);
    QCOMPARE(alert->message(), u"您收到一条消息，是否点击查看？"_s);
    alert->press(1);
    QVERIFY(m_home->waitForPage(u"other"_s));

    m_home->notifications.postNotificationName(u"backGeTuiPushLoadNewWeb"_s,
        QVariantMap {{u"payload"_s, m_server->url("/portal/index.html")}});
    QVERIFY(m_home->waitForPage(u"portal"_s));
    QVERIFY(!alert->isVisible());
}

void HomeContainerTest::theLaunchNotificationTakesThePortalsPlace()
{
    m_home->delegate.pushDictionary = QVariantMap {{u"payload"_s, m_server->url("/other.html")}};
    m_home->show();
    QVERIFY(m_home->waitForPage(u"other"_s));
    QVERIFY(!m_home->delegate.pushDictionary);
}

void HomeContainerTest::thePushTimerRunsUntilAClientIdComes()
{
    m_home->defaults.setObject(u"getCidFailed"_s, u"GTPushCid"_s);
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    QCOMPARE(m_home->delegate.pushStarts, 1);
    m_home->mainQueue.advance(120s);
    QCOMPARE(m_home->delegate.pushStarts, 3);
    m_home->notifications.postNotificationName(u"STOPNSTimer"_s);
    m_home->mainQueue.advance(600s);
    QCOMPARE(m_home->delegate.pushStarts, 3);
}

void HomeContainerTest::aLongPressSavesTheImageWhereThePageAllowsIt()
{
    QByteArray png;
    QBuffer buffer(&png);
    QImage image(60, 60, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(&buffer, "PNG");
    m_server->setPage("/red.png", png, "image/png");
    m_server->setPage("/portal/index.html",
        "<title>portal</title><body style=margin:0><img src=/red.png style='width:300px;height:300px'>"
        "<script>function able(x) { WebViewJavascriptBridge.callHandler('setLongClickSaveImg', {able: x}) }"
        "</script>");
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    ActionSheet *sheet = m_home->shell.actionSheet();

    const auto enable = [this](const QString &able, bool enabled) {
        m_home->controller.longClickSaveImgAble = !enabled;
        m_home->evaluate(u"able(%1)"_s.arg(able));
        return QTest::qWaitFor(
            [this, enabled] { return m_home->controller.longClickSaveImgAble == enabled; });
    };
    for (const QString &off : {u"0"_s, u"2"_s, u"'true'"_s, u"null"_s, u"{}"_s})
        QVERIFY2(enable(off, false), qUtf8Printable(off));
    m_home->controller.longPressed({150, 150});
    QVERIFY(enable(u"'1'"_s, true));
    QVERIFY(enable(u"1"_s, true));
    QVERIFY(!sheet->isVisible());

    // A point without an image offers nothing; the press itself is a real one.
    m_home->controller.longPressed({150, 600});
    m_home->evaluate(u"1"_s);
    QVERIFY(!sheet->isVisible());
    QTest::mousePress(&m_home->window, Qt::LeftButton, {}, {150, 150});
    QTRY_VERIFY(sheet->isVisible());
    QTest::mouseRelease(&m_home->window, Qt::LeftButton, {}, {150, 150});
    QCOMPARE(sheet->actions(), QStringList {u"保存图片"_s});
    QCOMPARE(sheet->cancelTitle(), u"取消"_s);
    sheet->choose(0);
    QTRY_COMPARE(m_home->shell.toast()->text(), u"保存成功"_s);
    const QDir album(m_home->folder.filePath(u"album"_s));
    QCOMPARE(album.entryList(QDir::Files).size(), 1);
    QCOMPARE(QImage(album.filePath(album.entryList(QDir::Files).constFirst())).size(), QSize(60, 60));

    ImageSaver saver(&m_home->network, &m_home->album, m_home->shell.toast());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"an image was not saved"_s));
    saver.saveImageToDiskWithUrl(m_server->url("/other.html"));
    QTRY_COMPARE(m_home->shell.toast()->text(), u"保存失败"_s);
    QCOMPARE(album.entryList(QDir::Files).size(), 1);
}

void HomeContainerTest::handlersAnswerByTheirContract()
{
    m_home->login.setSiteCode(u"school01"_s);
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    const auto answer = [this](const QString &name, const QString &data = u"null"_s) {
        m_home->evaluate(u"call('%1', %2)"_s.arg(name, data));
        const QString script = u"window.answers['%1'] || ''"_s.arg(name);
        QString text;
        const bool answered = QTest::qWaitFor([&] {
            text = m_home->evaluate(script).toString();
            return !text.isEmpty();
        });
        return answered ? text : u"no answer"_s;
    };
    QCOMPARE(answer(u"detectOnline"_s), R"({"result":1})"_L1);
    m_home->reachability.status = NetworkReachabilityManager::Status::NotReachable;
    m_home->evaluate(u"delete window.answers.detectOnline"_s);
    QCOMPARE(answer(u"detectOnline"_s), R"({"result":0})"_L1);
    QCOMPARE(answer(u"getRequestUrl"_s), u"{\"result\":\"https://portal.vant.example/school01\"}"_s);
    // The identifier is not there before the keychain has answered; the page waits, and gets text.
    m_home->evaluate(u"call('getAppInfo')"_s);
    m_home->identifier.prepare();
    QVERIFY(answer(u"getAppInfo"_s).contains(QString(R"x(\"client_code\": \"%1\")x"_L1).arg(m_home->identifier.uuid())));
    QCOMPARE(m_home->identifier.uuid().size(), 36);

    m_home->evaluate(u"call('changeStatusColor', {color: '#ff0000'})"_s);
    QTRY_COMPARE(m_home->controller.statusBarColor(), QColor(Qt::red));
    for (const QString &wrong : {u"{color: 5}"_s, u"'x'"_s, u"null"_s, u"[1]"_s})
        m_home->evaluate(u"call('changeStatusColor', %1)"_s.arg(wrong));

    m_home->evaluate(u"call('slicingUpload', {siteURl: 'x'})"_s);
    ActionSheet *sheet = m_home->shell.actionSheet();
    QTRY_VERIFY(sheet->isVisible());
    QCOMPARE(sheet->message(), u"请选择上传方式"_s);
    QCOMPARE(sheet->actions(), (QStringList {u"拍照/相册"_s, u"录像/视频"_s}));
    sheet->cancel();

    m_home->evaluate(u"call('quickLoginApp', {href: '%1'})"_s.arg(m_server->url("/other.html")));
    QVERIFY(m_home->waitForPage(u"other"_s));
    QCOMPARE(m_home->delegate.silentLogins, 1);

    m_home->login.setIsLoginOut(false);
    m_home->controller.webView()->load(QUrl(m_server->url("/portal/index.html")));
    QVERIFY(m_home->waitForPage(u"portal"_s));
    m_home->evaluate(u"call('logout')"_s);
    QTRY_VERIFY(!m_home->login.isLogin());
    QVERIFY(!m_home->login.isLoginOut());
    m_home->login.setIsLogin(true);
    QVERIFY(m_home->waitForPage(u"portal"_s));
    m_home->evaluate(u"call('jump2LoginPage')"_s);
    QTRY_VERIFY(m_home->login.isLoginOut());
    QVERIFY(!m_home->login.isLogin());
}

void HomeContainerTest::theWechatCodeGoesToThePageThatAsked()
{
    m_home->show();
    QVERIFY(m_home->waitForPage(u"portal"_s));
    const auto post = [this](const QString &code, const QString &state) {
        m_home->notifications.postNotificationName(
            u"WechatAuthCode"_s, QVariantMap {{u"code"_s, code}, {u"state"_s, state}});
    };
    post(u"wrong"_s, u"123"_s);
    post(u""_s, u"8888"_s);
    post(u"right"_s, u"8888"_s);
    QTRY_COMPARE(m_home->evaluate(u"window.answers.onWechatResult2H5"_s).toString(),
        R"({"result":"right"})"_L1);
}

VANT_WEB_TEST_MAIN(HomeContainerTest)
#include "HomeContainerTest.moc"
