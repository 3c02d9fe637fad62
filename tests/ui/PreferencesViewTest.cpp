#include "ui/PreferencesView.h"

#include "engine/WipeDescriptionController.h"
#include "ui/ButtonBlue.h"
#include "ui/LinkButton.h"
#include "ui/MethodSelector.h"
#include "ui/PathField.h"
#include "ui/PlainButton.h"
#include "ui/PreferenceRow.h"
#include "ui/SegmentedControl.h"
#include "ui/SwitchButton.h"
#include "ui/ViewLayouts.h"
#include "ui/ViewScene.h"

#include <QSignalSpy>

class PreferencesViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void groupsStandAtTheirPlaces_data();
    void groupsStandAtTheirPlaces();
    void controlsStandInTheirRows_data();
    void controlsStandInTheirRows();
    void linesStandBetweenTheRows();
    void itSaysWhatTheDesignSays();
    void aLongRemarkIsReadInFull();
    void aClickOnARowsNameTurnsItsSwitch();
    void aClickBesideTheNameTurnsNothing();
    void theButtonsSaySo();
    void themeSegmentsCanBeDisabled();
    void returnMeansDoneButInTheFieldAndOnButtons();
    void escapeGoesBackAndTakesNoPath();
    void returnInTheFieldTakesThePath();
    void leavingTheFieldTakesThePath();
    void aPathThatIsSetIsNotTaken();
    void theKeyboardIsFirstOnTheMethod();
    void tabGoesFromTopToBottom();
    void everyElementWithTheKeyboardHasAName();
    void remarksDescribeTheirControls();

  private:
    std::optional<ViewScene> scene_;
    std::optional<PreferencesView> view_;
};

void PreferencesViewTest::init()
{
    ViewScene::setFontPixels(13);
    view_.reset();
    scene_.emplace();
    view_.emplace();
    view_->methodSelector()->setMethods(WipeDescriptionController().wipeDescriptions());
    view_->methodSelector()->setCurrentMethod(3);
    view_->setVersionText(QStringLiteral("Version 1.0.0"));
}

void PreferencesViewTest::groupsStandAtTheirPlaces_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("fontPixels");
    QTest::newRow("the design's size") << QSize(720, 520) << 13;
    QTest::newRow("grown") << QSize(1000, 800) << 13;
    QTest::newRow("the smallest") << QSize(640, 464) << 13;
    QTest::newRow("a font 1.5 times as large") << QSize(1108, 800) << 20;
}

void PreferencesViewTest::groupsStandAtTheirPlaces()
{
    QFETCH(QSize, size);
    QFETCH(int, fontPixels);
    ViewScene::setFontPixels(fontPixels);
    scene_->place(*view_, size);
    const PreferencesLayout layout = PreferencesLayout::of(
        ViewRuler(size, fontPixels / 13.0), view_->versionText()->sizeHint().width(),
        view_->contactLink()->sizeHint().width());
    QCOMPARE(view_->heading()->geometry(), layout.heading);
    for (int group = 0; group < 3; ++group) {
        QCOMPARE(view_->groupLabel(group)->geometry(), layout.groups[std::size_t(group)].label);
        QCOMPARE(view_->group(group)->geometry(), layout.groups[std::size_t(group)].card);
    }
    QCOMPARE(view_->logRemark()->geometry(), layout.groups[2].remark);
    QCOMPARE(view_->versionText()->geometry(), layout.version);
    QCOMPARE(view_->contactLink()->geometry(), layout.contact);
    QCOMPARE(view_->doneButton()->geometry(), layout.done);
}

