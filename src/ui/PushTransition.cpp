#include "ui/PushTransition.h"

#include "platform/DesktopSettings.h"

#include <QPainter>
#include <QWidget>

namespace {

class LeavingPicture : public QWidget
{
  public:
    LeavingPicture(const QPixmap &picture, QWidget *parent) : QWidget(parent), picture_(picture)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(parent->size());
    }

  protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).drawPixmap(0, 0, picture_); }

  private:
    QPixmap picture_;
};

} // namespace

PushTransition::PushTransition(QObject *parent)
    : QObject(parent),
      prefersReducedMotion_([] { return DesktopSettings::shared().prefersReducedMotion(); })
{
    animation_.setStartValue(0.0);
    animation_.setEndValue(1.0);
    animation_.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&animation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &progress) { place(progress.toDouble()); });
    connect(&animation_, &QVariantAnimation::finished, this, &PushTransition::stop);
}

PushTransition::~PushTransition()
{
    delete picture_;
}

void PushTransition::setPrefersReducedMotion(std::function<bool()> predicate)
{
    prefersReducedMotion_ = std::move(predicate);
}

void PushTransition::run(QWidget *holder, const QPixmap &leaving, QWidget *entering)
{
    interrupt();
    isRunning_ = true;
    holder_ = holder;
    entering_ = entering;
    QMetaObject::invokeMethod(this, &PushTransition::didStart, Qt::QueuedConnection);
    if (!prefersReducedMotion_() && duration_ > 0) {
        slide(holder, leaving);
        return;
    }
    const auto stopIfStillTheSame = [this, generation = generation_] {
        if (generation == generation_)
            stop();
    };
    QMetaObject::invokeMethod(this, stopIfStillTheSame, Qt::QueuedConnection);
}

void PushTransition::interrupt()
{
    ++generation_;
    if (!isRunning_)
        return;
    animation_.stop();
    delete picture_;
    isRunning_ = false;
    const auto tell = [this] { Q_EMIT didStop(false); };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void PushTransition::slide(QWidget *holder, const QPixmap &leaving)
{
    if (!leaving.isNull()) {
        picture_ = new LeavingPicture(leaving, holder);
        picture_->show();
    }
    animation_.setDuration(int(duration_ * 1000));
    animation_.start();
    place(0);
}

void PushTransition::place(double progress)
{
    if (!holder_ || !entering_)
        return;
    const QPoint entry = entryOffset(subtype_, holder_->size(), progress);
    entering_->move(entry);
    if (picture_)
        picture_->move(entry - entryOffset(subtype_, holder_->size(), 0));
}

void PushTransition::stop()
{
    delete picture_;
    if (entering_)
        entering_->move(0, 0);
    isRunning_ = false;
    Q_EMIT didStop(true);
}

QPoint PushTransition::entryOffset(Subtype subtype, const QSize &holder, double progress)
{
    const int across = qRound(holder.width() * (1 - progress));
    const int down = qRound(holder.height() * (1 - progress));
    switch (subtype) {
    case Subtype::FromTop:
        return {0, -down};
    case Subtype::FromBottom:
        return {0, down};
    case Subtype::FromLeft:
        return {-across, 0};
    case Subtype::FromRight:
        return {across, 0};
    }
    return {};
}
