#pragma once

#include "ui/TextLabel.h"

/// A number with the small label that says what it counts above it. To a screen reader it is one
/// thing, with the label as name.
///
/// Thread: main
class Figure : public QWidget
{
    Q_OBJECT

  public:
    Figure(const QString &label, Qt::Alignment alignment, QWidget *parent);

    void setValue(const QString &value);
    [[nodiscard]] QString value() const { return value_->text(); }
    [[nodiscard]] QString label() const { return label_->text(); }
    /// A value that is bad news is shown as such.
    void setIsBad(bool isBad);
    /// Where label and value begin, in points of the design.
    void setTops(double label, double value);

    [[nodiscard]] TextLabel *labelText() const { return label_; }
    [[nodiscard]] TextLabel *valueText() const { return value_; }

  protected:
    void resizeEvent(QResizeEvent *event) override;

  private:
    TextLabel *label_;
    TextLabel *value_;
    double labelTop_ = 0;
    double valueTop_ = 16;
};
