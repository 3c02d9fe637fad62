#include "app/MainSurroundings.h"

#include "platform/FileManager.h"
#include "support/NotificationCenter.h"
#include "ui/OpenPanel.h"

#include <QApplication>
#include <QDateTime>
#include <QTimer>

namespace {

void runLater(std::chrono::milliseconds after, MainSurroundings::Call call)
{
    QTimer::singleShot(after, qApp, std::move(call));
}

void showOpenPanel(QWidget *window, const QString &title, const QString &prompt,
                   MainSurroundings::PanelEnd end)
{
    auto *panel = new OpenPanel(window);
    panel->setWindowTitle(title);
    panel->setPrompt(prompt);
    QObject::connect(panel, &OpenPanel::finished, panel, end);
    panel->open();
}

bool showsDialog()
{
    return QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

} // namespace

MainSurroundings MainSurroundings::ofTheDesktop()
{
    MainSurroundings real;
    real.currentTimestamp = [] { return std::int64_t(QDateTime::currentSecsSinceEpoch()); };
    real.schedule = runLater;
    real.showMessage = NotificationCenter::showMessage;
    real.openPanel = showOpenPanel;
    real.activateFileViewer = [](const std::vector<FileUrl> &urls, Problem failed) {
        FileManager::showItems(urls, std::move(failed));
    };
    real.isDialogOpen = showsDialog;
    return real;
}
