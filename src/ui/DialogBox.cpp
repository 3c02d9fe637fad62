#include "ui/DialogBox.h"

#include "platform/UserDefaults.h"
#include "ui/DialogButton.h"
#include "ui/DialogParts.h"
#include "ui/DialogScrim.h"
#include "ui/FocusRing.h"
#include "ui/HeardAs.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/PictureIcon.h"
#include "ui/TextLabel.h"
#include "ui/ThemeKeys.h"
#include "ui/Typography.h"
#include "ui/VTLGetMainWindow.h"
#include "ui/WindowRegister.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QEventLoop>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr QSize designSize(440, 178);
constexpr QRect imagePlace(24, 24, 48, 48);
constexpr QRect titlePlace(88, 24, 328, 20);
constexpr QRect infoPlace(88, 52, 328, 60);
constexpr int hintMargin = 24;
constexpr int hintGap = 8;
constexpr int rowAboveEdge = 7;
constexpr double leastButtonWidth = 81;
constexpr double buttonGap = 10;
constexpr double motifOpacity = 0.03;
constexpr double motifOpacityInTheDark = 0.01;

DialogBox::Answers *currentAnswers = nullptr;
std::function<bool(const QUrl &)> urlOpener;

QRect scaled(const QRect &place)
{
    return {Typography::scaled(place.x()), Typography::scaled(place.y()),
            Typography::scaled(place.width()), Typography::scaled(place.height())};
}

/// That of the active window, else the primary one.
QScreen *mainScreen()
{
    const QWidget *active = QApplication::activeWindow();
    return active ? active->screen() : QGuiApplication::primaryScreen();
}

bool isSeen(const QWidget *window)
{
    return window && window->isVisible() && !window->isMinimized();
}

bool isAlone(const QKeyEvent *event)
{
    return (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

/// The dialog as screen readers hear it: a dialog, and not any window.
class HeardDialog : public QAccessibleWidget
{
  public:
    explicit HeardDialog(DialogBox *dialog) : QAccessibleWidget(dialog, QAccessible::Dialog) {}

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = true;
        return state;
    }
};

} // namespace

DialogBox::Answers::Answers(std::vector<int> codes)
    : codes_(std::move(codes)), previous_(std::exchange(currentAnswers, this))
{
}

DialogBox::Answers::~Answers()
{
    currentAnswers = previous_;
}

int DialogBox::Answers::answer(const DialogBox &dialog)
{
    QStringList buttons;
    for (const DialogButton *button : dialog.buttonsArray())
        buttons.append(button->text());
    asked_.push_back({dialog.title(), dialog.info(), buttons, dialog.activeButton()});
    return asked_.size() <= codes_.size() ? codes_[asked_.size() - 1] : DialogGeometry::Closed;
}

DialogBox::DialogBox()
    : paper_(new DialogGround(ground())), imgLarge_(new DialogMotif(ground())),
      strip_(new DialogStrip(ground())), imageView_(new DialogImage(this)),
      titleTextfield_(new TextLabel(TextStyle::DialogTitle, ColorRole::Text, this)),
      infoTextfield_(new TextLabel(TextStyle::Body, ColorRole::Text, this)),
      hintTextfield_(new TextLabel(TextStyle::Small, ColorRole::TextSecondary, this))
{
    letItBeHeardAs<DialogBox, HeardDialog>();
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowCloseButtonHint);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_QuitOnClose, false);
    setResizable(false);
    makeParts();
    connect(this, &FramelessWindow::resignedKey, this, &DialogBox::windowDidResignKey);
    connect(this, &FramelessWindow::resignedKey, this, &DialogBox::windowDidResignMain);
    colorThemeChanged_ = NotificationHub::shared().observe(
        NotificationName::colorThemeChanged,
        [this](const auto &) { colorThemeChangedNotification(); });
}

DialogBox::DialogBox(const QString &title, const QString &info) : DialogBox()
{
    title_ = title;
    info_ = info;
}

DialogBox::~DialogBox()
{
    delete scrim_;
}

void DialogBox::makeParts()
{
    body()->hide();
    imageView_->setImage(QIcon(new PictureIcon(QStringLiteral("application_icon"))));
    infoTextfield_->setWraps(true);
    hintTextfield_->hide();
    FocusRing::install(this)->setAlwaysShown(true);
    placeParts();
}

void DialogBox::placeParts()
{
    imageView_->setGeometry(scaled(imagePlace));
    titleTextfield_->setGeometry(scaled(titlePlace));
    infoTextfield_->setGeometry(scaled(infoPlace));
    setFixedSize(Typography::scaled(designSize.width()), Typography::scaled(designSize.height()));
    layOut();
}

void DialogBox::layOut()
{
    FramelessWindow::layOut();
    paper_->setGeometry(rect());
    imgLarge_->setGeometry(rect());
    const int stripHeight = Typography::scaled(DialogStrip::designHeight);
    strip_->setGeometry(0, height() - stripHeight, width(), stripHeight);
}

