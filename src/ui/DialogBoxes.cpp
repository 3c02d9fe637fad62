#include "ui/DialogBoxes.h"

#include "ui/DialogBox.h"

#include <QUrl>

namespace {

std::int64_t yesOrNo(bool yesIsActive)
{
    return yesIsActive ? 1 : 2;
}

struct Setting
{
    QIcon image;
    QWidget *aboveWindow = nullptr;
    bool selfClosing = false;
};

/// What the session ended with.
int run(const QString &title, const QString &info, const QStringList &buttons,
        std::int64_t active = 1, const Setting &setting = {})
{
    DialogBox dialog(title, info);
    dialog.setAboveWindow(setting.aboveWindow);
    dialog.setSelfClosing(setting.selfClosing);
    for (const QString &button : buttons)
        dialog.addButtonWithTitle(button);
    dialog.activeButton(active);
    dialog.image(setting.image);
    const int response = dialog.runModal();
    dialog.hide();
    return response;
}

} // namespace

void DialogBoxes::alertBoxDefault(const QString &title, const QString &withInfoText)
{
    run(title, withInfoText, {tr("OK")});
}

void DialogBoxes::alertBoxDefault(const QString &title, const QString &withInfoText,
                                  const QIcon &withImage)
{
    run(title, withInfoText, {tr("OK")}, 1, {withImage, nullptr, false});
}

void DialogBoxes::alertBoxDefault(const QString &title, const QString &withInfoText,
                                  const QString &withButtonTitle)
{
    run(title, withInfoText, {withButtonTitle.isNull() ? tr("OK") : withButtonTitle});
}

bool DialogBoxes::alertBoxDefault(const QString &title, const QString &withInfoText,
                                  const QUrl &withInfoLink, const QString &withTitle)
{
    return alertBoxDefault(title, withInfoText, withInfoLink, withTitle, QIcon());
}

bool DialogBoxes::alertBoxDefault(const QString &title, const QString &withInfoText,
                                  const QUrl &withInfoLink, const QString &withTitle,
                                  const QIcon &withImage)
{
    DialogBox dialog(title, withInfoText);
    dialog.addButtonWithTitle(tr("OK"));
    dialog.addInfoButtonWithUrl(withInfoLink, withTitle);
    dialog.activeButton(1);
    dialog.image(withImage);
    const int response = dialog.runModal();
    dialog.hide();
    return response != DialogGeometry::FirstButton;
}

bool DialogBoxes::alertBoxDefaultWithNotShowAgain(const QString &title, const QString &withInfoText)
{
    return run(title, withInfoText, {tr("OK"), tr("Don't show again")}) !=
           DialogGeometry::FirstButton;
}

int DialogBoxes::alertBoxYesNoWithNotShowAgain(const QString &title, const QString &withInfoText,
                                               bool yesIsActive)
{
    return alertBoxYesNoWithNotShowAgain(title, withInfoText, yesIsActive, nullptr);
}

int DialogBoxes::alertBoxYesNoWithNotShowAgain(const QString &title, const QString &withInfoText,
                                               bool yesIsActive, QWidget *aboveWindow)
{
    switch (run(title, withInfoText, {tr("Yes"), tr("No"), tr("Don't show again")},
                yesOrNo(yesIsActive), {QIcon(), aboveWindow, false})) {
    case DialogGeometry::FirstButton:
        return 0;
    case DialogGeometry::SecondButton:
        return 1;
    case DialogGeometry::ThirdButton:
        return 2;
    default:
        return -1;
    }
}

bool DialogBoxes::alertBoxOpenPreferences(const QString &title, const QString &withInfoText,
                                          bool forced)
{
    const QString open = tr("Open Preferences");
    const int response =
        forced ? run(title, withInfoText, {open}) : run(title, withInfoText, {open, tr("Cancel")});
    return response == DialogGeometry::FirstButton;
}

bool DialogBoxes::alertBoxRetry(const QString &title, const QString &withInfoText)
{
    return run(title, withInfoText, {tr("Retry"), tr("Cancel")}) == DialogGeometry::FirstButton;
}

bool DialogBoxes::alertBoxYesNo(const QString &title, const QString &withInfoText, bool yesIsActive)
{
    return alertBoxYesNo(title, withInfoText, yesIsActive, nullptr);
}

bool DialogBoxes::alertBoxYesNo(const QString &title, const QString &withInfoText, bool yesIsActive,
                                QWidget *aboveWindow)
{
    return run(title, withInfoText, {tr("Yes"), tr("No")}, yesOrNo(yesIsActive),
               {QIcon(), aboveWindow, false}) == DialogGeometry::FirstButton;
}

bool DialogBoxes::alertBoxYesNoSelfClosing(const QString &title, const QString &withInfoText,
                                           bool yesIsActive, bool selfClosing)
{
    return run(title, withInfoText, {tr("Yes"), tr("No")}, yesOrNo(yesIsActive),
               {QIcon(), nullptr, selfClosing}) == DialogGeometry::FirstButton;
}

int DialogBoxes::alertBoxRemoveFiles(const QString &title, const QString &withInfoText)
{
    switch (
        run(title, withInfoText, {tr("No"), tr("Yes"), tr("Yes and remove all related files")})) {
    case DialogGeometry::SecondButton:
        return 1;
    case DialogGeometry::ThirdButton:
        return 2;
    default:
        return 0;
    }
}
