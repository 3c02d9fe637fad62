#pragma once

#include <QCoreApplication>
#include <QIcon>
#include <QString>

class QUrl;
class QWidget;

/// The standard dialog boxes. Each is shown over the whole application, and what was pressed in it
/// is answered when it has gone. A null title or text is shown as an empty one.
///
/// Thread: main
/// Blocks: with an event loop, until the box is answered
class DialogBoxes
{
    Q_DECLARE_TR_FUNCTIONS(DialogBoxes)

  public:
    /// "OK".
    static void alertBoxDefault(const QString &title, const QString &withInfoText);
    /// With another icon; a null one leaves the application's.
    static void alertBoxDefault(const QString &title, const QString &withInfoText,
                                const QIcon &withImage);
    /// With another title of the button; null stands for "OK", an empty one is empty.
    static void alertBoxDefault(const QString &title, const QString &withInfoText,
                                const QString &withButtonTitle);
    /// "OK", and a button of this title that opens the link. True unless "OK" was pressed. Kept on
    /// purpose: also by Escape.
    static bool alertBoxDefault(const QString &title, const QString &withInfoText,
                                const QUrl &withInfoLink, const QString &withTitle);
    static bool alertBoxDefault(const QString &title, const QString &withInfoText,
                                const QUrl &withInfoLink, const QString &withTitle,
                                const QIcon &withImage);
    /// "OK", "Don't show again". True unless "OK" was pressed. Kept on purpose: Escape counts as
    /// "Don't show again". Whoever asks remembers the answer.
    static bool alertBoxDefaultWithNotShowAgain(const QString &title, const QString &withInfoText);

    /// "Yes", "No", "Don't show again": 0, 1, 2; -1 where none was pressed.
    static int alertBoxYesNoWithNotShowAgain(const QString &title, const QString &withInfoText,
                                             bool yesIsActive);
    static int alertBoxYesNoWithNotShowAgain(const QString &title, const QString &withInfoText,
                                             bool yesIsActive, QWidget *aboveWindow);

    /// "Open Preferences", and "Cancel" where it is not forced. True for "Open Preferences" only.
    static bool alertBoxOpenPreferences(const QString &title, const QString &withInfoText,
                                        bool forced);
    /// "Retry", "Cancel". True for "Retry" only.
    static bool alertBoxRetry(const QString &title, const QString &withInfoText);

    /// "Yes", "No". True for "Yes" only.
    static bool alertBoxYesNo(const QString &title, const QString &withInfoText, bool yesIsActive);
    static bool alertBoxYesNo(const QString &title, const QString &withInfoText, bool yesIsActive,
                              QWidget *aboveWindow);
    /// The same; where it closes by itself, losing the focus answers false. (A name of its own, so
    /// that no window is taken for the boolean.)
    static bool alertBoxYesNoSelfClosing(const QString &title, const QString &withInfoText,
                                         bool yesIsActive, bool selfClosing);

    /// "No", "Yes", "Yes and remove all related files": 0, 1, 2; 0 where none was pressed.
    static int alertBoxRemoveFiles(const QString &title, const QString &withInfoText);
};
