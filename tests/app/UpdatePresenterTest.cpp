#include "app/UpdatePresenter.h"

#include "app/Termination.h"
#include "app/update/HeldReading.h"
#include "app/update/UpdateTexts.h"
#include "app/update/UpdaterScene.h"
#include "ui/MainMenu.h"
#include "ui/RunningDialog.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"

#include <QTest>

#include <optional>

using Ends = void (Termination::*)();
Q_DECLARE_METATYPE(Ends)

namespace {

/// The half of a file, and then nothing.
LoopbackServer::Answer half(const QByteArray &file)
{
    return [file](QTcpSocket *socket) {
        socket->write(LoopbackServer::head(file.size()) + file.first(file.size() / 2));
    };
}

/// The application's end, without that of the test's process: `isErasing` as long as it says.
Termination::Actions actions(bool isErasing, std::function<void(int)> endNow = {})
{
    Termination::Actions actions;
    actions.isErasing = [isErasing] { return isErasing; };
    actions.stopErasing = [] {};
    actions.filesRemaining = [] { return std::int64_t(1); };
    actions.stopScan = [] {};
    actions.stopListening = [] {};
    actions.leave = [] { QApplication::quit(); };
    actions.endNow = std::move(endNow);
    return actions;
}

} // namespace

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
    void anOfferHearsNoShortcutOfTheWindow();
    void theApplicationEndsThoughAnOfferIsOpen_data() { ends(); }
    void theApplicationEndsThoughAnOfferIsOpen();
    void theApplicationEndsThoughADownloadRuns_data() { ends(); }
    void theApplicationEndsThoughADownloadRuns();
    void theApplicationEndsThoughASignatureIsChecked();
    void cutOffNothingOfADownloadStays_data();
    void cutOffNothingOfADownloadStays();

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

    static void ends()
    {
        QTest::addColumn<Ends>("end");
        QTest::newRow("the user quits") << &Termination::quit;
        QTest::newRow("the system wants it") << &Termination::stop;
    }
    /// Asks for the release and takes it. `act` runs once some of it stands in the folder.
    void download(const std::function<void()> &act);

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

/// As in every modal dialog; the window below is not reached.
void UpdatePresenterTest::anOfferHearsNoShortcutOfTheWindow()
{
    scene_->serve();
    QWidget window;
    MainMenu menu(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    int quits = 0;
    connect(menu.quit(), &QAction::triggered, this, [&quits] { ++quits; });
    QTest::keyClick(window.windowHandle(), Qt::Key_Q, Qt::ControlModifier);
    QCOMPARE(quits, 1);
    bool isOpenStill = false;
    RunningDialog::whenShown([&](DialogBox &offer) {
        RunningDialog::press(offer, Qt::Key_Q, Qt::ControlModifier);
        isOpenStill = offer.isVisible() && RunningDialog::current() == &offer;
        RunningDialog::press(offer, Qt::Key_Escape);
    });
    presenter().updater().checkForUpdates();
    QTRY_VERIFY(isOpenStill && !presenter().updater().isBusy());
    QCOMPARE(quits, 1);
    QCOMPARE(UpdateSettings::skippedVersion(), QString());
    QCOMPARE(scene_->server.count("/file"), 0);
}

void UpdatePresenterTest::theApplicationEndsThoughAnOfferIsOpen()
{
    QFETCH(Ends, end);
    scene_->serve();
    Termination termination(actions(false));
    RunningDialog::whenShown([&](DialogBox &) { (termination.*end)(); });
    presenter().updater().checkForUpdates();
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!RunningDialog::current());
    QVERIFY(!presenter().updater().isBusy());
    QCOMPARE(UpdateSettings::skippedVersion(), QString());
    QCOMPARE(scene_->server.count("/file"), 0);
    QCOMPARE(scene_->files(), QStringList());
}

void UpdatePresenterTest::download(const std::function<void()> &act)
{
    scene_->settings.unfinished = UnfinishedFile::Kind::Named;
    RunningDialog::whenShown([this, act](DialogBox &offer) {
        RunningDialog::whenShown([this, act](DialogBox &) {
            QTRY_COMPARE(scene_->files().size(), 1);
            act();
        });
        offer.buttonPressed(offer.buttonsArray().first());
    });
    presenter().updater().checkForUpdates();
}

void UpdatePresenterTest::theApplicationEndsThoughADownloadRuns()
{
    QFETCH(Ends, end);
    scene_->serve();
    scene_->server.answer("/file", half(scene_->file));
    Termination termination(actions(false));
    QStringList atTheEnd(QStringLiteral("not asked"));
    download([&] {
        (termination.*end)();
        atTheEnd = scene_->files();
    });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(atTheEnd, QStringList());
    QVERIFY(!RunningDialog::current());
    QVERIFY(!presenter().updater().isBusy());
    QCOMPARE(scene_->files(), QStringList());
}

void UpdatePresenterTest::theApplicationEndsThoughASignatureIsChecked()
{
    scene_->serve();
    Termination termination(actions(false));
    {
        HeldReading reading;
        download([&] {
            QTRY_VERIFY(reading.isReached());
            termination.quit();
        });
        QCOMPARE(QApplication::exec(), 0);
        // As long as it is held: the process need not wait for it.
        QCOMPARE(scene_->files(), QStringList());
    }
    presenter_.reset();
    QCOMPARE(scene_->files(), QStringList());
    QVERIFY(scene_->revealed.empty());
}

void UpdatePresenterTest::cutOffNothingOfADownloadStays_data()
{
    QTest::addColumn<Ends>("end");
    QTest::addColumn<int>("code");
    QTest::newRow("the user says Yes") << &Termination::quit << 0;
    QTest::newRow("a file takes too long") << &Termination::stop << 143;
}

/// Behind the cut nothing is done any more, so it has to be gone before.
void UpdatePresenterTest::cutOffNothingOfADownloadStays()
{
    QFETCH(Ends, end);
    scene_->serve();
    scene_->server.answer("/file", half(scene_->file));
    QStringList atTheCut(QStringLiteral("not asked"));
    int code = -1;
    Termination termination(actions(true, [&](int exitCode) {
        atTheCut = scene_->files();
        code = exitCode;
        QApplication::quit();
    }));
    termination.setPatience(std::chrono::milliseconds(1));
    download([&] {
        const DialogBox::Answers answers({DialogGeometry::FirstButton});
        (termination.*end)();
    });
    QApplication::exec();
    QTEST(code, "code");
    QCOMPARE(atTheCut, QStringList());
}

QTEST_MAIN(UpdatePresenterTest)
#include "UpdatePresenterTest.moc"
