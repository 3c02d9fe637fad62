#include "app/UpdatePresenter.h"

#include "app/update/UpdateTexts.h"
#include "app/update/UpdaterScene.h"
#include "ui/RunningDialog.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"

#include <QTest>

#include <optional>

class UpdatePresenterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void anOfferSaysVersionDateAndNotes();
    void longNotesAreCut();
    void progressIsInBytes();
    void anOfferIsAnsweredInItsDialog_data();
    void anOfferIsAnsweredInItsDialog();
    void aDownloadShowsHowFarItIsAndIsRevealed();
    void aDownloadThatIsCancelledLeavesNothing();
    void whoAskedInVainGetsOneSentence();
    void anOfferNobodyAskedForWaitsUntilItSuits();
    void switchedOffAnOfferThatWaitsIsDropped();

  private:
    UpdatePresenter &presenter()
    {
        if (!presenter_) {
            presenter_.emplace(
                scene_->settings, [this] { return isBusy_; },
                [this](const FileUrl &url) { scene_->revealed.push_back(url); });
            presenter_->updater().setDelegate(scene_->delegate);
        }
        return *presenter_;
    }

    std::optional<ThemedPreferences> preferences_;
    std::optional<UpdaterScene> scene_;
    std::optional<UpdatePresenter> presenter_;
    bool isBusy_ = false;
};

void UpdatePresenterTest::init()
{
    preferences_.emplace();
    scene_.emplace();
    isBusy_ = false;
}

void UpdatePresenterTest::cleanup()
{
    presenter_.reset();
    scene_.reset();
    preferences_.reset();
}

void UpdatePresenterTest::anOfferSaysVersionDateAndNotes()
{
    UpdateOffer offer;
    offer.version = QStringLiteral("1.2");
    QCOMPARE(UpdatePresenter::offerText(offer), QStringLiteral("Version 1.2"));
    offer.date = QDate(2022, 11, 5);
    offer.notes = QStringLiteral("Faster\nSafer\n");
    QCOMPARE(UpdatePresenter::offerText(offer),
             QStringLiteral("Version 1.2 of 5 November 2022\n\nFaster\nSafer"));
}

void UpdatePresenterTest::longNotesAreCut()
{
    UpdateOffer offer;
    offer.version = QStringLiteral("1.2");
    offer.notes = QStringLiteral("a").repeated(5000);
    QVERIFY(UpdatePresenter::offerText(offer).size() < 700);
    QVERIFY(UpdatePresenter::offerText(offer).endsWith(QChar(0x2026)));
    offer.notes = QStringLiteral("a\n").repeated(300);
    QVERIFY(UpdatePresenter::offerText(offer).count(QLatin1Char('\n')) < 15);
    QVERIFY(UpdatePresenter::offerText(offer).endsWith(QChar(0x2026)));
}

void UpdatePresenterTest::progressIsInBytes()
{
    QCOMPARE(UpdatePresenter::progressText(1'200'000, 40'000'000),
             QStringLiteral("1.20 MB of 40.00 MB"));
    QCOMPARE(UpdatePresenter::progressText(40'000'000, 40'000'000),
             QStringLiteral("Checking the signature\u2026"));
}

void UpdatePresenterTest::anOfferIsAnsweredInItsDialog_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("skipped");
    QTest::newRow("Later") << int(DialogGeometry::SecondButton) << QString();
    QTest::newRow("Skip") << int(DialogGeometry::ThirdButton) << QStringLiteral("1.1");
    QTest::newRow("Escape") << int(DialogGeometry::Cancelled) << QString();
}

void UpdatePresenterTest::anOfferIsAnsweredInItsDialog()
{
    QFETCH(int, answer);
    const DialogBox::Answers answers({answer});
    scene_->serve();
    presenter().updater().checkForUpdates();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QVERIFY(answers.asked()[0].info.startsWith(QStringLiteral("Version 1.1 of 15 November 2022")));
    QVERIFY(answers.asked()[0].info.endsWith(QStringLiteral("Faster")));
    QCOMPARE(answers.asked()[0].buttons,
             QStringList({QStringLiteral("Download"), QStringLiteral("Later"),
                          QStringLiteral("Skip This Version")}));
    QTRY_VERIFY(!presenter().updater().isBusy());
    QTEST(UpdateSettings::skippedVersion(), "skipped");
    QVERIFY(scene_->files().isEmpty());
}

void UpdatePresenterTest::aDownloadShowsHowFarItIsAndIsRevealed()
{
    scene_->serve();
    QString title;
    RunningDialog::whenShown([&title](DialogBox &offer) {
        RunningDialog::whenShown([&title](DialogBox &download) { title = download.title(); });
        offer.buttonPressed(offer.buttonsArray().first());
    });
    presenter().updater().checkForUpdates();
    QTRY_COMPARE(scene_->revealed.size(), std::size_t(1));
    QCOMPARE(scene_->files().size(), 1);
    QTRY_VERIFY(!RunningDialog::current());
    QVERIFY(title.isEmpty() || title == QStringLiteral("Downloading Vantorel 1.1"));
}

void UpdatePresenterTest::aDownloadThatIsCancelledLeavesNothing()
{
    scene_->serve();
    const DialogBox::Answers answers({DialogGeometry::FirstButton, DialogGeometry::FirstButton});
    presenter().updater().checkForUpdates();
    QTRY_COMPARE(answers.asked().size(), std::size_t(2));
    QCOMPARE(answers.asked()[1].title, QStringLiteral("Downloading Vantorel 1.1"));
    QCOMPARE(answers.asked()[1].buttons, QStringList(QStringLiteral("Cancel")));
    QTRY_VERIFY(!presenter().updater().isBusy());
    QVERIFY(scene_->files().isEmpty());
    QVERIFY(scene_->revealed.empty());
}

void UpdatePresenterTest::whoAskedInVainGetsOneSentence()
{
    scene_->serve("1.0");
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    presenter().updater().checkForUpdates();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].info,
             UpdateTexts::sentence(UpdateOutcome::NoNewerVersion, QStringLiteral("1.0")));
}

void UpdatePresenterTest::anOfferNobodyAskedForWaitsUntilItSuits()
{
    scene_->serve();
    isBusy_ = true;
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    presenter().updater().setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(presenter().hasWaitingOffer());
    QVERIFY(answers.asked().empty());
    isBusy_ = false;
    presenter().offerWhenItSuits();
    QCOMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].activeButton, 2);
    QVERIFY(!presenter().hasWaitingOffer());
}

void UpdatePresenterTest::switchedOffAnOfferThatWaitsIsDropped()
{
    scene_->serve();
    isBusy_ = true;
    const DialogBox::Answers answers({});
    presenter().updater().setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(presenter().hasWaitingOffer());
    presenter().updater().setAutomaticallyChecksForUpdates(false);
    isBusy_ = false;
    presenter().offerWhenItSuits();
    QVERIFY(!presenter().hasWaitingOffer());
    QVERIFY(answers.asked().empty());
    QVERIFY(!presenter().updater().isBusy());
}

QTEST_MAIN(UpdatePresenterTest)
#include "UpdatePresenterTest.moc"
