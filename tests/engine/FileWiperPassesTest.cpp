#include "engine/RecordingSystemCalls.h"
#include "engine/WipeOneFile.h"
#include "kit/Scratch.h"

#include <QTest>

#include <cmath>

namespace {

constexpr qsizetype block = 4096;

/// What a pass has to write: one byte, three bytes, or random (none).
using Pattern = QByteArray;

const Pattern R;

Pattern B(int byte)
{
    return Pattern(1, char(byte));
}

Pattern T(int first, int second, int third)
{
    return Pattern(1, char(first)) + char(second) + char(third);
}

std::vector<Pattern> patternsOf(int method)
{
    switch (method) {
    case 1:
        return {B(0x00)};
    case 2:
        return {R};
    case 3:
        return {B(0x00), R};
    case 4:
        return {B(0x00), B(0xFF), R};
    case 5:
        return {R, R, R, B(0x00)};
    case 6:
        return {B(0xFF), B(0x00), R, R, R, R, R};
    case 7:
        return {B(0x00), B(0xFF), B(0x00), B(0xFF), B(0x00), B(0xFF), R};
    case 8:
        return {B(0x00), B(0xFF), R, R, B(0x00), B(0xFF), R};
    case 9:
        return {R, R, R, R, R, R, R, R, R, R, R, R, R, R, R, R, R,
                R, R, R, R, R, R, R, R, R, R, R, R, R, R, R, R};
    case 10:
        return {R,
                R,
                R,
                R,
                B(0x55),
                B(0xAA),
                T(0x92, 0x49, 0x24),
                T(0x49, 0x24, 0x92),
                T(0x24, 0x92, 0x49),
                B(0x00),
                B(0x11),
                B(0x22),
                B(0x33),
                B(0x44),
                B(0x55),
                B(0x66),
                B(0x77),
                B(0x88),
                B(0x99),
                B(0xAA),
                B(0xBB),
                B(0xCC),
                B(0xDD),
                B(0xEE),
                B(0xFF),
                T(0x92, 0x49, 0x24),
                T(0x49, 0x24, 0x92),
                T(0x24, 0x92, 0x49),
                T(0x6D, 0xB6, 0xDB),
                T(0xB6, 0xDB, 0x6D),
                T(0xDB, 0x6D, 0xB6),
                R,
                R,
                R,
                R};
    default:
        return {};
    }
}

/// The bytes of a pass with a fixed pattern: it starts anew at every 4,096 bytes.
QByteArray expectedBytes(const Pattern &pattern, qsizetype size)
{
    QByteArray bytes;
    for (qsizetype at = 0; at < size; ++at)
        bytes.append(pattern.at((at % block) % pattern.size()));
    return bytes;
}

bool looksLikeOneRandomFill(const QByteArray &bytes, qsizetype size)
{
    if (bytes.size() != size || bytes.contains('\xFF'))
        return false;
    for (qsizetype at = block; at < size; at += block) {
        const qsizetype length = qMin(block, size - at);
        if (bytes.mid(at, length) != bytes.first(length))
            return false;
    }
    return true;
}

std::vector<QByteArray> expectedCalls(std::size_t passes, qsizetype size, const QByteArray &name)
{
    std::vector<QByteArray> calls = {"open", "status"};
    for (std::size_t pass = 0; pass < passes; ++pass) {
        calls.push_back("seek");
        for (qsizetype left = size; left > 0; left -= qMin(left, block))
            calls.push_back("write " + QByteArray::number(qMin(left, block)));
        calls.push_back("sync");
        calls.push_back("seek");
    }
    calls.push_back("status");
    calls.push_back("close");
    calls.push_back("unlink " + name);
    return calls;
}

/// Takes only part of what it is given, the first time after that many calls.
class ShortWriteSystemCalls final : public RecordingSystemCalls
{
  public:
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        ++writes_;
        if (writes_ == 2)
            return -EINTR;
        const std::size_t taken = writes_ % 2 == 1 ? qMin<std::size_t>(count, 1000) : count;
        return RecordingSystemCalls::write(fd, bytes, taken);
    }

  private:
    int writes_ = 0;
};

} // namespace

