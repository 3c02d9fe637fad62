#pragma once

#include "ui/ContentView.h"

#include <array>
#include <cstdint>

class ButtonBlue;
class Card;
class CautionBand;
class Figure;
class PlainButton;
class StatusPicture;
class VTLLine;
struct FinishedLayout;

/// The summary of a run.
///
/// Thread: main
class FinishedView : public ContentView
{
    Q_OBJECT

  public:
    struct Summary
    {
        QString result;
        QString method;
        QString elapsed;
        QString failed;
        bool hasFailures = false;
        QString failureText;
        bool showsErrorButton = false;
        bool wasStopped = false; ///< before the end of the queue
        QString logText;         ///< what is wrong with the log; goes with the note
        std::int64_t runStatus = 4;
    };

    explicit FinishedView(QWidget *parent = nullptr);

    void setSummary(const Summary &summary);

    [[nodiscard]] StatusPicture *statusPicture() const { return statusPicture_; }
    [[nodiscard]] TextLabel *result() const { return result_; }
    [[nodiscard]] TextLabel *caption() const { return caption_; }
    [[nodiscard]] Card *card() const { return card_; }
    [[nodiscard]] Figure *method() const { return figures_[0]; }
    [[nodiscard]] Figure *elapsed() const { return figures_[1]; }
    [[nodiscard]] Figure *failed() const { return figures_[2]; }
    [[nodiscard]] CautionBand *failureBand() const { return failureBand_; }
    [[nodiscard]] PlainButton *errorLogButton() const { return errorLogButton_; }
    [[nodiscard]] ButtonBlue *eraseMoreButton() const { return eraseMoreButton_; }
    [[nodiscard]] TextLabel *note() const { return note_; }

    [[nodiscard]] QWidget *firstFocus() const override;
    [[nodiscard]] std::vector<QWidget *> tabStops() const override;

  Q_SIGNALS:
    void eraseMoreClicked();
    void showErrorLogClicked();

  protected:
    void layOut(const ViewRuler &ruler) override;
    [[nodiscard]] QAbstractButton *defaultButton() const override;

  private:
    void fillIn();
    void placePicture(const FinishedLayout &layout);
    void placeCard(const FinishedLayout &layout);
    void placeBand(const FinishedLayout &layout);

    StatusPicture *statusPicture_;
    TextLabel *result_;
    TextLabel *caption_;
    Card *card_;
    std::array<Figure *, 3> figures_;
    std::array<VTLLine *, 2> lines_;
    CautionBand *failureBand_;
    PlainButton *errorLogButton_;
    ButtonBlue *eraseMoreButton_;
    TextLabel *note_;
    bool hasFailures_ = false;
};
