#pragma once

#include "platform/NotificationHub.h"
#include "ui/DialogGeometry.h"
#include "ui/FramelessWindow.h"

#include <QIcon>
#include <QPointer>
#include <QStringList>
#include <QUrl>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class DialogButton;
class DialogGround;
class DialogImage;
class DialogMotif;
class DialogScrim;
class DialogStrip;
class QEventLoop;
class QKeyEvent;
class TextLabel;

/// A message box: a title, an information text for which it grows downwards, an icon, and a row of
/// buttons from right to left. runModal() shows it over the whole application until it is ended by
/// a button, its link, Escape, loss of focus (where it closes by itself), its window's close or the
/// application's end. The first end counts. A dialog lives for one such session, and needs neither
/// a main window nor preferences.
///
/// The dialog reads all keys: Return and Enter press the default button, Space the other one of
/// two, arrows and Tab move the default. Keys that repeat by themselves do nothing, so a key that
/// was held when the dialog came answers nothing.
///
/// Thread:       main
/// Owns:         what it shows
/// Holds weakly: the window that it is placed over
/// Blocks:       in runModal(), with an event loop
/// Units:        logical pixels
class DialogBox : public FramelessWindow
{
    Q_OBJECT

  public:
    /// While it lives no dialog is shown: each is answered at once with the next of these codes,
    /// with "closed" when there are no more. For tests of what asks.
    class Answers
    {
      public:
        struct Asked
        {
            QString title;
            QString info;
            QStringList buttons; ///< from right to left
            std::int64_t activeButton = 0;
        };

        explicit Answers(std::vector<int> codes);
        ~Answers();
        Answers(const Answers &) = delete;
        Answers &operator=(const Answers &) = delete;

        [[nodiscard]] const std::vector<Asked> &asked() const { return asked_; }

      private:
        friend class DialogBox;
        int answer(const DialogBox &dialog);

        std::vector<int> codes_;
        std::vector<Asked> asked_;
        Answers *previous_;
    };

    DialogBox();
    DialogBox(const QString &title, const QString &info);
    ~DialogBox() override;

    [[nodiscard]] QString title() const { return title_; }
    void setTitle(const QString &title) { title_ = title; }
    [[nodiscard]] QString info() const { return info_; }
    void setInfo(const QString &info) { info_ = info; }
    [[nodiscard]] bool selfClosing() const { return selfClosing_; }
    void setSelfClosing(bool selfClosing) { selfClosing_ = selfClosing; }
    /// The window that it is placed over; null for the main window.
    [[nodiscard]] QWidget *aboveWindow() const { return aboveWindow_; }
    void setAboveWindow(QWidget *window) { aboveWindow_ = window; }
    /// The number of the default button, from 1; 0 at first.
    [[nodiscard]] std::int64_t activeButton() const { return activeButton_; }
    /// The pressed button's tag; 0 while there is none, -1 after Escape.
    [[nodiscard]] std::int64_t clickedButton() const { return clickedButton_; }
    [[nodiscard]] QUrl htmlLink() const { return htmlLink_; }
    void setHtmlLink(const QUrl &link) { htmlLink_ = link; }
    /// In the order in which they were added.
    [[nodiscard]] const QList<DialogButton *> &buttonsArray() const { return buttonsArray_; }

    [[nodiscard]] DialogImage *imageView() const { return imageView_; }
    [[nodiscard]] TextLabel *titleTextfield() const { return titleTextfield_; }
    [[nodiscard]] TextLabel *infoTextfield() const { return infoTextfield_; }
    [[nodiscard]] DialogMotif *imgLarge() const { return imgLarge_; }
    /// What Return and Space press, at the lower left of a dialog with two buttons.
    [[nodiscard]] TextLabel *hintTextfield() const { return hintTextfield_; }
    /// The identifier of the appearance that was applied last; null for the desktop's own.
    [[nodiscard]] QString appearance() const { return appearance_; }

    /// Once, before the first button is added: texts, size, place and theme. What is set of these
    /// later is not shown.
    void windowDidLoad();
    void resizeWindowHeight();
    void centerWindow();
    void colorThemeChangedNotification();

    /// At the left end of the row.
    void addButtonWithTitle(const QString &title);
    /// A button that opens the link.
    void addInfoButtonWithUrl(const QUrl &url, const QString &title);
    /// Makes button n, from 1, the default. Kept on purpose: an earlier default stays one, too;
    /// Return then presses the one that was added first.
    void activeButton(std::int64_t n);
    /// A null one changes nothing.
    void image(const QIcon &image);

    void buttonPressed(const DialogButton *sender);
    /// Opens the link and ends the dialog as closed; without a link nothing happens.
    void urlButtonPressed();
    void cancel();
    /// Presses the one of two buttons that is not the default. Kept on purpose: a link button is
    /// recorded like any other and its link not opened, and with more or fewer buttons nothing
    /// happens.
    void spaceClicked();
    void keyDown(QKeyEvent *event);
    /// Makes the next button the default, towards the left or towards the right.
    void selectNextButton(bool towardsLeft);

    void windowDidResignKey();
    void windowDidResignMain();
    void windowWillClose();
    void applicationWillTerminate();
    /// Ends the session and hides the dialog. Only the first call counts.
    void closeWindow();

    /// Runs the session and answers its code, a DialogGeometry::ModalResponse. A dialog that has
    /// been ended before is not shown.
    int runModal();

    /// How links are opened; null for the desktop's own way.
    static void setUrlOpener(std::function<bool(const QUrl &)> opener);

  protected:
    void layOut() override;
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent *event) override;

  private:
    void makeParts();
    void placeParts();
    void fontChanged();
    void loadWindow();
    [[nodiscard]] std::optional<DialogGeometry::Reference> reference() const;
    [[nodiscard]] QWidget *referenceWindow() const;
    [[nodiscard]] QWidget *windowBelow() const;
    DialogButton *addButton(const QString &title);
    void placeButton(qsizetype index);
    [[nodiscard]] DialogButton *defaultButton() const;
    void defaultChanged();
    void updateHint();
    void open();

    QString title_;
    QString info_;
    bool selfClosing_ = false;
    QPointer<QWidget> aboveWindow_;
    QList<DialogButton *> buttonsArray_;
    std::int64_t activeButton_ = 0;
    std::int64_t clickedButton_ = 0;
    QUrl htmlLink_;
    QString appearance_;

    DialogGround *paper_;
    DialogMotif *imgLarge_;
    DialogStrip *strip_;
    DialogImage *imageView_;
    TextLabel *titleTextfield_;
    TextLabel *infoTextfield_;
    TextLabel *hintTextfield_;
    QPointer<DialogScrim> scrim_;
    bool isLoaded_ = false;
    bool hasLink_ = false;
    QEventLoop *loop_ = nullptr;
    std::optional<int> response_;
    NotificationHub::Token colorThemeChanged_;
    NotificationHub::Token willTerminate_;
};
