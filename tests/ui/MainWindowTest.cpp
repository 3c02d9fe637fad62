#include "ui/MainWindow.h"

#include "platform/DarkAppearance.h"
#include "platform/NotificationHub.h"
#include "platform/UserDefaults.h"
#include "ui/Appearance.h"
#include "ui/DesignColors.h"
#include "ui/DragVeil.h"
#include "ui/DropReceiver.h"
#include "ui/HeaderBar.h"
#include "ui/HeaderButton.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/MainMenu.h"
#include "ui/PaintedWidget.h"
#include "ui/PlainButton.h"
#include "ui/ScanningSheet.h"
#include "ui/ThemedPreferences.h"
#include "ui/VTLGetMainWindow.h"
#include "ui/VantorelStyle.h"
#include "ui/WindowRegister.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

namespace {

const QString frameKey = QStringLiteral("MainWindowFrame");

class RecordingReceiver : public DropReceiver
{
  public:
    bool answers(Call) const override { return true; }
    void openFiles(const std::vector<QByteArray> &paths) override { opened.push_back(paths); }

    std::vector<std::vector<QByteArray>> opened;
};

/// Writes down which edges the window system was asked to resize by.
class ResizeRecorder : public MainWindow
{
  public:
    QList<Qt::Edges> asked;

  protected:
    void performWindowResize(Qt::Edges edges) override { asked.append(edges); }
};

/// Takes drops itself, as the drop image does.
class DropTarget : public QWidget
{
  public:
    using QWidget::QWidget;

  protected:
    void dragEnterEvent(QDragEnterEvent *event) override { event->accept(); }
};

class PaintCounter : public QWidget
{
  public:
    using QWidget::QWidget;
    int paints = 0;

  protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
};

std::unique_ptr<QMimeData> files(int count)
{
    auto data = std::make_unique<QMimeData>();
    QByteArray list;
    for (int i = 0; i < count; ++i)
        list += "file:///tmp/item" + QByteArray::number(i) + "\r\n";
    data->setData(QStringLiteral("text/uri-list"), list);
    return data;
}

void drag(QWidget &over, QEvent::Type type, const QMimeData &data)
{
    if (type == QEvent::DragEnter) {
        QDragEnterEvent event({50, 50}, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&over, &event);
    } else if (type == QEvent::DragLeave) {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(&over, &event);
    }
}

std::int64_t storedTheme()
{
    return UserDefaults::standard().integer(ThemeKeys::theme);
}

bool storedDarkMode()
{
    return UserDefaults::standard().boolean(ThemeKeys::darkMode);
}

/// Counts a notification.
class Posts
{
  public:
    explicit Posts(QLatin1String name)
        : token_(NotificationHub::shared().observe(name, [this](const auto &post) {
              ++count;
              last = post.object;
              darkAtLast = InterfaceColorStyle::isDarkMode();
          }))
    {
    }
    int count = 0;
    const void *last = nullptr;
    bool darkAtLast = false;

  private:
    NotificationHub::Token token_;
};

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void aFreshUserGetsTheDarkTheme();
    void aFreshUserWithoutDarkAppearanceGetsTheLightTheme();
    void aStoredSystemThemeBecomesDarkAtStart();
    void theSystemThemeChosenWhileRunningIsDrawnLight();
    void lightAfterTheSystemThemeChangesNothing();
    void darkWhileDarkIsNotTold();
    void setUpStoresBothAppearances();
    void theAppearanceIsAppliedBeforeTheBroadcast();
    void theTreeIsUpdatedBeforeTheBroadcast();
    void beforeSetUpAChoiceOfThemeIsNotHeard();

    void becomingMainIsPostedWithTheWindow();
    void resigningMainIsPostedByNobody();
    void reopeningShowsTheWindow();

    void anyDragIsACopy();
    void aDropOfAnEmptyListSucceedsAndOpensNothing();
    void droppedFilesGoToTheReceiver();
    void aDropWithoutReceiverSucceeds();
    void onlyFilesAreTaken();
    void theDragStateFollowsTheWindowAndTheDropImage();

