#include "ui/OpenPanel.h"

#include "platform/PathBytes.h"
#include "platform/SystemError.h"
#include "support/NumberText.h"
#include "ui/ButtonBlue.h"
#include "ui/FocusRing.h"
#include "ui/OpenPanelModel.h"
#include "ui/PlainButton.h"
#include "ui/RowTexts.h"
#include "ui/TextLabel.h"
#include "ui/Typography.h"

#include <QCheckBox>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStandardPaths>
#include <QStyledItemDelegate>
#include <QTreeView>

#include <cerrno>

namespace {

constexpr int margin = 16;
constexpr int gap = 8;
constexpr int padding = 12;
constexpr int rowHeight = 28;
constexpr int placesWidth = 144;
constexpr int sizeWidth = 112;
constexpr int buttonWidth = 96;

QByteArray home()
{
    return QFile::encodeName(QDir::homePath());
}

/// Rows of the design's height, with room at their sides. The whole row shows the focus, not a
/// cell.
class RowDelegate : public QStyledItemDelegate
{
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {QStyledItemDelegate::sizeHint(option, index).width() + 2 * padding,
                Typography::scaled(rowHeight)};
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        if (option.state.testFlag(QStyle::State_Selected))
            painter->fillRect(option.rect, option.palette.highlight());
        QStyleOptionViewItem content = option;
        content.state.setFlag(QStyle::State_HasFocus, false);
        content.rect.adjust(padding, 0, -padding, 0);
        QStyledItemDelegate::paint(painter, content, index);
    }
};

} // namespace

OpenPanel::OpenPanel(QWidget *parent)
    : QDialog(parent), pathField_(new QLineEdit(this)), up_(new PlainButton(tr("Up"), this)),
      places_(new QListWidget(this)), list_(new QTreeView(this)), model_(new OpenPanelModel(this)),
      remark_(new TextLabel(TextStyle::Small, ColorRole::TextSecondary, this)),
      hidden_(new QCheckBox(tr("Show &hidden files"), this)),
      cancel_(new PlainButton(tr("Cancel"), this)), ok_(new ButtonBlue(tr("OK"), this))
{
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Choose files and/or folders to secure delete"));
    makeList();
    makePlaces();
    makeLayout();
    connectParts();
    FocusRing::install(this);
    resize(Typography::scaled(640), Typography::scaled(440));
    list_->setFocus();
    setDirectory(home());
}

OpenPanel::~OpenPanel()
{
    if (reading_)
        *reading_ = true;
}

