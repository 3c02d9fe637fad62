#include "ui/DropView.h"

#include "ui/ButtonBlue.h"
#include "ui/DesignColors.h"
#include "ui/DropZone.h"
#include "ui/FocusRing.h"
#include "ui/ImageView.h"
#include "ui/VTLLine.h"
#include "ui/ViewLayouts.h"
#include "ui/ViewScene.h"

#include <QGraphicsOpacityEffect>
#include <QSignalSpy>

class DropViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void elementsStandAtTheirPlaces_data();
    void elementsStandAtTheirPlaces();
    void itSaysWhatTheDesignSays();
    void theMethodIsTheOneItIsGiven();
    void itSaysWhatADragWillDo();
    void withoutADragItSaysItsOwnWords();
    void underADragImageAndWordsStandLower();
    void underADragButtonAndHintFadeOutAndKeepTheKeyboard();
    void theFocusRingGoesWithTheButton();
    void theDragFadesInAndOutAgain();
    void withReducedMotionTheDragDoesNotFade();
    void theFrameIsDashedAtRestAndSolidUnderADrag();
    void theCalloutWaitsBehindTheHeader();
    void theCalloutHasItsDrawing();
    void theCalloutGrowsWithTheFontWhileItStands();
    void aClickOnTheCalloutActsLikeTheAddButton();
    void theCalloutGoesBackToItsPlace();
    void theButtonChooses();
    void returnChoosesAndTheButtonHasTheKeyboardFirst();
    void everyElementWithTheKeyboardHasAName();

  private:
    void drag()
    {
        view_->setDrag(QStringLiteral("Release to add 12 items"),
                       QStringLiteral("They join the others."));
    }

    std::optional<ViewScene> scene_;
    std::optional<DropView> view_;
};

void DropViewTest::init()
{
    ViewScene::setFontPixels(13);
    view_.reset();
    scene_.emplace();
    view_.emplace();
}

void DropViewTest::elementsStandAtTheirPlaces_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("fontPixels");
    QTest::newRow("the design's size") << QSize(720, 520) << 13;
    QTest::newRow("grown") << QSize(1000, 800) << 13;
    QTest::newRow("the smallest") << QSize(640, 464) << 13;
    QTest::newRow("a font 1.5 times as large") << QSize(1108, 800) << 20;
}

void DropViewTest::elementsStandAtTheirPlaces()
{
    QFETCH(QSize, size);
    QFETCH(int, fontPixels);
    ViewScene::setFontPixels(fontPixels);
    scene_->place(*view_, size);
    const DropLayout layout = DropLayout::of(ViewRuler(size, fontPixels / 13.0));
    QCOMPARE(view_->zone()->geometry(), layout.zone);
    QCOMPARE(view_->imageView()->geometry(), layout.image);
    QCOMPARE(view_->heading()->geometry(), layout.heading);
    QCOMPARE(view_->sentence()->geometry(), layout.sentence);
    QCOMPARE(view_->chooseButton()->geometry(), layout.button);
    QCOMPARE(view_->hint()->geometry(), layout.hint);
    QCOMPARE(view_->methodText()->geometry(), layout.method);
}

void DropViewTest::itSaysWhatTheDesignSays()
{
    QCOMPARE(view_->heading()->text(), QStringLiteral("Let go of what you no longer need"));
    QCOMPARE(view_->sentence()->text(),
             QStringLiteral(
                 "Files are overwritten, then removed. Nothing happens until you press Start."));
    QCOMPARE(view_->chooseButton()->text(), QStringLiteral("Choose Files and Folders…"));
    QCOMPARE(view_->hint()->text(), QStringLiteral("or press Ctrl+O"));
    QCOMPARE(view_->heading()->style(), TextStyle::Heading);
    QCOMPARE(view_->sentence()->role(), ColorRole::TextSecondary);
}

void DropViewTest::theMethodIsTheOneItIsGiven()
{
    view_->setMethodText(QStringLiteral("Wipe method: 1-Pass Zeros"));
    QCOMPARE(view_->methodText()->text(), QStringLiteral("Wipe method: 1-Pass Zeros"));
}