    void theFirstSizeIsTheNaturalOne();
    void theLeastWidthFollowsTheFont();
    void theFrameIsRememberedWhenTheWindowMovesOrGrows();
    void theRememberedFrameBeatsTheNaturalSize();
    void aRememberedFrameThatIsNoFrameIsPassedOver();
    void aMaximisedWindowKeepsItsOwnFrameInMemory();

    void allContentViewsGoWithTheWindow();
    void closingHidesTheWindow();
    void withoutAWayBackClosingMinimises();
    void quittingIsNotRefused();

    void theEdgeResizesAndTheInsideDoesNot();
    void theEdgeShowsItsCursor();
    void aMaximisedWindowHasNoEdge();
    void cornersAreClearOnlyWhenComposited();
    void menusAreRoundWhereTheWindowIs();
    void theEdgeLineLiesOverEverything();

    void tabGoesThroughTheViewThenTheHeader();
    void underTheSheetTabReachesStopMinimiseAndClose();
    void underTheSheetTheViewHearsNothing();
    void escapeStopsFromAnywhereInTheWindow();
    void underTheSheetShortcutsOfTheViewDoNothing();
    void altAloneOpensTheMenu();
    void altWithAnotherKeyOpensNothing();
    void groupKeysOpenTheMenuAtTheirGroup_data();
    void groupKeysOpenTheMenuAtTheirGroup();
    void theMenuButtonStaysPressedWhileTheMenuIsOpen();
    void choosingTheApplicationsEntryDoesNotChangeItsMark();

    void theMainWindowIsFoundAmongOthers();
    void withoutOneTheCurrentMainWindowIsTheAnswer();
    void windowsThatAreGoneAreForgotten();

  private:
    std::unique_ptr<ThemedPreferences> preferences_;
};

void MainWindowTest::init()
{
    preferences_ = std::make_unique<ThemedPreferences>();
    PaintedWidget::useFontOf(13);
}

void MainWindowTest::cleanup()
{
    preferences_.reset();
}

void MainWindowTest::aFreshUserGetsTheDarkTheme()
{
    UserDefaults::standard().registerDefaults({{ThemeKeys::theme, 1}, {ThemeKeys::darkMode, true}});
    const Posts posts(NotificationName::colorThemeChanged);
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(window.appearance(), QString::fromUtf16(Appearance::dark));
    QVERIFY(storedDarkMode());
    QVERIFY(UserDefaults::standard().boolean(ThemeKeys::isThemeEnabled));
    QCOMPARE(posts.count, 1);
    QVERIFY(posts.darkAtLast);
}

void MainWindowTest::aFreshUserWithoutDarkAppearanceGetsTheLightTheme()
{
    const DarkAppearance::Replacement unsupported(false);
    UserDefaults::standard().registerDefaults(
        {{ThemeKeys::theme, 0}, {ThemeKeys::darkMode, false}});
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(window.appearance(), QString::fromUtf16(Appearance::light));
    QVERIFY(!storedDarkMode());
    QVERIFY(!UserDefaults::standard().boolean(ThemeKeys::isThemeEnabled));
}

void MainWindowTest::aStoredSystemThemeBecomesDarkAtStart()
{
    UserDefaults::standard().setValue(ThemeKeys::theme, 2);
    const Posts posts(NotificationName::colorThemeChanged);
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(storedTheme(), 1);
    QCOMPARE(posts.count, 1);
    QVERIFY(posts.darkAtLast);
}

void MainWindowTest::theSystemThemeChosenWhileRunningIsDrawnLight()
{
    preferences_->setDark(true);
    MainWindow window;
    window.awakeFromNib();
    InterfaceColorStyle::userChangedAppearanceTo(2);
    QCOMPARE(storedTheme(), 2);
    QCOMPARE(window.appearance(), QString::fromUtf16(Appearance::light));
    QVERIFY(!storedDarkMode());
}

