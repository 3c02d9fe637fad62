#pragma once

#include <QStringList>
#include <QWidget>

#include <vector>

/// One choice of a few that stand side by side. What is shown as chosen is what setCurrentIndex()
/// said last: a click or an arrow key only says what the user wants.
///
/// Thread: main
/// Owns:   its segments
class SegmentedControl : public QWidget
{
    Q_OBJECT

  public:
    explicit SegmentedControl(QWidget *parent = nullptr);

    void setSegments(const QStringList &titles);
    /// Nothing is shown as chosen for a number outside the segments.
    void setCurrentIndex(int index);
    [[nodiscard]] int currentIndex() const { return currentIndex_; }
    [[nodiscard]] int count() const { return int(segments_.size()); }
    [[nodiscard]] QRect segmentRect(int index) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  Q_SIGNALS:
    void chosen(int index);

  protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

  private:
    class Segment;

    void placeSegments();
    void choose(int index);
    [[nodiscard]] int indexAfter(int key) const;

    std::vector<Segment *> segments_;
    int currentIndex_ = -1;
};
