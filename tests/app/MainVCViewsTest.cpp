#include "app/Stage.h"
#include "kit/Scratch.h"

#include "app/ViewTexts.h"
#include "engine/WipeDescriptionController.h"
#include "ui/ButtonBlue.h"
#include "ui/ButtonRed.h"
#include "ui/DragVeil.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/PassStrip.h"
#include "ui/QueueTable.h"
#include "ui/ThemeKeys.h"

#include <QPropertyAnimation>

using Subtype = PushTransition::Subtype;
using V = MainView;

Q_DECLARE_METATYPE(MainView)
Q_DECLARE_METATYPE(PushTransition::Subtype)

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// Brings the workflow to this view by what a user does, without any file.
void goTo(Stage &stage, MainView view)
{
    switch (view) {
    case V::None:
        return;
    case V::Drop:
        stage.vc->showViewDragDrop();
        break;
    case V::Ready:
        stage.vc->showViewPressStart();
        break;
    case V::Erasing:
        stage.vc->showViewErasingFiles();
        break;
    case V::Finished:
        stage.vc->showViewFinished();
        break;
    case V::Preferences:
        stage.vc->showViewPreferences();
        break;
    }
    QTRY_COMPARE(stage.vc->currentView(), view);
    Stage::settle();
}

} // namespace

class MainVCViewsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void itemsThatJoinArmTheGuardOfStartAgain();
    void startWaitsForTheScan();
    void withoutAViewThereIsNothingToPrefer();
    void theFirstViewIsTheDropView();
    void aViewThatIsThereAlreadyStaysTheFirst();
    void theStartMakesItTheUpdatersOnlyDelegate();
    void everyViewComesFromItsSide_data();
    void everyViewComesFromItsSide();
    void aViewThatStandsThereIsNotSwapped();
    void thePreferencesComeFromTheTopAndLeaveToTheBottom_data();
    void thePreferencesComeFromTheTopAndLeaveToTheBottom();
    void duringARunThePreferencesDoNotCome();
    void theRunIsBusyFromTheErasingViewToTheFinishedOne();
    void theTitleIsEmptyWhileAViewSlides();
    void aSwapThatIsInterruptedIsNotTitled();
    void theTitleFollowsTheView_data();
    void theTitleFollowsTheView();
    void theSeparatorIsHiddenInThePreferences();
    void theWindowKnowsTheTagOfItsView();
    void theWindowKnowsTheControllerOfItsViewWithoutHoldingIt();
    void theNewViewHasTheFocus();

    void theCalloutComesAfterOneAndAHalfSeconds();
    void theCalloutComesOverTheDropViewOnly();
    void twoTimersMoveTheCalloutOnce();
    void theCalloutBeginsFromItsPlaceAtEachShowing();
    void theCalloutSlides();
    void thePreferencesHideTheCallout();

    void aDragIsShownByTheDropViewItself();
    void aDragOverAnotherViewIsShownByTheVeil();
    void theVeilSaysWhatADropJoins();
    void aDragGoesOnWhenTheViewChanges();

    void theMethodStandsInTheViews();
    void anotherMethodIsTakenOver();
    void aMethodOutsideTheCatalogueIsPassedOnWithoutAWord();
    void theThemeIsHandedOn();

    void theErrorLogComesAndGoes();
    void onlyTheErrorLogsOwnClosingCounts();
};

void MainVCViewsTest::withoutAViewThereIsNothingToPrefer()
{
    Stage stage;
    QCOMPARE(stage.vc->getCurrentView(), nullptr);
    QVERIFY(!stage.outlets.btnPreferences->isEnabled());
    stage.vc->showInitialView();
    QVERIFY(stage.outlets.btnPreferences->isEnabled());
}

void MainVCViewsTest::theFirstViewIsTheDropView()
{
    Stage stage;
    Stage::guiHasStarted();
    QCOMPARE(stage.vc->currentView(), V::Drop);
    QCOMPARE(stage.side(), Subtype::FromTop);
}

void MainVCViewsTest::aViewThatIsThereAlreadyStaysTheFirst()
{
    Stage stage;
    QVERIFY(stage.scan({}));
    Stage::guiHasStarted();
    QCOMPARE(stage.vc->currentView(), V::Ready);
}

