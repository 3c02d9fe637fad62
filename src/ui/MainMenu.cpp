#include "ui/MainMenu.h"

#include "ui/Typography.h"

#include <QMetaMethod>
#include <QScreen>

#include <algorithm>
#include <array>

namespace {

constexpr int distance = 8;

bool has(const QObject *object, const char *operation)
{
    return object && object->metaObject()->indexOfMethod(
                         QMetaObject::normalizedSignature(operation).constData()) >= 0;
}

} // namespace

MainMenu::MainMenu(QWidget *window) : QMenu(window), window_(window)
{
    setMinimumWidth(Typography::scaled(280));
    addFileGroup();
    addSeparator();
    addEditGroup();
    addSeparator();
    addWindowGroup();
    addSeparator();
    addHelpGroup();
    addSeparator();
    quit_ = add(tr("&Quit"), {Qt::CTRL | Qt::Key_Q}, Qt::ApplicationShortcut);
    connect(this, &QMenu::aboutToShow, this, &MainMenu::lookAtFocus);
}

QAction *MainMenu::add(const QString &text, const QList<QKeySequence> &shortcuts,
                       Qt::ShortcutContext context)
{
    QAction *action = addAction(text);
    action->setShortcuts(shortcuts);
    action->setShortcutContext(context);
    // A key that is held must neither start a run nor go to and fro.
    action->setAutoRepeat(false);
    window_->addAction(action);
    return action;
}

void MainMenu::addFileGroup()
{
    addFilesAndFolders_ = add(tr("&Add Files and Folders\u2026"), {Qt::CTRL | Qt::Key_O});
    startErasing_ = add(tr("&Start Erasing"),
                        {Qt::CTRL | Qt::Key_Return,
                         QKeyCombination(Qt::ControlModifier | Qt::KeypadModifier, Qt::Key_Enter)});
}

void MainMenu::addEditGroup()
{
    // Without shortcuts of their own: controls know these keys, and nobody else is to have them.
    copy_ = add(tr("&Copy\tCtrl+C"));
    selectAll_ = add(tr("Select Al&l\tCtrl+A"));
    preferences_ = add(tr("&Preferences"), {Qt::CTRL | Qt::Key_Comma});
    connect(copy_, &QAction::triggered, this, [this] { callOnFocus("copy()"); });
    connect(selectAll_, &QAction::triggered, this, [this] { callOnFocus("selectAll()"); });
}

void MainMenu::addWindowGroup()
{
    mainWindow_ = add(tr("&Vantorel"), {Qt::CTRL | Qt::Key_1}, Qt::ApplicationShortcut);
    mainWindow_->setCheckable(true);
    errorLog_ = add(tr("&Error Log"), {Qt::CTRL | Qt::Key_L}, Qt::ApplicationShortcut);
    minimise_ = add(tr("&Minimise"), {Qt::CTRL | Qt::Key_M});
    closeWindow_ = add(tr("Close &Window"), {Qt::CTRL | Qt::Key_W});
}

void MainMenu::addHelpGroup()
{
    contactTheMakers_ = add(tr("C&ontact the Makers"));
    checkForUpdates_ = add(tr("Check for &Updates\u2026"));
    aboutVantorel_ = add(tr("A&bout Vantorel"), {Qt::Key_F1}, Qt::ApplicationShortcut);
}

void MainMenu::lookAtFocus()
{
    const QWidget *focused = window_->focusWidget();
    copy_->setEnabled(has(focused, "copy()"));
    selectAll_->setEnabled(has(focused, "selectAll()"));
}

void MainMenu::callOnFocus(const char *operation)
{
    QWidget *focused = window_->focusWidget();
    if (!has(focused, operation))
        return;
    const QMetaObject *meta = focused->metaObject();
    meta->method(meta->indexOfMethod(operation)).invoke(focused, Qt::DirectConnection);
}

void MainMenu::openUnder(const QWidget *button)
{
    const QPoint corner = button->mapToGlobal(QPoint(button->width(), button->height() + distance));
    popup(corner - QPoint(sizeHint().width(), 0));
}

void MainMenu::openUnder(const QWidget *button, Group group)
{
    openUnder(button);
    setActiveAction(firstOf(group));
}

QAction *MainMenu::firstOf(Group group) const
{
    static const auto starts = [](const MainMenu &menu) {
        return std::array{menu.addFilesAndFolders_, menu.copy_, menu.mainWindow_,
                          menu.contactTheMakers_};
    };
    const QList<QAction *> all = actions();
    auto first = all.indexOf(starts(*this).at(std::size_t(group)));
    const auto end = std::find_if(all.begin() + first, all.end(),
                                  [](const QAction *action) { return action->isSeparator(); });
    const auto found = std::find_if(all.begin() + first, end,
                                    [](const QAction *action) { return action->isEnabled(); });
    return found == end ? all.at(first) : *found;
}
