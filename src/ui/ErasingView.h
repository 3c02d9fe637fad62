#pragma once

#include "ui/ContentView.h"

#include <array>
#include <cstdint>
#include <optional>

class Figure;
class PassStrip;
class ProgressTrack;
class QueueTable;
class StatusPicture;

/// The view of a run: how far it is, and each file's state.
///
/// Thread: main
class ErasingView : public ContentView
{
    Q_OBJECT

  public:
    struct Figures
    {
        QString percent;
        QString amount;
        QString remaining;
        QString throughput;
        QString elapsed;
        QString wiped;
        QString failed;
        bool hasFailed = false;
        double value = 0;
        double maximum = 0;
        std::int64_t runStatus = 6;
    };

    explicit ErasingView(QWidget *parent = nullptr);

    void setFigures(const Figures &figures);
    void setMethod(const QString &name);
    /// The pass of the file in work; none before the first one and for a file without a size.
    void setPass(std::int64_t method, std::optional<int> pass, const QString &text);

    [[nodiscard]] StatusPicture *statusPicture() const { return statusPicture_; }
    [[nodiscard]] TextLabel *percent() const { return percent_; }
    [[nodiscard]] TextLabel *amount() const { return amount_; }
    [[nodiscard]] TextLabel *remaining() const { return remaining_; }
    [[nodiscard]] TextLabel *remainingLabel() const { return remainingLabel_; }
    [[nodiscard]] ProgressTrack *progress() const { return progress_; }
    [[nodiscard]] Figure *throughput() const { return figures_[0]; }
    [[nodiscard]] Figure *elapsed() const { return figures_[1]; }
    [[nodiscard]] Figure *wiped() const { return figures_[2]; }
    [[nodiscard]] Figure *failed() const { return figures_[3]; }
    [[nodiscard]] QueueTable *table() const { return table_; }
    [[nodiscard]] TextLabel *methodText() const { return methodText_; }
    [[nodiscard]] PassStrip *passStrip() const { return passStrip_; }
    [[nodiscard]] TextLabel *passText() const { return passText_; }

    [[nodiscard]] QWidget *firstFocus() const override;
    [[nodiscard]] std::vector<QWidget *> tabStops() const override;

  protected:
    void layOut(const ViewRuler &ruler) override;

  private:
    void fillIn();

    StatusPicture *statusPicture_;
    TextLabel *percent_;
    TextLabel *amount_;
    TextLabel *remaining_;
    TextLabel *remainingLabel_;
    ProgressTrack *progress_;
    std::array<Figure *, 4> figures_;
    QueueTable *table_;
    TextLabel *methodText_;
    PassStrip *passStrip_;
    TextLabel *passText_;
};