void DropViewTest::itSaysWhatADragWillDo()
{
    drag();
    QCOMPARE(view_->heading()->text(), QStringLiteral("Release to add 12 items"));
    QCOMPARE(view_->sentence()->text(), QStringLiteral("They join the others."));
}

void DropViewTest::withoutADragItSaysItsOwnWords()
{
    drag();
    view_->setDrag({}, QStringLiteral("They join the others."));
    itSaysWhatTheDesignSays();
}

void DropViewTest::underADragImageAndWordsStandLower()
{
    // Not shown, so it does not fade.
    view_->resize(720, 520);
    drag();
    QCOMPARE(view_->imageView()->y(), 72 + 32);
    QCOMPARE(view_->heading()->y(), 272 + 32);
    QCOMPARE(view_->sentence()->y(), 304 + 32);
    QCOMPARE(view_->chooseButton()->y(), 352);
    QCOMPARE(view_->imageView()->spread(), 1.0);
    QCOMPARE(view_->zone()->drag(), 1.0);
    view_->setDrag({}, {});
    QCOMPARE(view_->imageView()->y(), 72);
    QCOMPARE(view_->zone()->drag(), 0.0);
}

void DropViewTest::underADragButtonAndHintFadeOutAndKeepTheKeyboard()
{
    scene_->place(*view_, {720, 520});
    view_->chooseButton()->setFocus();
    drag();
    QTRY_COMPARE(view_->zone()->drag(), 1.0);
    for (QWidget *faded :
         {static_cast<QWidget *>(view_->chooseButton()), static_cast<QWidget *>(view_->hint())}) {
        auto *effect = qobject_cast<QGraphicsOpacityEffect *>(faded->graphicsEffect());
        QVERIFY(effect);
        QCOMPARE(effect->opacity(), 0.0);
    }
    QVERIFY(view_->chooseButton()->hasFocus());
    view_->setDrag({}, {});
    QTRY_COMPARE(view_->zone()->drag(), 0.0);
    QVERIFY(!view_->chooseButton()->graphicsEffect());
}

void DropViewTest::theFocusRingGoesWithTheButton()
{
    const FocusRing *ring = FocusRing::install(scene_->window());
    scene_->place(*view_, {720, 520});
    view_->setFocus();
    view_->chooseButton()->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(ring->isVisible());
    drag();
    QTRY_VERIFY(!ring->isVisible());
    view_->setDrag({}, {});
    QTRY_VERIFY(ring->isVisible());
}

void DropViewTest::theDragFadesInAndOutAgain()
{
    scene_->place(*view_, {720, 520});
    drag();
    QVERIFY(view_->zone()->drag() < 1);
    QTRY_COMPARE(view_->zone()->drag(), 1.0);
    view_->setDrag({}, {});
    QVERIFY(view_->zone()->drag() > 0);
    QTRY_COMPARE(view_->zone()->drag(), 0.0);
}

void DropViewTest::withReducedMotionTheDragDoesNotFade()
{
    scene_->place(*view_, {720, 520});
    view_->setPrefersReducedMotion([] { return true; });
    drag();
    QCOMPARE(view_->zone()->drag(), 1.0);
    QCOMPARE(view_->imageView()->y(), 72 + 32);
    view_->setDrag({}, {});
    QCOMPARE(view_->zone()->drag(), 0.0);
}

void DropViewTest::theFrameIsDashedAtRestAndSolidUnderADrag()
{
    view_->resize(720, 520);
    const auto pixel = [this](int x, int y, const QColor &window = Qt::white) {
        QImage image(view_->zone()->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(window);
        view_->zone()->render(&image, {}, {}, QWidget::DrawChildren);
        return image.pixelColor(x, y);
    };
    // The first dash begins behind the corner, at 12, and is as long as the gap after it.
    const QColor dash = pixel(15, 1);
    QVERIFY(dash.lightness() < 220);
    QVERIFY(pixel(21, 0).lightness() > 250);
    QCOMPARE(pixel(27, 1), dash);

    drag();
    const QColor frame = DesignColors::color(ColorRole::Focus);
    QCOMPARE(pixel(15, 0), frame);
    QCOMPARE(pixel(21, 1), frame);
    // The tint alone, 10 % of it, without the ground at rest.
    QCOMPARE(pixel(40, 40, Qt::black), QColor(6, 15, 26));
}

void DropViewTest::theCalloutWaitsBehindTheHeader()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(view_->viewBtnInfo()->parentWidget(), &*view_);
    QCOMPARE(view_->viewBtnInfo()->geometry(), QRect(8, -30, 304, 30));
    QVERIFY(!view_->viewBtnInfo()->isVisible());
}

