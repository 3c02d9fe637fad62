#include "ui/Figure.h"

Figure::Figure(const QString &label, Qt::Alignment alignment, QWidget *parent)
    : QWidget(parent), label_(new TextLabel(TextStyle::Small, ColorRole::TextSecondary, this)),
      value_(new TextLabel(TextStyle::Value, ColorRole::Text, this))
{
    label_->setText(label);
    label_->setAlignment(alignment);
    value_->setAlignment(alignment);
    value_->setAccessibleName(label);
}

void Figure::setValue(const QString &value)
{
    if (value_->text() == value)
        return;
    value_->setText(value);
    value_->setAccessibleDescription(value);
}

void Figure::setIsBad(bool isBad)
{
    const ColorRole role = isBad ? ColorRole::Bad : ColorRole::Text;
    if (value_->role() != role)
        value_->setRole(role);
}

void Figure::setTops(double label, double value)
{
    labelTop_ = label;
    valueTop_ = value;
}

void Figure::resizeEvent(QResizeEvent *)
{
    label_->setGeometry(0, Typography::scaled(labelTop_), width(),
                        Typography::lineHeight(TextStyle::Small));
    value_->setGeometry(0, Typography::scaled(valueTop_), width(),
                        Typography::lineHeight(TextStyle::Value));
}
