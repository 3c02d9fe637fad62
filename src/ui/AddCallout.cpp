#include "ui/AddCallout.h"

#include "ui/TextLabel.h"
#include "ui/VTLLine.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

namespace {

constexpr int usualWidth = 304;
constexpr int textLeft = 36;
constexpr double textMiddle = 17;

class ArrowHead : public QWidget
{
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(DesignColors::color(ColorRole::TextSecondary));
        const QRectF all(rect());
        painter.drawPolygon(
            QPolygonF({QPointF(all.center().x(), all.top()), all.bottomRight(), all.bottomLeft()}));
    }
};

VTLLine *line(const QRect &geometry, QWidget *parent)
{
    auto *line = new VTLLine(QStringLiteral("BtnInfoLine"), parent);
    line->setGeometry(geometry);
    return line;
}

} // namespace

AddCallout::AddCallout(QWidget *parent)
    : QWidget(parent), arrowHead_(new ArrowHead(this)),
      text_(new TextLabel(TextStyle::Small, ColorRole::Text, this))
{
    text_->setText(tr("Or add files and folders here"));
    arrowHead_->setGeometry(10, 3, 9, 6);
    line(QRect(14, 9, 1, 8), this);
    line(QRect(14, 17, 14, 1), this);
    layOut();
}

void AddCallout::layOut()
{
    const int height = Typography::lineHeight(TextStyle::Small);
    const int width = Typography::scaled(usualWidth - textLeft);
    text_->setGeometry(textLeft, int(textMiddle - height / 2.0), width, height);
    resize(textLeft + width, slideHeight);
}

bool AddCallout::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        layOut();
    return QWidget::event(event);
}

void AddCallout::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
}

void AddCallout::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}