void MainVCViewsTest::theStartMakesItTheUpdatersOnlyDelegate()
{
    Stage stage;
    QVERIFY(stage.updaterDelegates.empty());
    Stage::guiHasStarted();
    QCOMPARE(stage.updaterDelegates.size(), std::size_t(1));
    const std::shared_ptr<UpdaterDelegate> delegate = stage.updaterDelegates.front().lock();
    QCOMPARE(delegate.get(), static_cast<UpdaterDelegate *>(stage.vc.get()));

    AppcastItem ordinary;
    ordinary.properties[AppcastItem::titleKey] = text("a release");
    AppcastItem beta = ordinary;
    beta.properties[AppcastItem::releaseTypeKey] = text("beta");
    const auto chosen = [&delegate](const Appcast::Items &items) {
        return delegate->bestValidUpdateInAppcast(Appcast(items), nullptr);
    };
    QVERIFY(delegate->answers(UpdaterDelegate::Call::bestValidUpdateInAppcast));
    QCOMPARE(chosen({ordinary, beta}), ordinary);
    QCOMPARE(chosen({beta, ordinary}), AppcastItem());
    UserDefaults::standard().setValue(text("checkForBetaReleases"), true);
    QCOMPARE(chosen({beta, ordinary}), beta);
}

void MainVCViewsTest::everyViewComesFromItsSide_data()
{
    QTest::addColumn<MainView>("current");
    QTest::addColumn<MainView>("next");
    QTest::addColumn<Subtype>("side");
    QTest::newRow("none, drop") << V::None << V::Drop << Subtype::FromTop;
    QTest::newRow("none, ready") << V::None << V::Ready << Subtype::FromRight;
    QTest::newRow("none, erasing") << V::None << V::Erasing << Subtype::FromTop;
    QTest::newRow("none, finished") << V::None << V::Finished << Subtype::FromTop;
    QTest::newRow("none, preferences") << V::None << V::Preferences << Subtype::FromTop;
    QTest::newRow("drop, ready") << V::Drop << V::Ready << Subtype::FromRight;
    QTest::newRow("drop, erasing") << V::Drop << V::Erasing << Subtype::FromRight;
    QTest::newRow("drop, finished") << V::Drop << V::Finished << Subtype::FromRight;
    QTest::newRow("drop, preferences") << V::Drop << V::Preferences << Subtype::FromTop;
    QTest::newRow("ready, drop") << V::Ready << V::Drop << Subtype::FromLeft;
    QTest::newRow("ready, erasing") << V::Ready << V::Erasing << Subtype::FromRight;
    QTest::newRow("ready, finished") << V::Ready << V::Finished << Subtype::FromRight;
    QTest::newRow("ready, preferences") << V::Ready << V::Preferences << Subtype::FromTop;
    QTest::newRow("erasing, drop") << V::Erasing << V::Drop << Subtype::FromLeft;
    QTest::newRow("erasing, ready") << V::Erasing << V::Ready << Subtype::FromLeft;
    QTest::newRow("erasing, finished") << V::Erasing << V::Finished << Subtype::FromRight;
    QTest::newRow("finished, drop") << V::Finished << V::Drop << Subtype::FromLeft;
    QTest::newRow("finished, ready") << V::Finished << V::Ready << Subtype::FromLeft;
    QTest::newRow("finished, erasing") << V::Finished << V::Erasing << Subtype::FromLeft;
    QTest::newRow("finished, preferences") << V::Finished << V::Preferences << Subtype::FromTop;
    QTest::newRow("preferences, drop") << V::Preferences << V::Drop << Subtype::FromLeft;
    QTest::newRow("preferences, ready") << V::Preferences << V::Ready << Subtype::FromLeft;
    QTest::newRow("preferences, erasing") << V::Preferences << V::Erasing << Subtype::FromRight;
    QTest::newRow("preferences, finished") << V::Preferences << V::Finished << Subtype::FromRight;
}

void MainVCViewsTest::everyViewComesFromItsSide()
{
    QFETCH(MainView, current);
    QFETCH(MainView, next);
    QFETCH(Subtype, side);
    Stage stage;
    goTo(stage, current);
    goTo(stage, next);
    QCOMPARE(stage.vc->currentView(), next);
    QCOMPARE(stage.side(), side);
    // The drop view leaves the button as it was.
    if (next != V::Drop)
        QCOMPARE(stage.outlets.btnAddFiles->isEnabled(), next != V::Preferences);
}

