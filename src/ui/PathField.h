#pragma once

#include <QLineEdit>

/// A field for a path, on the ground of a card.
///
/// Thread: main
class PathField : public QLineEdit
{
    Q_OBJECT

  public:
    explicit PathField(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
