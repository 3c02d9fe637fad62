#include "platform/Random.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <set>

class RandomTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyDrawBelowABoundIsReachedAndNoOther_data();
    void everyDrawBelowABoundIsReachedAndNoOther();
    void belowOneThereIsOnlyZero();
    void drawsUseAllTheirBits();
    void aFillReachesEveryElement();
    void aFillLeavesWhatIsBesideItAlone();
    void aFillUsesAllBits();
    void twoFillsDiffer();
    void nothingCanBeFilled();
};

void RandomTest::everyDrawBelowABoundIsReachedAndNoOther_data()
{
    QTest::addColumn<std::uint32_t>("bound");
    QTest::newRow("two") << std::uint32_t(2);
    QTest::newRow("fifteen") << std::uint32_t(15);
    QTest::newRow("twenty-six") << std::uint32_t(26);
    QTest::newRow("two hundred and fifty-five") << std::uint32_t(255);
}

/// A value is missed after so many draws once in more than 10^40 runs.
void RandomTest::everyDrawBelowABoundIsReachedAndNoOther()
{
    QFETCH(std::uint32_t, bound);
    std::set<std::uint32_t> drawn;
    for (std::uint32_t draw = 0; draw < bound * 100; ++draw)
        drawn.insert(Random::below(bound));
    QCOMPARE(drawn.size(), std::size_t(bound));
    QCOMPARE(*drawn.rbegin(), bound - 1);
}

void RandomTest::belowOneThereIsOnlyZero()
{
    for (int draw = 0; draw < 100; ++draw)
        QCOMPARE(Random::below(1), std::uint32_t(0));
}

void RandomTest::drawsUseAllTheirBits()
{
    std::uint32_t everSet = 0;
    std::uint32_t alwaysSet = ~std::uint32_t(0);
    for (int draw = 0; draw < 200; ++draw) {
        const std::uint32_t value = Random::draw();
        everSet |= value;
        alwaysSet &= value;
    }
    QCOMPARE(everSet, ~std::uint32_t(0));
    QCOMPARE(alwaysSet, std::uint32_t(0));
}

void RandomTest::aFillReachesEveryElement()
{
    std::array<std::uint32_t, 4096> draws{};
    std::array<bool, 4096> wasSet{};
    for (int time = 0; time < 5; ++time) {
        draws.fill(0);
        Random::fill(draws);
        for (std::size_t at = 0; at < draws.size(); ++at)
            wasSet.at(at) = wasSet.at(at) || draws.at(at) != 0;
    }
    QVERIFY(std::all_of(wasSet.begin(), wasSet.end(), [](bool set) { return set; }));
}

void RandomTest::aFillLeavesWhatIsBesideItAlone()
{
    std::array<std::uint32_t, 6> draws{};
    for (int time = 0; time < 20; ++time)
        Random::fill(std::span(draws).subspan(1, 4));
    QCOMPARE(draws.front(), std::uint32_t(0));
    QCOMPARE(draws.back(), std::uint32_t(0));
}

void RandomTest::aFillUsesAllBits()
{
    std::array<std::uint32_t, 4096> draws{};
    Random::fill(draws);
    std::uint32_t everSet = 0;
    std::uint32_t alwaysSet = ~std::uint32_t(0);
    for (const std::uint32_t value : draws) {
        everSet |= value;
        alwaysSet &= value;
    }
    QCOMPARE(everSet, ~std::uint32_t(0));
    QCOMPARE(alwaysSet, std::uint32_t(0));
}

void RandomTest::twoFillsDiffer()
{
    std::array<std::uint32_t, 64> first{};
    std::array<std::uint32_t, 64> second{};
    Random::fill(first);
    Random::fill(second);
    QVERIFY(first != second);
}

void RandomTest::nothingCanBeFilled()
{
    std::array<std::uint32_t, 1> draws{};
    Random::fill(std::span(draws).first(0));
    QCOMPARE(draws.front(), std::uint32_t(0));
}

QTEST_APPLESS_MAIN(RandomTest)
#include "RandomTest.moc"
