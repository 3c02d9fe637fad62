#include "cli/Program.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

using Arguments = Program::Arguments;

constexpr int columns = 40;
constexpr char endOfInput = 4;
constexpr char interrupt = 3;

/// One erase in a terminal.
struct Scene
{
    Scratch scratch;
    QByteArray file = scratch.file("secret", "content");
    Pty pty;

    /// Asks, is answered, and ends.
    Outcome answer(const QByteArray &keys, Arguments arguments = {})
    {
        arguments.insert(arguments.begin(), "erase");
        arguments.push_back(file);
        Program program(scratch, arguments);
        program.onTerminal(pty).start();
        if (!program.runsUntil([this] { return pty.shown().contains("[y/N] "); }))
            return {-1, {}, {}};
        pty.type(keys);
        return program.finish();
    }
    QStringList rows() { return Screen(pty.shown(), 80).rows(); }
    [[nodiscard]] bool isUntouched() const { return Scratch::content(file) == "content"; }
};

QStringList question()
{
    return {QStringLiteral("Found:   1 file (7 Bytes) and 0 folders"),
            QStringLiteral("Method:  3-Pass DoD 5220.22-M (E)")};
}

/// What was drawn on the progress line, one state after the other, blanks behind it included.
QByteArrayList drawnLines(const QByteArray &shown)
{
    QByteArrayList lines = shown.sliced(qMax(shown.indexOf("\r["), 0)).split('\r');
    lines.removeIf(
        [](const QByteArray &line) { return !line.startsWith('[') && !line.startsWith(' '); });
    return lines;
}

int widestOf(const QByteArrayList &lines)
{
    int widest = 0;
    for (const QByteArray &line : lines)
        widest = std::max(widest, Screen(line, INT_MAX).widestColumn());
    return widest;
}

void removeElapsed(QStringList &rows)
{
    rows.erase(std::remove_if(
                   rows.begin(), rows.end(),
                   [](const QString &row) { return row.startsWith(QLatin1String("Elapsed: ")); }),
               rows.end());
}

} // namespace

class TerminalTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aYesErases_data()
    {
        QTest::addColumn<QByteArray>("keys");
        for (const char *keys : {"y", "Y", "yes", "YES", "Yes", " y "})
            QTest::newRow(keys) << QByteArray(keys);
    }
    void aYesErases()
    {
        QFETCH(QByteArray, keys);
        Scene scene;

        const Outcome outcome = scene.answer(keys + '\n');

        QStringList rows = scene.rows();
        removeElapsed(rows);
        QCOMPARE(rows,
                 question() +
                     QStringList({QStringLiteral("Erase 1 file? [y/N] %1")
                                      .arg(QString::fromLatin1(keys).trimmed().prepend(
                                          keys.startsWith(' ') ? QStringLiteral(" ") : QString())),
                                  QStringLiteral("Erased:  7 Bytes in 1 files"),
                                  QStringLiteral("Failed:  0"), QString()}));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(scene.file));
    }

    void anythingElseErasesNothing_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::newRow("n") << QByteArray("n\n");
        QTest::newRow("only return") << QByteArray("\n");
        QTest::newRow("no") << QByteArray("no\n");
        QTest::newRow("almost yes") << QByteArray("yep\n");
        QTest::newRow("yes and more") << QByteArray("y n\n");
        QTest::newRow("end of input") << QByteArray(1, endOfInput);
        QTest::newRow("a long text") << QByteArray(1000, 'y') + '\n';
    }
    void anythingElseErasesNothing()
    {
        QFETCH(QByteArray, keys);
        Scene scene;

        const Outcome outcome = scene.answer(keys);

        QVERIFY2(scene.pty.shown().endsWith("Nothing was erased.\r\n"),
                 scene.pty.shown().constData());
        QCOMPARE(outcome.exitCode, 2);
        QVERIFY(scene.isUntouched());
    }

    void onlyTheFirstLineIsTheAnswer()
    {
        Scene scene;

        QCOMPARE(scene.answer("n\ny\n").exitCode, 2);
        QVERIFY(scene.isUntouched());
    }

    void ctrlCAtTheQuestionErasesNothing()
    {
        Scene scene;

        const Outcome outcome = scene.answer(QByteArray(1, interrupt));

        QCOMPARE(scene.rows(),
                 question() + QStringList({QStringLiteral("Erase 1 file? [y/N] ^C"),
                                           QStringLiteral("Nothing was erased."), QString()}));
        QCOMPARE(outcome.exitCode, 130);
        QVERIFY(scene.isUntouched());
    }

    void aTerminationAtTheQuestionErasesNothing()
    {
        Scene scene;
        Program program(scene.scratch, {"erase", scene.file});
        program.onTerminal(scene.pty).start();
        QVERIFY(program.runsUntil([&scene] { return scene.pty.shown().contains("[y/N] "); }));

        program.signal(SIGTERM);

        QCOMPARE(program.finish().exitCode, 143);
        QVERIFY(scene.pty.shown().endsWith("Nothing was erased.\r\n"));
        QVERIFY(scene.isUntouched());
    }

    void cautionsStandAboveTheQuestion()
    {
        Scene scene;
        const QByteArray link = scene.scratch.link("link", "secret");

        const Outcome outcome = scene.answer("n\n", {link});

        QCOMPARE(scene.rows(),
                 QStringList({QStringLiteral("Found:   2 files (14 Bytes) and 0 folders"),
                              QStringLiteral("Method:  3-Pass DoD 5220.22-M (E)"),
                              QStringLiteral("Caution: 1 symbolic link; the files they point to "
                                             "will be overwritten"),
                              QStringLiteral("Erase 2 files? [y/N] n"),
                              QStringLiteral("Nothing was erased."), QString()}));
        QCOMPARE(outcome.exitCode, 2);
    }

    void quietAsksAllTheSame()
    {
        Scene scene;

        const Outcome outcome = scene.answer("y\n", {"--quiet"});

        QCOMPARE(scene.rows(),
                 question() + QStringList({QStringLiteral("Erase 1 file? [y/N] y"), QString()}));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(scene.file));
    }

    void quietAndYesShowNothing()
    {
        Scene scene;

        Program program(scene.scratch, {"erase", "-yq", scene.file});

        QCOMPARE(program.onTerminal(scene.pty).run().exitCode, 0);
        QCOMPARE(scene.pty.shown(), QByteArray());
    }

    void withYesNothingIsAsked()
    {
        Scene scene;

        Program program(scene.scratch, {"erase", "-y", scene.file});

        QCOMPARE(program.onTerminal(scene.pty).run().exitCode, 0);
        QVERIFY(!scene.pty.shown().contains("[y/N]"));
        QVERIFY(!Scratch::exists(scene.file));
    }

    void withJsonTheQuestionGoesToStandardErrorAndTheAnswerDoesNotSpoilTheJson()
    {
        Scene scene;
        Program program(scene.scratch, {"erase", "--json", scene.file});
        program.on(Program::Input, scene.pty.terminal()).on(Program::Errors, scene.pty.terminal());
        program.start();
        QVERIFY(program.runsUntil([&scene] { return scene.pty.shown().contains("[y/N] "); }));
        scene.pty.type("y\n");

        const Outcome outcome = program.finish();

        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(QJsonDocument::fromJson(outcome.output).isObject());
        QVERIFY(scene.pty.shown().contains("Erased:  7 Bytes in 1 files\r\n"));
    }

    void aQuestionThatNobodyWouldSeeIsNotAsked()
    {
        Scene scene;
        Program program(scene.scratch, {"erase", scene.file});

        const Outcome outcome = program.on(Program::Input, scene.pty.terminal()).run();

        QCOMPARE(outcome.exitCode, 2);
        QVERIFY(outcome.errors.startsWith("vantorel-cli: no terminal to ask on"));
        QVERIFY(scene.isUntouched());
    }

    // Progress

    void progressIsDrawnOnOneLineAndClearedAtTheEnd_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("without room for the name") << columns;
        QTest::newRow("cut between wide characters") << 60;
        QTest::newRow("cut inside a wide character") << 61;
    }
    void progressIsDrawnOnOneLineAndClearedAtTheEnd()
    {
        QFETCH(int, width);
        const Scratch scratch;
        Pty pty(width);
        const QByteArray name = QByteArray("\xe6\xbc\xa2").repeated(40) + ".txt";
        Program program(scratch, {"erase", "-y", "-m1", scratch.file(name, 5)});

        QCOMPARE(program.onTerminal(pty).run().exitCode, 0);

        const QByteArrayList drawn = drawnLines(pty.shown());
        QVERIFY(!drawn.isEmpty());
        const bool isAtItsStart = drawn.front().startsWith("[--------------------] 0 %  ");
        const bool isAtItsEnd = drawn.front().startsWith("[####################] 100 %  ");
        QVERIFY2(isAtItsStart || isAtItsEnd, drawn.front().constData());
        const Screen screen(pty.shown(), width);
        QVERIFY(screen.widestColumn() < width);
        QStringList rows = screen.rows();
        removeElapsed(rows);
        QCOMPARE(rows, QStringList({QStringLiteral("Found:   1 file (5 Bytes) and 0 folders"),
                                    QStringLiteral("Method:  1-Pass Zero"),
                                    QStringLiteral("Erased:  5 Bytes in 1 files"),
                                    QStringLiteral("Failed:  0"), QString()}));
    }

    void progressShowsTheFileInWork()
    {
        const Scratch scratch;
        Pty pty(columns * 3);
        Program program(scratch, {"erase", "-y", "-m1", scratch.file("a\033[31m;\xe6\xbc\xa2", 5)});

        QCOMPARE(program.onTerminal(pty).run().exitCode, 0);

        const QByteArrayList drawn = drawnLines(pty.shown());
        QVERIFY(!drawn.isEmpty());
        // Where there is much to do, so small a file is done before anything is drawn.
        QVERIFY2(drawn.front().endsWith("  --  a\\x1b[31m;\xe6\xbc\xa2"),
                 drawn.front().constData());
    }

    void progressIsRedrawnInPlaceUntilTheRunIsInterrupted()
    {
        const Scratch scratch;
        Pty pty(columns);
        const QByteArray folder = scratch.folder("folder");
        for (int number = 0; number < 2000; ++number) {
            const QByteArray name = QByteArray("\xe6\xbc\xa2").repeated(1 + number % 40);
            const QByteArray file = scratch.file("folder/" + name + QByteArray::number(number), "");
            constexpr off_t size = 200000; // a hole, quickly made
            QCOMPARE(::truncate(file.constData(), size), 0);
        }
        Program program(scratch, {"erase", "-y", "-m10", folder});

        program.onTerminal(pty).start();
        QVERIFY(program.runsUntil([&pty] { return drawnLines(pty.shown()).size() >= 4; }));
        const QByteArrayList drawn = drawnLines(pty.shown());
        program.signal(SIGINT);
        const Outcome outcome = program.finish();

        QCOMPARE(outcome.exitCode, 130);
        static const QRegularExpression figures(QStringLiteral("\\A\\[#*-*\\] \\d+ %  [0-9.]+ "));
        for (const QByteArray &line : drawn)
            QVERIFY2(figures.match(QString::fromUtf8(line)).hasMatch(), line.constData());
        QVERIFY2(!drawn.back().contains(" 0 Bytes/s"), drawn.back().constData());
        QVERIFY(widestOf(drawnLines(pty.shown())) < columns);
        // What stands above the progress may wrap.
        const QStringList rows = Screen(pty.shown(), columns * 2).rows();
        QVERIFY2(rows.at(1) == QLatin1String("Method:  35-Pass Gutmann Method"),
                 qPrintable(rows.join(QLatin1Char('|'))));
        QVERIFY2(rows.at(2).startsWith(QLatin1String("Erased:  ")),
                 qPrintable(rows.join(QLatin1Char('|'))));
        QVERIFY(rows.at(4).startsWith(QLatin1String("Left:    ")));
        QCOMPARE(rows.size(), 8);
    }

    void failuresAndProgressDoNotMix()
    {
        const Scratch scratch;
        Pty pty(columns * 3);
        Arguments arguments = {"erase", "-y", "-m1"};
        QStringList expected = {QStringLiteral("Found:   20 files (50 Bytes) and 0 folders"),
                                QStringLiteral("Method:  1-Pass Zero")};
        for (int number = 0; number < 10; ++number) {
            const QByteArray name = QByteArray::number(number);
            const QByteArray socket = scratch.path("s" + name);
            QCOMPARE(::mknod(socket.constData(), S_IFSOCK | 0600, 0), 0);
            arguments.insert(arguments.end(), {scratch.file("f" + name, 5), socket});
            expected.append(QString::fromUtf8(socket) +
                            QStringLiteral(": No such device or address"));
        }
        expected += {QStringLiteral("Erased:  50 Bytes in 10 files"), QStringLiteral("Failed:  10"),
                     QString()};

        QCOMPARE(Program(scratch, arguments).onTerminal(pty).run().exitCode, 1);

        QVERIFY(!drawnLines(pty.shown()).isEmpty());
        QStringList rows = Screen(pty.shown(), columns * 3).rows();
        removeElapsed(rows);
        QCOMPARE(rows, expected);
    }

    void withTheOutputInAPipeProgressGoesToTheTerminalOfStandardError()
    {
        const Scratch scratch;
        Pty pty(columns);
        Program program(scratch, {"erase", "-y", "-m1", scratch.file("a", 5)});

        const Outcome outcome = program.on(Program::Errors, pty.terminal()).run();

        QVERIFY(outcome.output.startsWith("Found:   1 file (5 Bytes) and 0 folders\n"));
        QVERIFY(!outcome.output.contains('\r'));
        QVERIFY(!drawnLines(pty.shown()).isEmpty());
        QCOMPARE(Screen(pty.shown(), columns).rows(), QStringList{QString()});
    }

    void withTheErrorsInAFileTheyHoldNoProgress()
    {
        const Scratch scratch;
        Pty pty(columns);
        const QByteArray missing = scratch.path("missing");
        Program program(scratch, {"erase", "-y", missing});
        program.on(Program::Input, pty.terminal()).on(Program::Output, pty.terminal());

        const Outcome outcome = program.run();

        QCOMPARE(outcome.errors, missing + ": No such file or directory\n");
        QVERIFY(!drawnLines(pty.shown()).isEmpty());
    }

    void progressFollowsATerminalThatIsMadeNarrower()
    {
        const Scratch scratch;
        Pty pty(80);
        const QByteArray folder = scratch.folder("folder");
        for (int number = 0; number < 2000; ++number)
            scratch.file("folder/" + QByteArray(60, 'x') + QByteArray::number(number), 200000);
        Program program(scratch, {"erase", "-y", "-m10", folder});
        program.onTerminal(pty).start();
        QVERIFY(QTest::qWaitFor([&pty] { return pty.shown().contains("\r["); }, 30000));

        struct winsize size = {24, 40, 0, 0};
        QCOMPARE(::ioctl(pty.terminal(), TIOCSWINSZ, &size), 0);
        const qsizetype before = pty.shown().size();
        QVERIFY(
            QTest::qWaitFor([&] { return pty.shown().sliced(before).count("\r[") >= 2; }, 30000));
        program.signal(SIGINT);
        program.finish();

        for (const QByteArray &line : pty.shown().sliced(before).split('\r')) {
            if (line.startsWith('[') || line.startsWith(' '))
                QVERIFY2(Screen(line, INT_MAX).widestColumn() < 40, line.constData());
        }
    }
};

QTEST_GUILESS_MAIN(TerminalTest)
#include "TerminalTest.moc"
