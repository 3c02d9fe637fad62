#include "support/view/ErrorLogWindow.h"

#include "support/view/TableViewErrorLog.h"
#include "ui/Appearance.h"
#include "ui/HeaderButton.h"
#include "ui/PlainButton.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"
#include "ui/WindowHeader.h"
#include "ui/WindowRegister.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

namespace {

/// A window with so many failed files.
struct Scene
{
    explicit Scene(int rows = 3)
    {
        window.setIsComposited([] { return false; });
        addRows(rows);
        window.awakeFromNib();
    }
    void addRows(int rows)
    {
        for (int row = 0; row < rows; ++row)
            window.model()->add(
                {"file " + QByteArray::number(row), "/tmp", QStringLiteral("Permission denied")});
    }
    void show()
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    /// This row alone, whatever key a test before has left pressed.
    void select(int row)
    {
        window.table()->selectionModel()->setCurrentIndex(window.table()->rowIndex(row),
                                                          QItemSelectionModel::ClearAndSelect |
                                                              QItemSelectionModel::Rows);
    }
    [[nodiscard]] QRect placeOf(const QWidget *widget) const
    {
        return {widget->mapTo(&window, QPoint()), widget->size()};
    }

    ErrorLogWindow window;
};

} // namespace

class ErrorLogWindowTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();

    void itStandsAsDesigned();
    void aLargerWindowGivesAllToTheTable();
    void itSaysHowManyFilesFailed_data();
    void itSaysHowManyFilesFailed();
    void whatIsNoFileIsAnItem();

    void itsAppearanceFollowsTheTheme();
    void itTakesTheThemeOnceAtFirst();
    void withoutAStoredAppearanceItHasNone();
    void itTellsThatItBecameMain();
    void itTellsNothingWhenItResigns();
    void itComesBackWhenTheApplicationIsOpenedAgain();

    void closingHidesItAndTells_data();
    void closingHidesItAndTells();
    void closingIsNotRefused();
    void itCanBeMinimised();

    void theFirstRowHasTheFirstFocus();
    void aSelectionStaysWhenItIsShownAgain();
    void theButtonShowsTheSelectedRow();
    void theButtonNeedsARow();
    void whatTheTableShowsTheWindowShows();
    void rowsAreCopiedAsText();
    void tabGoesFromTheTableToTheHeader();
    void eachControlHasAName();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void ErrorLogWindowTest::initTestCase()
{
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
}

void ErrorLogWindowTest::init()
{
    preferences_.reset();
    preferences_.emplace();
    UserDefaults::standard().setValue(ThemeKeys::appearanceDark,
                                      Appearance::archived(QString::fromUtf16(Appearance::dark)));
    UserDefaults::standard().setValue(ThemeKeys::appearanceLight,
                                      Appearance::archived(QString::fromUtf16(Appearance::light)));
}

void ErrorLogWindowTest::itStandsAsDesigned()
{
    Scene scene;
    scene.show();
    QCOMPARE(scene.window.size(), QSize(720, 357));
    QCOMPARE(scene.window.windowTitle(), QStringLiteral("Error Log"));
    QCOMPARE(scene.window.windowHeader()->titleTextField()->text(), QStringLiteral("Error Log"));
    QCOMPARE(scene.placeOf(scene.window.windowHeader()), QRect(0, 0, 720, 37));
    QCOMPARE(scene.placeOf(scene.window.table()), QRect(16, 53, 688, 240));
    QCOMPARE(scene.placeOf(scene.window.countText()).topLeft(), QPoint(16, 315));
    QCOMPARE(scene.placeOf(scene.window.showButton()), QRect(544, 309, 160, 32));
}

void ErrorLogWindowTest::aLargerWindowGivesAllToTheTable()
{
    Scene scene;
    scene.show();
    scene.window.resize(820, 457);
    QCOMPARE(scene.placeOf(scene.window.table()), QRect(16, 53, 788, 340));
    QCOMPARE(scene.placeOf(scene.window.showButton()), QRect(644, 409, 160, 32));
}

