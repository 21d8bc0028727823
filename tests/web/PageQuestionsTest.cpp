#include "platform/NotificationService.h"
#include "platform/PrivateBus.h"
#include "platform/push/DesktopNotifications.h"
#include "support/Patience.h"
#include "support/Table.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"
#include "web/questions/PageNotifications.h"

#include <QClipboard>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using Matter = PagePermissions::Matter;

//! What pages ask their user for, and what they get.
class PageQuestionsTest : public QObject
{
    Q_OBJECT

private:
    PrivateBus m_bus;
    std::unique_ptr<PageHarness> m_page;

    AlertView *alert() { return m_page->alert; }
    QUrl origin() const { return QUrl(m_page->server.url("/")); }

    //! Starts what gives a promise, in the page.
    void begin(const QString &promise)
    {
        m_page->evaluate(u"window.end = ''; Promise.resolve(%1).then(() => end = 'granted',"
                         "  e => end = String(e.name || e.code || e)); 0"_s.arg(promise));
    }
    QString end() { return m_page->evaluate(u"end"_s).toString(); }
    //! Whether it ends like this, and nobody is asked.
    bool endsUnasked(const QString &promise, const QString &how)
    {
        begin(promise);
        return waitFor([&] { return alert()->isVisible() || end() == how; }) && end() == how;
    }
    bool isAsked(const QString &promise)
    {
        begin(promise);
        return waitFor([&] { return alert()->isVisible(); });
    }

    static inline const QString camera
        = QStringLiteral("navigator.mediaDevices.getUserMedia({ video: true })");
    static inline const QString notification = QStringLiteral(
        "Notification.requestPermission().then(r => { if (r !== 'granted') throw r })");

private Q_SLOTS:
    void init() { m_page = std::make_unique<PageHarness>(); }
    void cleanup() { m_page.reset(); }

    void whatIsAnsweredIsRememberedForTheOrigin_data()
    {
        using Row = Table<QString, QString, QList<Matter>, QString, QString>;
        const QString media = u"navigator.mediaDevices.getUserMedia({ %1 })"_s;
        const QString noSource = u"2"_s; // what the page is told where it may ask the device
        Row::rows({
            {"camera", media.arg(u"video: true"_s), u"想使用摄像头"_s, {Matter::Camera},
                u"granted"_s, u"NotAllowedError"_s},
            {"microphone", media.arg(u"audio: true"_s), u"想使用麦克风"_s, {Matter::Microphone},
                u"granted"_s, u"NotAllowedError"_s},
            {"both", media.arg(u"video: true, audio: true"_s), u"想使用摄像头和麦克风"_s,
                {Matter::Camera, Matter::Microphone}, u"granted"_s, u"NotAllowedError"_s},
            {"position", u"new Promise((y, n) => navigator.geolocation.getCurrentPosition(y, n))"_s,
                u"想获取你的位置"_s, {Matter::Position}, noSource, u"1"_s},
            {"notifications", notification, u"想向你发送通知"_s, {Matter::Notifications},
                u"granted"_s, u"denied"_s},
        });
    }

    void whatIsAnsweredIsRememberedForTheOrigin()
    {
        const auto [promise, wish, matters, granted, refused]
            = Table<QString, QString, QList<Matter>, QString, QString>::row();
        QVERIFY(m_page->loadPage("x"));
        for (const bool allow : {true, false}) {
            QVERIFY(isAsked(promise));
            QCOMPARE(alert()->title(), m_page->host());
            QCOMPARE(alert()->message(), wish);
            QCOMPARE(end(), QString());
            alert()->press(allow ? 1 : 0);
            const QString expected = allow ? granted : refused;
            TRY_COMPARE(end(), expected);
            QVERIFY(endsUnasked(promise, expected));
            QVERIFY(m_page->loadPage("other"));
            QVERIFY(endsUnasked(promise, expected));
            QCOMPARE(m_page->permissions.answers().size(), matters.size());
            for (const Matter matter : matters) {
                QCOMPARE(m_page->permissions.answer(origin(), matter), std::optional(allow));
                m_page->permissions.takeBack(m_page->permissions.answers().first().origin, matter);
            }
        }
        QVERIFY(m_page->permissions.answers().isEmpty());
    }

