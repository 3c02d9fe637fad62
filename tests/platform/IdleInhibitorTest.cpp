#include "platform/IdleInhibitor.h"

#include "engine/RecordedLog.h"
#include "kit/PrivateBus.h"
#include "platform/FakeLoginManager.h"

#include <QTest>

namespace {

using Holder = IdleInhibitor::Holder;

const QString inhibit = QStringLiteral("Inhibit");
const QString unInhibit = QStringLiteral("UnInhibit");
const QString reason = QStringLiteral("Deleting in the background");
constexpr uint cookie = 4711;

/// How a service behaves.
enum class Manner { Absent, Refusing, Hanging };

void addManners()
{
    QTest::addColumn<Manner>("manner");
    QTest::newRow("absent") << Manner::Absent;
    QTest::newRow("refusing") << Manner::Refusing;
    QTest::newRow("hanging") << Manner::Hanging;
}

void behave(FakeService &service, Manner manner, const QDBusConnection &bus)
{
    service.answer =
        manner == Manner::Hanging ? FakeService::Answer::None : FakeService::Answer::Refusal;
    if (manner != Manner::Absent)
        QVERIFY(service.appear(bus));
}

} // namespace

Q_DECLARE_METATYPE(Manner)

class IdleInhibitorTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theLoginManagerIsAskedForIdleSleepOnlyAndOnce();
    void theLockIsHeldUntilTheEnd();
    void nothingIsWaitedFor();
    void theDesktopIsAskedWhereTheLoginManagerIs_data() { addManners(); }
    void theDesktopIsAskedWhereTheLoginManagerIs();
    void theDesktopIsAskedWhereTheLoginManagerAnswersNonsense();
    void theDesktopHearsOfTheEnd();
    void whereTheDesktopIsTooThereIsOneLineInTheLog_data() { addManners(); }
    void whereTheDesktopIsTooThereIsOneLineInTheLog();
    void withoutASystemBusTheDesktopIsAsked();
    void withoutAnyBusThereIsOneLineInTheLog();
    void aLockThatComesTooLateIsNotKept();

  private:
    std::unique_ptr<IdleInhibitor> inhibitor(int milliseconds = 20000)
    {
        return std::make_unique<IdleInhibitor>(
            IdleInhibitor::Services{systemConnection_, sessionConnection_, milliseconds});
    }

    std::unique_ptr<PrivateBus> systemBus_;
    std::unique_ptr<PrivateBus> sessionBus_;
    std::unique_ptr<FakeLoginManager> loginManager_;
    std::unique_ptr<FakeService> desktop_;
    QString systemConnection_;
    QString sessionConnection_;
};

void IdleInhibitorTest::init()
{
    systemBus_ = std::make_unique<PrivateBus>();
    sessionBus_ = std::make_unique<PrivateBus>();
    QVERIFY(systemBus_->isThere() && sessionBus_->isThere());
    systemConnection_ = systemBus_->connection().name();
    sessionConnection_ = sessionBus_->connection().name();
    loginManager_ = std::make_unique<FakeLoginManager>();
    desktop_ = std::make_unique<FakeService>(QStringLiteral("org.freedesktop.ScreenSaver"),
                                             QStringLiteral("/org/freedesktop/ScreenSaver"));
    desktop_->answerWith = [](const FakeService::Call &call) {
        return call.member == inhibit ? QVariantList{cookie} : QVariantList();
    };
}

void IdleInhibitorTest::cleanup()
{
    desktop_.reset();
    loginManager_.reset();
    sessionBus_.reset();
    systemBus_.reset();
}

void IdleInhibitorTest::theLoginManagerIsAskedForIdleSleepOnlyAndOnce()
{
    QVERIFY(loginManager_->appear(systemBus_->connection()));
    QVERIFY(desktop_->appear(sessionBus_->connection()));
    const RecordedLog log;
    const auto inhibitor = this->inhibitor();
    QTRY_VERIFY(inhibitor->holder() == Holder::LoginManager);
    QCOMPARE(loginManager_->calls.size(), size_t(1));
    const FakeService::Call call = loginManager_->calls.front();
    QCOMPARE(call.interface, QStringLiteral("org.freedesktop.login1.Manager"));
    QCOMPARE(call.member, inhibit);
    QCOMPARE(call.arguments, QVariantList({QStringLiteral("idle"), QStringLiteral("Vantorel"),
                                           reason, QStringLiteral("block")}));
    QVERIFY(desktop_->calls.empty());
    QCOMPARE(log.lines(), QStringList());
}

