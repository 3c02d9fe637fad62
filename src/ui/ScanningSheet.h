#pragma once

#include "ui/DesignColors.h"
#include "ui/Typography.h"

#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

#include <functional>
#include <vector>

class PlainButton;
class TextLabel;

/// The sheet that hangs from the header while folders are looked through, with a scrim over the
/// view behind it. As large as the window's body; nothing of the view behind it gets input.
///
/// It slides in and out. A sheet that is closed on its way in turns back where it is.
///
/// Thread:       main
/// Holds weakly: what had the focus before
/// Units:        logical pixels
class ScanningSheet : public QWidget
{
    Q_OBJECT

  public:
    explicit ScanningSheet(QWidget *parent = nullptr);

    void open();
    void close();
    /// From open() to close().
    [[nodiscard]] bool isOpen() const { return isOpen_; }
    /// From open() until the sheet has gone.
    [[nodiscard]] bool isShown() const { return isShown_; }

    void setFound(const QString &files, const QString &bytes);
    [[nodiscard]] PlainButton *btnStopScanning() const { return stop_; }
    /// Asks whether the desktop wants less motion; the desktop's own answer unless replaced.
    void setPrefersReducedMotion(std::function<bool()> predicate);

    /// The sheet proper, in the coordinates of this widget, when `progress`, 0 to 1, of its way in
    /// is done. Pure.
    static QRect sheetRect(int width, const QSize &sheet, double progress);

  Q_SIGNALS:
    /// By the button, or by Escape.
    void stopClicked();
    void opened();
    /// The sheet has gone.
    void closed();

  protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    void makeSheet();
    TextLabel *addLabel(TextStyle style, ColorRole role, const QRect &place);
    void layOut();
    void slide(bool in);
    void place(double progress);
    void end();
    void takeFocus();
    void giveFocusBack();

    /// What stands on the sheet and where, in the design's measure; a label is as high as its line.
    struct Part
    {
        QWidget *widget;
        QRect place;
    };

    QWidget *sheet_;
    std::vector<Part> parts_;
    TextLabel *files_ = nullptr;
    TextLabel *bytes_ = nullptr;
    PlainButton *stop_ = nullptr;
    QVariantAnimation animation_;
    std::function<bool()> prefersReducedMotion_;
    QPointer<QWidget> focusBefore_;
    double progress_ = 0;
    bool isOpen_ = false;
    bool isShown_ = false;
};
