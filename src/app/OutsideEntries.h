#pragma once

#include "platform/NotificationHub.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class DialogBox;

/// What later starts and other programs hand over. It goes straight to the queue, but for a run:
/// what joins that is erased without anyone having pressed Start for it, so the user is asked. What
/// has not been answered when the run ends is listed for the next one.
///
/// Thread: main
/// Owns:   the question, while it is asked, and what waits for the answer
class OutsideEntries : public QObject
{
    Q_OBJECT

  public:
    using Paths = std::vector<QByteArray>;

    /// `enter` gets each batch that is to be queued.
    explicit OutsideEntries(std::function<void(const Paths &)> enter, QObject *parent = nullptr);
    ~OutsideEntries() override;

    /// One batch; comes back before anything is asked.
    void take(const Paths &paths);

    /// Pure.
    static QString question(std::int64_t items);

  private:
    void ask();
    [[nodiscard]] bool isConfirmed();
    void runHasEnded();

    std::function<void(const Paths &)> enter_;
    std::vector<Paths> waiting_;
    std::unique_ptr<DialogBox> dialog_;
    NotificationHub::Token runStart_;
    NotificationHub::Token runEnd_;
    bool isRunning_ = false;
    bool isAsking_ = false;
};
