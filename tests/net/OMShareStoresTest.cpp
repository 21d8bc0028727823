#include "net/OMShareGlobalInfo.h"
#include "net/OMShareUserInfo.h"
#include "platform/UserDefaults.h"

#include <QTemporaryDir>
#include <QTest>

//! The keys and shapes on disk are what is asserted: other versions of the program read them.
class OMShareStoresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cookieParametersSurviveARestart();
    void missingCookieParametersAreNull();
    void userInfoIsWrittenThroughUnderItsKeys();

private:
    QTemporaryDir m_folder;
    QString m_file = m_folder.filePath(u"settings.ini"_qs);
};

void OMShareStoresTest::cookieParametersSurviveARestart()
{
    {
        UserDefaults defaults(m_file);
        OMShareGlobalInfo info(&defaults);
        info.httpCookieParam = {u"s=1; 中"_qs, u"JSESSION"_qs, u"c-9"_qs};
        info.saveHttpCookieParam();
    }
    UserDefaults defaults(m_file);
    QCOMPARE(defaults.objectForKey(u"k_HttpCookieParam"_qs).toMap(),
        (QVariantMap {{u"SSO_COOKIE"_qs, u"s=1; 中"_qs},
            {u"_SESSIONID_COOKIE_NAME"_qs, u"JSESSION"_qs}, {u"ck_ClientId"_qs, u"c-9"_qs}}));
    OMShareGlobalInfo info(&defaults);
    info.loadHttpCookieParam();
    QCOMPARE(info.httpCookieParam, (HttpCookieParam {u"s=1; 中"_qs, u"JSESSION"_qs, u"c-9"_qs}));
}

void OMShareStoresTest::missingCookieParametersAreNull()
{
    UserDefaults defaults(m_folder.filePath(u"empty.ini"_qs));
    OMShareGlobalInfo info(&defaults);
    info.httpCookieParam.ckClientId = u"stale"_qs;
    info.loadHttpCookieParam();
    QVERIFY(info.httpCookieParam.ckClientId.isNull());
    QVERIFY(info.dicHttpCookieParam().isEmpty());
}

void OMShareStoresTest::userInfoIsWrittenThroughUnderItsKeys()
{
    UserDefaults defaults(m_file);
    OMShareUserInfo info(&defaults);
    info.setUser_id(u"7"_qs);
    info.setUserName(u"小明"_qs);
    info.setHead_url(u"http://h/1.png"_qs);
    info.setUserSex(u"1"_qs);
    info.setMyMovieCount(3);
    info.setTheLastTime(u"1700000000"_qs);
    info.setIsLogin(true);

    UserDefaults restarted(m_file);
    const QMap<QString, QVariant> expected {{u"user_id"_qs, u"7"_qs}, {u"userName"_qs, u"小明"_qs},
        {u"head_url"_qs, u"http://h/1.png"_qs}, {u"userSex"_qs, u"1"_qs},
        {u"myMovieCount"_qs, 3}, {u"theLastTime"_qs, u"1700000000"_qs}, {u"isLogin"_qs, true}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        QCOMPARE(restarted.objectForKey(it.key()).toString(), it.value().toString());
    QVERIFY(!restarted.boolForKey(u"isLoginForST"_qs));

    const OMShareUserInfo read(&restarted);
    QCOMPARE(read.user_id(), u"7"_qs);
    QCOMPARE(read.userName(), u"小明"_qs);
    QCOMPARE(read.head_url(), u"http://h/1.png"_qs);
    QCOMPARE(read.userSex(), u"1"_qs);
    QCOMPARE(read.myMovieCount(), 3);
    QCOMPARE(read.theLastTime(), u"1700000000"_qs);
    QVERIFY(read.isLogin());
}

QTEST_GUILESS_MAIN(OMShareStoresTest)
#include "OMShareStoresTest.moc"
