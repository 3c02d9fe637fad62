#pragma once

#include <QWidget>

#include <cstdint>

/// The picture of a run as a whole, chosen by the run's status; with a badge in its lower right
/// corner where something needs attention. Decoration: what it says stands beside it as text.
///
/// Thread: main
class StatusPicture : public QWidget
{
    Q_OBJECT

  public:
    explicit StatusPicture(QWidget *parent = nullptr);

    void setRunStatus(std::int64_t runStatus);
    [[nodiscard]] std::int64_t runStatus() const { return runStatus_; }

    /// Where the badge stands, in the widget's own coordinates; an empty rectangle for none. The
    /// picture stays clear of it, and stands in the upper left of what is left of the widget.
    void setBadge(const QRect &picture, const QRect &badge);
    [[nodiscard]] bool hasBadge() const { return !badge_.isEmpty(); }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    std::int64_t runStatus_ = 0;
    QRect picture_;
    QRect badge_;
};
