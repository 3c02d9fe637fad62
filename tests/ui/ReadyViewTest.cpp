#include "ui/ReadyView.h"

#include "engine/WipeDescriptionController.h"
#include "ui/ButtonRed.h"
#include "ui/CautionBand.h"
#include "ui/LinkButton.h"
#include "ui/MethodSelector.h"
#include "ui/PassStrip.h"
#include "ui/QueueTable.h"
#include "ui/VTLLine.h"
#include "ui/ViewLayouts.h"
#include "ui/ViewScene.h"

#include <QSignalSpy>

class ReadyViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void elementsStandAtTheirPlaces_data();
    void elementsStandAtTheirPlaces();
    void itSaysWhatTheDesignSays();
    void itShowsWhatItIsGiven();
    void theDescriptionDescribesTheSelector();
    void everyMethodsDescriptionFitsItsThreeLines();
    void cautionsGoToTheBand();
    void startIsDisabledWhereThereIsNothingToStart();

    void startSaysSo();
    void startIgnoresAllInputInTheFirstMoments_data();
    void startIgnoresAllInputInTheFirstMoments();
    void aPressThatBeganInTheFirstMomentsStartsNothing();
    void aPressThatIsHeldWhileTheViewComesStartsNothing_data();
    void aPressThatIsHeldWhileTheViewComesStartsNothing();
    void theGuardBeginsAnewWhenTheViewHasAppeared();
    void aWindowThatComesBackIsNoNewView();
    void startIgnoresAKeyThatRepeats();
    void tabIsHeldUpByNothing();
    void theShortcutIsUnderTheSameGuard();
    void aDisabledStartStartsNothing();

    void theKeyboardIsFirstInTheTableAndNeverOnStart();
    void returnStartsOnlyWithTheKeyboardOnStart();
    void tabGoesFromTopToBottom();
    void everyElementWithTheKeyboardHasAName();

  private:
    void appearAndWait();

    std::optional<ViewScene> scene_;
    std::optional<ReadyView> view_;
    std::int64_t now_ = 0;
};

void ReadyViewTest::init()
{
    ViewScene::setFontPixels(13);
    now_ = 10'000;
    view_.reset();
    scene_.emplace();
    view_.emplace();
    view_->setClock([this] { return now_; });
    view_->setContents({QStringLiteral("248 files"), QStringLiteral("7 folders"),
                        QStringLiteral("18.42 GB"), QStringLiteral("55.26 GB to write"), true});
}

void ReadyViewTest::appearAndWait()
{
    scene_->place(*view_, {720, 520});
    view_->viewDidAppear();
    now_ += 400;
}

void ReadyViewTest::elementsStandAtTheirPlaces_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("fontPixels");
    QTest::newRow("the design's size") << QSize(720, 520) << 13;
    QTest::newRow("grown") << QSize(1000, 800) << 13;
    QTest::newRow("the smallest") << QSize(640, 464) << 13;
    QTest::newRow("a font 1.5 times as large") << QSize(1108, 800) << 20;
}

void ReadyViewTest::elementsStandAtTheirPlaces()
{
    QFETCH(QSize, size);
    QFETCH(int, fontPixels);
    ViewScene::setFontPixels(fontPixels);
    scene_->place(*view_, size);
    const ReadyLayout layout = ReadyLayout::of(ViewRuler(size, fontPixels / 13.0));
    QCOMPARE(view_->countText()->geometry(), layout.count);
    QCOMPARE(view_->foldersText()->geometry(), layout.folders);
    QCOMPARE(view_->sizeText()->geometry(), layout.size);
    QCOMPARE(view_->workText()->geometry(), layout.work);
    QCOMPARE(view_->table()->geometry(), layout.table);
    QCOMPARE(view_->methodLabel()->geometry(), layout.methodLabel);
    QCOMPARE(view_->passesLabel()->geometry(), layout.passesLabel);
    QCOMPARE(view_->methodSelector()->geometry(), layout.selector);
    QCOMPARE(view_->passStrip()->geometry(), layout.passStrip);
    QCOMPARE(view_->description()->geometry(), layout.description);
    QCOMPARE(view_->cautionBand()->geometry(), layout.caution);
    QCOMPARE(view_->line()->geometry(), layout.line);
    QCOMPARE(view_->warning()->geometry(), layout.warning);
    QCOMPARE(view_->startButton()->geometry(), layout.start);
}

void ReadyViewTest::itSaysWhatTheDesignSays()
{
    QCOMPARE(view_->methodLabel()->text(), QStringLiteral("Wipe method"));
    QCOMPARE(view_->warning()->text(),
             QStringLiteral("Erasing cannot be stopped or undone once it has started."));
    QCOMPARE(view_->startButton()->text(), QStringLiteral("Start"));
    QCOMPARE(view_->table()->rowIdentifier(), QStringLiteral("RowViewWithMouseHover+Border"));
    QCOMPARE(view_->line()->name(), QStringLiteral("DefaultLine"));
    QCOMPARE(view_->countText()->style(), TextStyle::Headline);
    QCOMPARE(view_->description()->style(), TextStyle::Description);
}

