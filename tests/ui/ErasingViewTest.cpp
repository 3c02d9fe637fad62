#include "ui/ErasingView.h"

#include "ui/Figure.h"
#include "ui/HorizonProgressIndicator.h"
#include "ui/PassStrip.h"
#include "ui/ProgressTrack.h"
#include "ui/QueueTable.h"
#include "ui/StatusPicture.h"
#include "ui/ViewLayouts.h"
#include "ui/ViewScene.h"

class ErasingViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void elementsStandAtTheirPlaces_data();
    void elementsStandAtTheirPlaces();
    void aFigureStandsUnderItsLabel();
    void itSaysWhatTheDesignSays();
    void itShowsTheFigures();
    void failuresAreShownAsSuch();
    void thePictureFollowsTheRunsStatus();
    void thePassIsShownAsStripAndText();
    void aLongMethodsNameIsReadInFull();
    void theKeyboardIsInTheTable();
    void everyElementWithTheKeyboardHasAName();
    void aFigureIsReadWithItsLabel();

  private:
    static ErasingView::Figures figures();

    std::optional<ViewScene> scene_;
    std::optional<ErasingView> view_;
};

void ErasingViewTest::init()
{
    ViewScene::setFontPixels(13);
    view_.reset();
    scene_.emplace();
    view_.emplace();
}

ErasingView::Figures ErasingViewTest::figures()
{
    return {QStringLiteral("41 %"),
            QStringLiteral("7.58 GB of 18.42 GB"),
            QStringLiteral("About 4 minutes"),
            QStringLiteral("42.18 MB/s"),
            QStringLiteral("about 3 minutes"),
            QStringLiteral("102"),
            QStringLiteral("2"),
            true,
            7.58,
            18.42,
            6};
}

void ErasingViewTest::elementsStandAtTheirPlaces_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("fontPixels");
    QTest::newRow("the design's size") << QSize(720, 520) << 13;
    QTest::newRow("grown") << QSize(1000, 800) << 13;
    QTest::newRow("the smallest") << QSize(640, 464) << 13;
    QTest::newRow("a font 1.5 times as large") << QSize(1108, 800) << 20;
}

void ErasingViewTest::elementsStandAtTheirPlaces()
{
    QFETCH(QSize, size);
    QFETCH(int, fontPixels);
    ViewScene::setFontPixels(fontPixels);
    view_->setMethod(QStringLiteral("3-Pass DoD"));
    scene_->place(*view_, size);
    const ErasingLayout layout = ErasingLayout::of(ViewRuler(size, fontPixels / 13.0),
                                                   view_->methodText()->sizeHint().width());
    QCOMPARE(view_->statusPicture()->geometry(), layout.icon);
    QCOMPARE(view_->percent()->geometry(), layout.percent);
    QCOMPARE(view_->amount()->geometry(), layout.amount);
    QCOMPARE(view_->remaining()->geometry(), layout.remaining);
    QCOMPARE(view_->remainingLabel()->geometry(), layout.remainingLabel);
    QCOMPARE(view_->progress()->geometry(), layout.progress);
    QCOMPARE(view_->throughput()->geometry(), layout.figures[0]);
    QCOMPARE(view_->elapsed()->geometry(), layout.figures[1]);
    QCOMPARE(view_->wiped()->geometry(), layout.figures[2]);
    QCOMPARE(view_->failed()->geometry(), layout.figures[3]);
    QCOMPARE(view_->table()->geometry(), layout.table);
    QCOMPARE(view_->methodText()->geometry(), layout.method);
    QCOMPARE(view_->passStrip()->geometry(), layout.passStrip);
    QCOMPARE(view_->passText()->geometry(), layout.pass);
}

void ErasingViewTest::aFigureStandsUnderItsLabel()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(ViewScene::placeOf(*view_, view_->elapsed()->labelText()), QRect(196, 104, 156, 16));
    QCOMPARE(ViewScene::placeOf(*view_, view_->elapsed()->valueText()), QRect(196, 120, 156, 20));
}

void ErasingViewTest::itSaysWhatTheDesignSays()
{
    QCOMPARE(view_->remainingLabel()->text(), QStringLiteral("remaining"));
    QCOMPARE(view_->throughput()->label(), QStringLiteral("Throughput"));
    QCOMPARE(view_->elapsed()->label(), QStringLiteral("Elapsed"));
    QCOMPARE(view_->wiped()->label(), QStringLiteral("Wiped"));
    QCOMPARE(view_->failed()->label(), QStringLiteral("Failed"));
    QCOMPARE(view_->table()->rowIdentifier(), QStringLiteral("RowViewWithBorder"));
}

