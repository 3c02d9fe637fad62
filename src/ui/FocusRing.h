#pragma once

#include <QPointer>
#include <QWidget>

/// The ring about the focused control: one per window, drawn over everything, so that nothing clips
/// it. It shows when the focus came by the keyboard; a focus that the program sets keeps what was.
///
/// Thread: main
class FocusRing : public QWidget
{
    Q_OBJECT

  public:
    /// Away from the control's edge, and as thick.
    static constexpr int gap = 2;
    static constexpr int thickness = 2;

    /// The window's ring, made at the first call; the window owns it.
    static FocusRing *install(QWidget *window);

    /// The corner radius of a control whose ends are half circles.
    static constexpr double round = 1000;

    /// How the ring lies about this control: its corner radius.
    static void setRadius(QWidget *control, double radius);
    /// For tables and lists: the ring lies inside of their frame.
    static void setInside(QWidget *control);
    /// For what shows its focus itself.
    static void setNone(QWidget *control);
    /// As at first: about the control.
    static void setAround(QWidget *control);

    /// Whether a focus of this reason shows the ring, when `isShown` says whether it showed before.
    static bool shows(Qt::FocusReason reason, bool isShown);

    /// For dialogs and sheets: whatever the focus came by.
    void setAlwaysShown(bool isAlwaysShown);
    [[nodiscard]] QWidget *control() const { return control_; }

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    explicit FocusRing(QWidget *window);

    void take(QWidget *control);
    void follow();
    void followLater();
    [[nodiscard]] bool concerns(const QObject *watched) const;
    [[nodiscard]] QRect ringRect() const;

    QPointer<QWidget> control_;
    bool isByKeyboard_ = false;
    bool isAlwaysShown_ = false;
    bool isFollowingLater_ = false;
};