void MainWindowTest::lightAfterTheSystemThemeChangesNothing()
{
    preferences_->setDark(true);
    MainWindow window;
    window.awakeFromNib();
    InterfaceColorStyle::userChangedAppearanceTo(2);
    const Posts choices(NotificationName::appearanceChanged);
    const Posts broadcasts(NotificationName::colorThemeChanged);
    InterfaceColorStyle::userChangedAppearanceTo(0);
    QCOMPARE(storedTheme(), 2);
    QCOMPARE(choices.count + broadcasts.count, 0);
}

void MainWindowTest::darkWhileDarkIsNotTold()
{
    preferences_->setDark(true);
    MainWindow window;
    window.awakeFromNib();
    const Posts choices(NotificationName::appearanceChanged);
    InterfaceColorStyle::userChangedAppearanceTo(1);
    QCOMPARE(choices.count, 0);
}

void MainWindowTest::setUpStoresBothAppearances()
{
    MainWindow window;
    window.awakeFromNib();
    const auto stored = [](const QString &key) {
        return Appearance::unarchived(UserDefaults::standard().value(key).toByteArray());
    };
    QCOMPARE(stored(ThemeKeys::appearanceDark), window.appearanceViewDark()->appearance());
    QCOMPARE(stored(ThemeKeys::appearanceLight), window.appearanceViewLight()->appearance());
    QVERIFY(stored(ThemeKeys::appearanceDark) != stored(ThemeKeys::appearanceLight));
    QVERIFY(window.appearanceViewSystem()->appearance().isNull());
}

void MainWindowTest::theAppearanceIsAppliedBeforeTheBroadcast()
{
    MainWindow window;
    window.awakeFromNib();
    QString seen;
    bool mirror = false;
    const auto token =
        NotificationHub::shared().observe(NotificationName::colorThemeChanged, [&](const auto &) {
            seen = window.appearance();
            mirror = storedDarkMode();
        });
    InterfaceColorStyle::userChangedAppearanceTo(1);
    QCOMPARE(seen, QString::fromUtf16(Appearance::dark));
    QVERIFY(mirror);
}

/// Also if the choice looks the same as what is shown.
void MainWindowTest::theTreeIsUpdatedBeforeTheBroadcast()
{
    MainWindow window;
    window.awakeFromNib();
    auto *holder = new QWidget;
    window.setBody(holder);
    auto *child = new PaintCounter(holder);
    // Drawn on its own, not along with what lies under it.
    child->setAttribute(Qt::WA_OpaquePaintEvent);
    child->resize(20, 20);
    child->show();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_VERIFY(child->paints > 0);
    QCoreApplication::processEvents();
    const int before = child->paints;
    bool isDrawnMeanwhile = false;
    const auto token =
        NotificationHub::shared().observe(NotificationName::colorThemeChanged, [&](const auto &) {
            isDrawnMeanwhile = QTest::qWaitFor([&] { return child->paints > before; });
        });
    InterfaceColorStyle::userChangedAppearanceTo(2);
    QVERIFY(isDrawnMeanwhile);
}

void MainWindowTest::beforeSetUpAChoiceOfThemeIsNotHeard()
{
    const MainWindow window;
    InterfaceColorStyle::userChangedAppearanceTo(1);
    QVERIFY(window.appearance().isNull());
}

void MainWindowTest::becomingMainIsPostedWithTheWindow()
{
    MainWindow window;
    QSignalSpy becameKey(&window, &MainWindow::becameKey);
    const Posts posts(NotificationName::windowDidBecomeMain);
    window.show();
    window.activateWindow();
    QTRY_COMPARE(posts.count, 1);
    QCOMPARE(posts.last, &window);
    QCOMPARE(becameKey.size(), 1);
    QCOMPARE(WindowRegister::shared().mainWindow(), &window);
}

void MainWindowTest::resigningMainIsPostedByNobody()
{
    MainWindow window;
    QSignalSpy resignedKey(&window, &MainWindow::resignedKey);
    const Posts posts(NotificationName::windowDidResignMain);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_COMPARE(resignedKey.size(), 1);
    QCOMPARE(posts.count, 0);
}

