#include "ui/FinishedView.h"

#include "ui/ButtonBlue.h"
#include "ui/Card.h"
#include "ui/CautionBand.h"
#include "ui/Figure.h"
#include "ui/PlainButton.h"
#include "ui/StatusPicture.h"
#include "ui/VTLLine.h"
#include "ui/ViewLayouts.h"
#include "ui/ViewScene.h"

#include <QSignalSpy>

class FinishedViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void elementsStandAtTheirPlaces_data();
    void elementsStandAtTheirPlaces();
    void theCardHasThreeParts();
    void itShowsTheSummary();
    void whatIsWrongWithTheLogStandsBehindTheNote();
    void withoutFailuresThereIsNeitherBandNorBadge();
    void withFailuresThereAreBandAndBadge();
    void theBadgeStandsOnADiscOfTheWindow();
    void theErrorButtonIsThereOnlyWhereItIsAskedFor();
    void theButtonsSaySo();
    void returnShowsTheErrorLogOnlyAfterFailures();
    void tabGoesFromTopToBottom();
    void everyElementWithTheKeyboardHasAName();

  private:
    static FinishedView::Summary good();
    static FinishedView::Summary withFailures();

    std::optional<ViewScene> scene_;
    std::optional<FinishedView> view_;
};

void FinishedViewTest::init()
{
    ViewScene::setFontPixels(13);
    view_.reset();
    scene_.emplace();
    view_.emplace();
}

FinishedView::Summary FinishedViewTest::good()
{
    FinishedView::Summary summary;
    summary.result = QStringLiteral("18.42 GB in 248 files");
    summary.method = QStringLiteral("3-Pass DoD");
    summary.elapsed = QStringLiteral("about 7 minutes");
    summary.failed = QStringLiteral("0");
    return summary;
}

FinishedView::Summary FinishedViewTest::withFailures()
{
    FinishedView::Summary summary = good();
    summary.failed = QStringLiteral("3");
    summary.hasFailures = true;
    summary.failureText = QStringLiteral("3 files could not be erased.");
    summary.showsErrorButton = true;
    return summary;
}

void FinishedViewTest::elementsStandAtTheirPlaces_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("fontPixels");
    QTest::addColumn<bool>("hasFailures");
    for (const bool hasFailures : {false, true}) {
        const char *run = hasFailures ? "with failures" : "without failures";
        QTest::addRow("the design's size, %s", run) << QSize(720, 520) << 13 << hasFailures;
        QTest::addRow("grown, %s", run) << QSize(1000, 800) << 13 << hasFailures;
        QTest::addRow("the smallest, %s", run) << QSize(640, 464) << 13 << hasFailures;
        QTest::addRow("a font 1.5 times as large, %s", run)
            << QSize(1108, 800) << 20 << hasFailures;
    }
}

void FinishedViewTest::elementsStandAtTheirPlaces()
{
    QFETCH(QSize, size);
    QFETCH(int, fontPixels);
    QFETCH(bool, hasFailures);
    ViewScene::setFontPixels(fontPixels);
    scene_->place(*view_, size);
    view_->setSummary(hasFailures ? withFailures() : good());
    const FinishedLayout layout =
        FinishedLayout::of(ViewRuler(size, fontPixels / 13.0), hasFailures);
    QCOMPARE(view_->statusPicture()->geometry(),
             hasFailures ? layout.picture.united(layout.badge) : layout.picture);
    QCOMPARE(view_->result()->geometry(), layout.result);
    QCOMPARE(view_->caption()->geometry(), layout.caption);
    QCOMPARE(view_->card()->geometry(), layout.card);
    QCOMPARE(view_->failureBand()->geometry(), layout.band);
    QCOMPARE(view_->errorLogButton()->geometry(), layout.bandButton);
    QCOMPARE(view_->eraseMoreButton()->geometry(), layout.button);
    QCOMPARE(view_->note()->geometry(), layout.note);
}

void FinishedViewTest::theCardHasThreeParts()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(ViewScene::placeOf(*view_, view_->method()), QRect(112, 248, 208, 64));
    QCOMPARE(ViewScene::placeOf(*view_, view_->elapsed()), QRect(336, 248, 144, 64));
    QCOMPARE(ViewScene::placeOf(*view_, view_->failed()), QRect(496, 248, 112, 64));
    QCOMPARE(view_->failed()->labelText()->geometry(), QRect(0, 12, 112, 16));
    QCOMPARE(view_->failed()->valueText()->geometry(), QRect(0, 30, 112, 20));
    QList<QRect> lines;
    for (const VTLLine *line : view_->card()->findChildren<VTLLine *>())
        lines.append(line->geometry());
    QCOMPARE(lines, QList<QRect>({QRect(224, 12, 1, 40), QRect(384, 12, 1, 40)}));
}

void FinishedViewTest::itShowsTheSummary()
{
    view_->setSummary(good());
    QCOMPARE(view_->result()->text(), QStringLiteral("18.42 GB in 248 files"));
    QCOMPARE(view_->caption()->text(), QStringLiteral("overwritten and removed"));
    QCOMPARE(view_->method()->label(), QStringLiteral("Method"));
    QCOMPARE(view_->method()->value(), QStringLiteral("3-Pass DoD"));
    QCOMPARE(view_->elapsed()->value(), QStringLiteral("about 7 minutes"));
    QCOMPARE(view_->failed()->value(), QStringLiteral("0"));
    QCOMPARE(view_->note()->text(), QStringLiteral("Folders that became empty were removed."));
    QCOMPARE(view_->eraseMoreButton()->text(), QStringLiteral("Erase More Files"));
    QCOMPARE(view_->errorLogButton()->text(), QStringLiteral("Show Error Log"));
    QCOMPARE(view_->statusPicture()->runStatus(), std::int64_t(4));
}