void ErrorLogWindowTest::itSaysHowManyFilesFailed_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << QStringLiteral("No errors");
    QTest::newRow("one") << 1 << QStringLiteral("1 file could not be erased");
    QTest::newRow("three") << 3 << QStringLiteral("3 files could not be erased");
    QTest::newRow("many") << 1200 << QStringLiteral("1,200 files could not be erased");
}

void ErrorLogWindowTest::itSaysHowManyFilesFailed()
{
    QFETCH(int, rows);
    Scene scene(rows);
    QTEST(scene.window.countText()->text(), "text");
    scene.window.model()->removeAll();
    QCOMPARE(scene.window.countText()->text(), QStringLiteral("No errors"));
}

void ErrorLogWindowTest::whatIsNoFileIsAnItem()
{
    Scene scene(0);
    scene.window.model()->add({"folder", "/tmp", QStringLiteral("Permission denied"), false});
    QCOMPARE(scene.window.countText()->text(),
             QStringLiteral("1 item was not overwritten or is still there"));
    scene.addRows(1200);
    QCOMPARE(scene.window.countText()->text(),
             QStringLiteral("1,201 items were not overwritten or are still there"));
    scene.window.model()->removeAll();
    scene.addRows(2);
    QCOMPARE(scene.window.countText()->text(), QStringLiteral("2 files could not be erased"));
}

void ErrorLogWindowTest::itsAppearanceFollowsTheTheme()
{
    Scene scene;
    preferences_->setDark(true);
    QCOMPARE(scene.window.appearance(), QString::fromUtf16(Appearance::light));
    NotificationHub::shared().post(NotificationName::colorThemeChanged);
    QCOMPARE(scene.window.appearance(), QString::fromUtf16(Appearance::dark));
}

void ErrorLogWindowTest::itTakesTheThemeOnceAtFirst()
{
    preferences_->setDark(true);
    Scene scene;
    QCOMPARE(scene.window.appearance(), QString::fromUtf16(Appearance::dark));
}

void ErrorLogWindowTest::withoutAStoredAppearanceItHasNone()
{
    UserDefaults::standard().remove(ThemeKeys::appearanceLight);
    Scene scene;
    QVERIFY(scene.window.appearance().isNull());
}

void ErrorLogWindowTest::itTellsThatItBecameMain()
{
    Scene scene;
    const void *told = nullptr;
    const NotificationHub::Token token = NotificationHub::shared().observe(
        NotificationName::windowDidBecomeMain,
        [&told](const NotificationHub::Notification &notification) { told = notification.object; });
    scene.show();
    QTRY_COMPARE(told, static_cast<const void *>(&scene.window));
    QCOMPARE(WindowRegister::shared().mainWindow(), &scene.window);
}

void ErrorLogWindowTest::itTellsNothingWhenItResigns()
{
    Scene scene;
    scene.show();
    int told = 0;
    const NotificationHub::Token token = NotificationHub::shared().observe(
        NotificationName::windowDidResignMain, [&told](const auto &) { ++told; });
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    scene.window.windowDidResignMain();
    QCOMPARE(told, 0);
}

void ErrorLogWindowTest::itComesBackWhenTheApplicationIsOpenedAgain()
{
    Scene scene;
    QVERIFY(scene.window.applicationShouldHandleReopen(false));
    QVERIFY(QTest::qWaitForWindowActive(&scene.window));
    scene.window.showMinimized();
    QVERIFY(scene.window.applicationShouldHandleReopen(true));
    QVERIFY(scene.window.isVisible() && !scene.window.isMinimized());
}

void ErrorLogWindowTest::closingHidesItAndTells_data()
{
    QTest::addColumn<QString>("by");
    for (const char *by : {"button", "Escape", "Ctrl+W", "close"})
        QTest::newRow(by) << QString::fromUtf8(by);
}

