#include "platform/Descriptor.h"

#include "kit/ForwardingSystemCalls.h"

#include <QList>
#include <QTest>

#include <cerrno>
#include <utility>

namespace {

/// Notes what is closed and closes nothing.
class RecordingCloses : public ForwardingSystemCalls
{
  public:
    int close(int fd) override
    {
        closed.append(fd);
        return 0;
    }

    QList<int> closed;
};

} // namespace

class DescriptorTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { calls_.closed.clear(); }

    void itIsClosedOnceWhenItGoes();
    void descriptorZeroIsOpenAndIsClosed();
    void closingByHandClosesOnce();
    void movingHandsTheDescriptorOver();
    void assigningClosesTheOneBefore();
    void assigningToItselfKeepsIt();
    void aFailedOpeningKeepsItsErrorAndIsNeverClosed_data();
    void aFailedOpeningKeepsItsErrorAndIsNeverClosed();
    void theErrorMovesAlong();
    void nothingOpenedHasNoDescriptor();

  private:
    RecordingCloses calls_;
    SystemCalls::Replacement replacement_{calls_};
};

void DescriptorTest::itIsClosedOnceWhenItGoes()
{
    {
        const Descriptor descriptor(7);
        QVERIFY(descriptor.isOpen());
        QCOMPARE(descriptor.fd(), 7);
        QCOMPARE(descriptor.error(), 0);
        QVERIFY(calls_.closed.isEmpty());
    }
    QCOMPARE(calls_.closed, QList<int>({7}));
}

void DescriptorTest::descriptorZeroIsOpenAndIsClosed()
{
    {
        const Descriptor descriptor(0);
        QVERIFY(descriptor.isOpen());
        QCOMPARE(descriptor.error(), 0);
    }
    QCOMPARE(calls_.closed, QList<int>({0}));
}

void DescriptorTest::closingByHandClosesOnce()
{
    {
        Descriptor descriptor(7);
        descriptor.close();
        QVERIFY(!descriptor.isOpen());
        QCOMPARE(descriptor.fd(), -1);
        QCOMPARE(descriptor.error(), 0);
        descriptor.close();
    }
    QCOMPARE(calls_.closed, QList<int>({7}));
}

void DescriptorTest::movingHandsTheDescriptorOver()
{
    {
        Descriptor first(7);
        const Descriptor second(std::move(first));
        QCOMPARE(second.fd(), 7);
        QVERIFY(calls_.closed.isEmpty());
    }
    QCOMPARE(calls_.closed, QList<int>({7}));
}

void DescriptorTest::assigningClosesTheOneBefore()
{
    Descriptor first(7);
    Descriptor second(8);
    second = std::move(first);
    QCOMPARE(second.fd(), 7);
    QCOMPARE(calls_.closed, QList<int>({8}));
}

void DescriptorTest::assigningToItselfKeepsIt()
{
    Descriptor descriptor(7);
    Descriptor &same = descriptor;
    descriptor = std::move(same);
    QCOMPARE(descriptor.fd(), 7);
    QVERIFY(calls_.closed.isEmpty());
}

void DescriptorTest::aFailedOpeningKeepsItsErrorAndIsNeverClosed_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("operation not permitted") << EPERM;
    QTest::newRow("no such name") << ENOENT;
    // -100 is AT_FDCWD, too.
    QTest::newRow("the number of the working folder") << -SystemCalls::startFolder;
}

void DescriptorTest::aFailedOpeningKeepsItsErrorAndIsNeverClosed()
{
    QFETCH(int, error);
    {
        const Descriptor descriptor(-error);
        QVERIFY(!descriptor.isOpen());
        QCOMPARE(descriptor.fd(), -1);
        QCOMPARE(descriptor.error(), error);
    }
    QVERIFY(calls_.closed.isEmpty());
}

void DescriptorTest::theErrorMovesAlong()
{
    Descriptor failed(-ENOENT);
    Descriptor other(8);
    other = std::move(failed);
    QCOMPARE(other.error(), ENOENT);
    QCOMPARE(calls_.closed, QList<int>({8}));
}

void DescriptorTest::nothingOpenedHasNoDescriptor()
{
    {
        const Descriptor descriptor;
        QVERIFY(!descriptor.isOpen());
        QCOMPARE(descriptor.fd(), -1);
        QCOMPARE(descriptor.error(), 0);
    }
    QVERIFY(calls_.closed.isEmpty());
}

QTEST_APPLESS_MAIN(DescriptorTest)
#include "DescriptorTest.moc"
