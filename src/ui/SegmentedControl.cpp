#include "ui/SegmentedControl.h"

#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/Typography.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int inset = 2;
constexpr int segmentWidth = 86;
constexpr int segmentHeight = 24;
constexpr double segmentRadius = 3;

} // namespace

/// A segment is a radio button for screen readers. Its click changes nothing by itself.
class SegmentedControl::Segment : public QAbstractButton
{
  public:
    Segment(const QString &title, QWidget *parent) : QAbstractButton(parent)
    {
        setText(title);
        setCheckable(true);
        setAutoExclusive(true);
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
    }

    void show(bool isChosen)
    {
        // With autoExclusive the last checked one could not be unchecked.
        setAutoExclusive(false);
        setChecked(isChosen);
        setAutoExclusive(true);
    }

  protected:
    void nextCheckState() override {}
    void paintEvent(QPaintEvent *event) override;

  private:
    [[nodiscard]] QColor textColor() const
    {
        if (!isEnabled())
            return DesignColors::color(ColorRole::TextDisabled);
        const bool isStrong = isChecked() || underMouse();
        return DesignColors::color(isStrong ? ColorRole::Text : ColorRole::TextSecondary);
    }
};

void SegmentedControl::Segment::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(Typography::font(isChecked() ? TextStyle::BodyStrong : TextStyle::BodyMedium));
    painter.setPen(textColor());
    ControlPaint::text(painter, rect(), text(), Qt::AlignHCenter);
}

SegmentedControl::SegmentedControl(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    FocusRing::setRadius(this, ControlPaint::radius);
}

void SegmentedControl::setSegments(const QStringList &titles)
{
    qDeleteAll(segments_);
    segments_.clear();
    for (int i = 0; i < titles.size(); ++i) {
        auto *segment = new Segment(titles.at(i), this);
        connect(segment, &QAbstractButton::clicked, this, [this, i] { choose(i); });
        segment->setVisible(true);
        segments_.push_back(segment);
    }
    setCurrentIndex(currentIndex_);
    placeSegments();
    updateGeometry();
}

void SegmentedControl::setCurrentIndex(int index)
{
    currentIndex_ = index;
    for (int i = 0; i < count(); ++i)
        segments_[std::size_t(i)]->show(i == index);
    update();
}

QRect SegmentedControl::segmentRect(int index) const
{
    const QRect inner = rect().adjusted(inset, inset, -inset, -inset);
    const int left = inner.width() * index / std::max(count(), 1);
    const int right = inner.width() * (index + 1) / std::max(count(), 1);
    return {inner.left() + left, inner.top(), right - left, inner.height()};
}

QSize SegmentedControl::sizeHint() const
{
    return {count() * Typography::scaled(segmentWidth) + 2 * inset,
            Typography::scaled(segmentHeight) + 2 * inset};
}

void SegmentedControl::placeSegments()
{
    for (int i = 0; i < count(); ++i)
        segments_[std::size_t(i)]->setGeometry(segmentRect(i));
}

void SegmentedControl::resizeEvent(QResizeEvent *)
{
    placeSegments();
}

void SegmentedControl::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        update();
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isEnabled())
        ControlPaint::fill(painter, rect(), DesignColors::color(ColorRole::SegmentBackground));
    if (currentIndex_ < 0 || currentIndex_ >= count())
        return;
    const QRectF chosen = segmentRect(currentIndex_);
    QColor ground;
    if (isEnabled()) {
        const bool isDark = InterfaceColorStyle::isDarkMode();
        ControlPaint::shadow(painter, chosen,
                             isDark ? QColor(0, 0, 0, 102) : QColor(16, 24, 32, 51), 2.3, 1);
        ground = DesignColors::color(ColorRole::SegmentOn);
    }
    ControlPaint::box(painter, chosen, ground, DesignColors::color(ColorRole::Edge), segmentRadius);
}

int SegmentedControl::indexAfter(int key) const
{
    const int last = count() - 1;
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return std::clamp(currentIndex_ - 1, 0, last);
    case Qt::Key_Right:
    case Qt::Key_Down:
        return std::clamp(currentIndex_ + 1, 0, last);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    default:
        return -1;
    }
}

void SegmentedControl::keyPressEvent(QKeyEvent *event)
{
    const int index = segments_.empty() ? -1 : indexAfter(event->key());
    if (index < 0)
        QWidget::keyPressEvent(event);
    else if (index != currentIndex_)
        choose(index);
}

void SegmentedControl::choose(int index)
{
    Q_EMIT chosen(index);
}