void MainWindowTest::reopeningShowsTheWindow()
{
    MainWindow window;
    window.awakeFromNib();
    NotificationHub::shared().post(NotificationName::reopenMainWindow);
    QVERIFY(window.isVisible());
    window.hide();
    QVERIFY(window.applicationShouldHandleReopen(false));
    QVERIFY(window.isVisible());
    window.showMinimized();
    QVERIFY(window.applicationShouldHandleReopen(true));
    QVERIFY(!window.isMinimized());
}

void MainWindowTest::anyDragIsACopy()
{
    const MainWindow window;
    const QMimeData nothing;
    QCOMPARE(int(window.draggingEntered(&nothing)), 1);
    QCOMPARE(int(window.draggingUpdated(&nothing)), 1);
}

void MainWindowTest::aDropOfAnEmptyListSucceedsAndOpensNothing()
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    DropReceiver::setShared(receiver);
    MainWindow window;
    QVERIFY(window.performDragOperation(files(0).get()));
    QVERIFY(receiver->opened.empty());
}

void MainWindowTest::droppedFilesGoToTheReceiver()
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    DropReceiver::setShared(receiver);
    MainWindow window;
    window.awakeFromNib();
    QVERIFY(window.acceptDrops());
    const auto data = files(2);
    drag(window, QEvent::DragEnter, *data);
    QDropEvent drop({50, 50}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(receiver->opened.size(), std::size_t(1));
    QCOMPARE(receiver->opened.front(), (std::vector<QByteArray>{"/tmp/item0", "/tmp/item1"}));
}

void MainWindowTest::aDropWithoutReceiverSucceeds()
{
    DropReceiver::setShared({});
    MainWindow window;
    QVERIFY(window.performDragOperation(files(1).get()));
}

void MainWindowTest::onlyFilesAreTaken()
{
    MainWindow window;
    window.awakeFromNib();
    QMimeData text;
    text.setText(QStringLiteral("words"));
    QDragEnterEvent words({5, 5}, Qt::CopyAction, &text, Qt::LeftButton, {});
    words.ignore();
    QCoreApplication::sendEvent(&window, &words);
    QVERIFY(!words.isAccepted());
    const auto data = files(1);
    QDragEnterEvent taken({5, 5}, Qt::MoveAction | Qt::CopyAction, data.get(), Qt::LeftButton, {});
    taken.ignore();
    QCoreApplication::sendEvent(&window, &taken);
    QVERIFY(taken.isAccepted());
    QCOMPARE(taken.dropAction(), Qt::CopyAction);
}

void MainWindowTest::theDragStateFollowsTheWindowAndTheDropImage()
{
    MainWindow window;
    window.awakeFromNib();
    DropTarget image;
    image.setAcceptDrops(true);
    window.addDropTarget(&image);
    QSignalSpy states(&window, &MainWindow::dragStateChanged);
    const auto data = files(12);
    drag(window, QEvent::DragEnter, *data);
    QTRY_COMPARE(states.size(), 1);
    QCOMPARE(states.last().first().toInt(), 12);
    drag(window, QEvent::DragLeave, *data);
    drag(image, QEvent::DragEnter, *data);
    QCoreApplication::processEvents();
    QCOMPARE(states.size(), 1);
    drag(image, QEvent::DragLeave, *data);
    QTRY_COMPARE(states.size(), 2);
    QCOMPARE(states.last().first().toInt(), -1);
}

void MainWindowTest::theFirstSizeIsTheNaturalOne()
{
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(window.size(), QSize(720, 557));
    QCOMPARE(window.body()->geometry(), QRect(0, 37, 720, 520));
}

void MainWindowTest::theLeastWidthFollowsTheFont()
{
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(window.minimumSize(), QSize(640, 277));
    PaintedWidget::useFontOf(15);
    QTRY_COMPARE(window.minimumSize(), QSize(738, 277));
    QCOMPARE(window.width(), 738);
    // No wider than the screen, or its edges could not be reached.
    PaintedWidget::useFontOf(26);
    QTRY_COMPARE(window.minimumWidth(), window.screen()->availableSize().width());
    PaintedWidget::useFontOf(13);
    QTRY_COMPARE(window.minimumSize(), QSize(640, 277));
}

