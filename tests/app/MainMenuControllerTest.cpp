#include "app/MainMenuController.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "ui/MainMenu.h"

#include <QTest>

#include <optional>

class MainMenuControllerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void startCountsInTheReadyViewOnly();
    void aHeldKeyStartsNothing();
    void nothingIsAddedWhileThePreferencesAreShown();
    void theOpenMenuShowsWhatCanBeChosen();
    void whatCannotBeChosenComesBackWhenTheMenuCloses();
    void preferencesGoToAndFro();

  private:
    [[nodiscard]] MainMenu *menu() const { return stage_->window.mainMenu(); }

    std::optional<Scratch> scratch_;
    std::optional<Stage> stage_;
    std::optional<MainMenuController> controller_;
    QByteArray file_;
};

void MainMenuControllerTest::init()
{
    scratch_.emplace();
    stage_.emplace();
    controller_.emplace(menu(), stage_->vc, stage_->outlets, nullptr);
    stage_->outlets.viewPressStart->setClock([] { return std::int64_t(0); });
    file_ = scratch_->file("file", QByteArray("data"));
    Stage::guiHasStarted();
    Stage::settle();
}

void MainMenuControllerTest::cleanup()
{
    controller_.reset();
    stage_.reset();
    scratch_.reset();
}

void MainMenuControllerTest::startCountsInTheReadyViewOnly()
{
    int starts = 0;
    connect(stage_->outlets.viewPressStart, &ReadyView::startClicked, this,
            [&starts] { ++starts; });
    menu()->startErasing()->trigger();
    QCOMPARE(starts, 0);
    QVERIFY(stage_->scan({file_}));
    QTRY_VERIFY(!stage_->vc->scanningFilesWindowIsOpen());
    QTRY_COMPARE(stage_->title(), QStringLiteral("Ready to start erasing"));
    stage_->outlets.viewPressStart->setClock([] { return std::int64_t(1000); });
    menu()->startErasing()->trigger();
    QCOMPARE(starts, 1);
}

void MainMenuControllerTest::aHeldKeyStartsNothing()
{
    QVERIFY(!menu()->startErasing()->autoRepeat());
}

void MainMenuControllerTest::nothingIsAddedWhileThePreferencesAreShown()
{
    menu()->preferences()->trigger();
    menu()->addFilesAndFolders()->trigger();
    QVERIFY(stage_->panels.empty());
    menu()->preferences()->trigger();
    menu()->addFilesAndFolders()->trigger();
    QCOMPARE(stage_->panels.size(), 1u);
}

void MainMenuControllerTest::theOpenMenuShowsWhatCanBeChosen()
{
    Q_EMIT menu()->aboutToShow();
    QVERIFY(menu()->addFilesAndFolders()->isEnabled());
    QVERIFY(!menu()->startErasing()->isEnabled());
    QVERIFY(menu()->preferences()->isEnabled());
    QVERIFY(menu()->quit()->isEnabled());
}

void MainMenuControllerTest::whatCannotBeChosenComesBackWhenTheMenuCloses()
{
    Q_EMIT menu()->aboutToShow();
    Q_EMIT menu()->aboutToHide();
    QVERIFY(menu()->startErasing()->isEnabled());
}

void MainMenuControllerTest::preferencesGoToAndFro()
{
    menu()->preferences()->trigger();
    QCOMPARE(stage_->vc->currentView(), MainView::Preferences);
    menu()->preferences()->trigger();
    QCOMPARE(stage_->vc->currentView(), MainView::Drop);
}

QTEST_MAIN(MainMenuControllerTest)
#include "MainMenuControllerTest.moc"
