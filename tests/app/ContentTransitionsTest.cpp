#include "app/ContentTransitions.h"

#include <QTest>

using ContentTransitions::Edge;
using ContentTransitions::Transition;

Q_DECLARE_METATYPE(MainView)
Q_DECLARE_METATYPE(ContentTransitions::Edge)

class ContentTransitionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aViewComesFromItsSide_data();
    void aViewComesFromItsSide();
    void aViewThatStandsThereDoesNotMove_data();
    void aViewThatStandsThereDoesNotMove();
    void addingFilesIsPossibleOutsideThePreferences_data();
    void addingFilesIsPossibleOutsideThePreferences();
    void onlyTheErasingViewBeginsARunAndOnlyTheFinishedOneEndsIt();
    void onlyTheDropViewCallsForItsCallout();
    void onlyThePreferencesSetTheCurrentViewAside();
    void duringARunThePreferencesDoNotCome();
    void thePreferencesAreNotShownTwice();
    void thePreferencesLeaveToTheBottom();
    void noViewIsNothingToShow();
    void theTitleIsThatOfTheView_data();
    void theTitleIsThatOfTheView();
};

namespace {

const std::vector<MainView> everyView = {MainView::Drop, MainView::Ready, MainView::Erasing,
                                         MainView::Finished, MainView::Preferences};

Transition shown(MainView view, MainView current)
{
    return ContentTransitions::toShow(view, current, false).value();
}

} // namespace

void ContentTransitionsTest::aViewComesFromItsSide_data()
{
    using V = MainView;
    QTest::addColumn<MainView>("view");
    QTest::addColumn<MainView>("current");
    QTest::addColumn<Edge>("from");
    QTest::newRow("drop, first") << V::Drop << V::None << Edge::Top;
    QTest::newRow("drop over ready") << V::Drop << V::Ready << Edge::Left;
    QTest::newRow("drop over erasing") << V::Drop << V::Erasing << Edge::Left;
    QTest::newRow("drop over finished") << V::Drop << V::Finished << Edge::Left;
    QTest::newRow("drop over preferences") << V::Drop << V::Preferences << Edge::Left;
    QTest::newRow("ready, first") << V::Ready << V::None << Edge::Right;
    QTest::newRow("ready over drop") << V::Ready << V::Drop << Edge::Right;
    QTest::newRow("ready over erasing") << V::Ready << V::Erasing << Edge::Left;
    QTest::newRow("ready over finished") << V::Ready << V::Finished << Edge::Left;
    QTest::newRow("ready over preferences") << V::Ready << V::Preferences << Edge::Left;
    QTest::newRow("erasing, first") << V::Erasing << V::None << Edge::Top;
    QTest::newRow("erasing over drop") << V::Erasing << V::Drop << Edge::Right;
    QTest::newRow("erasing over ready") << V::Erasing << V::Ready << Edge::Right;
    QTest::newRow("erasing over finished") << V::Erasing << V::Finished << Edge::Left;
    QTest::newRow("erasing over preferences") << V::Erasing << V::Preferences << Edge::Right;
    QTest::newRow("finished, first") << V::Finished << V::None << Edge::Top;
    QTest::newRow("finished over drop") << V::Finished << V::Drop << Edge::Right;
    QTest::newRow("finished over ready") << V::Finished << V::Ready << Edge::Right;
    QTest::newRow("finished over erasing") << V::Finished << V::Erasing << Edge::Right;
    QTest::newRow("finished over preferences") << V::Finished << V::Preferences << Edge::Right;
    QTest::newRow("preferences, first") << V::Preferences << V::None << Edge::Top;
    QTest::newRow("preferences over drop") << V::Preferences << V::Drop << Edge::Top;
    QTest::newRow("preferences over ready") << V::Preferences << V::Ready << Edge::Top;
    QTest::newRow("preferences over finished") << V::Preferences << V::Finished << Edge::Top;
}

void ContentTransitionsTest::aViewComesFromItsSide()
{
    QFETCH(MainView, view);
    QFETCH(MainView, current);
    QFETCH(Edge, from);
    QCOMPARE(shown(view, current).from, std::optional(from));
}

