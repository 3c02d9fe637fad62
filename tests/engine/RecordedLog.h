#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstring>
#include <mutex>

/// Keeps the lines of the system log (category "vantorel") while it lives; other messages go where
/// they went before. One at a time. Thread: any
class RecordedLog
{
  public:
    RecordedLog() : previous_(qInstallMessageHandler(&RecordedLog::take)) { current() = this; }
    ~RecordedLog()
    {
        qInstallMessageHandler(previous_);
        current() = nullptr;
    }
    RecordedLog(const RecordedLog &) = delete;
    RecordedLog &operator=(const RecordedLog &) = delete;

    [[nodiscard]] QStringList lines() const
    {
        const std::lock_guard guard(lock_);
        return lines_;
    }

  private:
    static RecordedLog *&current()
    {
        static RecordedLog *log = nullptr;
        return log;
    }

    static void take(QtMsgType type, const QMessageLogContext &context, const QString &line)
    {
        if (context.category == nullptr || std::strcmp(context.category, "vantorel") != 0) {
            current()->previous_(type, context, line);
            return;
        }
        const std::lock_guard guard(current()->lock_);
        current()->lines_.append(line);
    }

    QtMessageHandler previous_;
    mutable std::mutex lock_;
    QStringList lines_;
};
