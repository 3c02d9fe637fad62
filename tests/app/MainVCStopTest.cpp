#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"

#include <QTest>

#include <algorithm>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// The texts that a view shows.
QStringList shownBy(const QWidget *view)
{
    QStringList shown;
    for (const QLabel *label : view->findChildren<QLabel *>()) {
        if (!label->isHidden())
            shown.append(label->text());
    }
    return shown;
}

} // namespace

/// Runs that do not come to all of their files, or are not to touch some of them.
class MainVCStopTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void whatAStoppedRunDidNotComeToIsSaidFileByFile();
    void aStoppedRunQuitsNothingByItself();
    void aStoppedRunRemovesNoFolder();
    void aRunThatIsStoppedInItsLastFileIsAWholeOne();
    void theNextRunStartsFromNothing();
    void stoppingStopsAScanAsWell();
    void anUnknownMethodRemovesNoFolder();
    void linksGetTheSizeThatThePreferenceMeans();
    void aLinkLeftAloneCountsNoBytesOfItsTarget();
    void aMinimisedErrorLogComesBack();
};

void MainVCStopTest::whatAStoppedRunDidNotComeToIsSaidFileByFile()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 10), scratch.file("b", 20), scratch.file("c", 30)}));
    stage.vc->btnStartClicked();
    stage.vc->stopErasing();
    QVERIFY(Stage::waitFor([&stage] { return stage.vc->currentView() == MainView::Finished; }));
    QVERIFY(!Scratch::exists(scratch.path("a")));
    QCOMPARE(Scratch::content(scratch.path("b")).size(), 20);
    QCOMPARE(Scratch::content(scratch.path("c")).size(), 30);

    const ErrorLogModel *errors = stage.outlets.errorLogArrayController;
    QCOMPARE(errors->count(), 2);
    QCOMPARE(errors->row(0).filename, QByteArray("b"));
    QCOMPARE(errors->row(0).error, text("Not erased: the run was stopped"));
    QVERIFY(shownBy(stage.outlets.viewFinished).contains(text("No folders were removed.")));
    QVERIFY(!stage.outlets.viewFinished->errorLogButton()->isHidden());
    const QString sentence = text("The run was stopped: 2 files were not erased.");
    QCOMPARE(stage.messages.size(), std::size_t(1));
    QCOMPARE(stage.messages[0].title, text("Vantorel Finished"));
    QCOMPARE(stage.messages[0].infoText, sentence);
    QVERIFY(stage.heard.contains(text("Finished. 10 Bytes in 1 files. 0 failed. ") + sentence));
}

void MainVCStopTest::aStoppedRunQuitsNothingByItself()
{
    const Scratch scratch;
    Stage stage;
    UserDefaults::standard().setValue(text("AutoExit"), true);
    QVERIFY(stage.scan({scratch.file("a", 1), scratch.file("b", 1)}));
    stage.vc->btnStartClicked();
    stage.vc->stopErasing();
    QVERIFY(Stage::waitFor([&stage] { return !stage.messages.empty(); }));
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);
}

void MainVCStopTest::aStoppedRunRemovesNoFolder()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("folder");
    QVERIFY(!scratch.file("folder/.a", 5).isEmpty() && !scratch.file("folder/.b", 5).isEmpty());
    Stage stage;
    QVERIFY(stage.scan({folder}));
    stage.vc->btnStartClicked();
    stage.vc->stopErasing();
    QVERIFY(Stage::waitFor([&stage] { return stage.vc->currentView() == MainView::Finished; }));
    // Of two hidden files one is left, unread and not overwritten, and so is their folder.
    QCOMPARE(int(Scratch::exists(folder + "/.a")) + int(Scratch::exists(folder + "/.b")), 1);
    QVERIFY(stage.vc->folderUrlsToDeleteDict().empty());
}

void MainVCStopTest::aRunThatIsStoppedInItsLastFileIsAWholeOne()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("folder");
    QVERIFY(!scratch.file("folder/a", 5).isEmpty());
    Stage stage;
    QVERIFY(stage.scan({folder}));
    stage.vc->btnStartClicked();
    stage.vc->stopErasing();
    QVERIFY(Stage::waitFor([&stage] { return !stage.messages.empty(); }));
    QVERIFY(!Scratch::exists(folder));
    QCOMPARE(stage.messages[0].infoText, text("Wiping done."));
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 0);
}

