#include "platform/StandardStreams.h"

#include "kit/Pty.h"

#include <QTest>

#include <array>
#include <clocale>
#include <csignal>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>

using StandardStreams::Stream;

namespace {

/// Both ends of a pipe, as streams.
class Pipe
{
  public:
    Pipe()
    {
        if (::pipe2(ends_.data(), O_CLOEXEC) != 0)
            qFatal("no pipe: %s", std::strerror(errno));
    }
    ~Pipe()
    {
        closeReading();
        closeWriting();
    }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;

    [[nodiscard]] Stream reading() const { return Stream(ends_[0]); }
    [[nodiscard]] Stream writing() const { return Stream(ends_[1]); }
    void closeReading() { closeEnd(ends_[0]); }
    void closeWriting() { closeEnd(ends_[1]); }

  private:
    static void closeEnd(int &end)
    {
        if (end >= 0)
            ::close(end);
        end = -1;
    }

    std::array<int, 2> ends_ = {-1, -1};
};

/// The exit code of a child process that runs `work`; -1 if it did not end that way.
template <class Work> int exitCodeOf(Work work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status)
               ? WEXITSTATUS(status)
               : -1;
}

} // namespace

class StandardStreamsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void textTakesTheColumnsOfItsCharacters_data();
    void textTakesTheColumnsOfItsCharacters();
    void columnsAreCountedWhateverTheLocale();

    void aTerminalIsOne();
    void aPipeIsNoTerminal();
    void aTerminalTellsItsColumns();
    void aTerminalThatDoesNotTellHasEightyColumns();
    void whatIsNoTerminalHasEightyColumns();

    void allIsWrittenThroughAFullPipe_data();
    void allIsWrittenThroughAFullPipe();
    void writingToAReaderThatIsGoneIsSwallowed();
    void writingToAClosedStreamIsSwallowed();
    void readingTakesWhatIsThere();
    void readingAtTheEndIsEmpty();
    void readingAClosedStreamIsEmpty();

    void aStreamClosedByTheCallerIsOpenedOntoNothing_data();
    void aStreamClosedByTheCallerIsOpenedOntoNothing();
    void streamsThatAreOpenStayAsTheyAre();
    void aReaderThatGoesAwayEndsNoRun();
};

void StandardStreamsTest::textTakesTheColumnsOfItsCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::newRow("nothing") << QString() << 0;
    QTest::newRow("plain letters") << QStringLiteral("letters") << 7;
    QTest::newRow("letters beyond the first 128") << QStringLiteral(u"\u00e4\u00df") << 2;
    QTest::newRow("wide letters") << QStringLiteral(u"\u6f22\u5b57") << 4;
    QTest::newRow("a wide letter beyond the first 65536") << QStringLiteral(u"\U0001F600") << 2;
    QTest::newRow("an accent put on a letter") << QStringLiteral(u"e\u0301") << 1;
    QTest::newRow("control characters") << QStringLiteral("\x01\x1b") << 0;
    QTest::newRow("mixed") << QStringLiteral(u"a\u6f22b") << 4;
}

void StandardStreamsTest::textTakesTheColumnsOfItsCharacters()
{
    QFETCH(QString, text);
    QTEST(StandardStreams::columnsOf(text), "columns");
}

void StandardStreamsTest::columnsAreCountedWhateverTheLocale()
{
    const QByteArray before = std::setlocale(LC_ALL, nullptr);
    QVERIFY(std::setlocale(LC_ALL, "C") != nullptr);
    const int columns = StandardStreams::columnsOf(QStringLiteral(u"\u00e4\u6f22"));
    std::setlocale(LC_ALL, before.constData());
    QCOMPARE(columns, 3);
}

void StandardStreamsTest::aTerminalIsOne()
{
    const Pty pty;
    QVERIFY(StandardStreams::isTerminal(Stream(pty.terminal())));
}

void StandardStreamsTest::aPipeIsNoTerminal()
{
    const Pipe pipe;
    QVERIFY(!StandardStreams::isTerminal(pipe.reading()));
    QVERIFY(!StandardStreams::isTerminal(Stream(-1)));
}

void StandardStreamsTest::aTerminalTellsItsColumns()
{
    QCOMPARE(StandardStreams::terminalColumns(Stream(Pty(132).terminal())), 132);
    QCOMPARE(StandardStreams::terminalColumns(Stream(Pty(1).terminal())), 1);
}

void StandardStreamsTest::aTerminalThatDoesNotTellHasEightyColumns()
{
    const Pty pty(0);
    QCOMPARE(StandardStreams::terminalColumns(Stream(pty.terminal())), 80);
}

