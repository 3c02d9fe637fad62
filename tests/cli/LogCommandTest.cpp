#include "cli/Program.h"
#include "kit/Lease.h"

#include <QRegularExpression>

#include <optional>

#include <sys/resource.h>
#include <sys/socket.h>

namespace {

using Arguments = Program::Arguments;

Outcome run(const Scratch &scratch, Arguments arguments)
{
    arguments.insert(arguments.begin(), "erase");
    return Program(scratch, arguments).in(scratch.path()).run();
}

/// Level, caller and message; the times are checked and left out.
QStringList logged(const QByteArray &path)
{
    static const QRegularExpression time(
        QStringLiteral("^(\\[[A-Z]+\\]) {1,2}\\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\| \\[RunLog \\w+\\]"));
    QStringList lines = QString::fromUtf8(Scratch::content(path)).split(QLatin1Char('\n'));
    for (QString &line : lines)
        line.replace(time, QStringLiteral("\\1 "));
    return lines;
}

QByteArray makeSocket(const Scratch &scratch, const QByteArray &name)
{
    const QByteArray path = scratch.path(name);
    return ::mknod(path.constData(), S_IFSOCK | 0600, 0) == 0 ? path : QByteArray();
}

/// While it lives, what this process starts writes no file beyond so many bytes.
class FileSizeLimit
{
  public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

  private:
    rlimit before_ = {};
};

} // namespace

