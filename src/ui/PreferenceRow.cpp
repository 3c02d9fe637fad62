#include "ui/PreferenceRow.h"

#include "ui/VTLLine.h"
#include "ui/ViewLayouts.h"

#include <QAbstractButton>
#include <QMouseEvent>

namespace {

constexpr int lineInset = 16;

} // namespace

PreferenceRow::PreferenceRow(const QString &label, QWidget *parent)
    : QWidget(parent), label_(new TextLabel(TextStyle::Body, ColorRole::Text, this)),
      remark_(new TextLabel(TextStyle::Body, ColorRole::TextSecondary, this))
{
    label_->setText(label);
}

void PreferenceRow::adopt(QWidget *widget)
{
    widget->setParent(this);
    widget->show();
    if (widget->accessibleName().isEmpty())
        widget->setAccessibleName(label_->text());
}

void PreferenceRow::setControl(QWidget *control, QSizeF size)
{
    control_ = control;
    controlSize_ = size;
    adopt(control);
}

void PreferenceRow::setField(QWidget *field)
{
    field_ = field;
    adopt(field);
}

void PreferenceRow::setRemark(const QString &remark)
{
    remark_->setText(remark);
    if (control_ != nullptr)
        control_->setAccessibleDescription(remark);
    layOut();
}

void PreferenceRow::layOut()
{
    const ViewRuler ruler(size(), Typography::factor());
    const QSize control(ruler.length(controlSize_.width()), ruler.length(controlSize_.height()));
    const PreferenceRowLayout layout = PreferenceRowLayout::of(
        ruler, {label_->sizeHint().width(), remark_->sizeHint().width()}, control);
    label_->setGeometry(layout.label);
    remark_->setGeometry(layout.remark);
    if (control_ != nullptr)
        control_->setGeometry(layout.control);
    if (field_ != nullptr)
        field_->setGeometry(layout.field);
}

bool PreferenceRow::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        layOut();
    return isHandled;
}

void PreferenceRow::resizeEvent(QResizeEvent *)
{
    layOut();
}

void PreferenceRow::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
}

void PreferenceRow::mouseReleaseEvent(QMouseEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(control_);
    const bool isOnLabel = label_->geometry().contains(event->position().toPoint());
    if (event->button() == Qt::LeftButton && isOnLabel && button != nullptr &&
        button->isCheckable())
        button->click();
}

PreferenceRow *PreferenceGroup::addRow(const QString &label)
{
    if (!rows_.empty())
        lines_.push_back(new VTLLine(QStringLiteral("DefaultLine"), this));
    rows_.push_back(new PreferenceRow(label, this));
    return rows_.back();
}

void PreferenceGroup::resizeEvent(QResizeEvent *)
{
    const auto top = [](std::size_t row) {
        return Typography::scaled(PreferenceRow::rowHeight * double(row));
    };
    for (std::size_t row = 0; row < rows_.size(); ++row)
        rows_[row]->setGeometry(0, top(row), width(), top(row + 1) - top(row));
    const int inset = Typography::scaled(lineInset);
    for (std::size_t line = 0; line < lines_.size(); ++line)
        lines_[line]->setGeometry(inset, top(line + 1), width() - 2 * inset, 1);
}