    void whoClosesAQuestionIsAskedAgainByTheNextDocument()
    {
        QVERIFY(m_page->loadPage("x"));
        QVERIFY(isAsked(camera));
        QVERIFY(alert()->cancel());
        TRY_COMPARE(end(), u"NotAllowedError"_s);
        QVERIFY(endsUnasked(camera, u"NotAllowedError"_s));
        QVERIFY(m_page->permissions.answers().isEmpty());
        QVERIFY(m_page->loadPage("y"));
        QVERIFY(isAsked(camera));
        // It goes with its document.
        m_page->webView.load(QUrl(m_page->page("<title>other</title>", "/other.html")));
        TRY_VERIFY(!alert()->isVisible());
        QVERIFY(waitForTitle(m_page->webView, u"other"_s));
        QVERIFY(m_page->permissions.answers().isEmpty());
    }

    void nobodyIsAskedForWhatIsNeverGranted()
    {
        QVERIFY(m_page->loadPage("x"));
        for (const char *promise :
            {"navigator.mediaDevices.getDisplayMedia()", "navigator.clipboard.readText()",
                "navigator.requestMIDIAccess({ sysex: true })"}) {
            begin(QString::fromLatin1(promise));
            TRY_VERIFY(alert()->isVisible() || !end().isEmpty());
            QVERIFY2(end().endsWith(u"Error"), qPrintable(QLatin1String(promise) + end()));
        }
        // Nor before somebody has agreed and signed in.
        m_page->isSignedIn = false;
        QVERIFY(endsUnasked(camera, u"NotAllowedError"_s));
    }

    void onlyAnOriginThatNobodyCanForgeAsks_data()
    {
        Table<QString, bool>::rows({
            {"secure", u"https://h.example"_s, true},
            {"plain", u"http://h.example"_s, false},
            {"loopback", u"http://127.0.0.1:80/x"_s, true},
            {"loopback by name", u"http://localhost:8080"_s, true},
            {"a name that begins like it", u"http://127.0.0.1.example"_s, false},
            {"file", u"file:///tmp/x"_s, false},
            {"none", QString(), false},
        });
    }

    void onlyAnOriginThatNobodyCanForgeAsks()
    {
        const auto [asker, may] = Table<QString, bool>::row();
        QCOMPARE(m_page->permissions.mayAsk(QUrl(asker)), may);
    }

    void answersOutliveTheProgramAndNotTheUser()
    {
        m_page->permissions.remember(origin(), Matter::Notifications, true);
        m_page->permissions.remember(QUrl(u"https://h.example:443/"_s), Matter::Camera, false);
        UserDefaults defaults(m_page->folder.filePath(u"settings.ini"_s));
        PagePermissions later(&defaults, [] { return true; });
        const QString own = m_page->server.url("");
        const QList<PagePermissions::Answer> all {
            {own, Matter::Notifications, true}, {u"https://h.example"_s, Matter::Camera, false}};
        QCOMPARE(later.answers(), all);
        // The page finds it so from the beginning.
        QVERIFY(m_page->loadPage("x"));
        TRY_COMPARE(m_page->evaluate(u"Notification.permission"_s), u"granted"_s);
        m_page->permissions.takeBack(own, Matter::Notifications);
        TRY_COMPARE(m_page->evaluate(u"Notification.permission"_s), u"denied"_s);
        later.clear();
        QVERIFY(PagePermissions(&defaults, [] { return true; }).answers().isEmpty());
    }