void MainVCViewsTest::aViewThatStandsThereIsNotSwapped()
{
    for (const MainView view : {V::Drop, V::Ready, V::Erasing, V::Finished}) {
        Stage stage;
        goTo(stage, view);
        int starts = 0;
        QObject::connect(stage.vc->viewAnimator()->transition(), &PushTransition::didStart,
                         [&starts] { ++starts; });
        goTo(stage, view);
        QCOMPARE(starts, 0);
        QCOMPARE(stage.title(), ContentTransitions::title(view));
    }
}

void MainVCViewsTest::thePreferencesComeFromTheTopAndLeaveToTheBottom_data()
{
    QTest::addColumn<MainView>("view");
    QTest::newRow("drop") << V::Drop;
    QTest::newRow("ready") << V::Ready;
    QTest::newRow("finished") << V::Finished;
}

void MainVCViewsTest::thePreferencesComeFromTheTopAndLeaveToTheBottom()
{
    QFETCH(MainView, view);
    Stage stage;
    goTo(stage, view);
    QWidget *before = stage.vc->getCurrentView();

    stage.vc->btnPreferencesClicked();
    QCOMPARE(stage.vc->currentView(), V::Preferences);
    QCOMPARE(stage.side(), Subtype::FromTop);
    QCOMPARE(stage.vc->lastView(), before);
    QVERIFY(!stage.outlets.btnAddFiles->isEnabled());
    QVERIFY(stage.window.header()->btnPreferences()->isKeptPressed());

    stage.vc->btnPreferencesClicked();
    QCOMPARE(stage.vc->getCurrentView(), before);
    QCOMPARE(stage.side(), Subtype::FromBottom);
    QVERIFY(stage.outlets.btnAddFiles->isEnabled());
    QVERIFY(!stage.window.header()->btnPreferences()->isKeptPressed());
}

void MainVCViewsTest::duringARunThePreferencesDoNotCome()
{
    Stage stage;
    goTo(stage, V::Erasing);
    QVERIFY(!stage.outlets.btnPreferences->isEnabled());
    stage.vc->btnPreferencesClicked();
    QCOMPARE(stage.vc->currentView(), V::Erasing);
    QVERIFY(stage.outlets.btnAddFiles->isEnabled());
    goTo(stage, V::Finished);
    QVERIFY(stage.outlets.btnPreferences->isEnabled());
}

void MainVCViewsTest::theRunIsBusyFromTheErasingViewToTheFinishedOne()
{
    Stage stage;
    goTo(stage, V::Drop);
    QVERIFY(!stage.vc->isBusyWiping());
    goTo(stage, V::Erasing);
    QVERIFY(stage.vc->isBusyWiping());
    goTo(stage, V::Ready);
    QVERIFY(stage.vc->isBusyWiping());
    goTo(stage, V::Finished);
    QVERIFY(!stage.vc->isBusyWiping());
}

void MainVCViewsTest::theTitleIsEmptyWhileAViewSlides()
{
    Stage stage;
    goTo(stage, V::Drop);
    stage.vc->viewAnimator()->transition()->setPrefersReducedMotion([] { return false; });
    stage.vc->showViewPressStart();
    QCOMPARE(stage.title(), text("Drag your files and folders here"));
    QTRY_COMPARE(stage.title(), QString());
    QVERIFY(stage.vc->viewAnimator()->transition()->isRunning());
    QTRY_COMPARE(stage.title(), text("Ready to start erasing"));
}

void MainVCViewsTest::aSwapThatIsInterruptedIsNotTitled()
{
    Stage stage;
    goTo(stage, V::Drop);
    stage.heard.clear();
    stage.vc->viewAnimator()->transition()->setPrefersReducedMotion([] { return false; });
    stage.vc->showViewPressStart();
    QTRY_COMPARE(stage.title(), QString());
    stage.vc->showViewFinished();
    QTRY_COMPARE(stage.title(), text("Finished"));
    QCOMPARE(stage.heard, QStringList(text("Finished")));
}

void MainVCViewsTest::theTitleFollowsTheView_data()
{
    QTest::addColumn<MainView>("view");
    QTest::addColumn<QString>("title");
    QTest::newRow("drop") << V::Drop << text("Drag your files and folders here");
    QTest::newRow("ready") << V::Ready << text("Ready to start erasing");
    QTest::newRow("erasing") << V::Erasing << text("Securely erasing files");
    QTest::newRow("finished") << V::Finished << text("Finished");
    QTest::newRow("preferences") << V::Preferences << QString();
}

