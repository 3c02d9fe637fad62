#include "ui/MainMenu.h"

#include "ui/PaintedWidget.h"
#include "ui/ThemedPreferences.h"
#include "ui/VantorelStyle.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

class MainMenuTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();

    void theEntriesStandInTheirGroups();
    void shortcutsAreTheDesigns();
    void shortcutsCountWithoutTheMenu();
    void rowsAndGroupsHaveTheirHeights();
    void copyAndSelectAllGoToTheFocusedControl();
    void withoutSuchAControlTheyCannotBeChosen();
    void mnemonicsAreUniqueInTheWholeMenu();

  private:
    ThemedPreferences preferences_;
};

void MainMenuTest::initTestCase()
{
    PaintedWidget::useFontOf(13);
    QApplication::setStyle(new VantorelStyle);
}

void MainMenuTest::theEntriesStandInTheirGroups()
{
    QWidget window;
    const MainMenu menu(&window);
    QStringList entries;
    for (const QAction *action : menu.actions())
        entries.append(
            action->isSeparator()
                ? QStringLiteral("-")
                : action->text().section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&')));
    const QStringList expected{
        QStringLiteral("Add Files and Folders\u2026"),
        QStringLiteral("Start Erasing"),
        QStringLiteral("-"),
        QStringLiteral("Copy"),
        QStringLiteral("Select All"),
        QStringLiteral("Preferences"),
        QStringLiteral("-"),
        QStringLiteral("Vantorel"),
        QStringLiteral("Error Log"),
        QStringLiteral("Minimise"),
        QStringLiteral("Close Window"),
        QStringLiteral("-"),
        QStringLiteral("Contact the Makers"),
        QStringLiteral("Check for Updates\u2026"),
        QStringLiteral("About Vantorel"),
        QStringLiteral("-"),
        QStringLiteral("Quit"),
    };
    QCOMPARE(entries, expected);
}

void MainMenuTest::shortcutsAreTheDesigns()
{
    QWidget window;
    const MainMenu menu(&window);
    const auto first = [](const QAction *action) { return action->shortcut().toString(); };
    QCOMPARE(first(menu.addFilesAndFolders()), QStringLiteral("Ctrl+O"));
    QCOMPARE(first(menu.startErasing()), QStringLiteral("Ctrl+Return"));
    QCOMPARE(first(menu.preferences()), QStringLiteral("Ctrl+,"));
    QCOMPARE(first(menu.mainWindow()), QStringLiteral("Ctrl+1"));
    QCOMPARE(first(menu.errorLog()), QStringLiteral("Ctrl+L"));
    QCOMPARE(first(menu.minimise()), QStringLiteral("Ctrl+M"));
    QCOMPARE(first(menu.closeWindow()), QStringLiteral("Ctrl+W"));
    QCOMPARE(first(menu.aboutVantorel()), QStringLiteral("F1"));
    QCOMPARE(first(menu.quit()), QStringLiteral("Ctrl+Q"));
}

void MainMenuTest::shortcutsCountWithoutTheMenu()
{
    QWidget window;
    const MainMenu menu(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy starts(menu.startErasing(), &QAction::triggered);
    QSignalSpy quits(menu.quit(), &QAction::triggered);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
    QCOMPARE(starts.size(), 2);
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTest::keyClick(&other, Qt::Key_Q, Qt::ControlModifier);
    QTest::keyClick(&other, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(quits.size(), 1);
    QCOMPARE(starts.size(), 2);
}

void MainMenuTest::rowsAndGroupsHaveTheirHeights()
{
    QWidget window;
    MainMenu menu(&window);
    menu.popup({0, 0});
    // A wide font may need more.
    QVERIFY(menu.width() >= 280);
    QCOMPARE(menu.height(), 13 * 28 + 4 * 9 + 2 * 6);
    QCOMPARE(menu.actionGeometry(menu.addFilesAndFolders()).top(), 6);
    QCOMPARE(menu.actionGeometry(menu.addFilesAndFolders()).size(), QSize(menu.width(), 28));
    QCOMPARE(menu.actionGeometry(menu.copy()).top(), 6 + 2 * 28 + 9);
}

void MainMenuTest::copyAndSelectAllGoToTheFocusedControl()
{
    QWidget window;
    MainMenu menu(&window);
    QLineEdit field(QStringLiteral("words"), &window);
    window.show();
    field.setFocus();
    menu.popup({0, 0});
    QVERIFY(menu.copy()->isEnabled() && menu.selectAll()->isEnabled());
    field.deselect();
    menu.selectAll()->trigger();
    QCOMPARE(field.selectedText(), QStringLiteral("words"));
}

void MainMenuTest::withoutSuchAControlTheyCannotBeChosen()
{
    QWidget window;
    MainMenu menu(&window);
    window.show();
    menu.popup({0, 0});
    QVERIFY(!menu.copy()->isEnabled());
    QVERIFY(!menu.selectAll()->isEnabled());
    menu.copy()->trigger();
}

void MainMenuTest::mnemonicsAreUniqueInTheWholeMenu()
{
    QWidget window;
    const MainMenu menu(&window);
    QSet<QString> seen;
    int entries = 0;
    for (const QAction *action : menu.actions()) {
        if (action->isSeparator())
            continue;
        ++entries;
        seen.insert(QKeySequence::mnemonic(action->text()).toString());
    }
    QCOMPARE(seen.size(), entries);
    QVERIFY(!seen.contains(QString()));
}

QTEST_MAIN(MainMenuTest)
#include "MainMenuTest.moc"
