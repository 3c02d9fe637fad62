#include "support/NotificationCenter.h"

#include "engine/RecordedLog.h"

#include <QTest>

class NotificationCenterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { QVERIFY(qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent")); }

    void aMessageThatNobodyShowsStandsInTheLogAndIsDone();
    void nobodyNeedsToWaitForIt();
};

void NotificationCenterTest::aMessageThatNobodyShowsStandsInTheLogAndIsDone()
{
    const RecordedLog log;
    int done = 0;
    NotificationCenter::showMessage(QStringLiteral("Vantorel Finished"),
                                    QStringLiteral("Wiping done."), [&done] { ++done; });
    QCOMPARE(done, 0);
    QTRY_COMPARE(done, 1);
    QCOMPARE(log.lines().size(), 1);
    QVERIFY(log.lines().first().startsWith(
        QStringLiteral("UserNotification Vantorel Finished: Wiping done. (")));
}

void NotificationCenterTest::nobodyNeedsToWaitForIt()
{
    const RecordedLog log;
    NotificationCenter::showMessage(QStringLiteral("Title"), QStringLiteral("text"));
    QTRY_COMPARE(log.lines().size(), 1);
}

QTEST_GUILESS_MAIN(NotificationCenterTest)
#include "NotificationCenterTest.moc"