/// And nothing else becomes another: the run has not failed.
void FinishedViewTest::whatIsWrongWithTheLogStandsBehindTheNote()
{
    FinishedView::Summary summary = good();
    summary.logText = QStringLiteral("The log is not complete: No space left on device.");
    view_->setSummary(summary);
    QCOMPARE(view_->note()->text(),
             QStringLiteral("Folders that became empty were removed. The log is not complete: No "
                            "space left on device."));
    QVERIFY(view_->failureBand()->isHidden());
    QVERIFY(view_->errorLogButton()->isHidden());
    QCOMPARE(view_->firstFocus(), view_->eraseMoreButton());
    summary.wasStopped = true;
    view_->setSummary(summary);
    QCOMPARE(view_->note()->text(), QStringLiteral("No folders were removed. The log is not "
                                                   "complete: No space left on device."));
    view_->setSummary(good());
    QCOMPARE(view_->note()->text(), QStringLiteral("Folders that became empty were removed."));
}

void FinishedViewTest::withoutFailuresThereIsNeitherBandNorBadge()
{
    scene_->place(*view_, {720, 520});
    view_->setSummary(withFailures());
    view_->setSummary(good());
    QVERIFY(!view_->failureBand()->isVisible());
    QVERIFY(!view_->errorLogButton()->isVisible());
    QVERIFY(!view_->statusPicture()->hasBadge());
    QCOMPARE(view_->failed()->valueText()->role(), ColorRole::Text);
}

void FinishedViewTest::withFailuresThereAreBandAndBadge()
{
    scene_->place(*view_, {720, 520});
    view_->setSummary(withFailures());
    QVERIFY(view_->failureBand()->isVisible());
    QVERIFY(view_->errorLogButton()->isVisible());
    QCOMPARE(view_->failureBand()->cautions(),
             QStringList(QStringLiteral("3 files could not be erased.")));
    QVERIFY(view_->statusPicture()->hasBadge());
    QCOMPARE(view_->failed()->valueText()->role(), ColorRole::Bad);
}

void FinishedViewTest::theBadgeStandsOnADiscOfTheWindow()
{
    scene_->place(*view_, {720, 520});
    view_->setSummary(withFailures());
    QImage image(view_->statusPicture()->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    view_->statusPicture()->render(&image, {}, {}, QWidget::DrawChildren);
    // Inside the ring, but on the disc; beside the disc the ring's ground is there.
    QCOMPARE(image.pixelColor(60, 58), QColor(Qt::white));
    QVERIFY(image.pixelColor(50, 50) != QColor(Qt::white));
}

void FinishedViewTest::theErrorButtonIsThereOnlyWhereItIsAskedFor()
{
    scene_->place(*view_, {720, 520});
    FinishedView::Summary summary = withFailures();
    summary.showsErrorButton = false;
    view_->setSummary(summary);
    QVERIFY(view_->failureBand()->isVisible());
    QVERIFY(!view_->errorLogButton()->isVisible());
    QCOMPARE(view_->firstFocus(), view_->eraseMoreButton());
}

void FinishedViewTest::theButtonsSaySo()
{
    scene_->place(*view_, {720, 520});
    view_->setSummary(withFailures());
    QSignalSpy log(&*view_, &FinishedView::showErrorLogClicked);
    QSignalSpy more(&*view_, &FinishedView::eraseMoreClicked);
    QTest::mouseClick(view_->errorLogButton(), Qt::LeftButton);
    QCOMPARE(log.size(), 1);
    QTest::mouseClick(view_->eraseMoreButton(), Qt::LeftButton);
    QCOMPARE(more.size(), 1);
}

void FinishedViewTest::returnShowsTheErrorLogOnlyAfterFailures()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy log(&*view_, &FinishedView::showErrorLogClicked);
    QSignalSpy more(&*view_, &FinishedView::eraseMoreClicked);
    view_->setSummary(withFailures());
    QCOMPARE(view_->firstFocus(), view_->errorLogButton());
    view_->setFocus();
    QTest::keyClick(&*view_, Qt::Key_Return);
    QCOMPARE(log.size(), 1);
    // The button that has the keyboard takes the key itself.
    view_->eraseMoreButton()->setFocus();
    QTest::keyClick(view_->eraseMoreButton(), Qt::Key_Return);
    QCOMPARE(log.size(), 1);
    QCOMPARE(more.size(), 1);

    view_->setSummary(good());
    QCOMPARE(view_->firstFocus(), view_->eraseMoreButton());
    view_->setFocus();
    QTest::keyClick(&*view_, Qt::Key_Return);
    QCOMPARE(more.size(), 2);
}

void FinishedViewTest::tabGoesFromTopToBottom()
{
    scene_->place(*view_, {720, 520});
    view_->setSummary(withFailures());
    QCOMPARE(ViewScene::tabbedThrough(*view_), view_->tabStops());
}

void FinishedViewTest::everyElementWithTheKeyboardHasAName()
{
    view_->setSummary(withFailures());
    QCOMPARE(ViewScene::nameless(*view_).join(QLatin1Char(' ')), QString());
    QCOMPARE(view_->failed()->valueText()->accessibleName(), QStringLiteral("Failed"));
}

QTEST_MAIN(FinishedViewTest)
#include "FinishedViewTest.moc"