void MainVCStopTest::theNextRunStartsFromNothing()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 1), scratch.file("b", 1)}));
    stage.vc->btnStartClicked();
    stage.vc->stopErasing();
    QVERIFY(Stage::waitFor([&stage] { return stage.vc->currentView() == MainView::Finished; }));
    QVERIFY(stage.vc->queueArray()->isEmpty());
    QVERIFY(stage.scan({scratch.path("b")}));
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(scratch.path("b")));
    QCOMPARE(stage.messages.back().infoText, text("Wiping done."));
    QVERIFY(shownBy(stage.outlets.viewFinished)
                .contains(text("Folders that became empty were removed.")));
}

void MainVCStopTest::stoppingStopsAScanAsWell()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    stage.vc->btnStartClicked();
    Stage::drop({scratch.file("b", 1)});
    stage.vc->stopErasing();
    QVERIFY(Stage::waitFor([&stage] { return !stage.vc->isScanningFiles(); }));
    QVERIFY(Stage::waitFor([&stage] { return !stage.vc->isBusyWiping(); }));
    QVERIFY(Scratch::exists(scratch.path("b")));
}

void MainVCStopTest::anUnknownMethodRemovesNoFolder()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("folder");
    const QByteArray secret = scratch.file("folder/.secret", 5);
    Stage stage(11);
    QVERIFY(stage.scan({folder}));
    QVERIFY(stage.run());
    QCOMPARE(Scratch::content(secret).size(), 5);
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 1);
    // The next run removes its folders again.
    UserDefaults::standard().setValue(text("WipeMethod"), qlonglong(Stage::zeros));
    stage.vc->wipeSelectorClicked();
    QVERIFY(stage.scan({folder}));
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(folder));
}

void MainVCStopTest::linksGetTheSizeThatThePreferenceMeans()
{
    const Scratch scratch;
    const QByteArray target = scratch.file("target", 1000);
    const QByteArray link = scratch.path("link");
    QCOMPARE(::symlink(target.constData(), link.constData()), 0);
    Stage stage;
    QVERIFY(stage.scan({scratch.file("file", 50), link}));
    QCOMPARE(stage.stats().totalBytes(), 1050.0);
    UserDefaults::standard().setValue(text("skipLinkTargets"), true);
    QCOMPARE(stage.stats().totalBytes(), 50.0);
    QVERIFY(shownBy(stage.outlets.viewPressStart).contains(text("50 Bytes")));
    UserDefaults::standard().setValue(text("skipLinkTargets"), false);
    QCOMPARE(stage.stats().totalBytes(), 1050.0);
    QVERIFY(shownBy(stage.outlets.viewPressStart).contains(text("1.05 KB")));
}

void MainVCStopTest::aLinkLeftAloneCountsNoBytesOfItsTarget()
{
    const Scratch scratch;
    const QByteArray target = scratch.file("target", 1000);
    const QByteArray link = scratch.path("link");
    QCOMPARE(::symlink(target.constData(), link.constData()), 0);
    Stage stage;
    QVERIFY(stage.scan({link}));
    UserDefaults::standard().setValue(text("skipLinkTargets"), true);
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(link));
    QCOMPARE(Scratch::content(target).size(), 1000);
    QCOMPARE(stage.stats().wipedFilesString(), text("0 Bytes in 1 files"));
}

void MainVCStopTest::aMinimisedErrorLogComesBack()
{
    Stage stage;
    stage.vc->showErrorLogWindow();
    stage.errorLog.showMinimized();
    QVERIFY(stage.errorLog.isMinimized());
    stage.vc->showErrorLogWindow();
    QVERIFY(!stage.errorLog.isMinimized());
    QVERIFY(stage.errorLog.isVisible());
}

QTEST_MAIN(MainVCStopTest)
#include "MainVCStopTest.moc"
