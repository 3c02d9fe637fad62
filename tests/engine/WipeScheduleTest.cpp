#include "engine/WipeSchedule.h"

#include <QByteArray>
#include <QTest>

#include <limits>

using WipeSchedule::Pass;

namespace {

/// A pass in a few letters: "R", "B(55)", "T(92,49,24)".
QByteArray text(const Pass &pass)
{
    const auto hex = [&pass](std::size_t at) {
        return QByteArray::number(uint(pass.bytes.at(at)), 16).rightJustified(2, '0').toUpper();
    };
    switch (pass.kind) {
    case Pass::Kind::Byte:
        return "B(" + hex(0) + ")";
    case Pass::Kind::ThreeBytes:
        return "T(" + hex(0) + "," + hex(1) + "," + hex(2) + ")";
    case Pass::Kind::Random:
        return "R";
    }
    return "?";
}

QByteArray schedule(std::int64_t method)
{
    QByteArrayList words;
    for (const Pass &pass : WipeSchedule::passes(method))
        words.append(text(pass));
    return words.join(' ');
}

} // namespace

class WipeScheduleTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyMethodRunsItsPassesInOrder_data();
    void everyMethodRunsItsPassesInOrder();
    void methodEightHasTwoRandomPassesInARowAtThreeAndFour();
    void methodTenHas35PassesTheFifthAndThe31stFixed();
    void aNumberThatIsNoMethodHasNoPass_data();
    void aNumberThatIsNoMethodHasNoPass();
};

void WipeScheduleTest::everyMethodRunsItsPassesInOrder_data()
{
    QTest::addColumn<qint64>("method");
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<QByteArray>("passes");
    QTest::newRow("1-Pass Zero") << qint64(1) << qsizetype(1) << QByteArray("B(00)");
    QTest::newRow("1-Pass Random") << qint64(2) << qsizetype(1) << QByteArray("R");
    QTest::newRow("2-Pass GOST") << qint64(3) << qsizetype(2) << QByteArray("B(00) R");
    QTest::newRow("3-Pass DoD (E)") << qint64(4) << qsizetype(3) << QByteArray("B(00) B(FF) R");
    QTest::newRow("4-Pass RAZER") << qint64(5) << qsizetype(4) << QByteArray("R R R B(00)");
    QTest::newRow("7-Pass Schneier")
        << qint64(6) << qsizetype(7) << QByteArray("B(FF) B(00) R R R R R");
    QTest::newRow("7-Pass BSI/VSITR")
        << qint64(7) << qsizetype(7) << QByteArray("B(00) B(FF) B(00) B(FF) B(00) B(FF) R");
    QTest::newRow("7-Pass DoD (ECE)")
        << qint64(8) << qsizetype(7) << QByteArray("B(00) B(FF) R R B(00) B(FF) R");
    QTest::newRow("33-Pass Pfitzner")
        << qint64(9) << qsizetype(33)
        << QByteArray("R R R R R R R R R R R R R R R R R R R R R R R R R R R R R R R R R");
    QTest::newRow("35-Pass Gutmann")
        << qint64(10) << qsizetype(35)
        << QByteArray("R R R R "
                      "B(55) B(AA) T(92,49,24) T(49,24,92) T(24,92,49) "
                      "B(00) B(11) B(22) B(33) B(44) B(55) B(66) B(77) "
                      "B(88) B(99) B(AA) B(BB) B(CC) B(DD) B(EE) B(FF) "
                      "T(92,49,24) T(49,24,92) T(24,92,49) "
                      "T(6D,B6,DB) T(B6,DB,6D) T(DB,6D,B6) "
                      "R R R R");
}

void WipeScheduleTest::everyMethodRunsItsPassesInOrder()
{
    QFETCH(qint64, method);
    QFETCH(qsizetype, count);
    QFETCH(QByteArray, passes);
    QCOMPARE(qsizetype(WipeSchedule::passes(method).size()), count);
    QCOMPARE(schedule(method), passes);
}

void WipeScheduleTest::methodEightHasTwoRandomPassesInARowAtThreeAndFour()
{
    const auto passes = WipeSchedule::passes(8);
    QCOMPARE(passes.size(), std::size_t(7));
    QCOMPARE(text(passes[2]), QByteArray("R"));
    QCOMPARE(text(passes[3]), QByteArray("R"));
}

void WipeScheduleTest::methodTenHas35PassesTheFifthAndThe31stFixed()
{
    const auto passes = WipeSchedule::passes(10);
    QCOMPARE(passes.size(), std::size_t(35));
    QCOMPARE(text(passes[4]), QByteArray("B(55)"));
    QCOMPARE(text(passes[30]), QByteArray("T(DB,6D,B6)"));
}

void WipeScheduleTest::aNumberThatIsNoMethodHasNoPass_data()
{
    QTest::addColumn<qint64>("method");
    QTest::newRow("zero") << qint64(0);
    QTest::newRow("eleven") << qint64(11);
    QTest::newRow("negative") << qint64(-1);
    QTest::newRow("smallest") << std::numeric_limits<qint64>::min();
    QTest::newRow("largest") << std::numeric_limits<qint64>::max();
    QTest::newRow("four in its lower half") << (qint64(1) << 32) + 4;
}

void WipeScheduleTest::aNumberThatIsNoMethodHasNoPass()
{
    QFETCH(qint64, method);
    QVERIFY(WipeSchedule::passes(method).empty());
}

QTEST_APPLESS_MAIN(WipeScheduleTest)
#include "WipeScheduleTest.moc"
