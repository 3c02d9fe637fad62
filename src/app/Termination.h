#pragma once

#include "platform/NotificationHub.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

class DialogBox;

/// How the application ends. The user is asked first when a run would be cut off. When the system
/// wants the application to go, a run is stopped behind the file in work, and if that takes too
/// long, the process ends with that file left in place: nothing half-overwritten is removed or
/// counted.
///
/// Thread: main
/// Owns:   the question, while it is asked
/// Blocks: quit() and finishFileInWork() run an event loop of their own
class Termination : public QObject
{
    Q_OBJECT

  public:
    /// What it needs of the run and of the process.
    struct Actions
    {
        std::function<bool()> isErasing;
        std::function<void()> stopErasing; ///< behind the file in work
        /// Files not yet erased, the one in work among them.
        std::function<std::int64_t()> filesRemaining;
        std::function<void()> stopScan;
        std::function<void()> stopListening; ///< to later starts and other programs
        std::function<void()> leave;         ///< the event loops
        std::function<void(int)> endNow;     ///< the process, with this exit code
    };

    /// How long the file in work may take. A login manager waits as long by default
    /// (logind.conf(5), InhibitDelayMaxSec=).
    static constexpr std::chrono::milliseconds patience{5000};

    explicit Termination(Actions actions, QObject *parent = nullptr);
    ~Termination() override;

    /// The user wants to quit. The question closes by itself, as No, when the run ends.
    void quit();
    /// The system wants the application to end; comes back at once.
    void stop();
    /// The session is about to end, which others may still prevent: stops a run, comes back when
    /// the file in work has been finished, and stays.
    void finishFileInWork();
    /// Tells "ApplicationWillTerminate", once, and leaves.
    void leave();

    /// The question's second sentence. Pure.
    static QString whatWouldBeLost(std::int64_t filesRemaining);

    void setPatience(std::chrono::milliseconds limit) { timer_.setInterval(limit); }

  private:
    [[nodiscard]] bool isConfirmed();
    void stopRun();
    void runHasEnded();
    void tell();
    void endNow(int exitCode);

    Actions actions_;
    QTimer timer_;
    NotificationHub::Token runEnd_;
    std::unique_ptr<DialogBox> question_;
    bool isStopping_ = false;
    bool isTold_ = false;
};
