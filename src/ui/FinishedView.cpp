#include "ui/FinishedView.h"

#include "ui/ButtonBlue.h"
#include "ui/Card.h"
#include "ui/CautionBand.h"
#include "ui/Figure.h"
#include "ui/PlainButton.h"
#include "ui/StatusPicture.h"
#include "ui/VTLLine.h"
#include "ui/ViewLayouts.h"

FinishedView::FinishedView(QWidget *parent)
    : ContentView(parent), statusPicture_(new StatusPicture(canvas())),
      result_(addText(TextStyle::Result, ColorRole::Text, Qt::AlignHCenter)),
      caption_(addText(TextStyle::Body, ColorRole::TextSecondary, Qt::AlignHCenter)),
      card_(new Card(canvas())), figures_{new Figure(tr("Method"), Qt::AlignHCenter, card_),
                                          new Figure(tr("Elapsed"), Qt::AlignHCenter, card_),
                                          new Figure(tr("Failed"), Qt::AlignHCenter, card_)},
      lines_{new VTLLine(QStringLiteral("DefaultLine"), card_),
             new VTLLine(QStringLiteral("DefaultLine"), card_)},
      failureBand_(new CautionBand(canvas())),
      errorLogButton_(new PlainButton(tr("Show Error Log"), failureBand_)),
      eraseMoreButton_(new ButtonBlue(tr("Erase More Files"), canvas())),
      note_(addText(TextStyle::Small, ColorRole::TextSecondary, Qt::AlignHCenter))
{
    fillIn();
    connect(errorLogButton_, &PlainButton::clicked, this, &FinishedView::showErrorLogClicked);
    connect(eraseMoreButton_, &ButtonBlue::clicked, this, &FinishedView::eraseMoreClicked);
    chainTabStops();
}

void FinishedView::fillIn()
{
    caption_->setText(tr("overwritten and removed"));
    for (Figure *figure : figures_)
        figure->setTops(12, 30);
    errorLogButton_->setAccessibleName(errorLogButton_->text());
    eraseMoreButton_->setAccessibleName(eraseMoreButton_->text());
    setSummary({});
}

void FinishedView::setSummary(const Summary &summary)
{
    hasFailures_ = summary.hasFailures;
    statusPicture_->setRunStatus(summary.runStatus);
    result_->setText(summary.result);
    method()->setValue(summary.method);
    elapsed()->setValue(summary.elapsed);
    failed()->setValue(summary.failed);
    failed()->setIsBad(summary.hasFailures);
    failureBand_->setVisible(summary.hasFailures);
    failureBand_->setCautions(summary.hasFailures ? CautionTexts{{summary.failureText}}
                                                  : CautionTexts());
    errorLogButton_->setVisible(summary.showsErrorButton);
    const QString folders = summary.wasStopped ? tr("No folders were removed.")
                                               : tr("Folders that became empty were removed.");
    note_->setText(summary.logText.isEmpty() ? folders
                                             : folders + QLatin1Char(' ') + summary.logText);
    layOutAgain();
}

QWidget *FinishedView::firstFocus() const
{
    return defaultButton();
}

std::vector<QWidget *> FinishedView::tabStops() const
{
    return {errorLogButton_, eraseMoreButton_};
}

QAbstractButton *FinishedView::defaultButton() const
{
    if (hasFailures_ && !errorLogButton_->isHidden())
        return errorLogButton_;
    return eraseMoreButton_;
}

void FinishedView::layOut(const ViewRuler &ruler)
{
    const FinishedLayout layout = FinishedLayout::of(ruler, hasFailures_);
    placePicture(layout);
    result_->setGeometry(layout.result);
    caption_->setGeometry(layout.caption);
    placeCard(layout);
    placeBand(layout);
    eraseMoreButton_->setGeometry(layout.button);
    note_->setGeometry(layout.note);
}

void FinishedView::placePicture(const FinishedLayout &layout)
{
    const QRect all = hasFailures_ ? layout.picture.united(layout.badge) : layout.picture;
    const QRect badge = hasFailures_ ? layout.badge.translated(-all.topLeft()) : QRect();
    statusPicture_->setGeometry(all);
    statusPicture_->setBadge(QRect(QPoint(), layout.picture.size()), badge);
}

void FinishedView::placeCard(const FinishedLayout &layout)
{
    card_->setGeometry(layout.card);
    for (std::size_t index = 0; index < figures_.size(); ++index)
        figures_[index]->setGeometry(layout.parts[index].adjusted(8, 0, -8, 0));
    for (std::size_t index = 0; index < lines_.size(); ++index)
        lines_[index]->setGeometry(layout.lines[index]);
}

void FinishedView::placeBand(const FinishedLayout &layout)
{
    failureBand_->setGeometry(layout.band);
    failureBand_->setMargin(layout.bandMargin);
    errorLogButton_->setGeometry(layout.bandButton);
    failureBand_->setReservedWidth(layout.band.width() - layout.bandButton.x());
}