void MainVCViewsTest::theTitleFollowsTheView()
{
    QFETCH(MainView, view);
    QFETCH(QString, title);
    Stage stage;
    stage.outlets.titleTextField->setText(text("something else"));
    goTo(stage, view);
    QTRY_COMPARE(stage.title(), title);
}

void MainVCViewsTest::theSeparatorIsHiddenInThePreferences()
{
    Stage stage;
    goTo(stage, V::Drop);
    QTRY_VERIFY(!stage.outlets.toolBarSeparator->isHidden());
    stage.vc->showViewPreferences();
    QVERIFY(stage.outlets.toolBarSeparator->isHidden());
    stage.vc->animationFinished();
    QVERIFY(stage.outlets.toolBarSeparator->isHidden());
    stage.vc->hideViewPreferences();
    QTRY_VERIFY(!stage.outlets.toolBarSeparator->isHidden());
}

void MainVCViewsTest::theWindowKnowsTheTagOfItsView()
{
    Stage stage;
    goTo(stage, V::Drop);
    QCOMPARE(stage.window.currentViewTag(), std::int64_t(V::Drop));
    goTo(stage, V::Preferences);
    QCOMPARE(stage.window.currentViewTag(), std::int64_t(V::Preferences));
    stage.vc->hideViewPreferences();
    QCOMPARE(stage.window.currentViewTag(), std::int64_t(V::Drop));
}

void MainVCViewsTest::theWindowKnowsTheControllerOfItsViewWithoutHoldingIt()
{
    Stage stage;
    goTo(stage, V::Drop);
    QVERIFY(stage.vc);
    QCOMPARE(stage.window.currentViewController().get(), static_cast<void *>(stage.vc.get()));
    stage.vc.reset();
    QVERIFY(!stage.window.currentViewController());
}

void MainVCViewsTest::theNewViewHasTheFocus()
{
    Stage stage;
    goTo(stage, V::Drop);
    QTRY_COMPARE(stage.window.focusWidget(), stage.outlets.viewDragDrop->firstFocus());
    QVERIFY(stage.scan({}));
    QTRY_COMPARE(stage.window.focusWidget(), stage.outlets.viewPressStart->firstFocus());
    QVERIFY(stage.window.focusWidget() != stage.outlets.viewPressStart->startButton());
}

void MainVCViewsTest::theCalloutComesAfterOneAndAHalfSeconds()
{
    Stage stage;
    stage.vc->showViewDragDrop();
    QCOMPARE(stage.scheduled.size(), std::size_t(1));
    QCOMPARE(stage.scheduled[0].after, std::chrono::milliseconds(1500));
    QWidget *callout = stage.outlets.viewBtnInfo;
    QVERIFY(callout->isHidden());
    const QPoint place = callout->pos();
    stage.scheduled[0].call();
    QVERIFY(!callout->isHidden());
    QTRY_COMPARE(callout->pos(), place + QPoint(0, 30));
}

void MainVCViewsTest::theCalloutComesOverTheDropViewOnly()
{
    Stage stage;
    goTo(stage, V::Drop);
    goTo(stage, V::Ready);
    stage.scheduled[0].call();
    QVERIFY(stage.outlets.viewBtnInfo->isHidden());
}

void MainVCViewsTest::twoTimersMoveTheCalloutOnce()
{
    Stage stage;
    stage.vc->showViewDragDrop();
    stage.vc->showViewDragDrop();
    QCOMPARE(stage.scheduled.size(), std::size_t(2));
    const QPoint place = stage.outlets.viewBtnInfo->pos();
    stage.scheduled[0].call();
    QTRY_COMPARE(stage.outlets.viewBtnInfo->pos(), place + QPoint(0, 30));
    stage.scheduled[1].call();
    QTRY_VERIFY(stage.outlets.viewBtnInfo->findChildren<QPropertyAnimation *>().isEmpty());
    QCOMPARE(stage.outlets.viewBtnInfo->pos(), place + QPoint(0, 30));
}

