#include "support/Logger.h"

#include "platform/LocalTime.h"
#include "platform/MainThread.h"
#include "platform/PathBytes.h"
#include "platform/StandardStreams.h"
#include "platform/SystemError.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "support/LogPathCheck.h"

#include <QFile>
#include <QTimer>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_set>

namespace {

/// The number at the text's start; 0 where there is none, or none that is a delay.
float secondsOf(const QString &text)
{
    const QByteArray bytes = text.trimmed().toLatin1();
    float seconds = 0;
    std::from_chars(bytes.cbegin(), bytes.cend(), seconds);
    return std::isfinite(seconds) ? std::max(seconds, 0.0F) : 0.0F;
}

int millisecondsOf(float seconds)
{
    constexpr float longest = 1.0e6F; // seconds, well within a timer's range
    return static_cast<int>(std::min(seconds, longest) * 1000.0F);
}

struct LogPreferences
{
    QByteArray path;
    float interval = 0;

    static LogPreferences read(const UserDefaults &defaults)
    {
        return {QFile::encodeName(defaults.text(QStringLiteral("logFilePath"))),
                secondsOf(defaults.text(QStringLiteral("logInterval")))};
    }
    /// The process's preferences are the main thread's; another thread reads the file on its own.
    static LogPreferences current()
    {
        return MainThread::isCurrent() ? read(UserDefaults::standard()) : read(UserDefaults());
    }
};

void removeRecords(Logger::Records &from, const Logger::Records &records)
{
    std::unordered_set<const LogClass *> known;
    for (const auto &record : records)
        known.insert(record.get());
    std::erase_if(from, [&known](const auto &record) { return known.contains(record.get()); });
}

} // namespace

Logger &Logger::shared()
{
    static const auto *const logger = new std::shared_ptr<Logger>(create());
    return **logger;
}

Logger::Logger(Private)
{
}

Logger::~Logger() = default;

void Logger::log(std::int64_t level, const QString &frame, const QString &text,
                 const std::vector<FormatArgument> &arguments)
{
    std::call_once(setUpOnce_, [this] { setUp(); });
    const QString caller = LogCaller::ofFrame(frame);
    if (caller.isNull() || text.isNull())
        return;
    FormatExpander::Expansion message = FormatExpander::expand(text, arguments);
    if (!message.problem.isEmpty()) {
        SystemLog::write("-[Logger level:text:]", message.problem);
        return;
    }
    if (message.text == QLatin1String("-"))
        message.text = makeLine();
    writeToLogFile(formatOutputString(caller + message.text, level));
    if (level == LogLevelDebug)
        return;
    addToQueue(
        std::make_shared<LogClass>(LogClass{nameOfLevel(level), time(), caller, message.text}));
    startTimer();
}

void Logger::setUp()
{
    const LogPreferences preferences = LogPreferences::current();
    if (!isPathGiven_)
        logFilePath_ = preferences.path;
    interval_ = preferences.interval;
    if (!logFilePath_.isEmpty() && !isLogFileAbandoned_)
        createNewLogFileAtPath(logFilePath_);
    isSetUp_ = true;
}

void Logger::setLogFilePath(const QByteArray &path)
{
    Q_ASSERT(!isSetUp_);
    logFilePath_ = path;
    isPathGiven_ = true;
}

void Logger::createNewLogFileAtPath(const QByteArray &path)
{
    openProblem_ = LogPathCheck::of(path).sentence();
    const int error = openProblem_.isEmpty() ? logFileHandle_.open(path) : 0;
    if (error != 0)
        openProblem_ = SystemError::text(error);
    if (!openProblem_.isEmpty())
        SystemLog::write("-[Logger createNewLogFileAtPath:]",
                         PathBytes::printable(path) + QStringLiteral(": ") + openProblem_);
}

QString Logger::logFileProblem() const
{
    if (isLogFileAbandoned_)
        return tr("It was among what was to be erased.");
    if (const int error = writeError_; error != 0)
        return SystemError::text(error);
    return logFileHandle_.isRemoved() ? tr("It has been removed.") : openProblem_;
}