void ReadyViewTest::itShowsWhatItIsGiven()
{
    QCOMPARE(view_->countText()->text(), QStringLiteral("248 files"));
    QCOMPARE(view_->foldersText()->text(), QStringLiteral("7 folders"));
    QCOMPARE(view_->sizeText()->text(), QStringLiteral("18.42 GB"));
    QCOMPARE(view_->workText()->text(), QStringLiteral("55.26 GB to write"));
    view_->setPasses(3, QStringLiteral("3 passes"));
    QCOMPARE(view_->passesLabel()->text(), QStringLiteral("3 passes"));
    QCOMPARE(view_->passStrip()->method(), std::int64_t(3));
}

void ReadyViewTest::theDescriptionDescribesTheSelector()
{
    view_->setDescription(QStringLiteral("pass 1: zeros."));
    QCOMPARE(view_->description()->text(), QStringLiteral("pass 1: zeros."));
    QCOMPARE(view_->methodSelector()->accessibleDescription(), QStringLiteral("pass 1: zeros."));
}

void ReadyViewTest::everyMethodsDescriptionFitsItsThreeLines()
{
    const WipeDescriptionController catalogue;
    for (const int fontPixels : {13, 16, 20}) {
        ViewScene::setFontPixels(fontPixels);
        const ViewRuler ruler(ContentView::smallestSize(), fontPixels / 13.0);
        const QRect place = ReadyLayout::of(ruler).description;
        for (const WipeDescriptionObject &method : catalogue.wipeDescriptions()) {
            view_->setDescription(method.info);
            const int needed = view_->description()->heightForWidth(place.width());
            QVERIFY2(needed <= place.height(), method.name.toUtf8().constData());
        }
    }
}

void ReadyViewTest::cautionsGoToTheBand()
{
    view_->setCautions({{QStringLiteral("2 symbolic links")}, {QStringLiteral("btrfs")}});
    QCOMPARE(view_->cautionBand()->cautions(),
             QStringList({QStringLiteral("2 symbolic links"), QStringLiteral("btrfs")}));
    view_->setCautions({});
    QCOMPARE(view_->cautionBand()->cautions(), QStringList());
}

void ReadyViewTest::startIsDisabledWhereThereIsNothingToStart()
{
    QVERIFY(view_->startButton()->isEnabled());
    view_->setContents({});
    QVERIFY(!view_->startButton()->isEnabled());
    QVERIFY(!ReadyView().startButton()->isEnabled());
}

void ReadyViewTest::startSaysSo()
{
    appearAndWait();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    QTest::mouseClick(view_->startButton(), Qt::LeftButton);
    QCOMPARE(started.size(), 1);
    QTest::keyClick(view_->startButton(), Qt::Key_Space);
    QCOMPARE(started.size(), 2);
    QTest::keyClick(view_->startButton(), Qt::Key_Return);
    QCOMPARE(started.size(), 3);
}

void ReadyViewTest::startIgnoresAllInputInTheFirstMoments_data()
{
    using Input = std::function<void(ButtonRed *)>;
    QTest::addColumn<Input>("input");
    QTest::newRow("a click") << Input(
        [](ButtonRed *start) { QTest::mouseClick(start, Qt::LeftButton); });
    QTest::newRow("two clicks") << Input([](ButtonRed *start) {
        QTest::mouseDClick(start, Qt::LeftButton);
        QTest::mouseRelease(start, Qt::LeftButton);
    });
    QTest::newRow("Space") << Input(
        [](ButtonRed *start) { QTest::keyClick(start, Qt::Key_Space); });
    QTest::newRow("Return") << Input(
        [](ButtonRed *start) { QTest::keyClick(start, Qt::Key_Return); });
    QTest::newRow("a screen reader") << Input([](ButtonRed *start) { start->click(); });
}

void ReadyViewTest::startIgnoresAllInputInTheFirstMoments()
{
    QFETCH(std::function<void(ButtonRed *)>, input);
    scene_->place(*view_, {720, 520});
    view_->viewDidAppear();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    now_ += 399;
    input(view_->startButton());
    QCOMPARE(started.size(), 0);
    now_ += 1;
    input(view_->startButton());
    QVERIFY(started.size() >= 1);
}

void ReadyViewTest::aPressThatBeganInTheFirstMomentsStartsNothing()
{
    scene_->place(*view_, {720, 520});
    view_->viewDidAppear();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    QTest::mousePress(view_->startButton(), Qt::LeftButton);
    QVERIFY(!view_->startButton()->isDown());
    now_ += 1000;
    QTest::mouseRelease(view_->startButton(), Qt::LeftButton);
    QCOMPARE(started.size(), 0);

    view_->viewDidAppear();
    QTest::keyPress(view_->startButton(), Qt::Key_Space);
    now_ += 1000;
    QTest::keyRelease(view_->startButton(), Qt::Key_Space);
    QCOMPARE(started.size(), 0);
}

void ReadyViewTest::aPressThatIsHeldWhileTheViewComesStartsNothing_data()
{
    QTest::addColumn<bool>("isMoved");
    QTest::newRow("by a still hand") << false;
    QTest::newRow("by a hand that moves") << true;
}