void ContentTransitionsTest::aViewThatStandsThereDoesNotMove_data()
{
    QTest::addColumn<MainView>("view");
    QTest::newRow("drop") << MainView::Drop;
    QTest::newRow("ready") << MainView::Ready;
    QTest::newRow("erasing") << MainView::Erasing;
    QTest::newRow("finished") << MainView::Finished;
}

void ContentTransitionsTest::aViewThatStandsThereDoesNotMove()
{
    QFETCH(MainView, view);
    QCOMPARE(shown(view, view).from, std::optional<Edge>());
}

void ContentTransitionsTest::addingFilesIsPossibleOutsideThePreferences_data()
{
    QTest::addColumn<MainView>("view");
    QTest::addColumn<QVariant>("enabled");
    QTest::newRow("the drop view leaves the button") << MainView::Drop << QVariant();
    QTest::newRow("ready") << MainView::Ready << QVariant(true);
    QTest::newRow("erasing") << MainView::Erasing << QVariant(true);
    QTest::newRow("finished") << MainView::Finished << QVariant(true);
    QTest::newRow("preferences") << MainView::Preferences << QVariant(false);
}

void ContentTransitionsTest::addingFilesIsPossibleOutsideThePreferences()
{
    QFETCH(MainView, view);
    const std::optional<bool> enabled = shown(view, MainView::None).isAddFilesEnabled;
    QTEST(enabled ? QVariant(*enabled) : QVariant(), "enabled");
}

void ContentTransitionsTest::onlyTheErasingViewBeginsARunAndOnlyTheFinishedOneEndsIt()
{
    for (const MainView view : everyView) {
        const std::optional<bool> busy = shown(view, MainView::None).isBusyWiping;
        QCOMPARE(busy.has_value(), view == MainView::Erasing || view == MainView::Finished);
        if (busy)
            QCOMPARE(*busy, view == MainView::Erasing);
    }
}

void ContentTransitionsTest::onlyTheDropViewCallsForItsCallout()
{
    for (const MainView view : everyView)
        QCOMPARE(shown(view, MainView::None).schedulesCallout, view == MainView::Drop);
}

void ContentTransitionsTest::onlyThePreferencesSetTheCurrentViewAside()
{
    for (const MainView view : everyView)
        QCOMPARE(shown(view, MainView::None).setsCurrentAside, view == MainView::Preferences);
}

void ContentTransitionsTest::duringARunThePreferencesDoNotCome()
{
    QVERIFY(!ContentTransitions::toShow(MainView::Preferences, MainView::Erasing, true));
    QVERIFY(ContentTransitions::toShow(MainView::Finished, MainView::Erasing, true));
}

void ContentTransitionsTest::thePreferencesAreNotShownTwice()
{
    QVERIFY(!ContentTransitions::toShow(MainView::Preferences, MainView::Preferences, false));
}

void ContentTransitionsTest::thePreferencesLeaveToTheBottom()
{
    Transition expected;
    expected.from = Edge::Bottom;
    expected.isAddFilesEnabled = true;
    QCOMPARE(ContentTransitions::toHidePreferences(), expected);
}

void ContentTransitionsTest::noViewIsNothingToShow()
{
    QVERIFY(!ContentTransitions::toShow(MainView::None, MainView::Drop, false));
}

void ContentTransitionsTest::theTitleIsThatOfTheView_data()
{
    QTest::addColumn<MainView>("view");
    QTest::addColumn<QString>("title");
    QTest::newRow("none") << MainView::None << QString();
    QTest::newRow("drop") << MainView::Drop << QStringLiteral("Drag your files and folders here");
    QTest::newRow("ready") << MainView::Ready << QStringLiteral("Ready to start erasing");
    QTest::newRow("erasing") << MainView::Erasing << QStringLiteral("Securely erasing files");
    QTest::newRow("finished") << MainView::Finished << QStringLiteral("Finished");
    QTest::newRow("preferences") << MainView::Preferences << QString();
}

void ContentTransitionsTest::theTitleIsThatOfTheView()
{
    QFETCH(MainView, view);
    QTEST(ContentTransitions::title(view), "title");
}

QTEST_APPLESS_MAIN(ContentTransitionsTest)
#include "ContentTransitionsTest.moc"
