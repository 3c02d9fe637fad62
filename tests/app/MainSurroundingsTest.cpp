#include "app/MainSurroundings.h"

#include "ui/DialogBox.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/OpenPanel.h"
#include "ui/RunningDialog.h"
#include "ui/ThemedPreferences.h"

#include <QDateTime>
#include <QTest>

#include <chrono>
#include <optional>

/// What the desktop's own surroundings answer, with real windows.
class MainSurroundingsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theWindowAloneIsNoDialog();
    void anOpenPanelIsADialog();
    void aMessageBoxIsADialog();
    void anOpenMenuIsADialog();
    void theTimeIsInWholeSeconds();
    void whatIsScheduledRunsOnce();

  private:
    ThemedPreferences preferences_;
    std::optional<MainWindow> window_;
    const std::function<bool()> isDialogOpen_ = MainSurroundings::ofTheDesktop().isDialogOpen;
};

void MainSurroundingsTest::init()
{
    window_.emplace();
    window_->setCanBeReopened([] { return true; });
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*window_));
}

void MainSurroundingsTest::cleanup()
{
    window_.reset();
}

void MainSurroundingsTest::theWindowAloneIsNoDialog()
{
    QVERIFY(!isDialogOpen_());
}

void MainSurroundingsTest::anOpenPanelIsADialog()
{
    int ends = 0;
    MainSurroundings::ofTheDesktop().openPanel(
        &*window_, QStringLiteral("Choose"), QStringLiteral("OK"),
        [&ends](int, const std::vector<QByteArray> &) { ++ends; });
    auto *panel = window_->findChild<OpenPanel *>();
    QVERIFY(panel && panel->isVisible());
    QVERIFY(isDialogOpen_());
    panel->reject();
    QCOMPARE(ends, 1);
    QVERIFY(!isDialogOpen_());
}

void MainSurroundingsTest::aMessageBoxIsADialog()
{
    DialogBox dialog(QStringLiteral("Title"), QStringLiteral("Text"));
    dialog.setAboveWindow(&*window_);
    dialog.windowDidLoad();
    dialog.addButtonWithTitle(QStringLiteral("OK"));
    bool isOpen = false;
    RunningDialog::whenActive([&](DialogBox &shown) {
        isOpen = isDialogOpen_();
        shown.closeWindow();
    });
    dialog.runModal();
    QVERIFY(isOpen);
    QVERIFY(!isDialogOpen_());
}

void MainSurroundingsTest::anOpenMenuIsADialog()
{
    MainMenu *menu = window_->mainMenu();
    menu->popup(window_->mapToGlobal(QPoint(20, 60)));
    QTRY_VERIFY(menu->isVisible());
    QVERIFY(isDialogOpen_());
    menu->close();
    QVERIFY(!isDialogOpen_());
}

void MainSurroundingsTest::theTimeIsInWholeSeconds()
{
    const std::int64_t before = QDateTime::currentSecsSinceEpoch();
    const std::int64_t now = MainSurroundings::ofTheDesktop().currentTimestamp();
    QVERIFY(now >= before && now <= QDateTime::currentSecsSinceEpoch());
}

void MainSurroundingsTest::whatIsScheduledRunsOnce()
{
    int runs = 0;
    MainSurroundings::ofTheDesktop().schedule(std::chrono::milliseconds(1), [&runs] { ++runs; });
    QCOMPARE(runs, 0);
    QTRY_COMPARE(runs, 1);
    QCoreApplication::processEvents();
    QCOMPARE(runs, 1);
}

QTEST_MAIN(MainSurroundingsTest)
#include "MainSurroundingsTest.moc"