void DialogBox::loadWindow()
{
    if (!std::exchange(isLoaded_, true))
        windowDidLoad();
}

void DialogBox::windowDidLoad()
{
    // There is no title bar to hide. A null text is shown as an empty one.
    titleTextfield_->setText(title_);
    infoTextfield_->setText(info_);
    setWindowTitle(title_);
    setAccessibleName(title_);
    setAccessibleDescription(info_);
    resizeWindowHeight();
    centerWindow();
    colorThemeChangedNotification();
    willTerminate_ =
        NotificationHub::shared().observe(NotificationName::applicationWillTerminate,
                                          [this](const auto &) { applicationWillTerminate(); });
}

void DialogBox::resizeWindowHeight()
{
    const QRect field = infoTextfield_->geometry();
    const QSizeF fitting(field.width(), infoTextfield_->heightForWidth(field.width()));
    const auto [grownField, window] = DialogGeometry::grown(field, fitting, geometry());
    infoTextfield_->setGeometry(grownField.toRect());
    setFixedSize(window.size());
    layOut();
}

QWidget *DialogBox::referenceWindow() const
{
    if (aboveWindow_)
        return aboveWindow_;
    if (QWidget *main = VTLGetMainWindow::mainWindow())
        return main;
    const std::vector<QWidget *> windows = WindowRegister::shared().windows();
    const auto first = std::find_if(windows.begin(), windows.end(),
                                    [this](const QWidget *window) { return window != this; });
    return first == windows.end() ? nullptr : *first;
}

std::optional<DialogGeometry::Reference> DialogBox::reference() const
{
    const QWidget *window = referenceWindow();
    if (!window)
        return std::nullopt;
    return DialogGeometry::Reference{window->frameGeometry(),
                                     window == VTLGetMainWindow::mainWindow()};
}

void DialogBox::centerWindow()
{
    const QScreen *screen = mainScreen();
    setGeometry(DialogGeometry::placed(size(), reference(), screen->geometry(),
                                       screen->availableGeometry()));
    update();
}

void DialogBox::colorThemeChangedNotification()
{
    appearance_ = InterfaceColorStyle::appearance();
    imgLarge_->setOpacity(UserDefaults::standard().boolean(ThemeKeys::darkMode)
                              ? motifOpacityInTheDark
                              : motifOpacity);
    updateTree();
}

void DialogBox::addButtonWithTitle(const QString &title)
{
    const DialogButton *button = addButton(title);
    connect(button, &QAbstractButton::clicked, this, [this, button] { buttonPressed(button); });
}

void DialogBox::addInfoButtonWithUrl(const QUrl &url, const QString &title)
{
    htmlLink_ = url;
    hasLink_ = true;
    connect(addButton(title), &QAbstractButton::clicked, this, &DialogBox::urlButtonPressed);
}

DialogButton *DialogBox::addButton(const QString &title)
{
    loadWindow();
    auto *button = new DialogButton(title, int(buttonsArray_.size()) + 1, this);
    buttonsArray_.append(button);
    placeButton(buttonsArray_.size() - 1);
    button->show();
    raiseEdge();
    updateHint();
    return button;
}

void DialogBox::placeButton(qsizetype index)
{
    DialogButton *button = buttonsArray_.at(index);
    std::optional<double> lastLeft;
    if (index > 0)
        lastLeft = buttonsArray_.at(index - 1)->frame().left();
    const QSize fitted = button->fittedSize();
    const DialogGeometry::RowMeasure row{double(Typography::scaled(leastButtonWidth)),
                                         double(Typography::scaled(buttonGap))};
    const auto [left, width] =
        DialogGeometry::buttonSpan(this->width(), lastLeft, fitted.width(), row);
    const int top = height() - Typography::scaled(rowAboveEdge) - fitted.height();
    button->setFrame(QRect(int(std::lround(left)), top, int(std::lround(width)), fitted.height()));
}

void DialogBox::activeButton(std::int64_t n)
{
    activeButton_ = n;
    if (n >= 1 && n <= buttonsArray_.size())
        buttonsArray_.at(n - 1)->setDefault(true);
    defaultChanged();
}

DialogButton *DialogBox::defaultButton() const
{
    const auto found = std::find_if(buttonsArray_.begin(), buttonsArray_.end(),
                                    [](const DialogButton *button) { return button->isDefault(); });
    return found == buttonsArray_.end() ? nullptr : *found;
}

/// The focus shows a screen reader, and by its ring everyone, what Return presses.
void DialogBox::defaultChanged()
{
    DialogButton *button = defaultButton();
    if (button)
        button->setFocus(Qt::OtherFocusReason);
    else
        setFocus(Qt::OtherFocusReason);
    updateHint();
}

