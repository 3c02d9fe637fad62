#include "app/AutoExit.h"

#include <QTest>

using AutoExit::Situation;

class AutoExitTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void quitsOnlyWhenNothingSpeaksAgainstIt_data();
    void quitsOnlyWhenNothingSpeaksAgainstIt();
};

namespace {

/// A finished run without failures, and the wish to quit then.
Situation allDone()
{
    Situation situation;
    situation.isWanted = true;
    return situation;
}

template <class Change> Situation with(Change change)
{
    Situation situation = allDone();
    change(situation);
    return situation;
}

} // namespace

Q_DECLARE_METATYPE(AutoExit::Situation)

void AutoExitTest::quitsOnlyWhenNothingSpeaksAgainstIt_data()
{
    QTest::addColumn<Situation>("situation");
    QTest::addColumn<bool>("quits");
    QTest::newRow("all is done") << allDone() << true;
    QTest::newRow("not wanted") << with([](Situation &now) { now.isWanted = false; }) << false;
    QTest::newRow("a failure waits")
        << with([](Situation &now) { now.hasFailures = true; }) << false;
    QTest::newRow("another run") << with([](Situation &now) { now.isBusyWiping = true; }) << false;
    QTest::newRow("a scan") << with([](Situation &now) { now.isScanningFiles = true; }) << false;
    QTest::newRow("a dialog") << with([](Situation &now) { now.isDialogOpen = true; }) << false;
    QTest::newRow("a drag") << with([](Situation &now) { now.isDragOver = true; }) << false;
    QTest::newRow("files wait") << with([](Situation &now) { now.isQueueEmpty = false; }) << false;
}

void AutoExitTest::quitsOnlyWhenNothingSpeaksAgainstIt()
{
    QFETCH(Situation, situation);
    QTEST(AutoExit::shouldQuit(situation), "quits");
}

QTEST_APPLESS_MAIN(AutoExitTest)
#include "AutoExitTest.moc"
