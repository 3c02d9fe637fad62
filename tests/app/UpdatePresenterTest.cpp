#include "app/UpdatePresenter.h"

#include "app/Announcer.h"
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
    void noCharacterIsCutInHalf();
    void noLinesOfNotesMakeADialogTallerThanTheOthers();
    void progressIsInBytes();
    void anOfferIsAnsweredInItsDialog_data();
    void anOfferIsAnsweredInItsDialog();
    void aDownloadShowsHowFarItIsAndIsRevealed();
    void aDownloadIsHeardByQuarters();
    void aDownloadThatIsCancelledLeavesNothing();
    void whoAskedInVainGetsOneSentence();
    void anOfferWaitsUntilItSuits_data();
    void anOfferWaitsUntilItSuits();
    void aSentenceWaitsUntilItSuits();
    void whoAskedIsAnsweredSoonAfterwards();
    void whatWaitedIsCheckedAgain_data();
    void whatWaitedIsCheckedAgain();
    void whoAsksWhileAnOfferWaitsGetsWhatThereIsNow();
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
    /// A check, or the first automatic one.
    void check(bool isAskedFor);
    /// Asks for the release and takes it. `act` runs when the download is shown.
    void takeOffer(const std::function<void(DialogBox &)> &act);
    /// The same, once some of it stands in the folder.
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

void UpdatePresenterTest::noCharacterIsCutInHalf()
{
    UpdateOffer offer;
    offer.version = QStringLiteral("1.2");
    offer.notes = QStringLiteral("a") + QStringLiteral("\U0001F512").repeated(400);
    const QString text = UpdatePresenter::offerText(offer);
    QCOMPARE(text, QString::fromUtf8(text.toUtf8()));
    QVERIFY(text.endsWith(QStringLiteral("\U0001F512\u2026")));
    QCOMPARE(text.count(QStringLiteral("\U0001F512")), 299);
}

/// Some characters are line ends where a text is shown that are none where it is read.
void UpdatePresenterTest::noLinesOfNotesMakeADialogTallerThanTheOthers()
{
    const auto height = [](const QString &lineEnd) {
        UpdateOffer offer;
        offer.version = QStringLiteral("1.2");
        offer.notes = UpdateTexts::plainNotes((QStringLiteral("a") + lineEnd).repeated(300));
        DialogBox dialog(QStringLiteral("Title"), UpdatePresenter::offerText(offer));
        dialog.windowDidLoad();
        return dialog.height();
    };
    const int usual = height(QStringLiteral("\n"));
    for (char32_t lineEnd : {U'\v', U'\f', U'\r', U'\u0085', U'\u2028', U'\u2029'})
        QVERIFY2(height(QString::fromUcs4(&lineEnd, 1)) <= usual,
                 qPrintable(QString::number(lineEnd, 16)));
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
    QPointer<QTcpSocket> connection;
    scene_->server.answer("/file", [&](QTcpSocket *socket) {
        connection = socket;
        half(scene_->file)(socket);
    });
    QStringList seen;
    takeOffer([&](DialogBox &dialog) {
        const QString halfWay = UpdatePresenter::progressText(scene_->file.size() / 2, //
                                                              scene_->file.size());
        QTRY_COMPARE(dialog.infoTextfield()->text(), halfWay);
        seen = {dialog.title(), dialog.accessibleDescription()};
        connection->write(scene_->file.sliced(scene_->file.size() / 2));
    });
    QTRY_COMPARE(scene_->revealed.size(), std::size_t(1));
    QCOMPARE(seen, QStringList({QStringLiteral("Downloading Vantorel 1.1"),
                                QStringLiteral("225.00 KB of 450.00 KB")}));
    QCOMPARE(scene_->files().size(), 1);
    QTRY_VERIFY(!RunningDialog::current());
}

/// The server says when more comes, so that each piece is told on its own.
void UpdatePresenterTest::aDownloadIsHeardByQuarters()
{
    scene_->serve();
    QPointer<QTcpSocket> connection;
    scene_->server.answer("/file", [&](QTcpSocket *socket) {
        connection = socket;
        socket->write(LoopbackServer::head(scene_->file.size()));
    });
    const auto piece = [&](DialogBox &dialog, double from, double to) {
        const auto size = double(scene_->file.size());
        connection->write(
            scene_->file.sliced(qsizetype(size * from), qsizetype(size * (to - from))));
        QTRY_COMPARE(dialog.infoTextfield()->text(),
                     UpdatePresenter::progressText(std::int64_t(size * to), std::int64_t(size)));
    };
    QStringList heard;
    takeOffer([&](DialogBox &dialog) {
        QTRY_VERIFY(connection);
        connect(dialog.findChild<Announcer *>(), &Announcer::announced, this,
                [&heard](const QString &text) { heard.append(text); });
        piece(dialog, 0, 0.125);
        piece(dialog, 0.125, 0.25);
        piece(dialog, 0.25, 0.375);
        piece(dialog, 0.375, 0.5);
        piece(dialog, 0.5, 0.75);
        HeldReading reading;
        piece(dialog, 0.75, 1);
    });
    QTRY_COMPARE(scene_->revealed.size(), std::size_t(1));
    QCOMPARE(heard, QStringList({UpdatePresenter::progressText(112'500, 450'000),
                                 UpdatePresenter::progressText(225'000, 450'000),
                                 UpdatePresenter::progressText(337'500, 450'000),
                                 QStringLiteral("Checking the signature\u2026")}));
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

void UpdatePresenterTest::check(bool isAskedFor)
{
    if (isAskedFor)
        presenter().updater().checkForUpdates();
    else
        presenter().updater().setAutomaticallyChecksForUpdates(true);
}

void UpdatePresenterTest::anOfferWaitsUntilItSuits_data()
{
    QTest::addColumn<bool>("isAskedFor");
    QTest::addColumn<int>("activeButton");
    QTest::newRow("nobody asked for it") << false << 2;
    QTest::newRow("asked for") << true << 1;
}

void UpdatePresenterTest::anOfferWaitsUntilItSuits()
{
    QFETCH(bool, isAskedFor);
    scene_->serve();
    isBusy_ = true;
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    check(isAskedFor);
    QTRY_VERIFY(presenter().isWaiting());
    presenter().goOnWhenItSuits();
    QVERIFY(presenter().isWaiting());
    QVERIFY(answers.asked().empty());
    isBusy_ = false;
    presenter().goOnWhenItSuits();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].buttons.size(), 3);
    QTEST(int(answers.asked()[0].activeButton), "activeButton");
    QVERIFY(!presenter().isWaiting());
}

