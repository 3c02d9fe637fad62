#pragma once

#include "platform/LogFile.h"
#include "support/FormatExpander.h"
#include "support/LogCaller.h"
#include "support/LogClass.h"
#include "support/LogFormat.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

class QTimer;

/// The application's log. A message goes into the log file at once, on the thread that logs it;
/// and, but for the debugging ones, in batches into a list that a view can show and shorten. It is
/// not the system log, where the program's own troubles go.
///
/// The file is the one in the preference "logFilePath", looked up and emptied with the first
/// message; later changes count from the next start. "logInterval" is the delay of the batches.
///
/// Thread:  level() any. The list, its signals and all that changes it: main
/// Blocks:  on disk I/O; on its lock, which nothing is done under but to change a list
/// Units:   seconds
/// Failure: a file that cannot be opened or written is one line in the system log, and the list
///          goes on without it; so does a message that cannot be expanded, which is dropped
class Logger : public QObject, public std::enable_shared_from_this<Logger>
{
    Q_OBJECT

    struct Private
    {
    };

  public:
    /// Kept on purpose: the order is not that of severity; callers pass the numbers.
    enum LogLevel : std::int64_t {
        LogLevelDefault = 0,
        LogLevelInfo = 1,
        LogLevelDebug = 2,
        LogLevelError = 3,
        LogLevelWarning = 4
    };
    using Records = std::vector<std::shared_ptr<const LogClass>>;

    /// The process's own, made at first use and never destroyed.
    static Logger &shared();
    static std::shared_ptr<Logger> create() { return std::make_shared<Logger>(Private{}); }
    explicit Logger(Private);
    ~Logger() override;

    /// Logs the text with its arguments filled in. "-" alone is a line across.
    template <typename... Arguments>
    void level(std::int64_t level, const LogFormat &text, const Arguments &...arguments)
    {
        log(level, LogCaller::frameText(text.where().function_name(), text.where().line()),
            text.text(), {FormatArgument(arguments)...});
    }
    /// The same for a caller's line of a call stack. A null text is not logged.
    void log(std::int64_t level, const QString &frame, const QString &text,
             const std::vector<FormatArgument> &arguments);

    /// Another file than the one in the preferences. To be called before the first message.
    void setLogFilePath(const QByteArray &path);
    /// Leaves the log file to the eraser: what is logged from now on goes to none, and that is the
    /// problem of the log file. The file stays open, since another thread may be writing.
    void abandonLogFile() { isLogFileAbandoned_ = true; }
    /// Whether the first message has been logged: which file it goes to is settled. Thread: any
    [[nodiscard]] bool isSetUp() const { return isSetUp_; }
    /// What set-up found in the preferences or was told; empty: no file. Counts from isSetUp() on.
    [[nodiscard]] const QByteArray &logFilePath() const { return logFilePath_; }
    /// Counts from isSetUp() on.
    [[nodiscard]] bool isLogFileOpen() const
    {
        return logFileHandle_.isOpen() && !isLogFileAbandoned_;
    }
    /// Why the log file cannot be opened, could not be written at some time, or is a file no more;
    /// empty if nothing was wrong. Counts from isSetUp() on. Thread: any
    [[nodiscard]] QString logFileProblem() const;

    [[nodiscard]] const Records &logArray() const { return logArray_; }
    [[nodiscard]] bool timerIsRunning() const;
    /// What waits for the next batch.
    [[nodiscard]] Records logQueue() const;
    [[nodiscard]] float interval() const { return interval_; }

    void addToQueue(const std::shared_ptr<const LogClass> &record);
    /// Thread: any; the timer itself lives on the main thread.
    void startTimer();
    void timerSelector();
    void output();
    /// The batch now; while one is told of, the next comes by the timer. Main thread, like all that
    /// changes the list.
    void flush() { timerSelector(); }
    void removeObjects(const Records &records);
    void removeAllObjects();

    /// No path writes there; nothing reaches standard error in normal operation.
    static void writeToConsole(const QString &text);
    void writeToTableView(const Records &records);
    void writeToLogFile(const QString &text);
    void createNewLogFileAtPath(const QByteArray &path);
    static QString formatOutputString(const QString &text, std::int64_t level);
    static QString makeLine();
    template <typename Object> static QString convertToString(const Object &object)
    {
        return Description::of(object);
    }
    static QString time();
    static QString nameOfLevel(std::int64_t level);

  Q_SIGNALS:
    /// Around each change of the list. The lock is not held: who hears of it may log.
    void logArrayWillChange();
    void logArrayChanged();

  private:
    void setUp();
    void schedule();
    void stopTimer();

    std::once_flag setUpOnce_;
    std::atomic<bool> isSetUp_ = false;
    bool isPathGiven_ = false;
    std::atomic<bool> isLogFileAbandoned_ = false;
    QByteArray logFilePath_;
    LogFile logFileHandle_;
    QString openProblem_;
    std::atomic<int> writeError_ = 0; ///< the first one
    float interval_ = 0;

    /// The project's one lock: guards the queue, whether the timer runs, and removals from the
    /// list.
    mutable std::mutex lock_;
    Records logQueue_;
    bool timerIsRunning_ = false;

    Records logArray_;              ///< main thread
    bool isTelling_ = false;        ///< of a batch; main thread
    std::unique_ptr<QTimer> timer_; ///< main thread
};
