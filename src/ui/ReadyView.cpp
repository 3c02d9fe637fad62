#include "ui/ReadyView.h"

#include "ui/ButtonRed.h"
#include "ui/CautionBand.h"
#include "ui/LinkButton.h"
#include "ui/MethodSelector.h"
#include "ui/PassStrip.h"
#include "ui/QueueTable.h"
#include "ui/TextLabel.h"
#include "ui/VTLLine.h"
#include "ui/ViewLayouts.h"

#include <QElapsedTimer>
#include <QKeyEvent>

namespace {

ReadyView::Clock runningClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return std::int64_t(timer.elapsed()); };
}

/// The other keys lead on to other elements.
bool pressesButton(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return true;
    default:
        return false;
    }
}

bool isPress(QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
        return pressesButton(static_cast<QKeyEvent &>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
        return true;
    default:
        return false;
    }
}

} // namespace

ReadyView::ReadyView(QWidget *parent)
    : ContentView(parent), countText_(addText(TextStyle::Headline, ColorRole::Text)),
      foldersText_(addText(TextStyle::Body, ColorRole::TextSecondary)),
      sizeText_(addText(TextStyle::Headline, ColorRole::Text, Qt::AlignRight)),
      workText_(addText(TextStyle::Body, ColorRole::TextSecondary, Qt::AlignRight)),
      table_(new QueueTable(QueueTable::Kind::Ready, canvas())),
      methodLabel_(addText(TextStyle::Small, ColorRole::TextSecondary)),
      passesLabel_(addText(TextStyle::Small, ColorRole::TextSecondary)),
      methodSelector_(new MethodSelector(canvas())), passStrip_(new PassStrip(canvas())),
      description_(addText(TextStyle::Description, ColorRole::TextSecondary)),
      cautionBand_(new CautionBand(canvas())),
      line_(new VTLLine(QStringLiteral("DefaultLine"), canvas())),
      warning_(addText(TextStyle::Body, ColorRole::TextSecondary)),
      startButton_(new ButtonRed(tr("Start"), canvas())), clock_(runningClock())
{
    fillIn();
    startButton_->installEventFilter(this);
    connect(startButton_, &ButtonRed::clicked, this, &ReadyView::start);
    chainTabStops();
}

void ReadyView::fillIn()
{
    methodLabel_->setText(tr("Wipe method"));
    warning_->setText(tr("Erasing cannot be stopped or undone once it has started."));
    description_->setWraps(true);
    table_->setEmptyText(tr("Nothing to erase was found."),
                         tr("Drop something else here, or press Ctrl+O."));
    table_->setAccessibleName(tr("Files to erase"));
    methodSelector_->setAccessibleName(tr("Wipe method"));
    passStrip_->setAccessibleName(tr("Passes"));
    startButton_->setAccessibleName(startButton_->text());
    startButton_->setAccessibleDescription(warning_->text());
    startButton_->setEnabled(false);
}

void ReadyView::setContents(const Contents &contents)
{
    countText_->setText(contents.count);
    foldersText_->setText(contents.folders);
    sizeText_->setText(contents.size);
    workText_->setText(contents.work);
    startButton_->setEnabled(contents.canStart);
}

void ReadyView::setDescription(const QString &description)
{
    description_->setText(description);
    methodSelector_->setAccessibleDescription(description);
}

void ReadyView::setPasses(std::int64_t method, const QString &label)
{
    passStrip_->setMethod(method);
    passesLabel_->setText(label);
}

void ReadyView::setCautions(const CautionTexts &cautions)
{
    cautionBand_->setCautions(cautions);
}

QWidget *ReadyView::firstFocus() const
{
    return table_;
}

std::vector<QWidget *> ReadyView::tabStops() const
{
    return {table_, methodSelector_, cautionBand_->moreLink(), startButton_};
}

void ReadyView::viewDidAppear()
{
    shownAt_ = clock_();
    isPressForgotten_ = true;
    startButton_->setDown(false);
}

void ReadyView::showEvent(QShowEvent *event)
{
    // While the view slides in, it is under guard, too. A window that comes back is nothing new.
    if (!event->spontaneous())
        viewDidAppear();
    ContentView::showEvent(event);
}

bool ReadyView::isGuarded() const
{
    return clock_() - shownAt_ < guardMilliseconds;
}

void ReadyView::start()
{
    if (startButton_->isEnabled() && !isGuarded())
        Q_EMIT startClicked();
}

bool ReadyView::eventFilter(QObject *watched, QEvent *event)
{
    if (isPress(*event)) {
        if (isGuarded())
            return true;
        isPressForgotten_ = false;
    }
    // A held button would go down again as soon as the pointer moves on it.
    if (isPressForgotten_ && event->type() == QEvent::MouseMove)
        return true;
    return ContentView::eventFilter(watched, event);
}

void ReadyView::layOut(const ViewRuler &ruler)
{
    const ReadyLayout layout = ReadyLayout::of(ruler);
    countText_->setGeometry(layout.count);
    foldersText_->setGeometry(layout.folders);
    sizeText_->setGeometry(layout.size);
    workText_->setGeometry(layout.work);
    table_->setGeometry(layout.table);
    methodLabel_->setGeometry(layout.methodLabel);
    passesLabel_->setGeometry(layout.passesLabel);
    methodSelector_->setGeometry(layout.selector);
    passStrip_->setGeometry(layout.passStrip);
    description_->setGeometry(layout.description);
    cautionBand_->setGeometry(layout.caution);
    line_->setGeometry(layout.line);
    warning_->setGeometry(layout.warning);
    startButton_->setGeometry(layout.start);
}