void IdleInhibitorTest::theLockIsHeldUntilTheEnd()
{
    QVERIFY(loginManager_->appear(systemBus_->connection()));
    auto inhibitor = this->inhibitor();
    QTRY_VERIFY(inhibitor->holder() == Holder::LoginManager);
    QVERIFY(loginManager_->isHeld());
    inhibitor.reset();
    QTRY_VERIFY(!loginManager_->isHeld());
}

void IdleInhibitorTest::nothingIsWaitedFor()
{
    QVERIFY(loginManager_->appear(systemBus_->connection()));
    const auto inhibitor = this->inhibitor();
    QVERIFY(loginManager_->calls.empty());
    QTRY_COMPARE(loginManager_->calls.size(), size_t(1));
}

void IdleInhibitorTest::theDesktopIsAskedWhereTheLoginManagerIs()
{
    QFETCH(Manner, manner);
    behave(*loginManager_, manner, systemBus_->connection());
    QVERIFY(desktop_->appear(sessionBus_->connection()));
    const RecordedLog log;
    const auto inhibitor = this->inhibitor(manner == Manner::Hanging ? 200 : 20000);
    QTRY_VERIFY(inhibitor->holder() == Holder::Desktop);
    QCOMPARE(desktop_->calls.size(), size_t(1));
    QCOMPARE(desktop_->calls.front().interface, QStringLiteral("org.freedesktop.ScreenSaver"));
    QCOMPARE(desktop_->callsTo(inhibit),
             std::vector<QVariantList>({{QStringLiteral("Vantorel"), reason}}));
    QVERIFY(loginManager_->calls.size() <= 1);
    QCOMPARE(log.lines(), QStringList());
}

void IdleInhibitorTest::theDesktopIsAskedWhereTheLoginManagerAnswersNonsense()
{
    loginManager_->answerWith = [](const FakeService::Call &) {
        return QVariantList{QStringLiteral("yes")};
    };
    QVERIFY(loginManager_->appear(systemBus_->connection()));
    QVERIFY(desktop_->appear(sessionBus_->connection()));
    const auto inhibitor = this->inhibitor();
    QTRY_VERIFY(inhibitor->holder() == Holder::Desktop);
}

void IdleInhibitorTest::theDesktopHearsOfTheEnd()
{
    QVERIFY(desktop_->appear(sessionBus_->connection()));
    auto inhibitor = this->inhibitor();
    QTRY_VERIFY(inhibitor->holder() == Holder::Desktop);
    inhibitor.reset();
    QTRY_COMPARE(desktop_->callsTo(unInhibit), std::vector<QVariantList>({{cookie}}));
}

void IdleInhibitorTest::whereTheDesktopIsTooThereIsOneLineInTheLog()
{
    QFETCH(Manner, manner);
    behave(*loginManager_, manner, systemBus_->connection());
    behave(*desktop_, manner, sessionBus_->connection());
    const RecordedLog log;
    auto inhibitor = this->inhibitor(manner == Manner::Hanging ? 200 : 20000);
    QTRY_COMPARE(log.lines().size(), 1);
    QVERIFY(log.lines().front().startsWith(QStringLiteral("IdleInhibitor ")));
    QVERIFY(inhibitor->holder() == Holder::Nobody);
    inhibitor.reset();
    QCOMPARE(desktop_->callsTo(unInhibit).size(), size_t(0));
}

void IdleInhibitorTest::withoutASystemBusTheDesktopIsAsked()
{
    QVERIFY(desktop_->appear(sessionBus_->connection()));
    systemConnection_ = QStringLiteral("no such connection");
    const auto inhibitor = this->inhibitor();
    QTRY_VERIFY(inhibitor->holder() == Holder::Desktop);
}

void IdleInhibitorTest::withoutAnyBusThereIsOneLineInTheLog()
{
    systemConnection_ = sessionConnection_ = QStringLiteral("no such connection");
    const RecordedLog log;
    const auto inhibitor = this->inhibitor();
    QTRY_COMPARE(log.lines(),
                 QStringList(QStringLiteral("IdleInhibitor no system bus; no session bus")));
}

void IdleInhibitorTest::aLockThatComesTooLateIsNotKept()
{
    behave(*loginManager_, Manner::Hanging, systemBus_->connection());
    QVERIFY(desktop_->appear(sessionBus_->connection()));
    const auto inhibitor = this->inhibitor(200);
    QTRY_VERIFY(inhibitor->holder() == Holder::Desktop);
    loginManager_->answerLate();
    QVERIFY(loginManager_->hasGivenLock());
    QTRY_VERIFY(!loginManager_->isHeld());
    QVERIFY(inhibitor->holder() == Holder::Desktop);
}

QTEST_GUILESS_MAIN(IdleInhibitorTest)
#include "IdleInhibitorTest.moc"
