#include "app/run/Throughput.h"

#include <QTest>

class ThroughputTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theFirstTickAnswersZeroAndRecordsNothing();
    void fromTheSecondTickOnItIsTheMeanOfTheSamples();
    void afterFortyOneTicksTheHistoryHoldsFortySamples();
    void afterMoreThanFortySamplesTheOldestIsDropped();
    void oneSampleIsDroppedATick();
    void aTickWithoutProgressRecordsAZeroAndLowersTheMean();
    void whenMoreRemainsTheTickAnswersZeroAndRecordsNothing();
    void theTickAfterThatMeasuresFromTheNewPoint();
    void theRemainingBytesMayFallBelowZero();
    void aFirstTickWithNothingRemainingIsASample();
    void aNewRunStartsFromNothing();
};

void ThroughputTest::theFirstTickAnswersZeroAndRecordsNothing()
{
    Throughput throughput;
    QCOMPARE(throughput.bpsCheckPointValue(), 0.0);
    QCOMPARE(throughput.calculateBps(1000), 0.0);
    QVERIFY(throughput.bpsHistoryArray().empty());
    QCOMPARE(throughput.bpsCheckPointValue(), 1000.0);
}

void ThroughputTest::fromTheSecondTickOnItIsTheMeanOfTheSamples()
{
    Throughput throughput;
    throughput.calculateBps(1000);
    QCOMPARE(throughput.calculateBps(900), 100.0);
    QCOMPARE(throughput.calculateBps(600), 200.0);
    QCOMPARE(throughput.calculateBps(598), (100.0 + 300.0 + 2.0) / 3);
    QCOMPARE(throughput.bpsHistoryArray(), std::vector<double>({100, 300, 2}));
}

void ThroughputTest::afterFortyOneTicksTheHistoryHoldsFortySamples()
{
    Throughput throughput;
    for (int tick = 0; tick < 41; ++tick)
        throughput.calculateBps(1000 - tick);
    QCOMPARE(throughput.bpsHistoryArray().size(), std::size_t(40));
}

void ThroughputTest::afterMoreThanFortySamplesTheOldestIsDropped()
{
    Throughput throughput;
    double remaining = 1'000'000;
    throughput.calculateBps(remaining);
    for (int sample = 1; sample <= 40; ++sample)
        throughput.calculateBps(remaining -= sample);
    QCOMPARE(throughput.bpsHistoryArray().front(), 1.0);
    QCOMPARE(throughput.calculateBps(remaining -= 41), (2 + 41) / 2.0);
    QCOMPARE(throughput.bpsHistoryArray().size(), std::size_t(40));
    QCOMPARE(throughput.bpsHistoryArray().front(), 2.0);
    QCOMPARE(throughput.bpsHistoryArray().back(), 41.0);
}

void ThroughputTest::oneSampleIsDroppedATick()
{
    Throughput throughput;
    double remaining = 1'000'000;
    throughput.calculateBps(remaining);
    for (int sample = 1; sample <= 100; ++sample) {
        throughput.calculateBps(remaining -= sample);
        QCOMPARE(throughput.bpsHistoryArray().size(), std::size_t(qMin(sample, 40)));
        QCOMPARE(throughput.bpsHistoryArray().front(), double(qMax(1, sample - 39)));
    }
}

void ThroughputTest::aTickWithoutProgressRecordsAZeroAndLowersTheMean()
{
    Throughput throughput;
    throughput.calculateBps(1000);
    QCOMPARE(throughput.calculateBps(900), 100.0);
    QCOMPARE(throughput.calculateBps(900), 50.0);
    QCOMPARE(throughput.bpsHistoryArray(), std::vector<double>({100, 0}));
}

void ThroughputTest::whenMoreRemainsTheTickAnswersZeroAndRecordsNothing()
{
    Throughput throughput;
    throughput.calculateBps(1000);
    throughput.calculateBps(900);
    QCOMPARE(throughput.calculateBps(5000), 0.0);
    QCOMPARE(throughput.bpsHistoryArray(), std::vector<double>({100}));
    QCOMPARE(throughput.bpsCheckPointValue(), 5000.0);
}

void ThroughputTest::theTickAfterThatMeasuresFromTheNewPoint()
{
    Throughput throughput;
    throughput.calculateBps(1000);
    throughput.calculateBps(900);
    throughput.calculateBps(5000);
    QCOMPARE(throughput.calculateBps(4700), (100.0 + 300.0) / 2);
}

void ThroughputTest::theRemainingBytesMayFallBelowZero()
{
    Throughput throughput;
    throughput.calculateBps(100);
    QCOMPARE(throughput.calculateBps(-50), 150.0);
    QCOMPARE(throughput.calculateBps(-60), 80.0);
}

void ThroughputTest::aFirstTickWithNothingRemainingIsASample()
{
    Throughput throughput;
    QCOMPARE(throughput.calculateBps(0), 0.0);
    QCOMPARE(throughput.bpsHistoryArray(), std::vector<double>({0}));
}

void ThroughputTest::aNewRunStartsFromNothing()
{
    Throughput throughput;
    throughput.calculateBps(1000);
    throughput.calculateBps(400);
    throughput.reset();
    QVERIFY(throughput.bpsHistoryArray().empty());
    QCOMPARE(throughput.bpsCheckPointValue(), 0.0);
    QCOMPARE(throughput.calculateBps(300), 0.0);
    QCOMPARE(throughput.calculateBps(290), 10.0);
}

QTEST_APPLESS_MAIN(ThroughputTest)
#include "ThroughputTest.moc"
