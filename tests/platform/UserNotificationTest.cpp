#include "platform/UserNotification.h"

#include "engine/RecordedLog.h"
#include "kit/PrivateBus.h"

#include <QDBusContext>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
const QString title = QStringLiteral("Vantorel Finished");
const QString text = QStringLiteral("Wiping done.");

} // namespace

/// Keeps what it is asked to show and answers as it is told to.
class FakeNotifications : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

  public:
    enum class Answer { Yes, Refusal, None };

    bool appear(QDBusConnection bus)
    {
        return bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                  QDBusConnection::ExportAllSlots) &&
               bus.registerService(serviceName);
    }

    Answer answer = Answer::Yes;
    int count = 0;
    QString application, icon, summary, body;
    uint replaced = 99;
    QStringList actions{QStringLiteral("none yet")};
    QVariantMap hints;
    int timeout = 99;

  public Q_SLOTS:
    uint Notify(const QString &givenApplication, uint givenReplaced, const QString &givenIcon,
                const QString &givenSummary, const QString &givenBody,
                const QStringList &givenActions, const QVariantMap &givenHints, int givenTimeout)
    {
        ++count;
        application = givenApplication;
        replaced = givenReplaced;
        icon = givenIcon;
        summary = givenSummary;
        body = givenBody;
        actions = givenActions;
        hints = givenHints;
        timeout = givenTimeout;
        if (answer == Answer::Refusal)
            sendErrorReply(QDBusError::LimitsExceeded, QStringLiteral("too many notes"));
        setDelayedReply(answer == Answer::None);
        return 1;
    }
};

class UserNotificationTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theServiceShowsTitleTextAndSoundWithoutButtons();
    void theCallReturnsBeforeTheServiceAnswers();
    void eachMessageIsANoteOfItsOwn();
    void anAbsentServiceIsALineInTheLog();
    void aServiceThatRefusesIsALineInTheLog();
    void aServiceThatHangsIsGivenUpAfterTheTimeLimit();
    void withoutABusTheLineStandsInTheLog();
    void nobodyNeedsToWaitForTheEnd();

  private:
    void show(int milliseconds = 20000);

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<FakeNotifications> service_;
    QString connection_;
    int done_ = 0;
};

void UserNotificationTest::init()
{
    bus_ = std::make_unique<PrivateBus>();
    QVERIFY(bus_->isThere());
    service_ = std::make_unique<FakeNotifications>();
    connection_ = bus_->connection().name();
    done_ = 0;
}

void UserNotificationTest::cleanup()
{
    service_.reset();
    bus_.reset();
}

void UserNotificationTest::show(int milliseconds)
{
    UserNotification::show(title, text, [this] { ++done_; }, {connection_, milliseconds});
}

void UserNotificationTest::theServiceShowsTitleTextAndSoundWithoutButtons()
{
    QVERIFY(service_->appear(bus_->connection()));
    const RecordedLog log;
    show();
    QTRY_COMPARE(done_, 1);
    QCOMPARE(service_->count, 1);
    QCOMPARE(service_->application, QStringLiteral("Vantorel"));
    QCOMPARE(service_->summary, title);
    QCOMPARE(service_->body, text);
    QCOMPARE(service_->replaced, 0U);
    QCOMPARE(service_->actions, QStringList());
    QCOMPARE(service_->hints.value(QStringLiteral("sound-name")).toString(),
             QStringLiteral("message-new-instant"));
    QCOMPARE(service_->hints.value(QStringLiteral("desktop-entry")).toString(),
             QStringLiteral("org.vantorel.Vantorel"));
    QCOMPARE(service_->icon, QStringLiteral("org.vantorel.Vantorel"));
    QCOMPARE(service_->timeout, -1);
    QCOMPARE(log.lines(), QStringList());
}

void UserNotificationTest::theCallReturnsBeforeTheServiceAnswers()
{
    QVERIFY(service_->appear(bus_->connection()));
    show();
    QCOMPARE(done_, 0);
    QCOMPARE(service_->count, 0);
    QTRY_COMPARE(done_, 1);
}

void UserNotificationTest::eachMessageIsANoteOfItsOwn()
{
    QVERIFY(service_->appear(bus_->connection()));
    show();
    show();
    QTRY_COMPARE(done_, 2);
    QCOMPARE(service_->count, 2);
    QCOMPARE(service_->replaced, 0U);
}

void UserNotificationTest::anAbsentServiceIsALineInTheLog()
{
    const RecordedLog log;
    show();
    QTRY_COMPARE(done_, 1);
    QCOMPARE(log.lines().size(), 1);
    QVERIFY(log.lines().first().startsWith(
        QStringLiteral("UserNotification Vantorel Finished: Wiping done. (")));
}

void UserNotificationTest::aServiceThatRefusesIsALineInTheLog()
{
    service_->answer = FakeNotifications::Answer::Refusal;
    QVERIFY(service_->appear(bus_->connection()));
    const RecordedLog log;
    show();
    QTRY_COMPARE(done_, 1);
    QCOMPARE(log.lines(),
             QStringList(QStringLiteral(
                 "UserNotification Vantorel Finished: Wiping done. (too many notes)")));
}

void UserNotificationTest::aServiceThatHangsIsGivenUpAfterTheTimeLimit()
{
    service_->answer = FakeNotifications::Answer::None;
    QVERIFY(service_->appear(bus_->connection()));
    const RecordedLog log;
    show(100);
    QTRY_COMPARE(service_->count, 1);
    QTRY_COMPARE(done_, 1);
    QCOMPARE(log.lines().size(), 1);
}

void UserNotificationTest::withoutABusTheLineStandsInTheLog()
{
    connection_ = QStringLiteral("no such connection");
    const RecordedLog log;
    show();
    QTRY_COMPARE(done_, 1);
    QCOMPARE(log.lines().size(), 1);
}

void UserNotificationTest::nobodyNeedsToWaitForTheEnd()
{
    QVERIFY(service_->appear(bus_->connection()));
    UserNotification::show(title, text, {}, {connection_, 20000});
    QTRY_COMPARE(service_->count, 1);
    show();
    QTRY_COMPARE(done_, 1);
}

QTEST_GUILESS_MAIN(UserNotificationTest)
#include "UserNotificationTest.moc"
