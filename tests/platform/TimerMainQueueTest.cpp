#include "platform/TimerMainQueue.h"

#include <QTest>

using namespace std::chrono_literals;

class TimerMainQueueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsWorkLaterAndInOrder();
    void workGoesWithItsContext();
    void repeatsUntilTheHandleGoes();
    void aRepetitionMayEndItself();

private:
    TimerMainQueue m_queue;
};

void TimerMainQueueTest::runsWorkLaterAndInOrder()
{
    QList<int> ran;
    m_queue.after(30ms, this, [&] { ran << 2; });
    m_queue.after(0ms, this, [&] { ran << 1; });
    QCOMPARE(ran, {});
    QTRY_COMPARE(ran, (QList {1, 2}));
}

void TimerMainQueueTest::workGoesWithItsContext()
{
    bool ran = false;
    bool later = false;
    {
        QObject context;
        m_queue.after(1ms, &context, [&] { ran = true; });
    }
    m_queue.after(20ms, this, [&] { later = true; });
    QTRY_VERIFY(later);
    QVERIFY(!ran);
}

void TimerMainQueueTest::repeatsUntilTheHandleGoes()
{
    int ticks = 0;
    bool later = false;
    auto repetition = m_queue.every(1ms, [&] { ++ticks; });
    QCOMPARE(ticks, 0);
    QTRY_VERIFY(ticks >= 3);
    repetition.reset();
    const int seen = ticks;
    m_queue.after(20ms, this, [&] { later = true; });
    QTRY_VERIFY(later);
    QCOMPARE(ticks, seen);
}

void TimerMainQueueTest::aRepetitionMayEndItself()
{
    int ticks = 0;
    bool later = false;
    std::unique_ptr<Repetition> repetition;
    repetition = m_queue.every(1ms, [&] {
        ++ticks;
        repetition.reset();
    });
    QTRY_VERIFY(!repetition);
    m_queue.after(20ms, this, [&] { later = true; });
    QTRY_VERIFY(later);
    QCOMPARE(ticks, 1);
}

QTEST_GUILESS_MAIN(TimerMainQueueTest)
#include "TimerMainQueueTest.moc"
