#include "app/OutsideEntries.h"

#include "ui/RunningDialog.h"
#include "ui/ThemedPreferences.h"

#include <QTest>

#include <optional>

using Batches = std::vector<OutsideEntries::Paths>;

namespace {

void runStarts()
{
    NotificationHub::shared().post(NotificationName::runDidStart);
}

void runEnds()
{
    NotificationHub::shared().post(NotificationName::runDidEnd);
}

} // namespace

class OutsideEntriesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void withoutARunTheyAreQueuedAtOnce();
    void inARunTheUserIsAsked_data();
    void inARunTheUserIsAsked();
    void noIsTheDefault();
    void whoeverHandsOverDoesNotWaitForTheUser();
    void severalBatchesAreAskedForTogetherAndStayApart();
    void whatComesDuringTheQuestionIsAskedForAfterwards();
    void whatWaitsWhenTheRunEndsIsListedForTheNext();
    void theQuestionSaysHowMany();

  private:
    std::optional<ThemedPreferences> preferences_;
    std::optional<OutsideEntries> entries_;
    Batches entered_;
};

void OutsideEntriesTest::init()
{
    preferences_.emplace();
    entered_.clear();
    entries_.emplace([this](const OutsideEntries::Paths &paths) { entered_.push_back(paths); });
}

void OutsideEntriesTest::cleanup()
{
    entries_.reset();
    preferences_.reset();
}

void OutsideEntriesTest::withoutARunTheyAreQueuedAtOnce()
{
    const DialogBox::Answers answers({});
    entries_->take({"/a", "/b"});
    QVERIFY(entered_ == (Batches{{"/a", "/b"}}));
    runStarts();
    runEnds();
    entries_->take({});
    QCOMPARE(entered_.size(), std::size_t(2));
    QVERIFY(answers.asked().empty());
}

void OutsideEntriesTest::inARunTheUserIsAsked_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isEntered");
    QTest::newRow("Yes") << int(DialogGeometry::FirstButton) << true;
    QTest::newRow("No") << int(DialogGeometry::SecondButton) << false;
    QTest::newRow("Escape") << int(DialogGeometry::Cancelled) << false;
    QTest::newRow("closed") << int(DialogGeometry::Closed) << false;
}

void OutsideEntriesTest::inARunTheUserIsAsked()
{
    QFETCH(int, answer);
    QFETCH(bool, isEntered);
    const DialogBox::Answers answers({answer});
    runStarts();
    entries_->take({"/a"});
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].title, QStringLiteral("Erase these with the others?"));
    QCOMPARE(answers.asked()[0].info, OutsideEntries::question(1));
    QVERIFY(entered_ == (isEntered ? Batches{{"/a"}} : Batches{}));
    // What was refused does not come back by itself.
    runEnds();
    QTest::qWait(1);
    QCOMPARE(entered_.size(), std::size_t(isEntered ? 1 : 0));
}

void OutsideEntriesTest::noIsTheDefault()
{
    bool isAnswered = false;
    RunningDialog::whenShown([&isAnswered](DialogBox &dialog) {
        QTest::keyClick(&dialog, Qt::Key_Return);
        isAnswered = true;
    });
    runStarts();
    entries_->take({"/a"});
    QTRY_VERIFY(isAnswered);
    QVERIFY(!RunningDialog::current());
    QVERIFY(entered_.empty());
}

void OutsideEntriesTest::whoeverHandsOverDoesNotWaitForTheUser()
{
    runStarts();
    bool isAsked = false;
    RunningDialog::whenShown([&isAsked](DialogBox &dialog) {
        isAsked = true;
        dialog.cancel();
    });
    entries_->take({"/a"});
    QVERIFY(!RunningDialog::current());
    QTRY_VERIFY(isAsked);
}

void OutsideEntriesTest::severalBatchesAreAskedForTogetherAndStayApart()
{
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    runStarts();
    entries_->take({"/a", "/b"});
    entries_->take({"/c"});
    QTRY_COMPARE(entered_.size(), std::size_t(2));
    QVERIFY(entered_ == (Batches{{"/a", "/b"}, {"/c"}}));
    QCOMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].info, OutsideEntries::question(3));
}

void OutsideEntriesTest::whatComesDuringTheQuestionIsAskedForAfterwards()
{
    bool isAskedAgain = false;
    RunningDialog::whenShown([&](DialogBox &first) {
        entries_->take({"/b"});
        RunningDialog::whenShown([&isAskedAgain](DialogBox &second) {
            isAskedAgain = second.info() == OutsideEntries::question(1);
            second.cancel();
        });
        first.buttonPressed(first.buttonsArray().first());
    });
    runStarts();
    entries_->take({"/a"});
    QTRY_VERIFY(isAskedAgain);
    QVERIFY(entered_ == (Batches{{"/a"}}));
}

void OutsideEntriesTest::whatWaitsWhenTheRunEndsIsListedForTheNext()
{
    RunningDialog::whenShown([this](DialogBox &) {
        entries_->take({"/b"});
        runEnds();
    });
    runStarts();
    entries_->take({"/a"});
    QTRY_COMPARE(entered_.size(), std::size_t(2));
    QVERIFY(!RunningDialog::current());
}

void OutsideEntriesTest::theQuestionSaysHowMany()
{
    QVERIFY(OutsideEntries::question(1).startsWith(QStringLiteral("1 item came")));
    QVERIFY(OutsideEntries::question(12000).startsWith(QStringLiteral("12,000 items came")));
}

QTEST_MAIN(OutsideEntriesTest)
#include "OutsideEntriesTest.moc"
