#include "platform/NotificationCenter.h"

#include <QTest>

using namespace Qt::StringLiterals;

class NotificationCenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsObserversOfTheNameInTheirOrder();
    void anObserverGoesWithItsContext();
    void aContextMayGoWhileBeingTold();
};

void NotificationCenterTest::callsObserversOfTheNameInTheirOrder()
{
    NotificationCenter center;
    QStringList told;
    const auto observe = [&](const QString &name, const QString &who) {
        center.addObserver(name, this,
            [&told, who](const QVariant &object) { told << who + object.toString(); });
    };
    observe(u"WechatAuthCode"_s, u"first "_s);
    observe(u"wechatauthcode"_s, u"other name "_s);
    observe(u"WechatAuthCode"_s, u"second "_s);
    observe(u"WechatAuthCode"_s, u"second "_s);

    center.postNotificationName(u"WechatAuthCode"_s, u"x"_s);
    QCOMPARE(told, (QStringList {u"first x"_s, u"second x"_s, u"second x"_s}));
    told.clear();
    center.postNotificationName(u"nobody's"_s);
    QCOMPARE(told, {});
}

void NotificationCenterTest::anObserverGoesWithItsContext()
{
    NotificationCenter center;
    int told = 0;
    {
        const auto context = std::make_unique<QObject>();
        center.addObserver(u"name"_s, context.get(), [&](const QVariant &object) {
            ++told;
            QVERIFY(!object.isValid());
        });
        center.postNotificationName(u"name"_s);
    }
    center.postNotificationName(u"name"_s);
    QCOMPARE(told, 1);
}

void NotificationCenterTest::aContextMayGoWhileBeingTold()
{
    NotificationCenter center;
    auto first = std::make_unique<QObject>();
    auto second = std::make_unique<QObject>();
    QStringList told;
    center.addObserver(u"name"_s, first.get(), [&](const QVariant &) {
        told << u"first"_s;
        first.reset();
        second.reset();
    });
    center.addObserver(u"name"_s, second.get(), [&](const QVariant &) { told << u"second"_s; });
    center.addObserver(u"name"_s, this, [&](const QVariant &) { told << u"third"_s; });
    center.postNotificationName(u"name"_s);
    QCOMPARE(told, (QStringList {u"first"_s, u"third"_s}));
}

QTEST_GUILESS_MAIN(NotificationCenterTest)
#include "NotificationCenterTest.moc"