void PreferencesViewTest::controlsStandInTheirRows_data()
{
    using Control = std::function<QWidget *(const PreferencesView &)>;
    QTest::addColumn<Control>("control");
    QTest::addColumn<QRect>("natural");
    QTest::addColumn<QRect>("grown");
    const auto row = [](const char *name, const QRect &natural, const QRect &grown, Control of) {
        QTest::newRow(name) << of << natural << grown;
    };
    row("method", {410, 88, 262, 28}, {690, 88, 262, 28},
        [](const PreferencesView &view) { return view.methodSelector(); });
    row("theme", {410, 124, 262, 28}, {690, 124, 262, 28},
        [](const PreferencesView &view) { return view.themeSegments(); });
    row("targets of links", {636, 164, 36, 20}, {916, 164, 36, 20},
        [](const PreferencesView &view) { return view.skipLinkTargets(); });
    row("quit", {636, 200, 36, 20}, {916, 200, 36, 20},
        [](const PreferencesView &view) { return view.autoExit(); });
    row("check for updates", {636, 272, 36, 20}, {916, 272, 36, 20},
        [](const PreferencesView &view) { return view.checkForUpdates(); });
    row("beta releases", {636, 308, 36, 20}, {916, 308, 36, 20},
        [](const PreferencesView &view) { return view.betaReleases(); });
    row("alpha releases", {636, 344, 36, 20}, {916, 344, 36, 20},
        [](const PreferencesView &view) { return view.alphaReleases(); });
    row("path", {208, 412, 368, 28}, {208, 412, 648, 28},
        [](const PreferencesView &view) { return view.pathField(); });
    row("choose", {584, 412, 88, 28}, {864, 412, 88, 28},
        [](const PreferencesView &view) { return view.chooseButton(); });
}

void PreferencesViewTest::controlsStandInTheirRows()
{
    QFETCH(std::function<QWidget *(const PreferencesView &)>, control);
    scene_->place(*view_, {720, 520});
    QTEST(ViewScene::placeOf(*view_, control(*view_)), "natural");
    scene_->place(*view_, {1000, 800});
    QTEST(ViewScene::placeOf(*view_, control(*view_)), "grown");
}

void PreferencesViewTest::linesStandBetweenTheRows()
{
    scene_->place(*view_, {720, 520});
    QList<QRect> lines;
    for (const QWidget *line : view_->group(0)->lines())
        lines.append(line->geometry());
    QCOMPARE(lines,
             QList<QRect>({QRect(16, 36, 624, 1), QRect(16, 72, 624, 1), QRect(16, 108, 624, 1)}));
    QCOMPARE(view_->group(1)->lines().size(), std::size_t(2));
    QCOMPARE(view_->group(2)->lines().size(), std::size_t(0));
}

void PreferencesViewTest::itSaysWhatTheDesignSays()
{
    QStringList words{view_->heading()->text()};
    for (int group = 0; group < 3; ++group) {
        words += view_->groupLabel(group)->text();
        for (const PreferenceRow *row : view_->group(group)->rows())
            words += row->label()->text();
    }
    words +=
        {view_->chooseButton()->text(), view_->contactLink()->text(), view_->doneButton()->text()};
    QCOMPARE(words.join(QStringLiteral(" | ")),
             QStringLiteral("Preferences | General | Wipe method | Theme | "
                            "Leave the targets of links alone | Quit after a finished run | "
                            "Updates | Check for updates automatically | Include beta releases | "
                            "Include alpha releases | Log file | Path | Choose… | "
                            "Contact the makers | Done"));
    QCOMPARE(view_->group(0)->rows()[2]->remark()->text(),
             QStringLiteral("a symbolic link is removed, its file stays"));
    QCOMPARE(view_->group(1)->rows()[2]->remark()->text(),
             QStringLiteral("unfinished, for testing only"));
    QCOMPARE(view_->pathField()->placeholderText(), QStringLiteral("No log file"));
    QCOMPARE(view_->themeSegments()->count(), 3);
    QCOMPARE(view_->versionText()->text(), QStringLiteral("Version 1.0.0"));
}