void DropViewTest::theCalloutHasItsDrawing()
{
    QCOMPARE(view_->imgBtnInfo()->parentWidget(), view_->viewBtnInfo());
    QCOMPARE(view_->imgBtnInfo()->geometry(), QRect(10, 3, 9, 6));
    QList<QRect> lines;
    for (const VTLLine *line : view_->viewBtnInfo()->findChildren<VTLLine *>()) {
        QCOMPARE(line->name(), QStringLiteral("BtnInfoLine"));
        lines.append(line->geometry());
    }
    QCOMPARE(lines, QList<QRect>({QRect(14, 9, 1, 8), QRect(14, 17, 14, 1)}));
    const auto *text = view_->viewBtnInfo()->findChild<TextLabel *>();
    QCOMPARE(text->text(), QStringLiteral("Or add files and folders here"));
    QCOMPARE(text->pos(), QPoint(36, 9));
}

void DropViewTest::theCalloutGrowsWithTheFontWhileItStands()
{
    QCOMPARE(view_->viewBtnInfo()->size(), QSize(304, 30));
    ViewScene::setFontPixels(20);
    QTRY_COMPARE(view_->viewBtnInfo()->size(), QSize(36 + Typography::scaled(304 - 36), 30));
    const auto *text = view_->viewBtnInfo()->findChild<TextLabel *>();
    QCOMPARE(text->height(), Typography::lineHeight(TextStyle::Small));
    QVERIFY(text->height() > 16);
}

void DropViewTest::aClickOnTheCalloutActsLikeTheAddButton()
{
    scene_->place(*view_, {720, 520});
    view_->viewBtnInfo()->move(8, 0);
    view_->viewBtnInfo()->show();
    QSignalSpy added(&*view_, &DropView::addClicked);
    auto *text = view_->viewBtnInfo()->findChild<TextLabel *>();
    QTest::mouseClick(text, Qt::RightButton);
    QCOMPARE(added.size(), 0);
    QTest::mouseClick(text, Qt::LeftButton);
    QCOMPARE(added.size(), 1);
}

void DropViewTest::theCalloutGoesBackToItsPlace()
{
    scene_->place(*view_, {720, 520});
    view_->viewBtnInfo()->move(8, 0);
    view_->viewBtnInfo()->show();
    view_->resize(800, 600);
    QCOMPARE(view_->viewBtnInfo()->pos(), QPoint(8, 0));
    view_->resetBtnInfo();
    QCOMPARE(view_->viewBtnInfo()->pos(), QPoint(8, -30));
    QVERIFY(!view_->viewBtnInfo()->isVisible());
}

void DropViewTest::theButtonChooses()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy chosen(&*view_, &DropView::chooseClicked);
    QTest::mouseClick(view_->chooseButton(), Qt::LeftButton);
    QCOMPARE(chosen.size(), 1);
}

void DropViewTest::returnChoosesAndTheButtonHasTheKeyboardFirst()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(view_->firstFocus(), view_->chooseButton());
    QCOMPARE(ViewScene::tabbedThrough(*view_), view_->tabStops());
    QSignalSpy chosen(&*view_, &DropView::chooseClicked);
    view_->firstFocus()->setFocus();
    QTest::keyClick(view_->chooseButton(), Qt::Key_Return);
    QCOMPARE(chosen.size(), 1);
    view_->setFocus();
    QTest::keyClick(&*view_, Qt::Key_Return);
    QCOMPARE(chosen.size(), 2);
}

void DropViewTest::everyElementWithTheKeyboardHasAName()
{
    QCOMPARE(ViewScene::nameless(*view_).join(QLatin1Char(' ')), QString());
    QCOMPARE(view_->zone()->accessibleName(), QStringLiteral("Drop zone"));
    QVERIFY(view_->imageView()->accessibleName().isEmpty());
}

QTEST_MAIN(DropViewTest)
#include "DropViewTest.moc"