void ErrorLogWindowTest::closingHidesItAndTells()
{
    QFETCH(QString, by);
    Scene scene;
    scene.show();
    QSignalSpy willClose(&scene.window, &ErrorLogWindow::willClose);
    if (by == QStringLiteral("button"))
        scene.window.windowHeader()->btnClose()->click();
    else if (by == QStringLiteral("Escape"))
        QTest::keyClick(scene.window.table(), Qt::Key_Escape);
    else if (by == QStringLiteral("Ctrl+W"))
        QTest::keyClick(scene.window.table(), Qt::Key_W, Qt::ControlModifier);
    else
        scene.window.close();
    QVERIFY(!scene.window.isVisible());
    QCOMPARE(willClose.size(), 1);
    scene.show();
    QVERIFY(scene.window.isVisible());
    QCOMPARE(scene.window.model()->count(), 3);
}

void ErrorLogWindowTest::closingIsNotRefused()
{
    Scene scene;
    scene.show();
    QVERIFY(scene.window.close());
}

void ErrorLogWindowTest::itCanBeMinimised()
{
    Scene scene;
    scene.show();
    scene.window.windowHeader()->btnMinimise()->click();
    QVERIFY(scene.window.isMinimized());
}

void ErrorLogWindowTest::theFirstRowHasTheFirstFocus()
{
    Scene scene;
    scene.show();
    QVERIFY(scene.window.table()->hasFocus());
    QCOMPARE(scene.window.table()->selectedOrClickedRows(), (QList<int>{0}));
}

void ErrorLogWindowTest::aSelectionStaysWhenItIsShownAgain()
{
    Scene scene;
    scene.show();
    scene.select(2);
    scene.window.close();
    scene.show();
    QCOMPARE(scene.window.table()->selectedOrClickedRows(), (QList<int>{2}));
}

void ErrorLogWindowTest::theButtonShowsTheSelectedRow()
{
    Scene scene;
    scene.show();
    QSignalSpy shown(&scene.window, &ErrorLogWindow::showInFolder);
    scene.select(1);
    scene.window.showButton()->click();
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.at(0).at(0).toInt(), 1);
}

void ErrorLogWindowTest::theButtonNeedsARow()
{
    Scene scene(0);
    scene.show();
    QVERIFY(!scene.window.showButton()->isEnabled());
    scene.addRows(2);
    QVERIFY(!scene.window.showButton()->isEnabled());
    scene.select(0);
    QVERIFY(scene.window.showButton()->isEnabled());
    scene.window.model()->removeAll();
    QVERIFY(!scene.window.showButton()->isEnabled());
}

void ErrorLogWindowTest::whatTheTableShowsTheWindowShows()
{
    Scene scene;
    scene.show();
    QSignalSpy shown(&scene.window, &ErrorLogWindow::showInFolder);
    QTest::keyClick(scene.window.table(), Qt::Key_Return);
    QCOMPARE(shown.size(), 1);
}

void ErrorLogWindowTest::rowsAreCopiedAsText()
{
    Scene scene;
    scene.show();
    scene.window.table()->selectAll();
    QTest::keyClick(scene.window.table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(),
             QStringLiteral("file 0\t/tmp\tPermission denied\nfile 1\t/tmp\tPermission denied\n"
                            "file 2\t/tmp\tPermission denied"));
}

void ErrorLogWindowTest::tabGoesFromTheTableToTheHeader()
{
    Scene scene;
    scene.show();
    const WindowHeader *header = scene.window.windowHeader();
    const QList<const QWidget *> stops{scene.window.showButton(), header->btnMinimise(),
                                       header->btnClose(), scene.window.table()};
    for (const QWidget *stop : stops) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(static_cast<const QWidget *>(QApplication::focusWidget()), stop);
    }
}

void ErrorLogWindowTest::eachControlHasAName()
{
    Scene scene;
    scene.show();
    QCOMPARE(scene.window.table()->accessibleName(), QStringLiteral("Errors"));
    for (const QWidget *widget : scene.window.findChildren<QWidget *>()) {
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        if (widget->focusPolicy() & Qt::TabFocus)
            QVERIFY2(!widget->accessibleName().isEmpty() || (button && !button->text().isEmpty()),
                     widget->metaObject()->className());
    }
}

QTEST_MAIN(ErrorLogWindowTest)
#include "ErrorLogWindowTest.moc"
