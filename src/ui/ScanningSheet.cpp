#include "ui/ScanningSheet.h"

#include "platform/DesktopSettings.h"
#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"
#include "ui/PlainButton.h"
#include "ui/RunningBar.h"
#include "ui/TextLabel.h"
#include "ui/VTLView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int milliseconds = 150;
constexpr double radius = 8;

QSize sheetSize()
{
    return {Typography::scaled(400), Typography::scaled(168)};
}

/// The ground of "DefaultAlertView", its lower corners rounded.
class SheetGround : public VTLView
{
  public:
    explicit SheetGround(QWidget *parent) : VTLView(QStringLiteral("DefaultAlertView"), parent) {}

  protected:
    void drawRect(QPainter &painter, const QRect &) override
    {
        const std::optional<QColor> ground = colorCache().color(QLatin1String("bgcolor"));
        if (!ground)
            return;
        QPainterPath path;
        path.addRoundedRect(QRectF(rect()).adjusted(0, -radius, 0, 0), radius, radius);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(path, *ground);
    }
};

} // namespace

ScanningSheet::ScanningSheet(QWidget *parent)
    : QWidget(parent), sheet_(new SheetGround(this)),
      prefersReducedMotion_([] { return DesktopSettings::shared().prefersReducedMotion(); })
{
    makeSheet();
    animation_.setStartValue(0.0);
    animation_.setEndValue(1.0);
    animation_.setDuration(milliseconds);
    animation_.setEasingCurve(QEasingCurve::OutQuad);
    connect(&animation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &progress) { place(progress.toDouble()); });
    connect(&animation_, &QVariantAnimation::finished, this, &ScanningSheet::end);
    connect(stop_, &QAbstractButton::clicked, this, &ScanningSheet::stopClicked);
    hide();
}

void ScanningSheet::makeSheet()
{
    addLabel(TextStyle::DialogTitle, ColorRole::Text, {24, 20, 352, 0})
        ->setText(tr("Looking through your folders"));
    addLabel(TextStyle::Small, ColorRole::TextSecondary, {24, 50, 168, 0})
        ->setText(tr("Files found"));
    addLabel(TextStyle::Small, ColorRole::TextSecondary, {200, 50, 176, 0})->setText(tr("Size"));
    files_ = addLabel(TextStyle::Heading, ColorRole::Text, {24, 64, 168, 0});
    files_->setAccessibleName(tr("Found files"));
    bytes_ = addLabel(TextStyle::Heading, ColorRole::Text, {200, 64, 176, 0});
    parts_.push_back({new RunningBar(sheet_), {24, 100, 352, 4}});
    addLabel(TextStyle::Small, ColorRole::TextSecondary, {24, 128, 248, 0})
        ->setText(tr("Stopping keeps what was found."));
    stop_ = new PlainButton(tr("Stop"), sheet_);
    stop_->setAccessibleName(tr("Stop"));
    parts_.push_back({stop_, {280, 120, 96, 32}});
    layOut();
}

TextLabel *ScanningSheet::addLabel(TextStyle style, ColorRole role, const QRect &place)
{
    auto *label = new TextLabel(style, role, sheet_);
    parts_.push_back({label, place});
    return label;
}

void ScanningSheet::layOut()
{
    for (const auto &[part, at] : parts_) {
        const auto *label = qobject_cast<TextLabel *>(part);
        part->setGeometry(
            Typography::scaled(at.x()), Typography::scaled(at.y()), Typography::scaled(at.width()),
            label ? Typography::lineHeight(label->style()) : Typography::scaled(at.height()));
    }
    place(progress_);
}

void ScanningSheet::setFound(const QString &files, const QString &bytes)
{
    files_->setText(files);
    files_->setAccessibleDescription(files);
    bytes_->setText(bytes);
}

void ScanningSheet::setPrefersReducedMotion(std::function<bool()> predicate)
{
    prefersReducedMotion_ = std::move(predicate);
}

void ScanningSheet::open()
{
    if (isOpen_)
        return;
    isOpen_ = true;
    if (!isShown_)
        focusBefore_ = window()->focusWidget();
    isShown_ = true;
    show();
    takeFocus();
    slide(true);
    Q_EMIT opened();
}

void ScanningSheet::close()
{
    if (!isOpen_)
        return;
    isOpen_ = false;
    slide(false);
}

void ScanningSheet::slide(bool in)
{
    animation_.setDirection(in ? QVariantAnimation::Forward : QVariantAnimation::Backward);
    if (!prefersReducedMotion_()) {
        if (animation_.state() != QVariantAnimation::Running)
            animation_.start();
        return;
    }
    animation_.stop();
    place(in ? 1 : 0);
    QMetaObject::invokeMethod(this, &ScanningSheet::end, Qt::QueuedConnection);
}

void ScanningSheet::place(double progress)
{
    progress_ = progress;
    sheet_->setGeometry(sheetRect(width(), sheetSize(), progress));
    update();
}

/// The way in or out is done, if it was not turned round since.
void ScanningSheet::end()
{
    if (isOpen_ || !isShown_)
        return;
    isShown_ = false;
    giveFocusBack();
    hide();
    Q_EMIT closed();
}

void ScanningSheet::takeFocus()
{
    FocusRing::install(window())->setAlwaysShown(true);
    stop_->setFocus(Qt::OtherFocusReason);
}

void ScanningSheet::giveFocusBack()
{
    FocusRing::install(window())->setAlwaysShown(false);
    if (focusBefore_ && focusBefore_->isVisible())
        focusBefore_->setFocus(Qt::OtherFocusReason);
    else if (QWidget *focused = window()->focusWidget())
        focused->clearFocus();
}

QRect ScanningSheet::sheetRect(int width, const QSize &sheet, double progress)
{
    return {QPoint((width - sheet.width()) / 2, qRound(sheet.height() * (progress - 1))), sheet};
}

bool ScanningSheet::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        event->accept();
        return true;
    case QEvent::FontChange:
    case QEvent::ApplicationFontChange:
        layOut();
        return QWidget::event(event);
    default:
        return QWidget::event(event);
    }
}

void ScanningSheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && isOpen_)
        stop_->click();
    else
        QWidget::keyPressEvent(event);
}

void ScanningSheet::resizeEvent(QResizeEvent *)
{
    place(progress_);
}

void ScanningSheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(progress_);
    painter.fillRect(rect(), DesignColors::color(ColorRole::Scrim));
    ControlPaint::cardShadow(painter, sheet_->geometry());
}