void OpenPanel::makeList()
{
    list_->setModel(model_);
    list_->setItemDelegate(new RowDelegate(list_));
    list_->setAccessibleName(tr("Files and folders"));
    list_->setRootIsDecorated(false);
    list_->setHeaderHidden(true);
    list_->setIconSize(QSize(Typography::scaled(16), Typography::scaled(16)));
    list_->setAllColumnsShowFocus(true);
    list_->setUniformRowHeights(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionsMovable(false);
    list_->header()->setSectionResizeMode(OpenPanelModel::Name, QHeaderView::Stretch);
    list_->header()->setSectionResizeMode(OpenPanelModel::Size, QHeaderView::Fixed);
    list_->header()->resizeSection(OpenPanelModel::Size, Typography::scaled(sizeWidth));
    list_->installEventFilter(this);
    FocusRing::setInside(list_);
}

void OpenPanel::makePlaces()
{
    const auto add = [this](const QString &name, const QString &path) {
        auto *item = new QListWidgetItem(name, places_);
        item->setData(Qt::UserRole, QFile::encodeName(path));
        item->setSizeHint({0, Typography::scaled(rowHeight)});
    };
    add(tr("Home"), QDir::homePath());
    const auto addStandard = [&add](const QString &name, QStandardPaths::StandardLocation place) {
        const QString path = QStandardPaths::writableLocation(place);
        if (!path.isEmpty() && path != QDir::homePath())
            add(name, path);
    };
    addStandard(tr("Desktop"), QStandardPaths::DesktopLocation);
    addStandard(tr("Documents"), QStandardPaths::DocumentsLocation);
    addStandard(tr("Downloads"), QStandardPaths::DownloadLocation);
    add(tr("File System"), QDir::rootPath());
    places_->setItemDelegate(new RowDelegate(places_));
    places_->setAccessibleName(tr("Places"));
    places_->setFixedWidth(Typography::scaled(placesWidth));
    FocusRing::setInside(places_);
}

void OpenPanel::makeLayout()
{
    pathField_->setAccessibleName(tr("Folder"));
    pathField_->setTextMargins(gap, 0, gap, 0);
    pathField_->setFixedHeight(Typography::scaled(28));
    up_->setAccessibleName(tr("Up one folder"));
    up_->setToolTip(tr("Up one folder (Alt+Up)"));
    for (QWidget *button : std::initializer_list<QWidget *>{cancel_, ok_})
        button->setFixedSize(Typography::scaled(buttonWidth), Typography::scaled(32));
    up_->setFixedSize(Typography::scaled(64), Typography::scaled(28));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(gap);
    auto *path = new QHBoxLayout;
    path->addWidget(up_);
    path->addWidget(pathField_);
    grid->addLayout(path, 0, 0, 1, 2);
    grid->addWidget(places_, 1, 0);
    grid->addWidget(list_, 1, 1);
    auto *footer = new QHBoxLayout;
    footer->addWidget(hidden_);
    footer->addWidget(remark_, 1);
    footer->addWidget(cancel_);
    footer->addWidget(ok_);
    grid->addLayout(footer, 2, 0, 1, 2);
}

void OpenPanel::connectParts()
{
    connect(up_, &QAbstractButton::clicked, this, &OpenPanel::goUp);
    connect(cancel_, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(ok_, &QAbstractButton::clicked, this, &OpenPanel::takeChosen);
    // What is chosen below is not what was typed above.
    connect(pathField_, &QLineEdit::textEdited, list_, &QAbstractItemView::clearSelection);
    connect(this, &QDialog::finished, this, &OpenPanel::end);
    connect(list_, &QAbstractItemView::doubleClicked, this, &OpenPanel::activate);
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &OpenPanel::showSelection);
    connect(model_, &QAbstractItemModel::modelReset, this, &OpenPanel::showSelection);
    connect(hidden_, &QCheckBox::toggled, model_, &OpenPanelModel::setShowsHidden);
    const auto go = [this](const QListWidgetItem *place) {
        chosenNext_.clear();
        setDirectory(place->data(Qt::UserRole).toByteArray());
    };
    connect(places_, &QListWidget::itemClicked, this, go);
    connect(places_, &QListWidget::itemActivated, this, go);
}

void OpenPanel::setPrompt(const QString &prompt)
{
    ok_->setText(prompt);
    ok_->setAccessibleName(prompt);
}

QString OpenPanel::prompt() const
{
    return ok_->text();
}

void OpenPanel::end(int result)
{
    const bool isOk = result == QDialog::Accepted;
    Q_EMIT finished(isOk ? OkResponse : CancelResponse, isOk ? paths() : std::vector<QByteArray>());
}

void OpenPanel::setDirectory(const QByteArray &path)
{
    if (reading_)
        *reading_ = true;
    remark_->setText(tr("Reading\u2026"));
    reading_ = FolderListing::start(path, [this](FolderListing::Result result) { take(result); });
}

void OpenPanel::take(const FolderListing::Result &result)
{
    reading_.reset();
    const QByteArray folder = PathBytes::withoutLastComponent(result.folder);
    if (result.error == ENOTDIR && !folder.isEmpty()) {
        chosenNext_ = PathBytes::lastComponent(result.folder);
        setDirectory(folder);
    } else if (result.error != 0 && result.entries.empty()) {
        chosenNext_.clear();
        showError(result.error);
    } else {
        showFolder(result);
    }
}

void OpenPanel::showFolder(FolderListing::Result result)
{
    directory_ = result.folder;
    if (chosenNext_.startsWith('.'))
        hidden_->setChecked(true);
    model_->setEntries(std::move(result.entries));
    showPath();
    const int row = chosenNext_.isEmpty() ? -1 : model_->rowOf(chosenNext_);
    chosenNext_.clear();
    list_->setCurrentIndex(model_->index(std::max(row, 0), OpenPanelModel::Name));
    if (row < 0)
        list_->clearSelection();
    // Who typed a folder chooses in it next.
    if (focusWidget() == pathField_)
        list_->setFocus(Qt::OtherFocusReason);
    if (result.error != 0)
        showError(result.error);
}

void OpenPanel::showPath()
{
    shownPath_ = RowTexts::name(directory_);
    pathField_->setText(shownPath_);
}

void OpenPanel::showError(int error)
{
    remark_->setText(SystemError::text(error));
}

void OpenPanel::showSelection()
{
    const auto chosen = list_->selectionModel()->selectedRows().size();
    ok_->setEnabled(chosen > 0);
    if (chosen > 0)
        remark_->setText(tr("%1 chosen").arg(NumberText::grouped(chosen)));
    else
        remark_->setText(model_->rowCount() == 1
                             ? tr("1 item")
                             : tr("%1 items").arg(NumberText::grouped(model_->rowCount())));
}

std::vector<QByteArray> OpenPanel::paths() const
{
    QModelIndexList rows = list_->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<QByteArray> paths;
    for (const QModelIndex &row : std::as_const(rows))
        paths.push_back(PathBytes::join(directory_, model_->entry(row.row()).name));
    return paths;
}

void OpenPanel::activate(const QModelIndex &index)
{
    const FolderListing::Entry &entry = model_->entry(index.row());
    if (entry.isFolder)
        setDirectory(PathBytes::join(directory_, entry.name));
    else
        accept();
}

void OpenPanel::goUp()
{
    const QByteArray parent = PathBytes::withoutLastComponent(directory_);
    if (parent.isEmpty() || parent == directory_)
        return;
    chosenNext_ = PathBytes::lastComponent(directory_);
    setDirectory(parent);
}

void OpenPanel::takeChosen()
{
    if (list_->selectionModel()->hasSelection())
        accept();
}

void OpenPanel::goToTyped()
{
    const QString text = pathField_->text();
    setDirectory(text == shownPath_ ? directory_ : typedPath(text, directory_, home()));
}

QByteArray OpenPanel::typedPath(const QString &text, const QByteArray &folder,
                                const QByteArray &home)
{
    QByteArray path = QFile::encodeName(text);
    if (path == "~" || path.startsWith("~/"))
        path.replace(0, 1, home);
    return PathBytes::absolute(path, folder);
}

/// Return goes where the focus is: into the typed folder or the chosen one; it never chooses by
/// accident.
void OpenPanel::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isUp = event->key() == Qt::Key_Up && event->modifiers() == Qt::AltModifier;
    if (isUp || (event->key() == Qt::Key_Backspace && focusWidget() == list_)) {
        goUp();
    } else if (isReturn && focusWidget() == pathField_) {
        goToTyped();
    } else if (isReturn && focusWidget() == list_) {
        const QModelIndexList chosen = list_->selectionModel()->selectedRows();
        if (chosen.size() == 1)
            activate(chosen.first());
        else if (!chosen.isEmpty())
            accept();
    } else if (!isReturn) {
        QDialog::keyPressEvent(event);
    }
}

/// A path that is typed over the list goes to the field.
bool OpenPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != list_ || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const QString text = static_cast<QKeyEvent *>(event)->text();
    if (text != QLatin1String("/") && text != QLatin1String("~"))
        return false;
    pathField_->setFocus(Qt::ShortcutFocusReason);
    pathField_->setText(text);
    return true;
}