void UpdatePresenterTest::aSentenceWaitsUntilItSuits()
{
    scene_->serve("1.0");
    isBusy_ = true;
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    check(true);
    QTRY_VERIFY(presenter().isWaiting());
    presenter().goOnWhenItSuits();
    QVERIFY(answers.asked().empty());
    isBusy_ = false;
    presenter().goOnWhenItSuits();
    QCOMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].info,
             UpdateTexts::sentence(UpdateOutcome::NoNewerVersion, QStringLiteral("1.0")));
    QVERIFY(!presenter().isWaiting());
    QCOMPARE(scene_->server.count("/feed"), 1);
}

void UpdatePresenterTest::whoAskedIsAnsweredSoonAfterwards()
{
    scene_->serve();
    isBusy_ = true;
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    check(true);
    QTRY_VERIFY(presenter().isWaiting());
    isBusy_ = false;
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
}

void UpdatePresenterTest::whatWaitedIsCheckedAgain_data()
{
    QTest::addColumn<bool>("isAskedFor");
    QTest::addColumn<int>("sentences");
    QTest::newRow("nobody asked for it") << false << 0;
    QTest::newRow("asked for") << true << 1;
}

/// It may have become one that is not wanted: here a test release.
void UpdatePresenterTest::whatWaitedIsCheckedAgain()
{
    QFETCH(bool, isAskedFor);
    QFETCH(int, sentences);
    const QString beta = QStringLiteral("checkForBetaReleases");
    UserDefaults::standard().setValue(beta, true);
    scene_->serve();
    scene_->server.answer("/feed", UpdaterScene::feed(scene_->item(
                                       "1.1", "<sparkle:relType>beta</sparkle:relType>")));
    isBusy_ = true;
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    check(isAskedFor);
    QTRY_VERIFY(presenter().isWaiting());
    UserDefaults::standard().setValue(beta, false);
    isBusy_ = false;
    presenter().goOnWhenItSuits();
    QTRY_VERIFY(scene_->server.count("/feed") == 2 && !presenter().updater().isBusy());
    QCOMPARE(int(answers.asked().size()), sentences);
    for (const DialogBox::Answers::Asked &asked : answers.asked())
        QCOMPARE(asked.info,
                 UpdateTexts::sentence(UpdateOutcome::NoNewerVersion, QStringLiteral("1.0")));
    QCOMPARE(scene_->server.count("/file"), 0);
    QVERIFY(!presenter().isWaiting());
}

void UpdatePresenterTest::whoAsksWhileAnOfferWaitsGetsWhatThereIsNow()
{
    scene_->serve();
    isBusy_ = true;
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    check(false);
    QTRY_VERIFY(presenter().isWaiting());
    isBusy_ = false;
    scene_->serve("1.2");
    check(true);
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QVERIFY(answers.asked()[0].info.startsWith(QStringLiteral("Version 1.2 ")));
    QVERIFY(!presenter().isWaiting());
}

void UpdatePresenterTest::switchedOffAnOfferThatWaitsIsDropped()
{
    scene_->serve();
    isBusy_ = true;
    const DialogBox::Answers answers({});
    presenter().updater().setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(presenter().isWaiting());
    presenter().updater().setAutomaticallyChecksForUpdates(false);
    isBusy_ = false;
    presenter().goOnWhenItSuits();
    QVERIFY(!presenter().isWaiting());
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

void UpdatePresenterTest::takeOffer(const std::function<void(DialogBox &)> &act)
{
    RunningDialog::whenShown([act](DialogBox &offer) {
        RunningDialog::whenShown([act](DialogBox &download) {
            act(download);
            if (QTest::currentTestFailed())
                download.closeWindow();
        });
        offer.buttonPressed(offer.buttonsArray().first());
    });
    presenter().updater().checkForUpdates();
}

void UpdatePresenterTest::download(const std::function<void()> &act)
{
    scene_->settings.unfinished = UnfinishedFile::Kind::Named;
    takeOffer([this, act](DialogBox &) {
        QTRY_COMPARE(scene_->files().size(), 1);
        act();
    });
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