void StandardStreamsTest::whatIsNoTerminalHasEightyColumns()
{
    const Pipe pipe;
    QCOMPARE(StandardStreams::terminalColumns(pipe.writing()), 80);
    QCOMPARE(StandardStreams::terminalColumns(Stream(-1)), 80);
}

void StandardStreamsTest::allIsWrittenThroughAFullPipe_data()
{
    QTest::addColumn<bool>("blocks");
    QTest::newRow("that blocks") << true;
    QTest::newRow("that does not block") << false;
}

void StandardStreamsTest::allIsWrittenThroughAFullPipe()
{
    QFETCH(bool, blocks);
    Pipe pipe;
    if (!blocks)
        QCOMPARE(::fcntl(pipe.writing(), F_SETFL, O_NONBLOCK), 0);
    QByteArray bytes(1 << 20, 'x');
    bytes.front() = 'a';
    bytes.back() = 'z';
    QByteArray arrived;
    std::thread reader([&] {
        for (;;) {
            const QByteArray part = StandardStreams::read(pipe.reading());
            if (part.isEmpty())
                return;
            arrived += part;
        }
    });
    StandardStreams::write(pipe.writing(), bytes);
    pipe.closeWriting();
    reader.join();
    QVERIFY(arrived == bytes);
}

void StandardStreamsTest::writingToAReaderThatIsGoneIsSwallowed()
{
    Pipe pipe;
    pipe.closeReading();
    QCOMPARE(exitCodeOf([&pipe] {
                 std::signal(SIGPIPE, SIG_IGN);
                 StandardStreams::write(pipe.writing(), "text");
                 return 7;
             }),
             7);
}

void StandardStreamsTest::writingToAClosedStreamIsSwallowed()
{
    Pipe pipe;
    const Stream writing = pipe.writing();
    pipe.closeWriting();
    StandardStreams::write(writing, "text");
    pipe.closeReading();
    StandardStreams::write(Stream(-1), "text");
}

void StandardStreamsTest::readingTakesWhatIsThere()
{
    const Pipe pipe;
    StandardStreams::write(pipe.writing(), QByteArray("a\0b\xff", 4));
    QCOMPARE(StandardStreams::read(pipe.reading()), QByteArray("a\0b\xff", 4));
}

void StandardStreamsTest::readingAtTheEndIsEmpty()
{
    Pipe pipe;
    pipe.closeWriting();
    QVERIFY(StandardStreams::read(pipe.reading()).isEmpty());
}

void StandardStreamsTest::readingAClosedStreamIsEmpty()
{
    QVERIFY(StandardStreams::read(Stream(-1)).isEmpty());
}

void StandardStreamsTest::aStreamClosedByTheCallerIsOpenedOntoNothing_data()
{
    QTest::addColumn<QList<int>>("closed");
    QTest::newRow("input") << QList<int>({0});
    QTest::newRow("output") << QList<int>({1});
    QTest::newRow("error") << QList<int>({2});
    QTest::newRow("all three") << QList<int>({0, 1, 2});
    QTest::newRow("output and error") << QList<int>({1, 2});
}

void StandardStreamsTest::aStreamClosedByTheCallerIsOpenedOntoNothing()
{
    QFETCH(QList<int>, closed);
    const auto work = [&closed] {
        for (const int fd : closed)
            ::close(fd);
        StandardStreams::secure();
        struct stat nothing = {};
        struct stat opened = {};
        ::stat("/dev/null", &nothing);
        for (const int fd : closed) {
            if (::fstat(fd, &opened) != 0 || opened.st_rdev != nothing.st_rdev)
                return fd;
        }
        // The next file gets none of their numbers.
        return ::open("/dev/null", O_RDONLY | O_CLOEXEC) > 2 ? 7 : 8;
    };
    QCOMPARE(exitCodeOf(work), 7);
}

void StandardStreamsTest::streamsThatAreOpenStayAsTheyAre()
{
    const Pipe pipe;
    const int code = exitCodeOf([&pipe] {
        ::dup2(pipe.writing(), StandardStreams::Output);
        StandardStreams::secure();
        StandardStreams::write(StandardStreams::Output, "kept");
        return 7;
    });
    QCOMPARE(code, 7);
    QCOMPARE(StandardStreams::read(pipe.reading()), "kept");
}

void StandardStreamsTest::aReaderThatGoesAwayEndsNoRun()
{
    Pipe pipe;
    pipe.closeReading();
    QCOMPARE(exitCodeOf([&pipe] {
                 StandardStreams::secure();
                 StandardStreams::write(pipe.writing(), "text");
                 return 7;
             }),
             7);
}

QTEST_GUILESS_MAIN(StandardStreamsTest)
#include "StandardStreamsTest.moc"
