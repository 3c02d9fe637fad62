#include "ui/ErasingView.h"

#include "ui/Figure.h"
#include "ui/HorizonProgressIndicator.h"
#include "ui/PassStrip.h"
#include "ui/ProgressTrack.h"
#include "ui/QueueTable.h"
#include "ui/StatusPicture.h"
#include "ui/ViewLayouts.h"

ErasingView::ErasingView(QWidget *parent)
    : ContentView(parent), statusPicture_(new StatusPicture(canvas())),
      percent_(addText(TextStyle::Headline, ColorRole::Text)),
      amount_(addText(TextStyle::Body, ColorRole::TextSecondary)),
      remaining_(addText(TextStyle::Headline, ColorRole::Text, Qt::AlignRight)),
      remainingLabel_(addText(TextStyle::Body, ColorRole::TextSecondary, Qt::AlignRight)),
      progress_(new ProgressTrack(canvas())),
      figures_{new Figure(tr("Throughput"), Qt::AlignLeft, canvas()),
               new Figure(tr("Elapsed"), Qt::AlignLeft, canvas()),
               new Figure(tr("Wiped"), Qt::AlignLeft, canvas()),
               new Figure(tr("Failed"), Qt::AlignLeft, canvas())},
      table_(new QueueTable(QueueTable::Kind::Erasing, canvas())),
      methodText_(addText(TextStyle::Small, ColorRole::TextSecondary)),
      passStrip_(new PassStrip(canvas())),
      passText_(addText(TextStyle::Small, ColorRole::TextSecondary, Qt::AlignRight))
{
    fillIn();
    chainTabStops();
}

void ErasingView::fillIn()
{
    statusPicture_->setRunStatus(Figures().runStatus);
    remaining_->setAccessibleName(tr("Remaining"));
    remainingLabel_->setText(tr("remaining"));
    progress_->indicator()->setAccessibleName(tr("Overall progress"));
    table_->setAccessibleName(tr("Files to erase"));
    passStrip_->setAlignment(Qt::AlignRight);
    passStrip_->setAccessibleName(tr("Passes"));
}

void ErasingView::setFigures(const Figures &figures)
{
    statusPicture_->setRunStatus(figures.runStatus);
    percent_->setText(figures.percent);
    amount_->setText(figures.amount);
    remaining_->setText(figures.remaining);
    remaining_->setAccessibleDescription(figures.remaining);
    progress_->indicator()->setMaxValue(figures.maximum);
    progress_->indicator()->setDoubleValue(figures.value);
    throughput()->setValue(figures.throughput);
    elapsed()->setValue(figures.elapsed);
    wiped()->setValue(figures.wiped);
    failed()->setValue(figures.failed);
    failed()->setIsBad(figures.hasFailed);
}

void ErasingView::setMethod(const QString &name)
{
    methodText_->setText(name);
    layOutAgain();
}

void ErasingView::setPass(std::int64_t method, std::optional<int> pass, const QString &text)
{
    passStrip_->setMethod(method);
    passStrip_->setCurrentPass(pass);
    passText_->setText(text);
}

QWidget *ErasingView::firstFocus() const
{
    return table_;
}

std::vector<QWidget *> ErasingView::tabStops() const
{
    return {table_};
}

void ErasingView::layOut(const ViewRuler &ruler)
{
    const ErasingLayout layout = ErasingLayout::of(ruler, methodText_->sizeHint().width());
    statusPicture_->setGeometry(layout.icon);
    percent_->setGeometry(layout.percent);
    amount_->setGeometry(layout.amount);
    remaining_->setGeometry(layout.remaining);
    remainingLabel_->setGeometry(layout.remainingLabel);
    progress_->setGeometry(layout.progress);
    for (std::size_t index = 0; index < figures_.size(); ++index)
        figures_[index]->setGeometry(layout.figures[index]);
    table_->setGeometry(layout.table);
    methodText_->setGeometry(layout.method);
    passStrip_->setGeometry(layout.passStrip);
    passText_->setGeometry(layout.pass);
}