/// `vantorel-cli erase --log`.
class LogCommandTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aRunIsLoggedWithoutAnyName()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("letters");
        scratch.file("letters/private-a", 1000);
        scratch.file("letters/private-b", 540);
        makeSocket(scratch, "letters/private-c");

        const Outcome outcome = run(scratch, {"-y", "--log", "run.log", folder});

        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(logged(scratch.path("run.log")),
                 (QStringList{QStringLiteral("[INFO] Run started: 3-Pass DoD 5220.22-M (E), "
                                             "3 files, 1540 bytes"),
                              QStringLiteral("[ERROR] No such device or address"),
                              QStringLiteral("[INFO] Run ended: 3-Pass DoD 5220.22-M (E), 2 files "
                                             "erased, 1540 bytes, 1 failed, 0 not touched"),
                              QString()}));
        const QByteArray log = Scratch::content(scratch.path("run.log"));
        QVERIFY(!log.contains("private") && !log.contains("letters"));
        QVERIFY(outcome.errors.contains("private-c: No such device or address"));
    }

    void whatWentWithItsFolderIsLogged()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("letters");
        makeSocket(scratch, "letters/.private");

        (void)run(scratch, {"-y", "-m1", "--log=run.log", folder});

        const QStringList lines = logged(scratch.path("run.log"));
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.at(2),
                 QStringLiteral("[ERROR] No such device or address (removed with its folder, not "
                                "overwritten)"));
        QCOMPARE(lines.at(3), QStringLiteral("[INFO] Run ended: 1-Pass Zero, 0 files erased, "
                                             "0 bytes, 1 failed, 0 not touched"));
    }

    void anOldLogIsEmptied()
    {
        const Scratch scratch;
        const QByteArray log = scratch.file("run.log", "of the run before\n");

        const Outcome outcome = run(scratch, {"-y", "--log", log, scratch.file("a", 5)});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(logged(log).size(), 3);
        QVERIFY(!Scratch::content(log).contains("before"));
    }

    void aLinkWhoseTargetIsLeftAloneIsNotTheLog()
    {
        const Scratch scratch;
        const QByteArray log = scratch.file("run.log", "of the run before\n");
        const QByteArray link = scratch.link("link", "run.log");

        QCOMPARE(run(scratch, {"-yq", "--log", log, link}).exitCode, 2);
        QCOMPARE(Scratch::content(log), QByteArray("of the run before\n"));
        QCOMPARE(run(scratch, {"-yq", "--leave-link-targets", "--log", log, link}).exitCode, 0);

        QVERIFY(!Scratch::exists(link));
        QCOMPARE(logged(log).size(), 3);
    }

    /// The lease holds the run up until the log is gone.
    void aLogThatIsRemovedMeanwhileIsMissed()
    {
        const Scratch scratch;
        const QByteArray log = scratch.path("run.log");
        const QByteArray file = scratch.file("file", 5);
        std::optional<Lease> lease(file);
        QVERIFY(lease->isHeld());
        Program program(scratch, {"erase", "-yq", "--log", log, file});
        program.start();
        QVERIFY(program.runsUntil([&log] { return !Scratch::content(log).isEmpty(); }));
        QCOMPARE(::unlink(log.constData()), 0);
        lease.reset();
        const Outcome outcome = program.finish();

        QCOMPARE(outcome.errors, log + ": It has been removed.\n");
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!Scratch::exists(file));
    }

    /// It is the window's, which may be open.
    void thePreferredLogIsLeftAlone()
    {
        const Scratch scratch;
        const QByteArray preferred = scratch.file("preferred.log", "kept");
        Program::prefer(scratch, "logFilePath=" + preferred + '\n');

        QCOMPARE(run(scratch, {"-y", scratch.file("a", 5)}).exitCode, 0);
        QCOMPARE(run(scratch, {"-y", "--log", "run.log", scratch.file("b", 5)}).exitCode, 0);

        QCOMPARE(Scratch::content(preferred), QByteArray("kept"));
        QCOMPARE(logged(scratch.path("run.log")).size(), 3);
    }

    void whereNothingIsErasedTheOldLogIsKept()
    {
        const Scratch scratch;
        const QByteArray log = scratch.file("run.log", "kept");
        const QByteArray file = scratch.file("a", 5);

        QCOMPARE(run(scratch, {"-yn", "--log", log, file}).exitCode, 0);
        QCOMPARE(run(scratch, {"--log", log, file}).exitCode, 2);
        QCOMPARE(run(scratch, {"-y", "--log", log, "--report", "missing/r", file}).exitCode, 2);

        QCOMPARE(Scratch::content(log), QByteArray("kept"));
        QVERIFY(Scratch::exists(file));
    }

    void aDryRunMakesNoLogAndSaysWhatSpeaksAgainstIt()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", 5);

        const Outcome free = run(scratch, {"-n", "--log", "run.log", file});
        QCOMPARE(free.exitCode, 0);
        QCOMPARE(free.errors, QByteArray());
        QVERIFY(free.output.contains("1 file"));
        QVERIFY(!Scratch::exists(scratch.path("run.log")));

        const Outcome missing = run(scratch, {"-n", "--log", "missing/log", file});
        QCOMPARE(missing.exitCode, 2);
        QCOMPARE(missing.errors,
                 QByteArray("missing/log: The folder that should hold it does not exist.\n"));
        const Outcome itself = run(scratch, {"-n", "--log", file, file});
        QCOMPARE(itself.exitCode, 2);
        QCOMPARE(itself.errors, file + ": The log is among what is to be erased\n");

        QCOMPARE(Scratch::content(file), QByteArray("xxxxx"));
    }

    void aNoKeepsTheOldLog()
    {
        const Scratch scratch;
        Pty pty;
        const QByteArray log = scratch.file("run.log", "kept");
        Program program(scratch, {"erase", "--log", log, scratch.file("a", 5)});
        program.onTerminal(pty).start();
        QVERIFY(program.runsUntil([&pty] { return pty.shown().contains("[y/N] "); }));
        pty.type("n\n");

        QCOMPARE(program.finish().exitCode, 2);
        QCOMPARE(Scratch::content(log), QByteArray("kept"));
    }

    void anInterruptedQuestionKeepsTheOldLog()
    {
        const Scratch scratch;
        Pty pty;
        const QByteArray log = scratch.file("run.log", "kept");
        const QByteArray file = scratch.file("a", "content");
        Program program(scratch, {"erase", "--log", log, file});
        program.onTerminal(pty).start();
        QVERIFY(program.runsUntil([&pty] { return pty.shown().contains("[y/N] "); }));
        program.signal(SIGINT);

        QCOMPARE(program.finish().exitCode, 130);
        QCOMPARE(Scratch::content(log), QByteArray("kept"));
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aLogThatCannotBeWrittenErasesNothing_data()
    {
        QTest::addColumn<QByteArray>("log");
        QTest::addColumn<QByteArray>("problem");
        const auto row = [](const char *log, const char *problem) {
            QTest::newRow(*log == 0 ? "empty" : log) << QByteArray(log) << QByteArray(problem);
        };
        row("missing/log", "missing/log: The folder that should hold it does not exist.\n");
        row("folder", "folder: This is a folder, not a file.\n");
        row("folder/", "folder/: This is a folder, not a file.\n");
        row("a/log", "a/log: A part of the path is a file, not a folder.\n");
        row("/dev/full", "/dev/full: This is no ordinary file.\n");
        row("pipe", "pipe: This is no ordinary file.\n");
        row("link", "link: This is a link; name the file that it points to.\n");
        row("", "\"\": No file is named.\n");
        row("a", "a: The log is among what is to be erased\n");
        row("other", "other: The log is among what is to be erased\n");
        row("letters/log", "letters/log: The log would stand in a folder to be erased\n");
        row("linked", "linked: The log is among what is to be erased\n");
        row("report", "report: The log and the report cannot be one file\n");
    }
    void aLogThatCannotBeWrittenErasesNothing()
    {
        QFETCH(QByteArray, log);
        QFETCH(QByteArray, problem);
        const Scratch scratch;
        scratch.folder("folder");
        scratch.folder("letters");
        scratch.link("letters/link", "../linked");
        const QByteArray file = scratch.file("a", "content");
        QCOMPARE(::link(file.constData(), scratch.path("other").constData()), 0);
        const QByteArray linked = scratch.file("linked", "kept");
        scratch.link("link", "linked");
        QCOMPARE(::mkfifo(scratch.path("pipe").constData(), 0600), 0);

        const Outcome outcome =
            run(scratch, {"-yq", "--report", "report", "--log", log, "a", "letters"});

        QCOMPARE(outcome.errors, problem);
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
        QCOMPARE(Scratch::content(linked), QByteArray("kept"));
        QVERIFY(!Scratch::exists(scratch.path("report")));
        QVERIFY(!Scratch::exists(scratch.path("letters/log")));
    }

    void aLogWithoutPermissionErasesNothing()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");
        const QByteArray log = scratch.file("run.log", "kept");
        QCOMPARE(::chmod(log.constData(), 0400), 0);

        const Outcome outcome =
            Program(scratch, {"erase", "-yq", "--log", log, file}).unprivileged(scratch).run();

        QCOMPARE(outcome.errors, log + ": You do not have the permission to write this file.\n");
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aLogThatTakesNoFirstLineErasesNothing()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");
        Program program(scratch, {"erase", "-yq", "--log", scratch.path("run.log"), file});
        {
            const FileSizeLimit limit(20);
            program.ignoring(SIGXFSZ).start();
        }
        const Outcome outcome = program.finish();

        QCOMPARE(outcome.errors, scratch.path("run.log") + ": Input/output error\n");
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aLogThatEndsInTheMiddleOfARunIsSaidAndTheRunGoesOn()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");
        Program program(scratch, {"erase", "-yq", "--log", scratch.path("run.log"), file});
        {
            const FileSizeLimit limit(120);
            program.ignoring(SIGXFSZ).start();
        }
        const Outcome outcome = program.finish();

        QCOMPARE(outcome.errors, scratch.path("run.log") + ": Input/output error\n");
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!Scratch::exists(file));
        QCOMPARE(Scratch::content(scratch.path("run.log")).size(), 120);
    }
};

QTEST_GUILESS_MAIN(LogCommandTest)
#include "LogCommandTest.moc"
