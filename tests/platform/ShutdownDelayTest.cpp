#include "platform/ShutdownDelay.h"

#include "engine/RecordedLog.h"
#include "kit/PrivateBus.h"
#include "platform/FakeLoginManager.h"

#include <QDBusPendingCallWatcher>
#include <QTest>

class ShutdownDelayTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void nothingIsAskedForBeforeARun();
    void aRunHoldsADelayingLockOnly();
    void theEndOfTheRunLetsTheMachineGo();
    void eachRunHasALockOfItsOwn();
    void beginningTwiceAsksOnce();
    void aLockThatComesAfterTheRunIsNotKept();
    void theEndOfTheObjectLetsTheMachineGo();
    void theShutdownIsToldOnceDuringARun();
    void aShutdownThatIsCalledOffIsNotTold();
    void outsideOfRunsNothingIsTold();
    void aLoginManagerThatRefusesIsStillHeard();
    void aLoginManagerThatHangsIsStillHeard();
    void withoutALoginManagerNothingIsSaid();
    void withoutABusNothingIsSaid();

  private:
    void settle();

    std::unique_ptr<PrivateBus> bus_;
    QString connection_;
    std::unique_ptr<FakeService> marker_;
    std::unique_ptr<FakeLoginManager> loginManager_;
    std::unique_ptr<ShutdownDelay> delay_;
    int told_ = 0;
};

void ShutdownDelayTest::init()
{
    bus_ = std::make_unique<PrivateBus>();
    QVERIFY(bus_->isThere());
    connection_ = bus_->connection().name();
    loginManager_ = std::make_unique<FakeLoginManager>();
    marker_ = std::make_unique<FakeService>(QStringLiteral("org.example.Marker"),
                                            QStringLiteral("/org/example/Marker"));
    const QDBusConnection services = bus_->connection();
    QVERIFY(loginManager_->appear(services) && marker_->appear(services));
    told_ = 0;
    delay_ = std::make_unique<ShutdownDelay>([this] { ++told_; }, connection_);
}

void ShutdownDelayTest::cleanup()
{
    delay_.reset();
    marker_.reset();
    loginManager_.reset();
    bus_.reset();
}

/// Until all that was sent before has arrived, on either side: a call over the same connections
/// goes behind it, and its answer too.
void ShutdownDelayTest::settle()
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.example.Marker"), QStringLiteral("/org/example/Marker"),
        QStringLiteral("org.example.Marker"), QStringLiteral("Mark"));
    const QDBusPendingCallWatcher watcher(QDBusConnection(connection_).asyncCall(call));
    bool isAnswered = false;
    connect(&watcher, &QDBusPendingCallWatcher::finished, this, [&] { isAnswered = true; });
    QTRY_VERIFY(isAnswered);
}

void ShutdownDelayTest::nothingIsAskedForBeforeARun()
{
    settle();
    QVERIFY(loginManager_->calls.empty());
    delay_->end();
    settle();
    QVERIFY(loginManager_->calls.empty());
}

void ShutdownDelayTest::aRunHoldsADelayingLockOnly()
{
    delay_->begin();
    QVERIFY(loginManager_->calls.empty());
    QTRY_VERIFY(delay_->isHeld());
    QCOMPARE(loginManager_->calls.size(), size_t(1));
    QCOMPARE(loginManager_->calls.front().interface,
             QStringLiteral("org.freedesktop.login1.Manager"));
    QCOMPARE(loginManager_->callsTo(QStringLiteral("Inhibit")),
             std::vector<QVariantList>(
                 {{QStringLiteral("shutdown"), QStringLiteral("Vantorel"),
                   QStringLiteral("Deleting in the background"), QStringLiteral("delay")}}));
    QVERIFY(loginManager_->isHeld());
}

void ShutdownDelayTest::theEndOfTheRunLetsTheMachineGo()
{
    delay_->begin();
    QTRY_VERIFY(delay_->isHeld());
    delay_->end();
    QVERIFY(!delay_->isHeld());
    QTRY_VERIFY(!loginManager_->isHeld());
}

