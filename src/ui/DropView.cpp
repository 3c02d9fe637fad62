#include "ui/DropView.h"

#include "platform/DesktopSettings.h"
#include "ui/AddCallout.h"
#include "ui/ButtonBlue.h"
#include "ui/DropZone.h"
#include "ui/FocusRing.h"
#include "ui/ImageView.h"
#include "ui/TextLabel.h"
#include "ui/ViewLayouts.h"

#include <QGraphicsOpacityEffect>

namespace {

constexpr QPoint btnInfoPlace(8, -AddCallout::slideHeight);
constexpr int fadeMilliseconds = 150;

/// Not by hiding: that would take the keyboard away from the button.
void fadeOut(QWidget *widget, double part)
{
    if (part <= 0) {
        widget->setGraphicsEffect(nullptr);
        FocusRing::setAround(widget);
        return;
    }
    FocusRing::setNone(widget);
    auto *effect = qobject_cast<QGraphicsOpacityEffect *>(widget->graphicsEffect());
    if (effect == nullptr) {
        effect = new QGraphicsOpacityEffect(widget);
        widget->setGraphicsEffect(effect);
    }
    effect->setOpacity(1 - part);
}

} // namespace

DropView::DropView(QWidget *parent)
    : ContentView(parent), zone_(new DropZone(canvas())), imageView_(new ImageView(canvas())),
      heading_(addText(TextStyle::Heading, ColorRole::Text, Qt::AlignHCenter)),
      sentence_(addText(TextStyle::Body, ColorRole::TextSecondary, Qt::AlignHCenter)),
      chooseButton_(new ButtonBlue(tr("Choose Files and Folders…"), canvas())),
      hint_(addText(TextStyle::Small, ColorRole::TextSecondary, Qt::AlignHCenter)),
      methodText_(addText(TextStyle::Small, ColorRole::TextSecondary, Qt::AlignHCenter)),
      viewBtnInfo_(new AddCallout(this)),
      prefersReducedMotion_([] { return DesktopSettings::shared().prefersReducedMotion(); })
{
    fillIn();
    connect(chooseButton_, &ButtonBlue::clicked, this, &DropView::chooseClicked);
    connect(viewBtnInfo_, &AddCallout::clicked, this, &DropView::addClicked);
    fade_.setDuration(fadeMilliseconds);
    connect(&fade_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &drag) { showDrag(drag.toDouble()); });
    chainTabStops();
}

void DropView::fillIn()
{
    zone_->setAccessibleName(tr("Drop zone"));
    hint_->setText(tr("or press Ctrl+O"));
    chooseButton_->setAccessibleName(chooseButton_->text());
    showUsualWords();
    resetBtnInfo();
}

QWidget *DropView::viewBtnInfo() const
{
    return viewBtnInfo_;
}

QWidget *DropView::imgBtnInfo() const
{
    return viewBtnInfo_->arrowHead();
}

void DropView::resetBtnInfo()
{
    viewBtnInfo_->hide();
    viewBtnInfo_->move(btnInfoPlace);
}

void DropView::setMethodText(const QString &text)
{
    methodText_->setText(text);
}

void DropView::setPrefersReducedMotion(std::function<bool()> predicate)
{
    prefersReducedMotion_ = std::move(predicate);
}

void DropView::setDrag(const QString &heading, const QString &sentence)
{
    const bool isDrag = !heading.isEmpty();
    if (isDrag)
        showWords(heading, sentence);
    else
        showUsualWords();
    const double target = isDrag ? 1 : 0;
    fade_.stop();
    if (!isVisible() || prefersReducedMotion_()) {
        showDrag(target);
        return;
    }
    fade_.setStartValue(drag_);
    fade_.setEndValue(target);
    fade_.start();
}

void DropView::showUsualWords()
{
    showWords(tr("Let go of what you no longer need"),
              tr("Files are overwritten, then removed. Nothing happens until you press Start."));
}

void DropView::showWords(const QString &heading, const QString &sentence)
{
    heading_->setText(heading);
    sentence_->setText(sentence);
}

void DropView::showDrag(double drag)
{
    drag_ = drag;
    zone_->setDrag(drag);
    imageView_->setSpread(drag);
    fadeOut(chooseButton_, drag);
    fadeOut(hint_, drag);
    layOutAgain();
}

QWidget *DropView::firstFocus() const
{
    return chooseButton_;
}

std::vector<QWidget *> DropView::tabStops() const
{
    return {chooseButton_};
}

QAbstractButton *DropView::defaultButton() const
{
    return chooseButton_;
}

void DropView::layOut(const ViewRuler &ruler)
{
    const DropLayout layout = DropLayout::of(ruler, drag_);
    zone_->setGeometry(layout.zone);
    imageView_->setGeometry(layout.image);
    heading_->setGeometry(layout.heading);
    sentence_->setGeometry(layout.sentence);
    chooseButton_->setGeometry(layout.button);
    hint_->setGeometry(layout.hint);
    methodText_->setGeometry(layout.method);
}