void MainWindowTest::theFrameIsRememberedWhenTheWindowMovesOrGrows()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    window.setGeometry(20, 30, 730, 560);
    QTRY_COMPARE(UserDefaults::standard().text(frameKey), QStringLiteral("20 30 730 560"));
}

void MainWindowTest::theRememberedFrameBeatsTheNaturalSize()
{
    UserDefaults::standard().setValue(frameKey, QStringLiteral("40 20 700 510"));
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(window.geometry(), QRect(40, 20, 700, 510));
}

void MainWindowTest::aRememberedFrameThatIsNoFrameIsPassedOver()
{
    UserDefaults::standard().setValue(frameKey, QStringLiteral("somewhere"));
    MainWindow window;
    window.awakeFromNib();
    QCOMPARE(window.size(), QSize(720, 557));
}

void MainWindowTest::aMaximisedWindowKeepsItsOwnFrameInMemory()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    window.setGeometry(20, 30, 730, 560);
    QTRY_COMPARE(UserDefaults::standard().text(frameKey), QStringLiteral("20 30 730 560"));
    window.showMaximized();
    QTRY_VERIFY(window.width() != 730);
    // It is written down at the latest when the window is closed.
    window.setCanBeReopened([] { return true; });
    QVERIFY(window.close());
    QCOMPARE(UserDefaults::standard().text(frameKey), QStringLiteral("20 30 730 560"));
}

void MainWindowTest::allContentViewsGoWithTheWindow()
{
    MainWindow window;
    window.awakeFromNib();
    auto *holder = new QWidget;
    window.setBody(holder);
    QCOMPARE(holder->geometry(), QRect(0, 0, 720, 520));
    QCOMPARE(holder->parentWidget(), window.body());
    auto *shown = new QWidget(holder);
    auto *hidden = new QWidget(window.body());
    hidden->hide();
    window.addContentView(shown);
    window.addContentView(hidden);
    window.resize(800, 637);
    window.show();
    for (const QWidget *view : {holder, shown, hidden})
        QCOMPARE(view->size(), QSize(800, 600));
}

void MainWindowTest::closingHidesTheWindow()
{
    MainWindow window;
    window.setCanBeReopened([] { return true; });
    window.show();
    QTest::mouseClick(window.header()->btnClose(), Qt::LeftButton);
    QVERIFY(window.isHidden());
    QVERIFY(!window.isMinimized());
}

void MainWindowTest::withoutAWayBackClosingMinimises()
{
    MainWindow window;
    window.setCanBeReopened([] { return false; });
    window.show();
    QTest::mouseClick(window.header()->btnClose(), Qt::LeftButton);
    QVERIFY(window.isMinimized());
    QVERIFY(!window.isHidden());
    // A window manager's own way of closing ends the same.
    window.showNormal();
    window.windowHandle()->close();
    QTRY_VERIFY(window.isMinimized() && !window.isHidden());
}

void MainWindowTest::quittingIsNotRefused()
{
    MainWindow window;
    window.setCanBeReopened([] { return false; });
    window.show();
    QCloseEvent event;
    QCoreApplication::sendEvent(&window, &event);
    QVERIFY(event.isAccepted());
}

void MainWindowTest::theEdgeResizesAndTheInsideDoesNot()
{
    ResizeRecorder window;
    window.awakeFromNib();
    auto *holder = new QWidget;
    window.setBody(holder);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto press = [&window](QPoint at) {
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, at);
    };
    press({300, 300});
    QVERIFY(window.asked.isEmpty());
    press({719, 300});
    press({2, 556});
    QCOMPARE(window.asked, (QList<Qt::Edges>{Qt::RightEdge, Qt::LeftEdge | Qt::BottomEdge}));
    window.setResizable(false);
    press({719, 300});
    QCOMPARE(window.asked.size(), 2);
}

