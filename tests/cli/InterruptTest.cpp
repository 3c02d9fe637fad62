#include "cli/Program.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int files = 600;
constexpr qsizetype fileSize = 524288;

/// The content of a file: mostly a hole, so that many are quickly made.
QByteArray content()
{
    return QByteArray("content").leftJustified(fileSize, '\0');
}

/// Many files that take a while with 7 passes each.
struct ManyFiles
{
    explicit ManyFiles(const QByteArray &prefix)
    {
        for (int number = 0; number < files; ++number) {
            const QByteArray name = "folder/" + prefix + QByteArray::number(number);
            paths.push_back(scratch.file(name, "content"));
            isMade = isMade && ::truncate(paths.back().constData(), fileSize) == 0;
        }
    }

    [[nodiscard]] int left() const
    {
        return int(std::count_if(paths.begin(), paths.end(), Scratch::exists));
    }
    [[nodiscard]] int untouched() const
    {
        const auto isUntouched = [before = content()](const QByteArray &path) {
            return Scratch::content(path) == before;
        };
        return int(std::count_if(paths.begin(), paths.end(), isUntouched));
    }

    Scratch scratch;
    QByteArray folder = scratch.folder("folder");
    std::vector<QByteArray> paths;
    bool isMade = true;
};

qint64 blocksOf(const QByteArray &path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 ? status.st_blocks : -1;
}

/// A file that takes no space until it is overwritten, which then takes long.
QByteArray makeEndlessFile(const Scratch &scratch)
{
    constexpr off_t size = off_t(256) << 20;
    const QByteArray path = scratch.file("endless", "");
    return ::truncate(path.constData(), size) == 0 && blocksOf(path) == 0 ? path : QByteArray();
}

} // namespace

class InterruptTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theFileInWorkIsFinishedAndTheOthersAreUntouched_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("prefix");
        QTest::newRow("SIGINT") << SIGINT << 130 << QByteArray("file");
        QTest::newRow("SIGTERM") << SIGTERM << 143 << QByteArray("file");
        // A folder of hidden files alone counts as empty; it must not go with what was not reached.
        QTest::newRow("hidden files") << SIGINT << 130 << QByteArray(".file");
    }
    void theFileInWorkIsFinishedAndTheOthersAreUntouched()
    {
        QFETCH(int, signal);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, prefix);
        const ManyFiles many(prefix);
        QVERIFY(many.isMade);
        const QByteArray report = many.scratch.path("report");
        const QByteArray log = many.scratch.path("log");
        Program program(many.scratch,
                        {"erase", "-y", "-m6", "--report", report, "--log", log, many.folder});

        program.start();
        QVERIFY(program.runsUntil([&many] { return many.left() <= files - 3; }));
        program.signal(signal);
        const Outcome outcome = program.finish();

        const int left = many.left();
        QVERIFY(left > 0);
        QCOMPARE(many.untouched(), left);
        QCOMPARE(outcome.exitCode, exitCode);
        QCOMPARE(outcome.errors, QByteArray());
        const QByteArray summary = " in " + QByteArray::number(files - left) +
                                   " files\nFailed:  0\nLeft:    " + QByteArray::number(left) +
                                   " files, not touched\nFolders: 0 of 1 removed\nElapsed: ";
        QVERIFY2(outcome.output.contains(summary), outcome.output.constData());
        const QByteArray logged = Scratch::content(log);
        QVERIFY2(logged.startsWith("[INFO]  ") && logged.count('\n') == 2 &&
                     logged.contains("[RunLog runStarted]Run started: 7-Pass Schneier, " +
                                     QByteArray::number(files) + " files, "),
                 logged.constData());
        const QByteArray lastLine =
            "Run ended: 7-Pass Schneier, " + QByteArray::number(files - left) + " files erased, " +
            QByteArray::number((files - left) * fileSize) + " bytes, 0 failed, " +
            QByteArray::number(left) + " not touched\n";
        QVERIFY2(logged.endsWith(lastLine), logged.constData());
        const QJsonObject json = QJsonDocument::fromJson(Scratch::content(report)).object();
        QCOMPARE(json.value(QStringLiteral("bytes")).toObject(),
                 (QJsonObject{{QStringLiteral("found"), files * fileSize},
                              {QStringLiteral("wiped"), (files - left) * fileSize}}));
        QCOMPARE(json.value(QStringLiteral("files")).toObject(),
                 (QJsonObject{{QStringLiteral("found"), files},
                              {QStringLiteral("wiped"), files - left},
                              {QStringLiteral("failed"), 0},
                              {QStringLiteral("remaining"), left}}));
    }

    void theSecondSignalEndsAtOnceAndTheFileInWorkStays_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("SIGINT twice") << SIGINT << SIGINT << 130;
        QTest::newRow("SIGTERM twice") << SIGTERM << SIGTERM << 143;
        QTest::newRow("SIGINT, then SIGTERM") << SIGINT << SIGTERM << 143;
    }
    void theSecondSignalEndsAtOnceAndTheFileInWorkStays()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(int, exitCode);
        const Scratch scratch;
        const QByteArray endless = makeEndlessFile(scratch);
        QVERIFY(!endless.isEmpty());
        const QByteArray next = scratch.file("next", "content");
        const QByteArray log = scratch.file("log", "of the run before\n");
        Program program(scratch, {"erase", "-y", "-m10", "--log", log, endless, next});

        program.start();
        QVERIFY(program.runsUntil([&endless] { return blocksOf(endless) > 0; }));
        program.signal(first);
        QVERIFY(program.runsUntil([&program, first] { return program.hasTaken(first); }));
        QVERIFY(!program.hasEnded());
        program.signal(second);
        const Outcome outcome = program.finish();

        QCOMPARE(outcome.exitCode, exitCode);
        QVERIFY(!outcome.output.contains("Erased:"));
        QVERIFY(Scratch::exists(endless));
        QCOMPARE(Scratch::content(next), QByteArray("content"));
        // Begun, and no word of an end.
        const QByteArray logged = Scratch::content(log);
        QVERIFY2(logged.startsWith("[INFO]  ") && logged.count('\n') == 1 &&
                     logged.endsWith("Run started: 35-Pass Gutmann Method, 2 files, 268435463 "
                                     "bytes\n"),
                 logged.constData());
    }

    void aSignalDuringTheScanErasesNothing_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("SIGINT") << SIGINT << 130;
        QTest::newRow("SIGTERM") << SIGTERM << 143;
    }
    void aSignalDuringTheScanErasesNothing()
    {
        QFETCH(int, signal);
        QFETCH(int, exitCode);
        const ManyFiles many("file");
        QVERIFY(many.isMade);
        const QByteArray last = many.scratch.folder("last");
        // The same folder again and again makes a long scan of few files.
        Program::Arguments arguments(2000, many.folder);
        const QByteArray log = many.scratch.path("log");
        arguments.insert(arguments.begin(), {"erase", "-y", "--json", "--log", log});
        arguments.push_back(last);
        Program program(many.scratch, arguments);

        program.start();
        QVERIFY(program.runsUntil([&] { return program.hasOpen(many.folder); }));
        program.signal(signal);
        const Outcome outcome = program.finish();

        QCOMPARE(outcome.exitCode, exitCode);
        QCOMPARE(outcome.errors, QByteArray("Nothing was erased.\n"));
        QCOMPARE(many.untouched(), files);
        const QByteArray logged = Scratch::content(log);
        QVERIFY2(logged.startsWith("[WARN]  ") &&
                     logged.endsWith("[RunLog scanCancelled]Scan cancelled\n") &&
                     logged.count('\n') == 1,
                 logged.constData());
        QVERIFY(Scratch::exists(last));
        const QJsonObject folders = QJsonDocument::fromJson(outcome.output)
                                        .object()
                                        .value(QStringLiteral("folders"))
                                        .toObject();
        QCOMPARE(folders, (QJsonObject{{QStringLiteral("found"), 1}, // it never came to the last
                                       {QStringLiteral("removed"), 0}}));
    }

    void aSignalDuringTheScanKeepsTheOldLog_data()
    {
        QTest::addColumn<QByteArray>("option");
        QTest::addColumn<QByteArray>("link");
        QTest::newRow("a dry run") << QByteArray("-n") << QByteArray("other");
        QTest::newRow("nothing speaks against it yet") << QByteArray("-y") << QByteArray("other");
        QTest::newRow("a link to it is among what was found")
            << QByteArray("-y") << QByteArray("log");
    }
    void aSignalDuringTheScanKeepsTheOldLog()
    {
        QFETCH(QByteArray, option);
        QFETCH(QByteArray, link);
        const ManyFiles many("file");
        QVERIFY(many.isMade);
        const QByteArray log = many.scratch.file("log", "kept");
        const QByteArray other = many.scratch.file("other", "kept");
        const QByteArray links = many.scratch.folder("links");
        QVERIFY(!many.scratch.link("links/a", "../" + link).isEmpty());
        Program::Arguments arguments(2000, many.folder);
        arguments.insert(arguments.begin(), {"erase", option, "--log", log, links});
        Program program(many.scratch, arguments);

        program.start();
        QVERIFY(program.runsUntil([&] { return program.hasOpen(many.folder); }));
        program.signal(SIGINT);

        QCOMPARE(program.finish().exitCode, 130);
        QCOMPARE(Scratch::content(log), QByteArray("kept"));
        QCOMPARE(Scratch::content(other), QByteArray("kept"));
        QCOMPARE(many.untouched(), files);
    }

    void aSignalThatTheCallerIgnoresStaysIgnored()
    {
        const ManyFiles many("file");
        QVERIFY(many.isMade);
        Program program(many.scratch, {"erase", "-y", "-m6", many.folder});
        program.ignoring(SIGINT);

        program.start();
        QVERIFY(program.runsUntil([&many] { return many.left() <= files - 2; }));
        program.signal(SIGINT);
        const int left = many.left();
        QVERIFY(program.runsUntil([&] { return many.left() <= left - 3; }));
        program.signal(SIGTERM);

        QCOMPARE(program.finish().exitCode, 143);
        QCOMPARE(many.untouched(), many.left());
    }
};

QTEST_GUILESS_MAIN(InterruptTest)
#include "InterruptTest.moc"
