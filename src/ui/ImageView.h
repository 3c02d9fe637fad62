#pragma once

#include <QWidget>

class QMimeData;

/// The drop view's drawing, and a place to drop files on. Other things that are dragged, pictures
/// too, are not taken.
///
/// Thread: main
class ImageView : public QWidget
{
    Q_OBJECT

  public:
    explicit ImageView(QWidget *parent = nullptr);

    /// Makes it accept dragged files; called once.
    void awakeFromNib();

    [[nodiscard]] Qt::DropAction draggingEntered(const QMimeData *dragged) const;
    [[nodiscard]] Qt::DropAction draggingUpdated(const QMimeData *dragged) const;
    /// Hands the dropped files on; true in every case.
    bool performDragOperation(const QMimeData *dragged);

    /// How far the drawing comes apart: 0 at rest, 1 under a drag.
    [[nodiscard]] double spread() const { return spread_; }
    void setSpread(double spread);

    [[nodiscard]] QSize sizeHint() const override;

  Q_SIGNALS:
    /// A drag of so many files is over the image; -1 when it has left or was dropped.
    void dragStateChanged(int items);

  protected:
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

  private:
    double spread_ = 0;
};