    void notificationsOfPagesAreTheDesktops()
    {
        NotificationService desktop;
        DesktopNotifications posted(u"学校"_s, u"vant-student"_s);
        PageNotifications notifications(&posted, &m_page->permissions);
        notifications.listenTo(m_page->profile.engineProfile());
        QSignalSpy activated(&notifications, &PageNotifications::activated);
        m_page->permissions.remember(origin(), Matter::Notifications, true);
        QVERIFY(m_page->loadPage("<script>const told = []; function tell(name, options) {"
                                 "  const n = new Notification(name, options);"
                                 "  for (const what of ['show', 'click', 'close', 'error'])"
                                 "    n.addEventListener(what, () => told.push(name + what));"
                                 "  return n }</script>"));
        TRY_COMPARE(m_page->evaluate(u"Notification.permission"_s), u"granted"_s);
        const auto told = [this] { return m_page->evaluate(u"told.join(' ')"_s).toString(); };
        m_page->evaluate(u"tell('a', { body: '<周一>' }); 0"_s);
        TRY_COMPARE(desktop.shown.size(), 1);
        QCOMPARE(desktop.shown[0], u"a|&lt;周一&gt;\n%1|default"_s.arg(m_page->host()));
        TRY_COMPARE(told(), u"ashow"_s);
        Q_EMIT desktop.ActionInvoked(1, u"default"_s);
        TRY_COMPARE(told(), u"ashow aclick aclose"_s);
        QCOMPARE(activated.size(), 1);

        m_page->evaluate(u"told.length = 0; tell('b'); 0"_s);
        TRY_COMPARE(desktop.shown.size(), 2);
        Q_EMIT desktop.NotificationClosed(2, 2);
        TRY_COMPARE(told(), u"bshow bclose"_s);

        m_page->evaluate(u"tell('c', { tag: 't' }); 0"_s);
        TRY_COMPARE(desktop.shown.size(), 3);
        m_page->evaluate(u"window.d = tell('d', { tag: 't' }); 0"_s);
        TRY_COMPARE(desktop.shown.size(), 4);
        TRY_COMPARE(desktop.closed, QList<uint> {3});
        m_page->evaluate(u"d.close()"_s);
        TRY_COMPARE(desktop.closed, (QList<uint> {3, 4}));

        m_page->evaluate(u"tell('e'); 0"_s);
        TRY_COMPARE(desktop.shown.size(), 5);
        notifications.withdrawAll();
        TRY_COMPARE(desktop.closed, (QList<uint> {3, 4, 5}));
        QCOMPARE(activated.size(), 1);

        m_page->permissions.takeBack(m_page->server.url(""), Matter::Notifications);
        m_page->evaluate(u"told.length = 0; tell('f'); 0"_s);
        TRY_COMPARE(told(), u"ferror"_s);
        QCOMPARE(desktop.shown.size(), 5);
    }

    void aClickMayWriteToTheClipboard()
    {
        QVERIFY(m_page->loadPage("<body style='height: 800px'><script>window.end = '';"
                                 "onclick = () => navigator.clipboard.writeText('作业')"
                                 "  .then(() => end = 'done', e => end = e.name)</script>"));
        // A view that has just come may miss a click.
        QVERIFY(waitFor([&] {
            QTest::mouseClick(&m_page->window, Qt::LeftButton, {}, {100, 100});
            return waitFor([&] { return !end().isEmpty(); }, 1000);
        }));
        QCOMPARE(end(), u"done"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"作业"_s);
    }