void MainWindowTest::theEdgeShowsItsCursor()
{
    ResizeRecorder window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto shapeAt = [&window](QPointF at) {
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(window.windowHandle(), &move);
        const QCursor *cursor = QGuiApplication::overrideCursor();
        return cursor ? cursor->shape() : Qt::ArrowCursor;
    };
    QCOMPARE(shapeAt({719, 300}), Qt::SizeHorCursor);
    QCOMPARE(shapeAt({0, 0}), Qt::SizeFDiagCursor);
    QCOMPARE(shapeAt({300, 300}), Qt::ArrowCursor);
    QCOMPARE(shapeAt({300, 556}), Qt::SizeVerCursor);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(window.windowHandle(), &leave);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void MainWindowTest::aMaximisedWindowHasNoEdge()
{
    ResizeRecorder window;
    window.awakeFromNib();
    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {0, 300});
    QVERIFY(window.asked.isEmpty());
}

void MainWindowTest::cornersAreClearOnlyWhenComposited()
{
    MainWindow window;
    window.awakeFromNib();
    // Away from the screen's corner, where it would count as tiled on the small test screen.
    window.setGeometry(30, 20, 720, 557);
    window.setIsComposited([] { return true; });
    window.show();
    QCOMPARE(window.cornerRadius(), 10);
    const auto corner = [&window](int x, int y) {
        return window.grab().toImage().pixelColor(x, y).alpha();
    };
    QCOMPARE(corner(0, 0), 0);
    QCOMPARE(corner(719, 556), 0);
    QCOMPARE(corner(10, 0), 255);
    window.setIsComposited([] { return false; });
    QCOMPARE(window.cornerRadius(), 0);
    QCOMPARE(corner(0, 0), 255);
}

void MainWindowTest::menusAreRoundWhereTheWindowIs()
{
    VantorelStyle style;
    QMenu menu;
    menu.setStyle(&style);
    menu.addAction(QStringLiteral("Entry"));
    menu.resize(menu.sizeHint());
    const auto corner = [&menu] {
        QImage picture(menu.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        menu.render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
        return picture.pixelColor(0, 0).alpha();
    };
    MainWindow window;
    window.awakeFromNib();
    bool isComposited = true;
    window.setIsComposited([&isComposited] { return isComposited; });
    QCOMPARE(corner(), 0);
    // What it finds when it is shown counts for the menus that are there already.
    isComposited = false;
    window.show();
    QCOMPARE(corner(), 255);
    window.hide();
    isComposited = true;
    window.show();
    QCOMPARE(corner(), 0);
}

void MainWindowTest::theEdgeLineLiesOverEverything()
{
    MainWindow window;
    window.awakeFromNib();
    auto *holder = new QWidget;
    holder->setAutoFillBackground(true);
    holder->setPalette(QPalette(Qt::red));
    window.setBody(holder);
    window.show();
    const QImage picture = window.grab().toImage();
    const QColor edge =
        PaintedWidget::over(DesignColors::color(ColorRole::WindowEdge), QColor(Qt::red));
    COMPARE_COLOR(picture.pixelColor(0, 300), edge);
    COMPARE_COLOR(picture.pixelColor(300, 556), edge);
    COMPARE_COLOR(picture.pixelColor(1, 300), QColor(Qt::red));
    // What joins later is under it, too, from the next layout on.
    QWidget late(&window);
    late.setAutoFillBackground(true);
    late.setPalette(QPalette(Qt::red));
    late.setGeometry(0, 200, 50, 50);
    late.show();
    window.resize(721, 557);
    COMPARE_COLOR(window.grab().toImage().pixelColor(0, 220), edge);
}

void MainWindowTest::tabGoesThroughTheViewThenTheHeader()
{
    MainWindow window;
    window.awakeFromNib();
    auto *holder = new QWidget;
    window.setBody(holder);
    auto *first = new PlainButton(QStringLiteral("One"), holder);
    first->setAccessibleName(QStringLiteral("One"));
    auto *second = new PlainButton(QStringLiteral("Two"), holder);
    second->setAccessibleName(QStringLiteral("Two"));
    window.header()->setErrorCount(2);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const HeaderBar &header = *window.header();
    first->setFocus();
    const QList<QWidget *> order{
        second,           header.btnAddFiles(), header.btnErrorLog(), header.btnPreferences(),
        header.btnMenu(), header.btnMinimise(), header.btnClose(),    first};
    for (QWidget *next : order) {
        QTest::keyClick(&window, Qt::Key_Tab);
        QCOMPARE(window.focusWidget()->accessibleName(), next->accessibleName());
    }
    QTest::keyClick(&window, Qt::Key_Backtab);
    QCOMPARE(window.focusWidget(), header.btnClose());
}

void MainWindowTest::underTheSheetTabReachesStopMinimiseAndClose()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    ScanningSheet &sheet = *window.windowScanningFiles();
    sheet.open();
    const QList<QWidget *> order{window.header()->btnMinimise(), window.header()->btnClose(),
                                 sheet.btnStopScanning()};
    for (QWidget *next : order) {
        QTest::keyClick(&window, Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), next);
    }
}

