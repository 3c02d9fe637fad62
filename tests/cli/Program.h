#pragma once

#include "kit/Pty.h"
#include "kit/Scratch.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTest>

#include <array>
#include <csignal>
#include <functional>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

/// How a program ended and what it said on its pipes.
struct Outcome
{
    int exitCode = 0; ///< -N where signal N ended it
    QByteArray output;
    QByteArray errors;
};

/// One run of vantorel-cli as a process of its own, with its preferences in a scratch folder. Its
/// standard input is /dev/null, its output and errors go into pipes, unless it is said otherwise.
class Program
{
  public:
    using Arguments = std::vector<QByteArray>;
    enum Stream { Input = 0, Output = 1, Errors = 2 };
    static constexpr unsigned nobody = 65534;

    Program(const Scratch &scratch, Arguments arguments)
        : arguments_(std::move(arguments)), folder_(scratch.path())
    {
        set("HOME", scratch.path());
        set("XDG_CONFIG_HOME", scratch.path("config"));
        set("XDG_CONFIG_DIRS", scratch.path("config"));
        set("LC_ALL", "C.UTF-8");
        set("TSAN_OPTIONS", qgetenv("TSAN_OPTIONS") + exitsAtOnce_);
        unset("POSIXLY_CORRECT");
        unset("QT_LOGGING_RULES");
    }
    ~Program()
    {
        end();
        for (const int fd : opened_)
            ::close(fd);
        for (const int fd : pipes_) {
            if (fd >= 0)
                ::close(fd);
        }
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    /// Writes the INI file of the preferences that every program of this scratch folder reads.
    static void prefer(const Scratch &scratch, const QByteArray &lines)
    {
        QVERIFY(!scratch.folder("config").isEmpty() &&
                !scratch.folder("config/Vantorel").isEmpty());
        QVERIFY(!scratch.file("config/Vantorel/Vantorel.ini", "[General]\n" + lines).isEmpty());
    }

    Program &in(const QByteArray &folder)
    {
        folder_ = folder;
        return *this;
    }
    Program &inRemovedFolder(const QByteArray &folder)
    {
        removedFolder_ = folder;
        return in(folder);
    }
    Program &closed(Stream stream) { return on(stream, -1); }
    Program &on(Stream stream, int fd)
    {
        streams_[stream] = fd;
        return *this;
    }
    Program &on(Stream stream, const char *path)
    {
        opened_.push_back(::open(path, O_RDWR | O_CLOEXEC));
        return on(stream, opened_.back());
    }
    /// A pipe whose reader is gone.
    Program &onBrokenPipe(Stream stream)
    {
        std::array<int, 2> ends = {-1, -1};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            qFatal("no pipe");
        ::close(ends[0]);
        opened_.push_back(ends[1]);
        return on(stream, ends[1]);
    }
    /// As started from a shell in this terminal: Ctrl-C reaches it.
    Program &onTerminal(const Pty &pty)
    {
        controllingTerminal_ = pty.terminal();
        return on(Input, pty.terminal()).on(Output, pty.terminal()).on(Errors, pty.terminal());
    }
    Program &ignoring(int signal)
    {
        ignored_ = signal;
        return *this;
    }
    /// Without root's rights, which pass every permission check. The program is copied to where an
    /// ordinary user can read it.
    Program &unprivileged(const Scratch &scratch)
    {
        if (::getuid() != 0)
            return *this;
        ::chmod(scratch.path().constData(), 0755);
        executable_ = scratch.file("vantorel-cli", Scratch::content(VANTOREL_CLI));
        ::chmod(executable_.constData(), 0755);
        copySuppressions(scratch);
        dropsPrivileges_ = true;
        return *this;
    }

    void start()
    {
        makePipes();
        std::vector<char *> argv = {executable_.data()};
        for (QByteArray &argument : arguments_)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        std::vector<char *> environment;
        for (QByteArray &entry : environment_)
            environment.push_back(entry.data());
        environment.push_back(nullptr);
        process_ = ::fork();
        if (process_ == 0) {
            becomeTheProgram();
            ::execve(argv.front(), argv.data(), environment.data());
            ::_exit(127);
        }
        closeWriteEnds();
    }

    [[nodiscard]] pid_t process() const { return process_; }
    void signal(int number) const { ::kill(process_, number); }

    /// Whether it would act on the signal in its own way by now.
    [[nodiscard]] bool catches(int number) const { return statusHas("SigCgt:", number); }
    /// Whether a signal that was sent has been acted on.
    [[nodiscard]] bool hasTaken(int number) const
    {
        return !statusHas("ShdPnd:", number) && !statusHas("SigPnd:", number) &&
               !statusHas("SigBlk:", number);
    }
    /// Whether it has this file or folder open.
    [[nodiscard]] bool hasOpen(const QByteArray &path) const
    {
        const QByteArray folder = "/proc/" + QByteArray::number(process_) + "/fd";
        DIR *fds = ::opendir(folder.constData());
        bool isFound = false;
        for (dirent *entry = nullptr; fds != nullptr && (entry = ::readdir(fds)) != nullptr;) {
            std::array<char, 4096> target{};
            const QByteArray link = folder + '/' + entry->d_name;
            const ssize_t size = ::readlink(link.constData(), target.data(), target.size());
            isFound = isFound || (size > 0 && path == QByteArray(target.data(), size));
        }
        if (fds != nullptr)
            ::closedir(fds);
        return isFound;
    }
    /// Waits while it runs; whether the condition came true.
    [[nodiscard]] bool runsUntil(const std::function<bool()> &condition) const
    {
        constexpr int milliseconds = 30000;
        // What was seen once may be over at the next look.
        bool isMet = false;
        const auto look = [&] {
            isMet = condition();
            return isMet || hasEnded();
        };
        (void)QTest::qWaitFor(look, milliseconds);
        return isMet || condition();
    }
    [[nodiscard]] bool hasEnded() const
    {
        siginfo_t info = {};
        return ::waitid(P_PID, id_t(process_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               info.si_pid == process_;
    }

    Outcome finish()
    {
        Outcome outcome;
        const QDeadlineTimer deadline(std::chrono::seconds(60));
        while (readPipes(outcome) || !hasEnded()) {
            if (deadline.hasExpired())
                ::kill(process_, SIGKILL);
        }
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
        return outcome;
    }
    Outcome run()
    {
        start();
        return finish();
    }

  private:
    void set(const QByteArray &name, const QByteArray &value)
    {
        unset(name);
        environment_.push_back(name + '=' + value);
    }
    void unset(const QByteArray &name)
    {
        std::erase_if(environment_,
                      [&name](const QByteArray &entry) { return entry.startsWith(name + '='); });
    }

    static std::vector<QByteArray> callersEnvironment()
    {
        std::vector<QByteArray> entries;
        for (char **entry = environ; *entry != nullptr; ++entry)
            entries.emplace_back(*entry);
        return entries;
    }

    /// The thread sanitizer reads its suppressions as whoever runs the program.
    void copySuppressions(const Scratch &scratch)
    {
        const QByteArray options = qgetenv("TSAN_OPTIONS");
        const qsizetype start = options.indexOf("suppressions='") + qstrlen("suppressions='");
        const qsizetype end = options.indexOf('\'', start);
        if (!options.contains("suppressions='") || end < 0)
            return;
        const QByteArray copy =
            scratch.file("tsan.supp", Scratch::content(options.sliced(start, end - start)));
        set("TSAN_OPTIONS", options.first(start) + copy + options.sliced(end) + exitsAtOnce_);
    }

    void makePipes()
    {
        if (streams_[Input] == unset_)
            on(Input, "/dev/null");
        for (const Stream stream : {Output, Errors}) {
            std::array<int, 2> ends = {-1, -1};
            if (streams_[stream] != unset_)
                continue;
            if (::pipe2(ends.data(), O_CLOEXEC) != 0)
                qFatal("no pipe");
            pipes_[stream] = ends[0];
            writeEnds_[stream] = streams_[stream] = ends[1];
        }
    }
    void closeWriteEnds()
    {
        for (int &fd : writeEnds_) {
            if (fd >= 0)
                ::close(fd);
            fd = -1;
        }
    }

    /// In the child, between fork and exec: system calls only.
    void becomeTheProgram() const
    {
        for (const int number : {SIGINT, SIGTERM, SIGPIPE, SIGHUP})
            ::signal(number, number == ignored_ ? SIG_IGN : SIG_DFL);
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        bool isReady = ::chdir(folder_.constData()) == 0;
        if (!removedFolder_.isNull())
            isReady = isReady && ::rmdir(removedFolder_.constData()) == 0;
        if (controllingTerminal_ >= 0)
            isReady =
                isReady && ::setsid() >= 0 && ::ioctl(controllingTerminal_, TIOCSCTTY, 0) == 0;
        for (const int stream : {Input, Output, Errors})
            isReady = isReady && (streams_[size_t(stream)] < 0
                                      ? ::close(stream) == 0
                                      : ::dup2(streams_[size_t(stream)], stream) == stream);
        if (dropsPrivileges_)
            isReady = isReady && ::setgroups(0, nullptr) == 0 &&
                      ::setresgid(nobody, nobody, nobody) == 0 &&
                      ::setresuid(nobody, nobody, nobody) == 0;
        if (!isReady)
            ::_exit(126);
    }

    /// Whether there may be more to come.
    bool readPipes(Outcome &outcome)
    {
        constexpr int milliseconds = 10;
        std::array<struct pollfd, 2> ends = {
            {{pipes_[Output], POLLIN, 0}, {pipes_[Errors], POLLIN, 0}}};
        ::poll(ends.data(), ends.size(), milliseconds);
        readInto(outcome.output, pipes_[Output], ends[0].revents);
        readInto(outcome.errors, pipes_[Errors], ends[1].revents);
        return pipes_[Output] >= 0 || pipes_[Errors] >= 0;
    }
    static void readInto(QByteArray &bytes, int &fd, short events)
    {
        std::array<char, 4096> buffer{};
        if (fd < 0 || events == 0)
            return;
        const ssize_t count = ::read(fd, buffer.data(), buffer.size());
        if (count > 0) {
            bytes.append(buffer.data(), count);
        } else {
            ::close(fd);
            fd = -1;
        }
    }

    /// One of the signal masks of proc(5).
    [[nodiscard]] bool statusHas(const QByteArray &field, int number) const
    {
        const QByteArray status =
            Scratch::content("/proc/" + QByteArray::number(process_) + "/status");
        const qsizetype at = status.indexOf(field);
        const qulonglong mask = at < 0 ? 0
                                       : status.sliced(at + field.size())
                                             .split('\n')
                                             .front()
                                             .trimmed()
                                             .toULongLong(nullptr, 16);
        return (mask >> (number - 1) & 1U) != 0;
    }

    void end()
    {
        if (process_ <= 0)
            return;
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }

    static constexpr int unset_ = -2;
    /// The thread sanitizer lets a program linger for a second otherwise.
    static constexpr char exitsAtOnce_[] = ":atexit_sleep_ms=0";

    QByteArray executable_ = VANTOREL_CLI;
    Arguments arguments_;
    std::vector<QByteArray> environment_ = callersEnvironment();
    QByteArray folder_;
    QByteArray removedFolder_;
    std::array<int, 3> streams_ = {unset_, unset_, unset_};
    std::array<int, 3> pipes_ = {-1, -1, -1};
    std::array<int, 3> writeEnds_ = {-1, -1, -1};
    std::vector<int> opened_;
    int controllingTerminal_ = -1;
    int ignored_ = 0;
    bool dropsPrivileges_ = false;
    pid_t process_ = -1;
};