void DialogBox::updateHint()
{
    const DialogButton *byReturn = defaultButton();
    const bool isShown = buttonsArray_.size() == 2 && !hasLink_ && byReturn;
    hintTextfield_->setVisible(isShown);
    if (!isShown)
        return;
    const std::int64_t bySpace = DialogGeometry::nextButton(activeButton_, 2, true);
    //: What the keys Return and Space press, at the foot of a dialog
    hintTextfield_->setText(tr("Return: %1  ·  Space: %2")
                                .arg(byReturn->text(), buttonsArray_.at(bySpace - 1)->text()));
    const int left = Typography::scaled(hintMargin);
    const int right = buttonsArray_.last()->frame().left() - Typography::scaled(hintGap);
    const int height = Typography::lineHeight(TextStyle::Small);
    hintTextfield_->setGeometry(left, strip_->y() + (strip_->height() - height) / 2,
                                std::max(right - left, 0), height);
}

void DialogBox::image(const QIcon &image)
{
    if (!image.isNull())
        imageView_->setImage(image);
}

void DialogBox::buttonPressed(const DialogButton *sender)
{
    if (!response_)
        clickedButton_ = sender->tag();
    closeWindow();
}

void DialogBox::urlButtonPressed()
{
    if (htmlLink_.isEmpty() || response_)
        return;
    if (urlOpener)
        urlOpener(htmlLink_);
    else
        QDesktopServices::openUrl(htmlLink_);
    closeWindow();
}

void DialogBox::setUrlOpener(std::function<bool(const QUrl &)> opener)
{
    urlOpener = std::move(opener);
}

void DialogBox::cancel()
{
    if (!response_)
        clickedButton_ = -1;
    closeWindow();
}

void DialogBox::spaceClicked()
{
    if (buttonsArray_.size() != 2 || response_)
        return;
    selectNextButton(true);
    clickedButton_ = activeButton_;
    closeWindow();
}

void DialogBox::selectNextButton(bool towardsLeft)
{
    if (buttonsArray_.size() < 2)
        return;
    for (DialogButton *button : std::as_const(buttonsArray_))
        button->setDefault(false);
    activeButton(DialogGeometry::nextButton(activeButton_, buttonsArray_.size(), towardsLeft));
}

void DialogBox::keyDown(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        selectNextButton(true);
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        selectNextButton(false);
        break;
    default:
        FramelessWindow::keyPressEvent(event);
    }
}

void DialogBox::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        cancel();
    } else if (isReturn && isAlone(event)) {
        if (DialogButton *button = defaultButton())
            button->click();
    } else if (event->key() == Qt::Key_Space && isAlone(event)) {
        spaceClicked();
    } else {
        keyDown(event);
    }
}

bool DialogBox::focusNextPrevChild(bool next)
{
    selectNextButton(next);
    return true;
}

bool DialogBox::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->isAutoRepeat()) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ApplicationFontChange && isLoaded_)
        fontChanged();
    return FramelessWindow::event(event);
}

void DialogBox::fontChanged()
{
    placeParts();
    resizeWindowHeight();
    centerWindow();
    for (qsizetype i = 0; i < buttonsArray_.size(); ++i)
        placeButton(i);
    updateHint();
}

void DialogBox::closeEvent(QCloseEvent *event)
{
    windowWillClose();
    // Never refused, since a refusal would keep the application from quitting.
    event->accept();
}

void DialogBox::windowDidResignKey()
{
    if (selfClosing_)
        closeWindow();
}

void DialogBox::windowDidResignMain()
{
    windowDidResignKey();
}

void DialogBox::windowWillClose()
{
    closeWindow();
}

void DialogBox::applicationWillTerminate()
{
    closeWindow();
}

void DialogBox::closeWindow()
{
    if (response_)
        return;
    response_ = DialogGeometry::responseFor(clickedButton_);
    if (loop_)
        loop_->quit();
    delete scrim_;
    hide();
}

int DialogBox::runModal()
{
    loadWindow();
    if (currentAnswers && !response_)
        response_ = currentAnswers->answer(*this);
    if (response_)
        return *response_;
    QEventLoop loop;
    loop_ = &loop;
    open();
    if (!response_)
        loop.exec(QEventLoop::DialogExec);
    loop_ = nullptr;
    // The application may have left its loops without a word to the dialog.
    closeWindow();
    return *response_;
}

/// What the dialog lies over: the dialog that is open already, else the reference window, or the
/// active one where that is not to be seen: the dialog would be out of sight with it.
QWidget *DialogBox::windowBelow() const
{
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *below = modal ? modal : referenceWindow();
    if (!isSeen(below))
        below = QApplication::activeWindow();
    return isSeen(below) && below != this ? below : nullptr;
}

void DialogBox::open()
{
    if (QWidget *below = windowBelow()) {
        scrim_ = new DialogScrim(below);
        winId();
        windowHandle()->setTransientParent(below->windowHandle());
    }
    makeKeyAndOrderFront();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}
