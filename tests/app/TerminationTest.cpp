#include "app/Termination.h"

#include "ui/RunningDialog.h"
#include "ui/ThemedPreferences.h"

#include <QApplication>
#include <QTest>

#include <optional>

using namespace std::chrono_literals;

namespace {

void runEnds()
{
    NotificationHub::shared().post(NotificationName::runDidEnd);
}

} // namespace

class TerminationTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void withoutARunItLeavesAtOnce();
    void itsEndIsToldBeforeItLeavesAndOnlyOnce();
    void aRunIsCutOffOnlyWhenTheUserSaysYes_data();
    void aRunIsCutOffOnlyWhenTheUserSaysYes();
    void noIsTheDefault();
    void theQuestionClosesAsNoWhenTheRunEnds();
    void aYesThatComesWithTheEndOfTheRunCutsNothingOff();
    void whileItIsAskedItIsNotAskedAgain();
    void itSaysWhatWouldBeLost_data();
    void itSaysWhatWouldBeLost();
    void theSystemStopsARunBehindTheFileInWork();
    void aFileThatTakesTooLongIsLeftInPlace();
    void aRunThatEndsInTimeIsNotCutOff();
    void theSystemIsObeyedWhileTheQuestionIsAsked();
    void theSessionsEndWaitsForTheFileInWorkAndStays();
    void withoutARunTheSessionsEndWaitsForNothing();

  private:
    std::optional<ThemedPreferences> preferences_;
    std::optional<Termination> termination_;
    bool isErasing_ = false;
    int stops_ = 0;
    int scanStops_ = 0;
    int deafnesses_ = 0;
    QStringList events_; ///< what happened at the end, in its order
    NotificationHub::Token told_;
};

void TerminationTest::init()
{
    preferences_.emplace();
    isErasing_ = true;
    stops_ = 0;
    scanStops_ = 0;
    deafnesses_ = 0;
    events_.clear();
    Termination::Actions actions;
    actions.isErasing = [this] { return isErasing_; };
    actions.stopErasing = [this] { ++stops_; };
    actions.stopScan = [this] { ++scanStops_; };
    actions.stopListening = [this] { ++deafnesses_; };
    actions.filesRemaining = [] { return std::int64_t(144); };
    actions.leave = [this] { events_.append(QStringLiteral("left")); };
    actions.endNow = [this](int code) { events_.append(QStringLiteral("cut off %1").arg(code)); };
    termination_.emplace(std::move(actions));
    told_ = NotificationHub::shared().observe(
        NotificationName::applicationWillTerminate,
        [this](const auto &) { events_.append(QStringLiteral("told")); });
}

void TerminationTest::cleanup()
{
    told_.stop();
    termination_.reset();
    preferences_.reset();
}

void TerminationTest::withoutARunItLeavesAtOnce()
{
    isErasing_ = false;
    termination_->quit();
    QCOMPARE(events_, QStringList({QStringLiteral("told"), QStringLiteral("left")}));
    events_.clear();
    termination_->stop();
    QCOMPARE(events_, QStringList(QStringLiteral("left")));
    QCOMPARE(stops_, 0);
    QVERIFY(scanStops_ > 0);
    QVERIFY(deafnesses_ > 0);
}

void TerminationTest::itsEndIsToldBeforeItLeavesAndOnlyOnce()
{
    termination_->leave();
    termination_->leave();
    QCOMPARE(events_,
             QStringList({QStringLiteral("told"), QStringLiteral("left"), QStringLiteral("left")}));
}

void TerminationTest::aRunIsCutOffOnlyWhenTheUserSaysYes_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QStringList>("events");
    QTest::newRow("Yes") << int(DialogGeometry::FirstButton)
                         << QStringList({QStringLiteral("told"), QStringLiteral("cut off 0")});
    QTest::newRow("No") << int(DialogGeometry::SecondButton) << QStringList();
    QTest::newRow("Escape") << int(DialogGeometry::Cancelled) << QStringList();
    QTest::newRow("closed") << int(DialogGeometry::Closed) << QStringList();
}

void TerminationTest::aRunIsCutOffOnlyWhenTheUserSaysYes()
{
    QFETCH(int, answer);
    const DialogBox::Answers answers({answer});
    termination_->quit();
    QTEST(events_, "events");
    QCOMPARE(stops_, 0);
    QCOMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].title, QStringLiteral("Quit while files are being erased?"));
    QCOMPARE(answers.asked()[0].info,
             QStringLiteral("The current file would be left half overwritten, and 143 files would "
                            "not be erased at all."));
    QCOMPARE(answers.asked()[0].buttons,
             QStringList({QStringLiteral("Yes"), QStringLiteral("No")}));
}