void Logger::writeToLogFile(const QString &text)
{
    if (!isLogFileOpen())
        return;
    const int error = logFileHandle_.write(text.toUtf8());
    int none = 0;
    // A full disk would otherwise be said once a message.
    if (error != 0 && writeError_.compare_exchange_strong(none, error))
        SystemLog::write("-[Logger writeToLogFile:]", PathBytes::printable(logFilePath_) +
                                                          QStringLiteral(": ") +
                                                          SystemError::text(error));
}

bool Logger::timerIsRunning() const
{
    const std::lock_guard guard(lock_);
    return timerIsRunning_;
}

Logger::Records Logger::logQueue() const
{
    const std::lock_guard guard(lock_);
    return logQueue_;
}

void Logger::addToQueue(const std::shared_ptr<const LogClass> &record)
{
    const std::lock_guard guard(lock_);
    logQueue_.push_back(record);
}

void Logger::startTimer()
{
    {
        const std::lock_guard guard(lock_);
        if (timerIsRunning_)
            return;
        timerIsRunning_ = true;
    }
    MainThread::post([weak = weak_from_this()] {
        if (const std::shared_ptr<Logger> self = weak.lock())
            self->schedule();
    });
}

void Logger::schedule()
{
    if (!timer_) {
        timer_ = std::make_unique<QTimer>();
        timer_->setSingleShot(true);
        timer_->setTimerType(Qt::PreciseTimer);
        connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { timerSelector(); });
    }
    timer_->start(millisecondsOf(interval_));
}

/// The lock is held by the caller.
void Logger::stopTimer()
{
    timerIsRunning_ = false;
}

void Logger::timerSelector()
{
    output();
}

/// What is logged while the list is told of the batch stays in the queue for the next one. The
/// batch itself is still there, too, so whoever hears of it and wants another waits for that one.
void Logger::output()
{
    if (isTelling_)
        return;
    const Records snapshot = logQueue();
    isTelling_ = true;
    writeToTableView(snapshot);
    isTelling_ = false;
    bool hasMore = false;
    {
        const std::lock_guard guard(lock_);
        removeRecords(logQueue_, snapshot);
        stopTimer();
        hasMore = !logQueue_.empty();
    }
    if (hasMore)
        startTimer();
}

void Logger::writeToTableView(const Records &records)
{
    Q_EMIT logArrayWillChange();
    logArray_.insert(logArray_.end(), records.begin(), records.end());
    Q_EMIT logArrayChanged();
}

void Logger::removeObjects(const Records &records)
{
    Q_EMIT logArrayWillChange();
    {
        const std::lock_guard guard(lock_);
        removeRecords(logArray_, records);
    }
    Q_EMIT logArrayChanged();
}

void Logger::removeAllObjects()
{
    Q_EMIT logArrayWillChange();
    {
        const std::lock_guard guard(lock_);
        logArray_.clear();
    }
    Q_EMIT logArrayChanged();
}

void Logger::writeToConsole(const QString &text)
{
    StandardStreams::write(StandardStreams::Error, text.toUtf8());
}

QString Logger::formatOutputString(const QString &text, std::int64_t level)
{
    constexpr int columns = 7;
    QString line = nameOfLevel(level).leftJustified(columns) + QLatin1Char(' ') + time() +
                   QLatin1String(" | ") + text;
    if (!text.endsWith(QLatin1Char('\n')))
        line += QLatin1Char('\n');
    return line;
}

QString Logger::makeLine()
{
    constexpr qsizetype length = 150;
    return {length, QLatin1Char('-')};
}

QString Logger::time()
{
    return QString::fromLatin1(LocalTime::clock());
}

QString Logger::nameOfLevel(std::int64_t level)
{
    switch (level) {
    case LogLevelDefault:
    case LogLevelInfo:
        return QStringLiteral("[INFO]");
    case LogLevelDebug:
        return QStringLiteral("[DEBUG]");
    case LogLevelError:
        return QStringLiteral("[ERROR]");
    case LogLevelWarning:
        return QStringLiteral("[WARN]");
    default:
        return {};
    }
}