    void aServerAsksForALogin()
    {
        m_page->server.setPage("/secret.html", "<title>secret</title>", "text/html",
            {"WWW-Authenticate: Basic realm=\"Class 3\""});
        const QUrl secret(m_page->server.url("/secret.html"));
        const auto sent = [this] {
            return m_page->server.requestsFor("/secret.html").last().headers.value("authorization");
        };
        m_page->webView.load(secret);
        TRY_VERIFY(alert()->isVisible() && alert()->hasPassword());
        QCOMPARE(alert()->title(), m_page->host());
        QCOMPARE(alert()->message(), u"此网站需要登录：“Class 3”"_s);
        // Who leaves it sees what the server has to say to strangers.
        QVERIFY(m_page->shell.back());
        QVERIFY(!alert()->isVisible());
        QVERIFY(waitForTitle(m_page->webView, u"secret"_s));
        QVERIFY(sent().isNull());

        m_page->webView.load(secret);
        TRY_VERIFY(alert()->isVisible());
        m_page->webView.load(QUrl(m_page->page("<title>other</title>", "/other.html")));
        TRY_VERIFY(!alert()->isVisible());
        QVERIFY(waitForTitle(m_page->webView, u"other"_s));

        m_page->webView.load(secret);
        TRY_VERIFY(alert()->isVisible());
        alert()->setInput(u"林"_s);
        alert()->setPassword(u"a:b"_s);
        alert()->press(1);
        QVERIFY(waitForTitle(m_page->webView, u"secret"_s));
        QCOMPARE(sent(), "Basic " + u"林:a:b"_s.toUtf8().toBase64());
    }

    void whoAsksForALoginIsNamed_data()
    {
        Table<QString, QString, QString, QString, QString>::rows({
            {"secure", u"https://h.example/x"_s, QString(), QString(), u"h.example"_s,
                u"此网站需要登录"_s},
            {"plain", u"http://h.example/x"_s, u"a"_s, QString(), u"h.example"_s,
                u"此网站需要登录：“a”\n连接未加密，密码可能被他人看到。"_s},
            {"proxy", u"http://h.example/x"_s, u"a"_s, u"proxy.example"_s, u"proxy.example"_s,
                u"代理服务器需要登录：“a”"_s},
        });
    }

    void whoAsksForALoginIsNamed()
    {
        const auto [address, realm, proxy, title, message]
            = Table<QString, QString, QString, QString, QString>::row();
        QVERIFY(m_page->webView.dialogs()->showLogin(QUrl(address), realm, proxy) > 0);
        QCOMPARE(alert()->title(), title);
        QCOMPARE(alert()->message(), message);
    }

    void aColourIsChosen_data()
    {
        Table<QString, int, QString>::rows({
            {"another", u"#ff6b6b"_s, 1, u"#ff6b6b"_s},
            {"none", u"#ff6b6b"_s, 0, u"#3dd187"_s},
            {"nonsense", u"#ff6b6"_s, 1, u"#3dd187"_s},
            {"back", u"#ff6b6b"_s, AlertView::cancelled, u"#3dd187"_s},
        });
    }

    void aColourIsChosen()
    {
        const auto [text, button, chosen] = Table<QString, int, QString>::row();
        QVERIFY(m_page->loadPage("<input id=c type=color value='#3dd187' style='position: absolute;"
                                 "  left: 0; top: 0; width: 200px; height: 200px'>"));
        // A view that has just come may miss a click.
        QVERIFY(waitFor([&] {
            QTest::mouseClick(&m_page->window, Qt::LeftButton, {}, {100, 100});
            return waitFor([&] { return alert()->isVisible(); }, 1000);
        }));
        QVERIFY(alert()->colours().contains(alert()->input()));
        QCOMPARE(alert()->title(), m_page->host());
        QCOMPARE(alert()->input(), u"#3dd187"_s);
        alert()->setInput(text);
        if (button == AlertView::cancelled)
            QVERIFY(m_page->shell.back());
        else
            alert()->press(button);
        QVERIFY(!alert()->isVisible());
        TRY_COMPARE(m_page->evaluate(u"document.getElementById('c').value"_s), chosen);
    }
};

int main(int argc, char *argv[])
{
    // A device of the engine's own, which nothing of the machine is asked for.
    const QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags + " --use-fake-device-for-media-stream");
    EngineSetup::beforeApplication();
    QGuiApplication application(argc, argv);
    PageQuestionsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "PageQuestionsTest.moc"