void MainWindowTest::underTheSheetTheViewHearsNothing()
{
    MainWindow window;
    window.awakeFromNib();
    auto *holder = new QWidget;
    window.setBody(holder);
    auto *button = new PlainButton(QStringLiteral("Below"), holder);
    button->setGeometry(20, 400, 100, 32);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy clicks(button, &QAbstractButton::clicked);
    QSignalSpy added(window.header()->btnAddFiles(), &QAbstractButton::clicked);
    QSignalSpy minimised(window.header()->btnMinimise(), &QAbstractButton::clicked);
    const auto clickAll = [&] {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(60, 37 + 416));
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(22, 18));
    };
    window.windowScanningFiles()->open();
    clickAll();
    QCOMPARE(clicks.size() + added.size(), 0);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(662, 18));
    QCOMPARE(minimised.size(), 1);
    window.showNormal();
    window.windowScanningFiles()->close();
    QTRY_VERIFY(!window.windowScanningFiles()->isShown());
    clickAll();
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(added.size(), 1);
}

void MainWindowTest::escapeStopsFromAnywhereInTheWindow()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    ScanningSheet &sheet = *window.windowScanningFiles();
    QSignalSpy stops(&sheet, &ScanningSheet::stopClicked);
    sheet.open();
    QCOMPARE(window.focusWidget(), sheet.btnStopScanning());
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QCOMPARE(stops.size(), 1);
    window.header()->btnClose()->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QCOMPARE(stops.size(), 2);
}

void MainWindowTest::underTheSheetShortcutsOfTheViewDoNothing()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy added(window.mainMenu()->addFilesAndFolders(), &QAction::triggered);
    QSignalSpy minimised(window.mainMenu()->minimise(), &QAction::triggered);
    window.windowScanningFiles()->open();
    QTest::keyClick(window.windowHandle(), Qt::Key_O, Qt::ControlModifier);
    QTest::keyClick(window.windowHandle(), Qt::Key_F10);
    QVERIFY(added.isEmpty());
    QVERIFY(!window.mainMenu()->isVisible());
    QTest::keyClick(window.windowHandle(), Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(minimised.size(), 1);
    window.windowScanningFiles()->close();
    QTRY_VERIFY(!window.windowScanningFiles()->isShown());
    QTest::keyClick(window.windowHandle(), Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(added.size(), 1);
}

void MainWindowTest::altAloneOpensTheMenu()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyPress(window.windowHandle(), Qt::Key_Alt);
    QVERIFY(!window.mainMenu()->isVisible());
    QTest::keyRelease(window.windowHandle(), Qt::Key_Alt);
    QVERIFY(window.mainMenu()->isVisible());
    QCOMPARE(window.mainMenu()->activeAction(), window.mainMenu()->addFilesAndFolders());
}

void MainWindowTest::altWithAnotherKeyOpensNothing()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyPress(window.windowHandle(), Qt::Key_Alt);
    QTest::keyClick(window.windowHandle(), Qt::Key_X, Qt::AltModifier);
    QTest::keyRelease(window.windowHandle(), Qt::Key_Alt);
    QVERIFY(!window.mainMenu()->isVisible());
    QTest::keyPress(window.windowHandle(), Qt::Key_Alt, Qt::ControlModifier);
    QTest::keyRelease(window.windowHandle(), Qt::Key_Alt, Qt::ControlModifier);
    QVERIFY(!window.mainMenu()->isVisible());
}

