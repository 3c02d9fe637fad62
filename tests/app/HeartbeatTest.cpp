#include "app/Heartbeat.h"

#include "kit/Scratch.h"

#include <QTest>
#include <QThread>

class HeartbeatTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void thePercentileIsAValueOfTheList_data();
    void thePercentileIsAValueOfTheList();
    void aLoopThatWasHeldIsReported();
};

void HeartbeatTest::thePercentileIsAValueOfTheList_data()
{
    QTest::addColumn<QList<float>>("values");
    QTest::addColumn<double>("part");
    QTest::addColumn<double>("answer");
    QTest::newRow("none") << QList<float>{} << 0.99 << 0.0;
    QTest::newRow("one") << QList<float>{7} << 0.99 << 7.0;
    QTest::newRow("middle") << QList<float>{5, 1, 4, 2, 3} << 0.5 << 3.0;
    QTest::newRow("all") << QList<float>{5, 1, 4} << 1.0 << 5.0;
}

void HeartbeatTest::thePercentileIsAValueOfTheList()
{
    QFETCH(QList<float>, values);
    QFETCH(double, part);
    QFETCH(double, answer);
    QCOMPARE(Heartbeat::percentile({values.begin(), values.end()}, part), answer);
}

void HeartbeatTest::aLoopThatWasHeldIsReported()
{
    const Scratch scratch;
    const QByteArray path = scratch.path("report");
    {
        const Heartbeat heartbeat(path);
        bool isHeld = false;
        QTimer::singleShot(0, this, [&isHeld] {
            QThread::msleep(60);
            isHeld = true;
        });
        QTRY_VERIFY(isHeld);
        bool isServed = false;
        QTimer::singleShot(20, this, [&isServed] { isServed = true; });
        QTRY_VERIFY(isServed);
    }
    QFile report(QFile::decodeName(path));
    QVERIFY(report.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = report.readAll().split('\n');
    QVERIFY(lines.at(0).startsWith("beats ") && lines.at(3).startsWith("p99_ms "));
    QVERIFY(lines.at(1).mid(int(sizeof "largest_ms")).toDouble() >= 50);
}

QTEST_GUILESS_MAIN(HeartbeatTest)
#include "HeartbeatTest.moc"
