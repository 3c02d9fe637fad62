#include "ui/DragVeil.h"

#include "platform/DesktopSettings.h"
#include "ui/ColorProperties.h"
#include "ui/ControlPaint.h"
#include "ui/DesignColors.h"
#include "ui/Typography.h"
#include "ui/WindowGeometry.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int milliseconds = 150;
constexpr double veilOpacity = 0.55;
constexpr double cardRadius = 8;
constexpr int padding = 16;

/// The window's ground, as it looks under the header of a window of this size.
std::optional<QLinearGradient> windowGround(int bodyHeight)
{
    const QString style = QStringLiteral("DefaultWindowView");
    const auto start = ColorProperties::current(style, QLatin1String("bggradstart"));
    const auto end = ColorProperties::current(style, QLatin1String("bggradend"));
    if (!start || !end)
        return std::nullopt;
    QLinearGradient ground(0, -WindowGeometry::headerHeight, 0, bodyHeight);
    ground.setColorAt(0, *start);
    ground.setColorAt(1, *end);
    return ground;
}

void paintLine(QPainter &painter, const QRect &line, TextStyle style, ColorRole role,
               const QString &text)
{
    const QFont font = Typography::font(style);
    painter.setFont(font);
    painter.setPen(DesignColors::color(role));
    painter.drawText(line, int(Qt::AlignCenter) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, line.width()));
}

} // namespace

DragVeil::DragVeil(QWidget *parent)
    : QWidget(parent),
      prefersReducedMotion_([] { return DesktopSettings::shared().prefersReducedMotion(); })
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    animation_.setStartValue(0.0);
    animation_.setEndValue(1.0);
    animation_.setDuration(milliseconds);
    connect(&animation_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&animation_, &QVariantAnimation::finished, this, &DragVeil::end);
    hide();
}

void DragVeil::setTexts(const QString &heading, const QString &sentence)
{
    heading_ = heading;
    sentence_ = sentence;
    setAccessibleDescription(heading + QLatin1Char(' ') + sentence);
    update();
}

void DragVeil::setShown(bool isShown)
{
    if (isShown_ == isShown)
        return;
    isShown_ = isShown;
    setVisible(isShown || isVisible());
    animation_.setDirection(isShown ? QVariantAnimation::Forward : QVariantAnimation::Backward);
    if (!prefersReducedMotion_()) {
        if (animation_.state() != QVariantAnimation::Running)
            animation_.start();
        return;
    }
    animation_.stop();
    animation_.setCurrentTime(isShown ? milliseconds : 0);
    end();
}

void DragVeil::end()
{
    if (!isShown_)
        hide();
}

void DragVeil::setCornerRadius(int radius)
{
    cornerRadius_ = radius;
    update();
}

void DragVeil::setPrefersReducedMotion(std::function<bool()> predicate)
{
    prefersReducedMotion_ = std::move(predicate);
}

QRect DragVeil::cardRect(const QSize &body, const QSize &card)
{
    // 16 above the middle, as the eye finds it.
    return {QPoint((body.width() - card.width()) / 2, (body.height() - card.height()) / 2 - 16),
            card};
}

void DragVeil::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(animation_.currentValue().toDouble());
    paintVeil(painter);
    paintFrame(painter);
    paintCard(painter);
}

void DragVeil::paintVeil(QPainter &painter) const
{
    const double opacity = painter.opacity();
    if (const std::optional<QLinearGradient> ground = windowGround(height())) {
        painter.setOpacity(opacity * veilOpacity);
        painter.fillRect(rect(), *ground);
        painter.setOpacity(opacity);
    }
    painter.fillRect(rect(), DesignColors::color(ColorRole::Tint));
}

void DragVeil::paintFrame(QPainter &painter) const
{
    constexpr int thickness = 2;
    // The upper corners lie under the header, and stay square.
    const auto shape = [this](int inset) {
        const double radius = std::max(cornerRadius_ - inset, 0);
        QPainterPath round;
        round.addRoundedRect(QRectF(rect()).adjusted(inset, -2 * radius, -inset, -inset), radius,
                             radius);
        QPainterPath below;
        below.addRect(rect().adjusted(0, inset, 0, 0));
        return round & below;
    };
    painter.fillPath(shape(0) - shape(thickness), DesignColors::color(ColorRole::Focus));
}

void DragVeil::paintCard(QPainter &painter)
{
    const QRect card = cardRect(size(), {Typography::scaled(320), Typography::scaled(88)});
    ControlPaint::cardShadow(painter, card);
    QPainterPath path;
    path.addRoundedRect(card, cardRadius, cardRadius);
    const auto ground =
        ColorProperties::current(QStringLiteral("DefaultAlertView"), QLatin1String("bg"));
    painter.fillPath(path, ground.value_or(DesignColors::color(ColorRole::Menu)));
    const QRect line = card.adjusted(padding, Typography::scaled(16), -padding, 0);
    const QRect heading(line.topLeft(),
                        QSize(line.width(), Typography::lineHeight(TextStyle::Heading)));
    paintLine(painter, heading, TextStyle::Heading, ColorRole::Text, heading_);
    const QRect sentence(line.left(), card.top() + Typography::scaled(46), line.width(),
                         Typography::lineHeight(TextStyle::Body));
    paintLine(painter, sentence, TextStyle::Body, ColorRole::TextSecondary, sentence_);
}