void MainVCViewsTest::theCalloutBeginsFromItsPlaceAtEachShowing()
{
    Stage stage;
    goTo(stage, V::Drop);
    QWidget *callout = stage.outlets.viewBtnInfo;
    const QPoint place = callout->pos();
    stage.scheduled.back().call();
    QTRY_COMPARE(callout->pos(), place + QPoint(0, 30));

    goTo(stage, V::Finished);
    goTo(stage, V::Drop);
    QVERIFY(callout->isHidden());
    QCOMPARE(callout->pos(), place);
    stage.scheduled.back().call();
    QTRY_COMPARE(callout->pos(), place + QPoint(0, 30));
}

void MainVCViewsTest::theCalloutSlides()
{
    Stage stage;
    goTo(stage, V::Drop);
    const int top = stage.outlets.viewBtnInfo->y();
    stage.scheduled[0].call();
    // On its way at first, and put back where it began when the view comes anew.
    QTRY_VERIFY(stage.outlets.viewBtnInfo->y() > top);
    goTo(stage, V::Finished);
    goTo(stage, V::Drop);
    QTRY_VERIFY(stage.outlets.viewBtnInfo->findChildren<QPropertyAnimation *>().isEmpty());
    QCOMPARE(stage.outlets.viewBtnInfo->y(), top);
}

void MainVCViewsTest::thePreferencesHideTheCallout()
{
    Stage stage;
    goTo(stage, V::Drop);
    stage.scheduled[0].call();
    stage.vc->showViewPreferences();
    QVERIFY(stage.outlets.viewBtnInfo->isHidden());
}

void MainVCViewsTest::aDragIsShownByTheDropViewItself()
{
    Stage stage;
    goTo(stage, V::Drop);
    stage.vc->dragStateChanged(12);
    QCOMPARE(stage.outlets.viewDragDrop->heading()->text(), text("Release to add 12 items"));
    QVERIFY(!stage.window.dragVeil()->isShown());
    stage.vc->dragStateChanged(-1);
    QTRY_COMPARE(stage.outlets.viewDragDrop->heading()->text(),
                 text("Let go of what you no longer need"));
}

void MainVCViewsTest::aDragOverAnotherViewIsShownByTheVeil()
{
    Stage stage;
    goTo(stage, V::Ready);
    stage.vc->dragStateChanged(12);
    QVERIFY(stage.window.dragVeil()->isShown());
    stage.vc->dragStateChanged(-1);
    QVERIFY(!stage.window.dragVeil()->isShown());
}

void MainVCViewsTest::theVeilSaysWhatADropJoins()
{
    const Scratch scratch;
    Stage stage;
    const DragVeil *veil = stage.window.dragVeil();
    goTo(stage, V::Finished);
    stage.vc->dragStateChanged(12);
    QCOMPARE(veil->accessibleDescription(),
             text("Release to add 12 items Nothing is erased until you press Start."));
    stage.vc->dragStateChanged(-1);
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    stage.vc->dragStateChanged(1);
    QCOMPARE(veil->accessibleDescription(),
             text("Release to add 1 item They join the 1 file already listed."));
}

void MainVCViewsTest::aDragGoesOnWhenTheViewChanges()
{
    Stage stage;
    goTo(stage, V::Drop);
    stage.vc->dragStateChanged(12);
    goTo(stage, V::Ready);
    QVERIFY(stage.window.dragVeil()->isShown());
    goTo(stage, V::Drop);
    QVERIFY(!stage.window.dragVeil()->isShown());
    QCOMPARE(stage.outlets.viewDragDrop->heading()->text(), text("Release to add 12 items"));
}

void MainVCViewsTest::theMethodStandsInTheViews()
{
    Stage stage(4);
    const WipeDescriptionObject dod = WipeDescriptionController().wipeDescriptions()[4];
    QCOMPARE(stage.vc->wipeController()->wipeMethode(), 4);
    QCOMPARE(stage.vc->wipeDescription().name, dod.name);
    QCOMPARE(stage.outlets.viewDragDrop->methodText()->text(),
             text("Wipe method: 3-Pass DoD 5220.22-M (E)"));
    QCOMPARE(stage.outlets.viewPressStart->description()->text(), dod.info);
    QCOMPARE(stage.outlets.viewPressStart->passesLabel()->text(), text("3 passes"));
}

