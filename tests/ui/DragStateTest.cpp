#include "ui/DragState.h"

#include <QSignalSpy>
#include <QTest>

class DragStateTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aDragIsToldWithItsNumberOfItems();
    void goingFromTheWindowToTheDropImageIsNoEnd();
    void leavingAllTargetsIsTheEnd();
    void aDragThatLeftBeforeItWasToldIsNotTold();
};

void DragStateTest::aDragIsToldWithItsNumberOfItems()
{
    DragState state;
    QSignalSpy told(&state, &DragState::changed);
    QObject window;
    state.entered(&window, 12);
    QVERIFY(told.isEmpty());
    QTRY_COMPARE(told.size(), 1);
    QCOMPARE(told.first().first().toInt(), 12);
    QCOMPARE(state.items(), 12);
}

void DragStateTest::goingFromTheWindowToTheDropImageIsNoEnd()
{
    DragState state;
    QSignalSpy told(&state, &DragState::changed);
    QObject window;
    QObject image;
    state.entered(&window, 2);
    QTRY_COMPARE(told.size(), 1);
    state.left(&window);
    state.entered(&image, 2);
    QCoreApplication::processEvents();
    QCOMPARE(told.size(), 1);
    state.entered(&window, 2);
    state.left(&image);
    QCoreApplication::processEvents();
    QCOMPARE(told.size(), 1);
    QCOMPARE(state.items(), 2);
}

void DragStateTest::leavingAllTargetsIsTheEnd()
{
    DragState state;
    QSignalSpy told(&state, &DragState::changed);
    QObject window;
    state.entered(&window, 2);
    QTRY_COMPARE(told.size(), 1);
    state.left(&window);
    QTRY_COMPARE(told.size(), 2);
    QCOMPARE(told.last().first().toInt(), DragState::noDrag);
}

void DragStateTest::aDragThatLeftBeforeItWasToldIsNotTold()
{
    DragState state;
    QSignalSpy told(&state, &DragState::changed);
    QObject window;
    state.entered(&window, 2);
    state.left(&window);
    QCoreApplication::processEvents();
    QVERIFY(told.isEmpty());
}

QTEST_GUILESS_MAIN(DragStateTest)
#include "DragStateTest.moc"