void ErasingViewTest::itShowsTheFigures()
{
    view_->setFigures(figures());
    QCOMPARE(view_->percent()->text(), QStringLiteral("41 %"));
    QCOMPARE(view_->amount()->text(), QStringLiteral("7.58 GB of 18.42 GB"));
    QCOMPARE(view_->remaining()->text(), QStringLiteral("About 4 minutes"));
    QCOMPARE(view_->throughput()->value(), QStringLiteral("42.18 MB/s"));
    QCOMPARE(view_->elapsed()->value(), QStringLiteral("about 3 minutes"));
    QCOMPARE(view_->wiped()->value(), QStringLiteral("102"));
    QCOMPARE(view_->failed()->value(), QStringLiteral("2"));
    QCOMPARE(view_->progress()->indicator()->doubleValue(), 7.58);
    QCOMPARE(view_->progress()->indicator()->maxValue(), 18.42);
}

void ErasingViewTest::failuresAreShownAsSuch()
{
    ErasingView::Figures shown = figures();
    view_->setFigures(shown);
    QCOMPARE(view_->failed()->valueText()->role(), ColorRole::Bad);
    shown.hasFailed = false;
    view_->setFigures(shown);
    QCOMPARE(view_->failed()->valueText()->role(), ColorRole::Text);
    QCOMPARE(view_->wiped()->valueText()->role(), ColorRole::Text);
}

void ErasingViewTest::thePictureFollowsTheRunsStatus()
{
    QCOMPARE(view_->statusPicture()->runStatus(), std::int64_t(6));
    ErasingView::Figures shown = figures();
    shown.runStatus = 4;
    const QImage busy = view_->statusPicture()->grab().toImage();
    view_->setFigures(shown);
    QCOMPARE(view_->statusPicture()->runStatus(), std::int64_t(4));
    QVERIFY(view_->statusPicture()->grab().toImage() != busy);
    QVERIFY(!view_->statusPicture()->hasBadge());
}

void ErasingViewTest::thePassIsShownAsStripAndText()
{
    view_->setPass(3, 2, QStringLiteral("Pass 2 of 3"));
    QCOMPARE(view_->passStrip()->method(), std::int64_t(3));
    QCOMPARE(view_->passStrip()->currentPass(), std::optional<int>(2));
    QCOMPARE(view_->passText()->text(), QStringLiteral("Pass 2 of 3"));
    view_->setPass(3, std::nullopt, QStringLiteral("Pass --"));
    QCOMPARE(view_->passStrip()->currentPass(), std::nullopt);
}

void ErasingViewTest::aLongMethodsNameIsReadInFull()
{
    scene_->place(*view_, {640, 464});
    view_->setMethod(QStringLiteral("A method that has quite a long name"));
    QVERIFY(view_->methodText()->width() >= view_->methodText()->sizeHint().width());
    QVERIFY(!view_->methodText()->geometry().intersects(view_->passStrip()->geometry()));
}

void ErasingViewTest::theKeyboardIsInTheTable()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(view_->firstFocus(), view_->table());
    QCOMPARE(ViewScene::tabbedThrough(*view_), view_->tabStops());
    QVERIFY(!view_->pressDefault());
}

void ErasingViewTest::everyElementWithTheKeyboardHasAName()
{
    QCOMPARE(ViewScene::nameless(*view_).join(QLatin1Char(' ')), QString());
    QCOMPARE(view_->table()->accessibleName(), QStringLiteral("Files to erase"));
    QCOMPARE(view_->progress()->indicator()->accessibleName(), QStringLiteral("Overall progress"));
    QCOMPARE(view_->passStrip()->accessibleName(), QStringLiteral("Passes"));
    QVERIFY(view_->statusPicture()->accessibleName().isEmpty());
}

void ErasingViewTest::aFigureIsReadWithItsLabel()
{
    view_->setFigures(figures());
    QCOMPARE(view_->remaining()->accessibleName(), QStringLiteral("Remaining"));
    QCOMPARE(view_->remaining()->accessibleDescription(), QStringLiteral("About 4 minutes"));
    const TextLabel *throughput = view_->throughput()->valueText();
    QCOMPARE(throughput->accessibleName(), QStringLiteral("Throughput"));
    QCOMPARE(throughput->accessibleDescription(), QStringLiteral("42.18 MB/s"));
    QCOMPARE(view_->elapsed()->valueText()->accessibleName(), QStringLiteral("Elapsed"));
    QCOMPARE(view_->wiped()->valueText()->accessibleName(), QStringLiteral("Wiped"));
    QCOMPARE(view_->failed()->valueText()->accessibleName(), QStringLiteral("Failed"));
}

QTEST_MAIN(ErasingViewTest)
#include "ErasingViewTest.moc"