/// What reaches the disk, byte by byte and call by call.
class FileWiperPassesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyPassOfEveryMethodIsExact_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<qsizetype>("size");
        for (int method = 1; method <= 10; ++method) {
            for (const qsizetype size : {0, 1, 4095, 4096, 4097, 8192, 10000, 1048577})
                QTest::addRow("method %d on %d bytes", method, int(size)) << method << size;
        }
    }
    void everyPassOfEveryMethodIsExact()
    {
        QFETCH(int, method);
        QFETCH(qsizetype, size);
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const std::vector<Pattern> patterns = patternsOf(method);
        const QByteArray path = scratch.file("secret", size);

        QCOMPARE(wipe(queueItem(path, method)), 1);

        QCOMPARE(calls.calls(), expectedCalls(patterns.size(), size, "secret"));
        QCOMPARE(calls.passes().size(), patterns.size());
        for (std::size_t pass = 0; pass < patterns.size(); ++pass) {
            const QByteArray &bytes = calls.passes()[pass];
            if (patterns[pass].isEmpty())
                QVERIFY2(looksLikeOneRandomFill(bytes, size),
                         qPrintable(QString::number(pass + 1)));
            else
                QVERIFY2(bytes == expectedBytes(patterns[pass], size),
                         qPrintable(QString::number(pass + 1)));
        }
        QVERIFY(!Scratch::exists(path));
    }

    void zeroByteFileIsSyncedOncePerPassThenRemoved()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("empty", QByteArray());

        QCOMPARE(wipe(queueItem(path, 4)), 1);

        const std::vector<QByteArray> expected = {"open", "status", "seek",  "sync",        "seek",
                                                  "seek", "sync",   "seek",  "seek",        "sync",
                                                  "seek", "status", "close", "unlink empty"};
        QCOMPARE(calls.calls(), expected);
    }

    void tenThousandBytesAreThreeWritesAPass()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);

        QCOMPARE(wipe(queueItem(scratch.file("f", 10000), 1)), 1);

        const std::vector<QByteArray> expected = {
            "open", "status", "seek",   "write 4096", "write 4096", "write 1808",
            "sync", "seek",   "status", "close",      "unlink f"};
        QCOMPARE(calls.calls(), expected);
    }

    void threeBytePatternStartsAnewAfterALoneByte()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);

        QCOMPARE(wipe(queueItem(scratch.file("f", 8192), 10)), 1);

        const QByteArray pass = calls.passes().at(6); // T(92,49,24)
        QCOMPARE(pass.mid(4092, 8), QByteArray::fromHex("9249249292492492"));
        QCOMPARE(pass.at(4095), char(0x92));
        QCOMPARE(pass.at(4096), char(0x92));
    }

    void randomPassesDifferFromEachOtherAndNeverHold255()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);

        QCOMPARE(wipe(queueItem(scratch.file("f", 8192), 9)), 1);

        QCOMPARE(calls.passes().size(), std::size_t(33));
        for (std::size_t pass = 0; pass < 33; ++pass) {
            QVERIFY(looksLikeOneRandomFill(calls.passes()[pass], 8192));
            for (std::size_t other = 0; other < pass; ++other)
                QVERIFY(calls.passes()[pass] != calls.passes()[other]);
        }
    }

    void everyRandomValueBelow255Occurs()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);

        QCOMPARE(wipe(queueItem(scratch.file("f", 4096), 9)), 1);

        // 33 fills of 4,096 bytes: a value is missed with a chance of e^-530.
        std::array<int, 256> counts{};
        for (const QByteArray &pass : calls.passes()) {
            for (const char byte : pass)
                ++counts[static_cast<unsigned char>(byte)];
        }
        for (int value = 0; value < 255; ++value)
            QVERIFY2(counts[size_t(value)] > 0, qPrintable(QString::number(value)));
        QCOMPARE(counts[255], 0);
    }

    void shortWritesGoOnWhereTheyStopped()
    {
        const Scratch scratch;
        ShortWriteSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);

        QCOMPARE(wipe(queueItem(scratch.file("f", 10000), 10)), 1);

        QCOMPARE(calls.passes().size(), std::size_t(35));
        QCOMPARE(calls.passes().at(6), expectedBytes(T(0x92, 0x49, 0x24), 10000));
        QVERIFY(looksLikeOneRandomFill(calls.passes().at(0), 10000));
    }

    void creditIsReckonedInSinglePrecision()
    {
        const Scratch scratch;
        const auto stats = QueueStatsObject::create();
        const auto item = queueItem(scratch.file("f", 4096), 4);
        item->setQueueStatsObject(stats);

        QCOMPARE(wipe(item), 1);

        QVERIFY(item->bytesWritten() == 4096.0001220703125);
        QVERIFY(stats->bytesWritten() == 4096.0001220703125);
    }

    void creditComesWithEveryBlockAndAddsUpToTheSize()
    {
        const Scratch scratch;
        const auto stats = QueueStatsObject::create();
        stats->setBytesWritten(5);
        const auto item = queueItem(scratch.file("f", 10000), 7);
        item->setQueueStatsObject(stats);

        QCOMPARE(wipe(item), 1);

        QVERIFY(std::abs(item->bytesWritten() - 10000) < 0.01);
        QVERIFY(std::abs(stats->bytesWritten() - 10005) < 0.01);
    }

    void itemWithoutStatisticsIsErasedAllTheSame()
    {
        const Scratch scratch;
        const auto item = queueItem(scratch.file("f", 5000), 1);
        item->setQueueStatsObject(QueueStatsObject::create()); // gone at once

        QCOMPARE(wipe(item), 1);
        QVERIFY(std::abs(item->bytesWritten() - 5000) < 0.01);
    }

    void unknownMethodLeavesTheFileUntouched_data()
    {
        QTest::addColumn<int>("method");
        QTest::newRow("zero") << 0;
        QTest::newRow("eleven") << 11;
        QTest::newRow("below zero") << -1;
    }
    void unknownMethodLeavesTheFileUntouched()
    {
        QFETCH(int, method);
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("f", "precious");
        const auto item = queueItem(path, method);

        QCOMPARE(wipe(item), 2);

        const std::vector<QByteArray> expected = {"open", "status", "close"};
        QCOMPARE(calls.calls(), expected);
        QCOMPARE(Scratch::content(path), QByteArray("precious"));
        QCOMPARE(item->errormsg(), QStringLiteral("Unknown overwrite method"));
    }

    void sparseFileIsWrittenInFull()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("sparse", QByteArray());
        QCOMPARE(::truncate(path.constData(), 300000), 0);

        QCOMPARE(wipe(queueItem(path, 1)), 1);
        QCOMPARE(calls.passes().at(0), QByteArray(300000, '\0'));
    }
};

QTEST_GUILESS_MAIN(FileWiperPassesTest)
#include "FileWiperPassesTest.moc"
