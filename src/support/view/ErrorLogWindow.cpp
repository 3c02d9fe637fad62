#include "support/view/ErrorLogWindow.h"

#include "support/NumberText.h"
#include "support/view/TableViewErrorLog.h"
#include "ui/FocusOrder.h"
#include "ui/FocusRing.h"
#include "ui/HeaderButton.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/PlainButton.h"
#include "ui/TextLabel.h"
#include "ui/WindowHeader.h"
#include "ui/WindowRegister.h"

#include <QAction>
#include <QCloseEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>

namespace {

constexpr int margin = 16;
constexpr QSize bodySize(720, 320);
constexpr int footerHeight = 64; ///< below the table, with the margin above the button
constexpr QSize buttonSize(160, 32);
constexpr int buttonMargin = 16;

} // namespace

ErrorLogWindow::ErrorLogWindow(QWidget *parent)
    : FramelessWindow(parent), table_(new TableViewErrorLog(body())),
      countText_(new TextLabel(TextStyle::Body, ColorRole::TextSecondary, body())),
      showButton_(new PlainButton(tr("Show in Folder"), body()))
{
    setWindowTitle(tr("Error Log"));
    auto *header = new WindowHeader(this);
    header->titleTextField()->setText(windowTitle());
    setWindowHeader(header);
    FocusRing::install(this);
    table_->setModel(&model_);
    const int height = header->height() + Typography::scaled(bodySize.height());
    setMinimumSize(Typography::scaled(480), header->height() + Typography::scaled(200));
    resize(Typography::scaled(bodySize.width()), height);
    connectParts();
    addShortcuts();
    showCount();
    updateButton();
}

ErrorLogWindow::~ErrorLogWindow() = default;

void ErrorLogWindow::connectParts()
{
    connect(windowHeader()->btnMinimise(), &HeaderButton::clicked, this, &QWidget::showMinimized);
    connect(windowHeader()->btnClose(), &HeaderButton::clicked, this, &QWidget::close);
    connect(this, &FramelessWindow::becameKey, this, &ErrorLogWindow::windowDidBecomeMain);
    connect(this, &FramelessWindow::resignedKey, this, &ErrorLogWindow::windowDidResignMain);
    connect(table_, &TableViewErrorLog::showInFolder, this, &ErrorLogWindow::showInFolder);
    connect(showButton_, &PlainButton::clicked, this, &ErrorLogWindow::showSelected);
    connect(&model_, &QAbstractItemModel::rowsInserted, this, &ErrorLogWindow::showCount);
    connect(&model_, &QAbstractItemModel::modelReset, this, &ErrorLogWindow::showCount);
    connect(&model_, &QAbstractItemModel::modelReset, this, &ErrorLogWindow::updateButton);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ErrorLogWindow::updateButton);
}

void ErrorLogWindow::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto operation) {
        auto *action = new QAction(this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, operation);
        addAction(action);
    };
    add(Qt::CTRL | Qt::Key_W, [this] { close(); });
    add(Qt::CTRL | Qt::Key_M, [this] { showMinimized(); });
    add(QKeySequence::Copy, [this] { table_->copy(); });
}

void ErrorLogWindow::awakeFromNib()
{
    themeChanged_ = NotificationHub::shared().observe(
        NotificationName::colorThemeChanged,
        [this](const auto &) { colorThemeChangedNotification(); });
    colorThemeChangedNotification();
}

void ErrorLogWindow::colorThemeChangedNotification()
{
    appearance_ = InterfaceColorStyle::appearance();
    updateTree();
}

void ErrorLogWindow::windowDidBecomeMain()
{
    WindowRegister::shared().setMainWindow(this);
    NotificationHub::shared().post(NotificationName::windowDidBecomeMain, this);
}

void ErrorLogWindow::windowDidResignMain()
{
}

bool ErrorLogWindow::applicationShouldHandleReopen(bool)
{
    makeKeyAndOrderFront();
    return true;
}

void ErrorLogWindow::layOut()
{
    FramelessWindow::layOut();
    const QSize room = body()->size();
    const int footer = Typography::scaled(footerHeight);
    const QSize button(Typography::scaled(buttonSize.width()),
                       Typography::scaled(buttonSize.height()));
    const int top = room.height() - buttonMargin - button.height();
    table_->setGeometry(margin, margin, room.width() - 2 * margin, room.height() - margin - footer);
    showButton_->setGeometry(room.width() - margin - button.width(), top, button.width(),
                             button.height());
    const int line = Typography::lineHeight(TextStyle::Body);
    countText_->setGeometry(margin, top + (button.height() - line) / 2,
                            room.width() - 3 * margin - button.width(), line);
}

/// Never refused, since a refusal would keep the application from quitting.
void ErrorLogWindow::closeEvent(QCloseEvent *event)
{
    Q_EMIT willClose();
    event->accept();
}

void ErrorLogWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        FramelessWindow::keyPressEvent(event);
}

bool ErrorLogWindow::focusNextPrevChild(bool next)
{
    const QList<QWidget *> stops =
        FocusOrder::stops(this, {windowHeader()->btnMinimise(), windowHeader()->btnClose()});
    QWidget *stop = FocusOrder::next(stops, focusWidget(), next);
    if (!stop)
        return false;
    stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void ErrorLogWindow::showEvent(QShowEvent *event)
{
    FramelessWindow::showEvent(event);
    table_->setFocus(Qt::OtherFocusReason);
    if (model_.count() > 0 && table_->selectedOrClickedRows().isEmpty())
        table_->setCurrentIndex(table_->rowIndex(0));
}

void ErrorLogWindow::showCount()
{
    const int count = model_.count();
    const bool isOne = count == 1;
    const QString number = NumberText::grouped(count);
    if (count == 0)
        countText_->setText(tr("No errors"));
    else if (model_.hasOnlyFiles())
        countText_->setText(isOne ? tr("1 file could not be erased")
                                  : tr("%1 files could not be erased").arg(number));
    else
        countText_->setText(
            isOne ? tr("1 item was not overwritten or is still there")
                  : tr("%1 items were not overwritten or are still there").arg(number));
}

void ErrorLogWindow::updateButton()
{
    showButton_->setEnabled(!table_->selectedOrClickedRows().isEmpty());
}

void ErrorLogWindow::showSelected()
{
    const QList<int> rows = table_->selectedOrClickedRows();
    if (!rows.isEmpty())
        Q_EMIT showInFolder(rows.first());
}