void MainVCViewsTest::anotherMethodIsTakenOver()
{
    Stage stage(4);
    UserDefaults::standard().setValue(text("WipeMethod"), 1);
    stage.vc->wipeSelectorClicked();
    QCOMPARE(stage.vc->wipeController()->wipeMethode(), 1);
    QCOMPARE(stage.vc->wipeDescription().name, text("1-Pass Zero"));
    QCOMPARE(stage.outlets.viewPressStart->passesLabel()->text(), text("1 pass"));
}

void MainVCViewsTest::aMethodOutsideTheCatalogueIsPassedOnWithoutAWord()
{
    for (const std::int64_t method : {std::int64_t(11), std::int64_t(-1), std::int64_t(1) << 40}) {
        Stage stage;
        UserDefaults::standard().setValue(text("WipeMethod"), qlonglong(method));
        stage.vc->wipeSelectorClicked();
        QCOMPARE(stage.vc->wipeController()->wipeMethode(), method);
        QCOMPARE(stage.vc->wipeDescription().name, QString());
        QCOMPARE(stage.outlets.viewPressStart->description()->text(), QString());
    }
}

void MainVCViewsTest::theThemeIsHandedOn()
{
    Stage stage;
    UserDefaults::standard().registerDefaults({{ThemeKeys::isThemeEnabled, true}});
    QVERIFY(!InterfaceColorStyle::isDarkMode());
    stage.vc->appearanceSettingChanged(1);
    QVERIFY(InterfaceColorStyle::isDarkMode());
}

void MainVCViewsTest::theErrorLogComesAndGoes()
{
    Stage stage;
    QVERIFY(stage.vc->errorLogWindowIsHidden());
    stage.vc->menuToggleErrorLogClicked();
    QVERIFY(stage.errorLog.isVisible());
    QVERIFY(!stage.vc->errorLogWindowIsHidden());
    stage.vc->menuToggleErrorLogClicked();
    QVERIFY(!stage.errorLog.isVisible());
    QVERIFY(stage.vc->errorLogWindowIsHidden());
    stage.vc->showErrorLogClicked();
    stage.vc->showErrorLogClicked();
    QVERIFY(stage.errorLog.isVisible());
}

void MainVCViewsTest::onlyTheErrorLogsOwnClosingCounts()
{
    Stage stage;
    stage.vc->showErrorLogWindow();
    stage.vc->windowWillClose(&stage.window);
    QVERIFY(!stage.vc->errorLogWindowIsHidden());
    stage.vc->windowWillClose(&stage.errorLog);
    QVERIFY(stage.vc->errorLogWindowIsHidden());
}

void MainVCViewsTest::itemsThatJoinArmTheGuardOfStartAgain()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", QByteArray("data"));
    const QByteArray second = scratch.file("second", QByteArray("data"));
    std::int64_t now = 0;
    Stage stage;
    ReadyView *ready = stage.outlets.viewPressStart;
    ready->setClock([&now] { return now; });
    QVERIFY(stage.scan({first}));
    QTRY_COMPARE(stage.title(), QStringLiteral("Ready to start erasing"));
    QTRY_VERIFY(!stage.vc->scanningFilesWindowIsOpen());
    now = 1000;
    ready->startButton()->setFocus();
    QVERIFY(stage.scan({second}));
    QTRY_VERIFY(!stage.vc->scanningFilesWindowIsOpen());
    QVERIFY(!ready->startButton()->hasFocus());
    int starts = 0;
    connect(ready, &ReadyView::startClicked, this, [&starts] { ++starts; });
    ready->start();
    QCOMPARE(starts, 0);
    now = 2000;
    ready->start();
    QCOMPARE(starts, 1);
}

void MainVCViewsTest::startWaitsForTheScan()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("first", QByteArray("data"))}));
    QTRY_COMPARE(stage.vc->currentView(), MainView::Ready);
    Stage::drop({scratch.file("second", QByteArray("data"))});
    stage.vc->btnStopScanningClicked();
    QVERIFY(stage.vc->isScanningFiles());
    stage.vc->btnStartClicked();
    QVERIFY(!stage.vc->isBusyWiping());
    QTRY_VERIFY(!stage.vc->isScanningFiles());
    stage.vc->btnStartClicked();
    QVERIFY(stage.vc->isBusyWiping());
    QTRY_COMPARE(stage.vc->currentView(), MainView::Finished);
}

QTEST_MAIN(MainVCViewsTest)
#include "MainVCViewsTest.moc"