void PreferencesViewTest::aLongRemarkIsReadInFull()
{
    scene_->place(*view_, {720, 520});
    view_->setThemeRemark(QStringLiteral("light now, dark from the next start"));
    const PreferenceRow *theme = view_->group(0)->rows()[1];
    QVERIFY(theme->remark()->width() >= theme->remark()->sizeHint().width());
    QVERIFY(!theme->remark()->geometry().intersects(theme->label()->geometry()));
    QVERIFY(!theme->remark()->geometry().intersects(view_->themeSegments()->geometry()));
    view_->setThemeRemark(QString());
    QCOMPARE(theme->remark()->x(), 236);
    view_->setLogRemark(QStringLiteral("counts from the next start"));
    QCOMPARE(view_->logRemark()->text(), QStringLiteral("counts from the next start"));
}

void PreferencesViewTest::aClickOnARowsNameTurnsItsSwitch()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy turned(view_->autoExit(), &QAbstractButton::clicked);
    TextLabel *label = view_->group(0)->rows()[3]->label();
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(view_->autoExit()->isChecked());
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(!view_->autoExit()->isChecked());
    QCOMPARE(turned.size(), 2);
}

void PreferencesViewTest::aClickBesideTheNameTurnsNothing()
{
    scene_->place(*view_, {720, 520});
    PreferenceRow *row = view_->group(0)->rows()[3];
    QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(400, 18));
    QTest::mouseClick(row->label(), Qt::RightButton);
    QVERIFY(!view_->autoExit()->isChecked());
    // A row without a switch has nothing to turn.
    QSignalSpy chosen(&*view_, &PreferencesView::chooseLogClicked);
    QTest::mouseClick(view_->group(2)->rows()[0]->label(), Qt::LeftButton);
    QCOMPARE(chosen.size(), 0);
}

void PreferencesViewTest::theButtonsSaySo()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy done(&*view_, &PreferencesView::doneClicked);
    QSignalSpy contact(&*view_, &PreferencesView::contactClicked);
    QSignalSpy choose(&*view_, &PreferencesView::chooseLogClicked);
    QTest::mouseClick(view_->doneButton(), Qt::LeftButton);
    QCOMPARE(done.size(), 1);
    QTest::mouseClick(view_->contactLink(), Qt::LeftButton);
    QCOMPARE(contact.size(), 1);
    QTest::mouseClick(view_->chooseButton(), Qt::LeftButton);
    QCOMPARE(choose.size(), 1);
}

void PreferencesViewTest::themeSegmentsCanBeDisabled()
{
    view_->setThemeEnabled(false);
    QVERIFY(!view_->themeSegments()->isEnabled());
    view_->setThemeEnabled(true);
    QVERIFY(view_->themeSegments()->isEnabled());
}

void PreferencesViewTest::returnMeansDoneButInTheFieldAndOnButtons()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy done(&*view_, &PreferencesView::doneClicked);
    QSignalSpy choose(&*view_, &PreferencesView::chooseLogClicked);
    int expected = 0;
    for (QWidget *control : {static_cast<QWidget *>(view_->methodSelector()),
                             static_cast<QWidget *>(view_->themeSegments()),
                             static_cast<QWidget *>(view_->autoExit())}) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Return);
        QCOMPARE(done.size(), ++expected);
    }
    QVERIFY(!view_->autoExit()->isChecked());
    view_->pathField()->setFocus();
    QTest::keyClick(view_->pathField(), Qt::Key_Return);
    QCOMPARE(done.size(), expected);
    view_->chooseButton()->setFocus();
    QTest::keyClick(view_->chooseButton(), Qt::Key_Return);
    QCOMPARE(done.size(), expected);
    QCOMPARE(choose.size(), 1);
}