void ShutdownDelayTest::eachRunHasALockOfItsOwn()
{
    delay_->begin();
    QTRY_VERIFY(delay_->isHeld());
    delay_->end();
    delay_->begin();
    QTRY_VERIFY(delay_->isHeld());
    QVERIFY(loginManager_->isHeld());
    QCOMPARE(loginManager_->calls.size(), size_t(2));
}

void ShutdownDelayTest::beginningTwiceAsksOnce()
{
    delay_->begin();
    delay_->begin();
    QTRY_VERIFY(delay_->isHeld());
    delay_->begin();
    settle();
    QCOMPARE(loginManager_->calls.size(), size_t(1));
    delay_->end();
    QTRY_VERIFY(!loginManager_->isHeld());
}

void ShutdownDelayTest::aLockThatComesAfterTheRunIsNotKept()
{
    loginManager_->answer = FakeService::Answer::None;
    delay_->begin();
    QTRY_COMPARE(loginManager_->calls.size(), size_t(1));
    delay_->end();
    loginManager_->answerLate();
    QVERIFY(loginManager_->hasGivenLock());
    QTRY_VERIFY(!loginManager_->isHeld());
    QVERIFY(!delay_->isHeld());
}

void ShutdownDelayTest::theEndOfTheObjectLetsTheMachineGo()
{
    delay_->begin();
    QTRY_VERIFY(delay_->isHeld());
    delay_.reset();
    QTRY_VERIFY(!loginManager_->isHeld());
}

void ShutdownDelayTest::theShutdownIsToldOnceDuringARun()
{
    delay_->begin();
    QTRY_VERIFY(delay_->isHeld());
    loginManager_->prepareForShutdown(true);
    settle();
    QCOMPARE(told_, 1);
    QVERIFY(loginManager_->isHeld());
}

void ShutdownDelayTest::aShutdownThatIsCalledOffIsNotTold()
{
    delay_->begin();
    loginManager_->prepareForShutdown(false);
    settle();
    QCOMPARE(told_, 0);
}

void ShutdownDelayTest::outsideOfRunsNothingIsTold()
{
    loginManager_->prepareForShutdown(true);
    settle();
    delay_->begin();
    settle();
    delay_->end();
    loginManager_->prepareForShutdown(true);
    settle();
    QCOMPARE(told_, 0);
}

void ShutdownDelayTest::aLoginManagerThatRefusesIsStillHeard()
{
    const RecordedLog log;
    loginManager_->answer = FakeService::Answer::Refusal;
    delay_->begin();
    QTRY_COMPARE(loginManager_->calls.size(), size_t(1));
    loginManager_->prepareForShutdown(true);
    QTRY_COMPARE(told_, 1);
    QVERIFY(!delay_->isHeld());
    delay_->end();
    QCOMPARE(log.lines(), QStringList());
}

void ShutdownDelayTest::aLoginManagerThatHangsIsStillHeard()
{
    loginManager_->answer = FakeService::Answer::None;
    delay_->begin();
    QTRY_COMPARE(loginManager_->calls.size(), size_t(1));
    loginManager_->prepareForShutdown(true);
    QTRY_COMPARE(told_, 1);
    QVERIFY(!delay_->isHeld());
}

void ShutdownDelayTest::withoutALoginManagerNothingIsSaid()
{
    loginManager_.reset();
    const RecordedLog log;
    delay_->begin();
    settle();
    QVERIFY(!delay_->isHeld());
    delay_->end();
    QCOMPARE(told_, 0);
    QCOMPARE(log.lines(), QStringList());
}

void ShutdownDelayTest::withoutABusNothingIsSaid()
{
    const RecordedLog log;
    ShutdownDelay delay([this] { ++told_; }, QStringLiteral("no such connection"));
    delay.begin();
    QVERIFY(!delay.isHeld());
    delay.end();
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(ShutdownDelayTest)
#include "ShutdownDelayTest.moc"
