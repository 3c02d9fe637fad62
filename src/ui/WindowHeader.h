#pragma once

#include <QLabel>
#include <QWidget>

#include <optional>

class HeaderButton;
class VTLLine;

/// The title in a window's header: centred in its place, elided at the end, and no larger than 16
/// pixels however large the system font is. In a window that is not active it steps back.
///
/// Thread: main
class HeaderTitle : public QLabel
{
    Q_OBJECT

  public:
    explicit HeaderTitle(QWidget *parent);

  protected:
    void paintEvent(QPaintEvent *event) override;
};

/// The header of a window that has no frame: its title, minimise and close. A press anywhere else
/// in it moves the window. Its height and places do not grow with the font.
///
/// Thread: main
/// Units:  logical pixels
class WindowHeader : public QWidget
{
    Q_OBJECT

  public:
    explicit WindowHeader(QWidget *parent = nullptr);

    [[nodiscard]] QLabel *titleTextField() const { return title_; }
    [[nodiscard]] VTLLine *toolBarSeparator() const { return separator_; }
    [[nodiscard]] HeaderButton *btnMinimise() const { return minimise_; }
    [[nodiscard]] HeaderButton *btnClose() const { return close_; }

    /// Asks the window system to move the window.
    virtual void performWindowDrag();

  protected:
    /// The title stands this far from either side.
    [[nodiscard]] virtual int titleMargin() const { return 184; }
    /// A button's place is counted from the left, or from the right edge if negative.
    void placeButton(QWidget *button, int x, int width) const;
    virtual void layOut();

    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

  private:
    HeaderTitle *title_;
    HeaderButton *minimise_;
    HeaderButton *close_;
    VTLLine *separator_;
    std::optional<QPoint> pressedAt_;
};
