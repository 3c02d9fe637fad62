#pragma once

#include <QVariantAnimation>
#include <QWidget>

#include <functional>

/// What lies over a view while files are dragged over it: a veil, a frame, and a card that says
/// what letting go will do. As large as the window's body; the mouse does not notice it.
///
/// Thread: main
/// Units:  logical pixels
class DragVeil : public QWidget
{
    Q_OBJECT

  public:
    explicit DragVeil(QWidget *parent = nullptr);

    void setTexts(const QString &heading, const QString &sentence);
    /// Comes and goes softly.
    void setShown(bool isShown);
    [[nodiscard]] bool isShown() const { return isShown_; }
    /// Of the window's lower corners, which the frame follows.
    void setCornerRadius(int radius);
    /// Asks whether the desktop wants less motion; the desktop's own answer unless replaced.
    void setPrefersReducedMotion(std::function<bool()> predicate);

    /// The card's place in a body of this size; `card` is its size. Pure.
    static QRect cardRect(const QSize &body, const QSize &card);

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    void paintVeil(QPainter &painter) const;
    void paintFrame(QPainter &painter) const;
    void paintCard(QPainter &painter);
    void end();

    QString heading_;
    QString sentence_;
    QVariantAnimation animation_;
    std::function<bool()> prefersReducedMotion_;
    bool isShown_ = false;
    int cornerRadius_ = 0;
};
