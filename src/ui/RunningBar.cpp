#include "ui/RunningBar.h"

#include "platform/DesktopSettings.h"
#include "ui/DesignColors.h"
#include "ui/Typography.h"

#include <QPainter>
#include <QVariantAnimation>

namespace {

constexpr int turnMilliseconds = 1200;
constexpr int blockLength = 96;

} // namespace

RunningBar::RunningBar(QWidget *parent) : QWidget(parent), animation_(new QVariantAnimation(this))
{
    animation_->setStartValue(0.0);
    animation_->setEndValue(1.0);
    animation_->setDuration(turnMilliseconds);
    animation_->setLoopCount(-1);
    DesktopSettings &desktop = DesktopSettings::shared();
    connect(&desktop, &DesktopSettings::changed, this,
            [this, &desktop] { setStill(desktop.prefersReducedMotion()); });
    isStill_ = desktop.prefersReducedMotion();
    connect(animation_, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

QRectF RunningBar::block(double turn, const QSizeF &size, double blockWidth)
{
    return {-blockWidth + turn * (size.width() + blockWidth), 0, blockWidth, size.height()};
}

void RunningBar::setStill(bool isStill)
{
    isStill_ = isStill;
    runOrRest();
    update();
}

bool RunningBar::isRunning() const
{
    return animation_->state() == QAbstractAnimation::Running;
}

void RunningBar::runOrRest()
{
    if (isVisible() && !isStill_) {
        if (!isRunning())
            animation_->start();
    } else {
        animation_->stop();
    }
}

QSize RunningBar::sizeHint() const
{
    return {Typography::scaled(352), Typography::scaled(4)};
}

void RunningBar::showEvent(QShowEvent *)
{
    runOrRest();
}

void RunningBar::hideEvent(QHideEvent *)
{
    runOrRest();
}

void RunningBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor blue = DesignColors::color(ColorRole::Blue);
    if (isStill_) {
        painter.fillRect(rect(), blue);
        return;
    }
    painter.fillRect(rect(), DesignColors::color(ColorRole::Track));
    const double turn = animation_->currentValue().toDouble();
    painter.fillRect(block(turn, size(), Typography::scaled(blockLength)), blue);
}