void TerminationTest::noIsTheDefault()
{
    RunningDialog::whenShown([](DialogBox &dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    termination_->quit();
    QVERIFY(events_.isEmpty());
    RunningDialog::whenShown([](DialogBox &dialog) { QTest::keyClick(&dialog, Qt::Key_Space); });
    termination_->quit();
    QCOMPARE(events_.last(), QStringLiteral("cut off 0"));
}

void TerminationTest::theQuestionClosesAsNoWhenTheRunEnds()
{
    RunningDialog::whenShown([this](DialogBox &) {
        isErasing_ = false;
        runEnds();
    });
    termination_->quit();
    QVERIFY(!RunningDialog::current());
    QVERIFY(events_.isEmpty());
}

void TerminationTest::aYesThatComesWithTheEndOfTheRunCutsNothingOff()
{
    RunningDialog::whenShown([this](DialogBox &dialog) {
        isErasing_ = false;
        dialog.buttonPressed(dialog.buttonsArray().first());
    });
    termination_->quit();
    QVERIFY(events_.isEmpty());
}

void TerminationTest::whileItIsAskedItIsNotAskedAgain()
{
    int shown = 0;
    RunningDialog::whenShown([this, &shown](DialogBox &dialog) {
        termination_->quit();
        for (const QWidget *widget : QApplication::topLevelWidgets())
            shown += qobject_cast<const DialogBox *>(widget) != nullptr;
        dialog.cancel();
    });
    termination_->quit();
    QCOMPARE(shown, 1);
}

void TerminationTest::itSaysWhatWouldBeLost_data()
{
    QTest::addColumn<qint64>("remaining");
    QTest::addColumn<QString>("sentence");
    const QString first = QStringLiteral("The current file would be left half overwritten");
    QTest::newRow("the file in work") << qint64(1) << first + QStringLiteral(".");
    QTest::newRow("one more") << qint64(2)
                              << first + QStringLiteral(", and 1 file would not be erased at all.");
    QTest::newRow("many") << qint64(1'000'001)
                          << first + QStringLiteral(
                                         ", and 1,000,000 files would not be erased at all.");
    QTest::newRow("none") << qint64(0) << first + QStringLiteral(".");
}

void TerminationTest::itSaysWhatWouldBeLost()
{
    QFETCH(qint64, remaining);
    QTEST(Termination::whatWouldBeLost(remaining), "sentence");
}

void TerminationTest::theSystemStopsARunBehindTheFileInWork()
{
    termination_->stop();
    // What comes from now on is another application's.
    QVERIFY(deafnesses_ > 0);
    termination_->stop();
    QVERIFY(stops_ > 0);
    QVERIFY(events_.isEmpty());
    isErasing_ = false;
    runEnds();
    QCOMPARE(events_, QStringList({QStringLiteral("told"), QStringLiteral("left")}));
}

void TerminationTest::aFileThatTakesTooLongIsLeftInPlace()
{
    termination_->setPatience(1ms);
    termination_->stop();
    QTRY_COMPARE(events_, QStringList({QStringLiteral("told"), QStringLiteral("cut off 143")}));
}

void TerminationTest::aRunThatEndsInTimeIsNotCutOff()
{
    termination_->setPatience(1ms);
    termination_->stop();
    isErasing_ = false;
    runEnds();
    // Later than the limit would have been.
    bool isLater = false;
    QTimer::singleShot(20ms, this, [&isLater] { isLater = true; });
    QTRY_VERIFY(isLater);
    QVERIFY(!events_.contains(QStringLiteral("cut off 143")));
}

void TerminationTest::theSystemIsObeyedWhileTheQuestionIsAsked()
{
    RunningDialog::whenShown([this](DialogBox &) {
        termination_->stop();
        isErasing_ = false;
        runEnds();
    });
    termination_->quit();
    QCOMPARE(stops_, 1);
    QCOMPARE(events_, QStringList({QStringLiteral("told"), QStringLiteral("left")}));
}

void TerminationTest::theSessionsEndWaitsForTheFileInWorkAndStays()
{
    QTimer::singleShot(20ms, this, [this] {
        isErasing_ = false;
        runEnds();
    });
    termination_->finishFileInWork();
    QVERIFY(!isErasing_);
    QCOMPARE(stops_, 1);
    QCOMPARE(deafnesses_, 0);
    QVERIFY(events_.isEmpty());
}

void TerminationTest::withoutARunTheSessionsEndWaitsForNothing()
{
    isErasing_ = false;
    termination_->finishFileInWork();
    QCOMPARE(stops_, 0);
    QVERIFY(events_.isEmpty());
}

QTEST_MAIN(TerminationTest)
#include "TerminationTest.moc"