void PreferencesViewTest::escapeGoesBackAndTakesNoPath()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy done(&*view_, &PreferencesView::doneClicked);
    QSignalSpy taken(&*view_, &PreferencesView::logPathTaken);
    view_->pathField()->setText(QStringLiteral("/var/log/a.log"));
    view_->pathField()->setFocus();
    QTest::keyClicks(view_->pathField(), QStringLiteral("xyz"));
    QTest::keyClick(view_->pathField(), Qt::Key_Escape);
    QCOMPARE(done.size(), 1);
    view_->doneButton()->setFocus();
    QCOMPARE(taken.size(), 0);
    QCOMPARE(view_->pathField()->text(), QStringLiteral("/var/log/a.log"));
}

void PreferencesViewTest::returnInTheFieldTakesThePath()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy taken(&*view_, &PreferencesView::logPathTaken);
    view_->pathField()->setFocus();
    QTest::keyClicks(view_->pathField(), QStringLiteral("/tmp/b.log"));
    QTest::keyClick(view_->pathField(), Qt::Key_Return);
    QCOMPARE(taken.size(), 1);
    QCOMPARE(taken[0][0].toString(), QStringLiteral("/tmp/b.log"));
    // Once is enough, also when the key comes again or the field is left.
    QTest::keyClick(view_->pathField(), Qt::Key_Return);
    view_->doneButton()->setFocus();
    QCOMPARE(taken.size(), 1);
    // And Escape does not bring the old one back.
    QTest::keyClick(view_->doneButton(), Qt::Key_Escape);
    QCOMPARE(view_->pathField()->text(), QStringLiteral("/tmp/b.log"));
}

void PreferencesViewTest::leavingTheFieldTakesThePath()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy taken(&*view_, &PreferencesView::logPathTaken);
    view_->pathField()->setFocus();
    QTest::keyClicks(view_->pathField(), QStringLiteral("/tmp/b.log"));
    QTest::mouseClick(view_->doneButton(), Qt::LeftButton);
    QCOMPARE(taken.size(), 1);
}

void PreferencesViewTest::aPathThatIsSetIsNotTaken()
{
    scene_->place(*view_, {720, 520});
    QSignalSpy taken(&*view_, &PreferencesView::logPathTaken);
    view_->pathField()->setFocus();
    view_->pathField()->setText(QStringLiteral("/tmp/b.log"));
    QTest::keyClick(view_->pathField(), Qt::Key_Return);
    view_->doneButton()->setFocus();
    QCOMPARE(taken.size(), 0);
}

void PreferencesViewTest::theKeyboardIsFirstOnTheMethod()
{
    QCOMPARE(view_->firstFocus(), view_->methodSelector());
}

void PreferencesViewTest::tabGoesFromTopToBottom()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(ViewScene::tabbedThrough(*view_), view_->tabStops());
    QCOMPARE(view_->tabStops().size(), std::size_t(11));
}

void PreferencesViewTest::everyElementWithTheKeyboardHasAName()
{
    QCOMPARE(ViewScene::nameless(*view_).join(QLatin1Char(' ')), QString());
    QCOMPARE(view_->methodSelector()->accessibleName(), QStringLiteral("Wipe method"));
    QCOMPARE(view_->themeSegments()->accessibleName(), QStringLiteral("Theme"));
    QCOMPARE(view_->skipLinkTargets()->accessibleName(),
             QStringLiteral("Leave the targets of links alone"));
    QCOMPARE(view_->pathField()->accessibleName(), QStringLiteral("Path"));
}

void PreferencesViewTest::remarksDescribeTheirControls()
{
    QCOMPARE(view_->skipLinkTargets()->accessibleDescription(),
             QStringLiteral("a symbolic link is removed, its file stays"));
    view_->setThemeRemark(QStringLiteral("light now"));
    QCOMPARE(view_->themeSegments()->accessibleDescription(), QStringLiteral("light now"));
    view_->setLogRemark(QStringLiteral("from the next start"));
    QCOMPARE(view_->pathField()->accessibleDescription(), QStringLiteral("from the next start"));
}

QTEST_MAIN(PreferencesViewTest)
#include "PreferencesViewTest.moc"