void MainWindowTest::groupKeysOpenTheMenuAtTheirGroup_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::addColumn<QString>("entry");
    const auto row = [](const char *name, Qt::Key key, Qt::KeyboardModifier with,
                        const char16_t *entry) {
        QTest::newRow(name) << key << with << QString::fromUtf16(entry);
    };
    row("F10", Qt::Key_F10, Qt::NoModifier, u"&Add Files and Folders\u2026");
    row("Alt+F", Qt::Key_F, Qt::AltModifier, u"&Add Files and Folders\u2026");
    // Copy and Select All cannot be chosen here.
    row("Alt+E", Qt::Key_E, Qt::AltModifier, u"&Preferences");
    row("Alt+W", Qt::Key_W, Qt::AltModifier, u"&Vantorel");
    row("Alt+H", Qt::Key_H, Qt::AltModifier, u"C&ontact the Makers");
}

void MainWindowTest::groupKeysOpenTheMenuAtTheirGroup()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifier, modifier);
    QFETCH(QString, entry);
    MainWindow window;
    window.awakeFromNib();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(window.windowHandle(), key, modifier);
    QVERIFY(window.mainMenu()->isVisible());
    QVERIFY(window.mainMenu()->activeAction());
    QCOMPARE(window.mainMenu()->activeAction()->text(), entry);
}

void MainWindowTest::theMenuButtonStaysPressedWhileTheMenuIsOpen()
{
    MainWindow window;
    window.awakeFromNib();
    window.show();
    HeaderButton *button = window.header()->btnMenu();
    QTest::mouseClick(button, Qt::LeftButton);
    MainMenu *menu = window.mainMenu();
    QVERIFY(menu->isVisible());
    QVERIFY(button->isKeptPressed());
    QVERIFY(!menu->activeAction());
    QCOMPARE(menu->geometry().topRight(),
             button->mapToGlobal(QPoint(button->width() - 1, button->height() + 8)));
    menu->close();
    QVERIFY(!button->isKeptPressed());
}

void MainWindowTest::choosingTheApplicationsEntryDoesNotChangeItsMark()
{
    MainWindow window;
    QAction *entry = window.mainMenu()->mainWindow();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    entry->setChecked(true);
    entry->trigger();
    QVERIFY(entry->isChecked());
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    entry->setChecked(false);
    entry->trigger();
    QVERIFY(!entry->isChecked());
}

void MainWindowTest::theMainWindowIsFoundAmongOthers()
{
    QWidget other;
    MainWindow main;
    MainWindow second;
    QCOMPARE(VTLGetMainWindow::mainWindow({&other, &main, &second}, &other), &main);
    // It is the first one that was made, not the key or the main one.
    WindowRegister::shared().setMainWindow(&second);
    QCOMPARE(VTLGetMainWindow::mainWindow(), &main);
}

void MainWindowTest::withoutOneTheCurrentMainWindowIsTheAnswer()
{
    QWidget one;
    QWidget two;
    QCOMPARE(VTLGetMainWindow::mainWindow({&one, &two}, &two), &two);
    QCOMPARE(VTLGetMainWindow::mainWindow({&one, &two}, nullptr), nullptr);
    QCOMPARE(VTLGetMainWindow::mainWindow({}, nullptr), nullptr);
}

void MainWindowTest::windowsThatAreGoneAreForgotten()
{
    WindowRegister windows;
    QWidget first;
    auto second = std::make_unique<QWidget>();
    QWidget third;
    for (QWidget *window : {&first, second.get(), &third})
        windows.add(window);
    windows.setMainWindow(second.get());
    second.reset();
    QCOMPARE(windows.windows(), (std::vector<QWidget *>{&first, &third}));
    QCOMPARE(windows.mainWindow(), nullptr);
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
