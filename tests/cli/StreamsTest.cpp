#include "cli/Program.h"

using Stream = Program::Stream;

namespace {

/// A run with something to say on every stream: a link whose target is overwritten with zeros and
/// stays to be looked at, a file, and a socket, which fails.
struct Scene
{
    Scratch scratch;
    QByteArray target = scratch.file("target", 9000);
    QByteArray link = scratch.link("link", "target");
    QByteArray file = scratch.file("file", 5000);
    QByteArray socket = scratch.path("socket");
    bool isMade = ::mknod(socket.constData(), S_IFSOCK | 0600, 0) == 0;
    Program program = Program(
        scratch, {"erase", "-y", "-m1", "--report", scratch.path("report"), socket, file, link});

    [[nodiscard]] bool cameOutRight(const Outcome &outcome) const
    {
        return isMade && outcome.exitCode == 1 && !Scratch::exists(file) &&
               !Scratch::exists(link) && Scratch::exists(socket) &&
               Scratch::content(target) == QByteArray(9000, '\0') &&
               Scratch::content(scratch.path("report")).startsWith("{");
    }
};

} // namespace

class StreamsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aClosedStreamChangesNoOutcomeAndNoFile_data()
    {
        QTest::addColumn<int>("closed"); ///< bit by bit
        for (int closed = 0; closed < 8; ++closed)
            QTest::addRow("%s%s%s", (closed & 1) != 0 ? "no input " : "",
                          (closed & 2) != 0 ? "no output " : "",
                          (closed & 4) != 0 ? "no errors" : "")
                << closed;
    }
    void aClosedStreamChangesNoOutcomeAndNoFile()
    {
        QFETCH(int, closed);
        Scene scene;
        for (const Stream stream : {Program::Input, Program::Output, Program::Errors}) {
            if ((closed >> stream & 1) != 0)
                scene.program.closed(stream);
        }

        const Outcome outcome = scene.program.run();

        QVERIFY(scene.cameOutRight(outcome));
        QCOMPARE(outcome.output.contains("Erased:  14.00 KB in 2 files\n"), (closed & 2) == 0);
        QCOMPARE(outcome.errors,
                 (closed & 4) == 0 ? scene.socket + ": No such device or address\n" : QByteArray());
    }

    void aStreamThatTakesNothingChangesNoOutcome_data()
    {
        QTest::addColumn<int>("stream");
        QTest::addColumn<bool>("isFull");
        QTest::newRow("output full") << int(Program::Output) << true;
        QTest::newRow("errors full") << int(Program::Errors) << true;
        QTest::newRow("output without a reader") << int(Program::Output) << false;
        QTest::newRow("errors without a reader") << int(Program::Errors) << false;
    }
    void aStreamThatTakesNothingChangesNoOutcome()
    {
        QFETCH(int, stream);
        QFETCH(bool, isFull);
        Scene scene;
        if (isFull)
            scene.program.on(Stream(stream), "/dev/full");
        else
            scene.program.onBrokenPipe(Stream(stream));

        QVERIFY(scene.cameOutRight(scene.program.run()));
    }

    void jsonThatNobodyReadsChangesNoOutcome()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("file", 5);

        const Outcome outcome =
            Program(scratch, {"erase", "-y", "--json", file}).onBrokenPipe(Program::Output).run();

        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(file));
    }

    void progressOnATerminalNeverGoesIntoAFile()
    {
        Scene scene;
        Pty pty;
        scene.program.closed(Program::Input).closed(Program::Output);
        scene.program.on(Program::Errors, pty.terminal());

        const Outcome outcome = scene.program.run();

        QVERIFY(scene.cameOutRight(outcome));
        QVERIFY2(pty.shown().contains("\r[--------------------] 0 %"), pty.shown().constData());
    }
};

QTEST_GUILESS_MAIN(StreamsTest)
#include "StreamsTest.moc"