/// A scan comes and goes over the pressed button.
void ReadyViewTest::aPressThatIsHeldWhileTheViewComesStartsNothing()
{
    QFETCH(bool, isMoved);
    appearAndWait();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    ButtonRed *start = view_->startButton();
    QTest::mousePress(start, Qt::LeftButton);
    QVERIFY(start->isDown());
    view_->viewDidAppear();
    QVERIFY(!start->isDown());
    now_ += 1000;
    if (isMoved) {
        const QPointF at = start->rect().center() + QPointF(3, 0);
        QMouseEvent move(QEvent::MouseMove, at, start->mapToGlobal(at), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(start, &move);
    }
    QVERIFY(!start->isDown());
    QTest::mouseRelease(start, Qt::LeftButton);
    QCOMPARE(started.size(), 0);

    QTest::keyPress(start, Qt::Key_Space);
    view_->viewDidAppear();
    now_ += 1000;
    QTest::keyRelease(start, Qt::Key_Space);
    QCOMPARE(started.size(), 0);

    QTest::mouseClick(start, Qt::LeftButton);
    QCOMPARE(started.size(), 1);
}

void ReadyViewTest::theGuardBeginsAnewWhenTheViewHasAppeared()
{
    appearAndWait();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    view_->hide();
    view_->show();
    QTest::mouseClick(view_->startButton(), Qt::LeftButton);
    now_ += 399;
    view_->viewDidAppear();
    now_ += 399;
    QTest::mouseClick(view_->startButton(), Qt::LeftButton);
    QCOMPARE(started.size(), 0);
}

void ReadyViewTest::aWindowThatComesBackIsNoNewView()
{
    appearAndWait();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    QShowEvent comesBack;
    QSpontaneKeyEvent::setSpontaneous(&comesBack);
    qApp->notify(&*view_, &comesBack);
    QTest::mouseClick(view_->startButton(), Qt::LeftButton);
    QCOMPARE(started.size(), 1);
}

void ReadyViewTest::startIgnoresAKeyThatRepeats()
{
    appearAndWait();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_Space)}) {
        QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(view_->startButton(), &repeated);
        QKeyEvent released(QEvent::KeyRelease, key, Qt::NoModifier);
        QApplication::sendEvent(view_->startButton(), &released);
    }
    QCOMPARE(started.size(), 0);
}

void ReadyViewTest::tabIsHeldUpByNothing()
{
    scene_->place(*view_, {720, 520});
    view_->startButton()->setFocus();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(view_->startButton(), &held);
    QVERIFY(!view_->startButton()->hasFocus());
}

void ReadyViewTest::theShortcutIsUnderTheSameGuard()
{
    scene_->place(*view_, {720, 520});
    view_->viewDidAppear();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    now_ += 399;
    view_->start();
    QCOMPARE(started.size(), 0);
    now_ += 1;
    view_->start();
    QCOMPARE(started.size(), 1);
}

void ReadyViewTest::aDisabledStartStartsNothing()
{
    appearAndWait();
    view_->setContents({});
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    view_->start();
    QTest::mouseClick(view_->startButton(), Qt::LeftButton);
    QCOMPARE(started.size(), 0);
}

void ReadyViewTest::theKeyboardIsFirstInTheTableAndNeverOnStart()
{
    QCOMPARE(view_->firstFocus(), view_->table());
}

void ReadyViewTest::returnStartsOnlyWithTheKeyboardOnStart()
{
    appearAndWait();
    QSignalSpy started(&*view_, &ReadyView::startClicked);
    view_->firstFocus()->setFocus();
    QTest::keyClick(view_->firstFocus(), Qt::Key_Return);
    QCOMPARE(started.size(), 0);
    view_->startButton()->setFocus();
    QTest::keyClick(view_->startButton(), Qt::Key_Return);
    QCOMPARE(started.size(), 1);
}

void ReadyViewTest::tabGoesFromTopToBottom()
{
    appearAndWait();
    const std::vector<QWidget *> withoutCautions{view_->table(), view_->methodSelector(),
                                                 view_->startButton()};
    QCOMPARE(ViewScene::tabbedThrough(*view_), withoutCautions);
    view_->setCautions({{QStringLiteral("2 symbolic links")}, {QStringLiteral("btrfs")}});
    QCOMPARE(ViewScene::tabbedThrough(*view_), view_->tabStops());
}

void ReadyViewTest::everyElementWithTheKeyboardHasAName()
{
    view_->setCautions({{QStringLiteral("2 symbolic links")}, {QStringLiteral("btrfs")}});
    QCOMPARE(ViewScene::nameless(*view_).join(QLatin1Char(' ')), QString());
    QCOMPARE(view_->table()->accessibleName(), QStringLiteral("Files to erase"));
    QCOMPARE(view_->methodSelector()->accessibleName(), QStringLiteral("Wipe method"));
    QCOMPARE(view_->passStrip()->accessibleName(), QStringLiteral("Passes"));
    QCOMPARE(view_->startButton()->accessibleName(), QStringLiteral("Start"));
}

QTEST_MAIN(ReadyViewTest)
#include "ReadyViewTest.moc"
