#include "support/Logger.h"

#include "engine/RecordedLog.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"
#include "platform/UserDefaults.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <cerrno>
#include <latch>
#include <stdexcept>
#include <thread>

namespace {

const QString pathKey = QStringLiteral("logFilePath");
const QString intervalKey = QStringLiteral("logInterval");
const QString frame = QStringLiteral("1   vantorel   0x0 -[Scene plays] + 1");

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// Lines without their time, which is checked.
QStringList untimed(const QByteArray &content)
{
    static const QRegularExpression time(
        QStringLiteral("^(.{7}) ([01]\\d|2[0-3]):[0-5]\\d:[0-5]\\d\\.\\d{3} \\| "));
    QStringList lines = QString::fromUtf8(content).split(QLatin1Char('\n'));
    for (QString &line : lines)
        line.replace(time, QStringLiteral("\\1|"));
    return lines;
}

QStringList messagesOf(const Logger &logger)
{
    QStringList messages;
    for (const auto &record : logger.logArray())
        messages.append(record->message);
    return messages;
}

/// Takes the first bytes of each line, or fails as it is told.
class FaultyWrites final : public ForwardingSystemCalls
{
  public:
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        ++calls;
        if (interruptions > 0 && interruptions-- > 0)
            return -EINTR;
        if (error != 0)
            return -error;
        return ForwardingSystemCalls::write(fd, bytes, std::min(count, most));
    }

    int calls = 0;
    int interruptions = 0;
    int error = 0;
    std::size_t most = 1 << 20;
};

} // namespace

class LoggerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    // Lines and records
    void aLineHasLevelTimeCallerAndMessage();
    void eachLevelHasItsNameAndItsPlaces_data();
    void eachLevelHasItsNameAndItsPlaces();
    void aLevelWithoutANameIsPaddedToSevenBlanks();
    void aDashAloneIsALineAcross();
    void aNewlineAtTheEndIsNotDoubled();
    void argumentsAreFilledIn();
    void theTimeIsThatOfTheDay();

    // Formats
    void anErrorAsTheFormatIsItsCausesDescription();
    void anyObjectAsTheFormatIsItsDescription();
    void noFormatIsNoMessage();
    void anEmptyFormatIsAnEmptyMessage();
    void aPercentSignInAnErrorIsADirective();
    void aFormatThatCannotBeExpandedIsDroppedAndSaid();
    void aShortFrameDropsTheMessageSilently();

    // The file
    void withoutAPathNothingIsWrittenAndNothingSaid();
    void anExistingFileIsEmptiedByTheFirstMessage();
    void theFileIsMadeWithTheFirstMessageAndNotBefore();
    void aMessageThatIsDroppedSetsUpToo();
    void aPathSetBeforeTheFirstMessageCountsAtOnce();
    void aPathSetLaterCountsFromTheNextStart();
    void aGivenPathTakesThePlaceOfThePreferences();
    void linesGoToTheEndOfAFileThatOthersWriteToo();
    void aFileThatIsRemovedIsMissed();
    void anAbandonedFileTakesNoMoreLines_data();
    void anAbandonedFileTakesNoMoreLines();
    void aNameThatIsNotUtf8IsAFileLikeAnyOther();
    void whatCannotBeALogIsSaidOnceAndLeftAlone_data();
    void whatCannotBeALogIsSaidOnceAndLeftAlone();
    void aFifoNeitherHangsNorIsOpened();
    void eachLineIsOneCall();
    void anInterruptedCallIsMadeAgain();
    void aFailedWriteIsSaidOnceAndLaterLinesAreTriedAgain();
    void aLineThatWasCutIsEndedBeforeTheNext();

    // The list
    void recordsComeInBatches();
    void tenMessagesFromAWorkerComeInOrderAndInOneBatch();
    void neverTwoTimersArePending();
    void theTimerFiresInANestedEventLoop();
    void theIntervalIsReadWithTheFirstMessage_data();
    void theIntervalIsReadWithTheFirstMessage();
    void laterMessagesDoNotPutTheBatchOff();
    void flushDoesNotWaitForTheTimer();
    void whatIsLoggedWhileABatchIsToldComesInTheNext();
    void whoHearsOfABatchAndWantsAnotherGetsEachRecordOnce();
    void recordsAreRemovedByIdentity();
    void allRecordsAreRemoved();
    void whoHearsOfAChangeMayLog();
    void aLoggerThatHasGoneIsNotScheduled();

    // Threads
    void tenThreadsLoseNothingAndMixNothing();
    void theSharedLoggerIsOne();
    void theConsoleTakesTheBytesAsTheyAre();

  private:
    [[nodiscard]] QByteArray logPath() const { return scratch_->path("log"); }
    [[nodiscard]] QByteArray logged() const { return Scratch::content(logPath()); }
    /// With its file at logPath().
    [[nodiscard]] std::shared_ptr<Logger> makeLogger() const
    {
        UserDefaults::standard().setValue(pathKey, QString::fromUtf8(logPath()));
        return Logger::create();
    }

    std::unique_ptr<Scratch> scratch_;
    std::unique_ptr<UserDefaults::Replacement> defaults_;
};

void LoggerTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QString::fromUtf8(scratch_->path("config")));
    defaults_ = std::make_unique<UserDefaults::Replacement>();
}

void LoggerTest::cleanup()
{
    defaults_.reset();
    scratch_.reset();
}

void LoggerTest::aLineHasLevelTimeCallerAndMessage()
{
    const auto logger = makeLogger();
    logger->level(3, text("No such file"));
    QCOMPARE(
        untimed(logged()),
        (QStringList{text("[ERROR]|[LoggerTest aLineHasLevelTimeCallerAndMessage]No such file"),
                     QString()}));
    QTRY_COMPARE(logger->logArray().size(), std::size_t(1));
    const LogClass &record = *logger->logArray().front();
    QCOMPARE(record.type, text("[ERROR]"));
    QCOMPARE(record.caller, text("[LoggerTest aLineHasLevelTimeCallerAndMessage]"));
    QCOMPARE(record.message, text("No such file"));
    static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3}$"));
    QVERIFY(record.time.contains(time));
}

void LoggerTest::eachLevelHasItsNameAndItsPlaces_data()
{
    QTest::addColumn<std::int64_t>("level");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("isInTheList");
    const auto row = [](const char *title, std::int64_t level, const char *name, const char *column,
                        bool isInTheList) {
        QTest::newRow(title) << level << text(name) << text(column) << isInTheList;
    };
    row("default", Logger::LogLevelDefault, "[INFO]", "[INFO] ", true);
    row("info", Logger::LogLevelInfo, "[INFO]", "[INFO] ", true);
    row("debug", Logger::LogLevelDebug, "[DEBUG]", "[DEBUG]", false);
    row("error", Logger::LogLevelError, "[ERROR]", "[ERROR]", true);
    row("warning", Logger::LogLevelWarning, "[WARN]", "[WARN] ", true);
    row("0", 0, "[INFO]", "[INFO] ", true);
    row("1", 1, "[INFO]", "[INFO] ", true);
    row("2", 2, "[DEBUG]", "[DEBUG]", false);
    row("3", 3, "[ERROR]", "[ERROR]", true);
    row("4", 4, "[WARN]", "[WARN] ", true);
    row("7", 7, "", "       ", true);
    row("-1", -1, "", "       ", true);
}

void LoggerTest::eachLevelHasItsNameAndItsPlaces()
{
    QFETCH(std::int64_t, level);
    QFETCH(QString, name);
    QFETCH(QString, column);
    QFETCH(bool, isInTheList);
    const auto logger = makeLogger();
    logger->log(level, frame, text("a"), {});
    logger->log(Logger::LogLevelInfo, frame, text("behind it"), {});
    QCOMPARE(untimed(logged()).first(), column + QStringLiteral("|[Scene plays]a"));
    QCOMPARE(Logger::nameOfLevel(level), name);
    QTRY_VERIFY(messagesOf(*logger).contains(text("behind it")));
    QCOMPARE(messagesOf(*logger).contains(text("a")), isInTheList);
    if (isInTheList)
        QCOMPARE(logger->logArray().front()->type, name);
}

void LoggerTest::aLevelWithoutANameIsPaddedToSevenBlanks()
{
    const QString line = Logger::formatOutputString(text("x"), 7);
    QVERIFY(line.startsWith(text("        "))); // 7 and the one behind the column
    QCOMPARE(line.indexOf(text(" | x\n")), qsizetype(7 + 1 + 12));
}

void LoggerTest::aDashAloneIsALineAcross()
{
    const auto logger = makeLogger();
    const QString line(150, QLatin1Char('-'));
    logger->log(1, frame, text("-"), {});
    logger->log(1, frame, text("%@"), {FormatArgument("-")});
    logger->log(1, frame, text("--"), {});
    const QStringList lines = untimed(logged());
    QCOMPARE(lines.at(0), text("[INFO] |[Scene plays]") + line);
    QCOMPARE(lines.at(1), lines.at(0));
    QCOMPARE(lines.at(2), text("[INFO] |[Scene plays]--"));
    QTRY_COMPARE(messagesOf(*logger), (QStringList{line, line, text("--")}));
}

void LoggerTest::aNewlineAtTheEndIsNotDoubled()
{
    const auto logger = makeLogger();
    logger->log(1, frame, text("one\n"), {});
    logger->log(1, frame, text("two"), {});
    QCOMPARE(untimed(logged()), (QStringList{text("[INFO] |[Scene plays]one"),
                                             text("[INFO] |[Scene plays]two"), QString()}));
    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("one\n"), text("two")}));
}

void LoggerTest::argumentsAreFilledIn()
{
    const auto logger = makeLogger();
    logger->level(1, text("%ld files, %.0f bytes, %@, %s"), std::int64_t(12), 1e15,
                  QString::fromUtf8("\xe6\xbc\xa2 100%"), "plain");
    QCOMPARE(QString::fromUtf8(logged()).section(QLatin1Char(']'), 2),
             QString::fromUtf8("12 files, 1000000000000000 bytes, \xe6\xbc\xa2 100%, plain\n"));
}

void LoggerTest::theTimeIsThatOfTheDay()
{
    const QTime before = QTime::currentTime();
    const QTime time = QTime::fromString(Logger::time(), text("HH:mm:ss.zzz"));
    const QTime after = QTime::currentTime();
    QVERIFY(time.isValid());
    QVERIFY(after < before || (before <= time && time <= after)); // but at midnight
}

void LoggerTest::anErrorAsTheFormatIsItsCausesDescription()
{
    const auto shared = [](const char *description) {
        return std::make_shared<const LoggedError>(LoggedError{text(description), nullptr});
    };
    const auto logger = makeLogger();
    logger->level(3, LoggedError{text("Cannot save"), shared("Disk on fire")});
    logger->level(3, LoggedError{text("Cannot save"), nullptr});
    logger->level(3, LoggedError{text("Cannot save"), shared("")});
    // one step, no further
    logger->level(3, LoggedError{text("a"), std::make_shared<const LoggedError>(
                                                LoggedError{text("b"), shared("c")})});
    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("Disk on fire"), text("Cannot save"),
                                                   text("Cannot save"), text("b")}));
    QVERIFY(logged().contains("]Disk on fire\n"));
}

void LoggerTest::anyObjectAsTheFormatIsItsDescription()
{
    const auto logger = makeLogger();
    logger->level(1, std::runtime_error("no reason"));
    logger->level(1, QByteArray("bytes\0hidden", 12));
    logger->level(1, 42);
    logger->level(1, QPoint(1, 2));
    QTRY_COMPARE(messagesOf(*logger),
                 (QStringList{text("no reason"), text("bytes"), text("42"), text("QPoint(1,2)")}));
    QCOMPARE(Logger::convertToString(nullptr), QString());
    QVERIFY(!Logger::convertToString(nullptr).isNull());
}

void LoggerTest::noFormatIsNoMessage()
{
    const RecordedLog log;
    const auto logger = makeLogger();
    logger->level(1, nullptr);
    logger->level(1, QString());
    logger->level(1, text("a"));
    QTRY_COMPARE(messagesOf(*logger), QStringList{text("a")});
    QCOMPARE(logged().count('\n'), 1);
    QCOMPARE(log.lines(), QStringList());
}

void LoggerTest::anEmptyFormatIsAnEmptyMessage()
{
    const auto logger = makeLogger();
    logger->level(1, text(""));
    logger->level(1, QByteArray());
    QTRY_COMPARE(messagesOf(*logger), (QStringList{QString(), QString()}));
    QCOMPARE(logged().count("[LoggerTest anEmptyFormatIsAnEmptyMessage]\n"), 2);
}

void LoggerTest::aPercentSignInAnErrorIsADirective()
{
    const RecordedLog log;
    const auto logger = makeLogger();
    logger->level(3, LoggedError{text("100%% full"), nullptr});
    logger->level(3, LoggedError{text("failed with %d"), nullptr}, 7);
    logger->level(3, LoggedError{text("100% full"), nullptr});
    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("100% full"), text("failed with 7")}));
    QCOMPARE(log.lines(),
             QStringList{text("-[Logger level:text:] an argument is missing: \"100% full\"")});
}

void LoggerTest::aFormatThatCannotBeExpandedIsDroppedAndSaid()
{
    const RecordedLog log;
    const auto logger = makeLogger();
    logger->level(3, text("%@ and %@"), text("one"));
    logger->level(3, text("%d"), text("one"));
    logger->level(1, text("a"));
    QTRY_COMPARE(messagesOf(*logger), QStringList{text("a")});
    QCOMPARE(logged().count('\n'), 1);
    QCOMPARE(log.lines(),
             (QStringList{text("-[Logger level:text:] an argument is missing: \"%@ and %@\""),
                          text("-[Logger level:text:] an argument is no whole number: \"%d\"")}));
}

void LoggerTest::aShortFrameDropsTheMessageSilently()
{
    const RecordedLog log;
    const auto logger = makeLogger();
    logger->log(3, text("1 vantorel 0x0 12"), text("lost"), {});
    logger->log(3, QString(), text("lost"), {});
    logger->log(3, text("1 vantorel 0x0 main + 12"), text("kept"), {});
    QTRY_COMPARE(messagesOf(*logger), QStringList{text("kept")});
    QCOMPARE(untimed(logged()), (QStringList{text("[ERROR]|[main 12]kept"), QString()}));
    QCOMPARE(log.lines(), QStringList());
}

void LoggerTest::withoutAPathNothingIsWrittenAndNothingSaid()
{
    const RecordedLog log;
    for (const char *path : {static_cast<const char *>(nullptr), ""}) {
        if (path != nullptr)
            UserDefaults::standard().setValue(pathKey, text(path));
        const auto logger = Logger::create();
        logger->level(1, text("a"));
        QVERIFY(logger->isSetUp());
        QVERIFY(!logger->isLogFileOpen());
        QCOMPARE(logger->logFileProblem(), QString());
        QTRY_COMPARE(messagesOf(*logger), QStringList{text("a")});
    }
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(!Scratch::exists(logPath()));
}

void LoggerTest::anExistingFileIsEmptiedByTheFirstMessage()
{
    scratch_->file("log", "of the run before\n");
    const auto logger = makeLogger();
    QCOMPARE(logged(), QByteArray("of the run before\n"));
    logger->log(1, frame, text("one"), {});
    QCOMPARE(untimed(logged()), (QStringList{text("[INFO] |[Scene plays]one"), QString()}));
    logger->log(1, frame, text("two"), {});
    QCOMPARE(logged().count('\n'), 2);
    QCOMPARE(logger->logFilePath(), logPath());
}

void LoggerTest::theFileIsMadeWithTheFirstMessageAndNotBefore()
{
    const auto logger = makeLogger();
    QVERIFY(!logger->isSetUp());
    QVERIFY(!Scratch::exists(logPath()));
    logger->level(2, text("a"));
    QVERIFY(logger->isSetUp());
    QVERIFY(logger->isLogFileOpen());
    QCOMPARE(logged().count('\n'), 1);
}

void LoggerTest::aMessageThatIsDroppedSetsUpToo()
{
    scratch_->file("log", "old");
    const auto logger = makeLogger();
    logger->level(1, nullptr);
    QVERIFY(logger->isSetUp());
    QVERIFY(Scratch::exists(logPath()));
    QCOMPARE(logged(), QByteArray());
}

void LoggerTest::aPathSetBeforeTheFirstMessageCountsAtOnce()
{
    const auto logger = makeLogger();
    UserDefaults::standard().setValue(pathKey, QString::fromUtf8(scratch_->path("other")));
    logger->level(1, text("a"));
    QVERIFY(!Scratch::exists(logPath()));
    QCOMPARE(Scratch::content(scratch_->path("other")).count('\n'), 1);
}

void LoggerTest::aPathSetLaterCountsFromTheNextStart()
{
    const QByteArray other = scratch_->file("other", "kept");
    const auto logger = makeLogger();
    logger->level(1, text("one"));
    UserDefaults::standard().setValue(pathKey, QString::fromUtf8(other));
    logger->level(1, text("two"));
    UserDefaults::standard().remove(pathKey);
    logger->level(1, text("three"));
    QCOMPARE(logged().count('\n'), 3);
    QCOMPARE(Scratch::content(other), QByteArray("kept"));
    QCOMPARE(logger->logFilePath(), logPath());
}

void LoggerTest::aGivenPathTakesThePlaceOfThePreferences()
{
    const QByteArray given = scratch_->path("given");
    const auto logger = makeLogger();
    logger->setLogFilePath(given);
    logger->level(1, text("a"));
    QCOMPARE(Scratch::content(given).count('\n'), 1);
    QVERIFY(!Scratch::exists(logPath()));
}

void LoggerTest::linesGoToTheEndOfAFileThatOthersWriteToo()
{
    const auto logger = makeLogger();
    logger->log(1, frame, text("one"), {});
    QFile other(QString::fromUtf8(logPath()));
    QVERIFY(other.open(QIODevice::Append));
    other.write("theirs\n");
    other.close();
    logger->log(1, frame, text("two"), {});
    QCOMPARE(untimed(logged()), (QStringList{text("[INFO] |[Scene plays]one"), text("theirs"),
                                             text("[INFO] |[Scene plays]two"), QString()}));
}

void LoggerTest::aFileThatIsRemovedIsMissed()
{
    const auto logger = makeLogger();
    logger->log(1, frame, text("one"), {});
    QCOMPARE(logger->logFileProblem(), QString());
    QCOMPARE(::unlink(logPath().constData()), 0);
    QCOMPARE(logger->logFileProblem(), text("It has been removed."));
}

void LoggerTest::anAbandonedFileTakesNoMoreLines_data()
{
    QTest::addColumn<bool>("isOpen");
    QTest::newRow("before the first message") << false;
    QTest::newRow("later") << true;
}

void LoggerTest::anAbandonedFileTakesNoMoreLines()
{
    QFETCH(bool, isOpen);
    scratch_->file("log", "of the run before\n");
    const auto logger = makeLogger();
    if (isOpen)
        logger->log(1, frame, text("one"), {});
    const QByteArray before = logged();
    QVERIFY(!before.isEmpty());
    logger->abandonLogFile();
    logger->log(1, frame, text("two"), {});
    QCOMPARE(logged(), before);
    QVERIFY(!logger->isLogFileOpen());
    QCOMPARE(logger->logFileProblem(), text("It was among what was to be erased."));
    logger->flush();
    QCOMPARE(logger->logArray().back()->message, text("two"));
}

void LoggerTest::aNameThatIsNotUtf8IsAFileLikeAnyOther()
{
    const QByteArray path = scratch_->path("\xff\xfe");
    const auto logger = Logger::create();
    logger->setLogFilePath(path);
    logger->level(1, text("a"));
    QCOMPARE(Scratch::content(path).count('\n'), 1);
}

void LoggerTest::whatCannotBeALogIsSaidOnceAndLeftAlone_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("a folder") << QByteArray("folder") << text("This is a folder, not a file.");
    QTest::newRow("a link") << QByteArray("link")
                            << text("This is a link; name the file that it points to.");
    QTest::newRow("a link to nothing")
        << QByteArray("dangling") << text("This is a link; name the file that it points to.");
    QTest::newRow("in a missing folder")
        << QByteArray("missing/log") << text("The folder that should hold it does not exist.");
    QTest::newRow("below a file") << QByteArray("file/log")
                                  << text("A part of the path is a file, not a folder.");
    QTest::newRow("a device") << QByteArray("/dev/full") << text("This is no ordinary file.");
    QTest::newRow("relative") << QByteArray("./log") << text("The path has to begin with \"/\".");
}

void LoggerTest::whatCannotBeALogIsSaidOnceAndLeftAlone()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, sentence);
    const QByteArray file = scratch_->file("file", "kept");
    scratch_->folder("folder");
    scratch_->link("link", "file");
    scratch_->link("dangling", "nowhere");
    const bool isWhole = name.startsWith('/') || name.startsWith('.');
    const QString path = QString::fromUtf8(isWhole ? name : scratch_->path(name));
    UserDefaults::standard().setValue(pathKey, path);
    const RecordedLog log;
    const auto logger = Logger::create();

    logger->level(1, text("one"));
    logger->level(3, text("two"));

    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("one"), text("two")}));
    QVERIFY(!logger->isLogFileOpen());
    QCOMPARE(logger->logFileProblem(), sentence);
    QCOMPARE(log.lines(), QStringList{text("-[Logger createNewLogFileAtPath:] ") + path +
                                      text(": ") + sentence});
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QVERIFY(!Scratch::exists(scratch_->path("nowhere")));
    QVERIFY(!Scratch::exists(scratch_->path("missing")));
    QVERIFY(!QFile::exists(text("log")));
}

void LoggerTest::aFifoNeitherHangsNorIsOpened()
{
    QCOMPARE(::mkfifo(logPath().constData(), 0600), 0);
    const int reader = ::open(logPath().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const RecordedLog log;
    for (const bool hasReader : {true, false}) {
        if (!hasReader)
            ::close(reader);
        const auto logger = makeLogger();
        logger->level(1, text("a"));
        QVERIFY(!logger->isLogFileOpen());
        QCOMPARE(logger->logFileProblem(), text("This is no ordinary file."));
    }
    QCOMPARE(log.lines().size(), 2);
}

void LoggerTest::eachLineIsOneCall()
{
    FaultyWrites calls;
    const auto logger = makeLogger();
    const SystemCalls::Replacement replacement(calls);
    logger->level(1, text("one"));
    logger->level(1, text("-"));
    logger->level(2, text("%@"), QString(100000, QLatin1Char('x')));
    QCOMPARE(calls.calls, 3);
    QCOMPARE(logged().count('\n'), 3);
}

void LoggerTest::anInterruptedCallIsMadeAgain()
{
    FaultyWrites calls;
    calls.interruptions = 3;
    const RecordedLog log;
    const auto logger = makeLogger();
    const SystemCalls::Replacement replacement(calls);
    logger->level(1, text("one"));
    QCOMPARE(calls.calls, 4);
    QCOMPARE(logged().count('\n'), 1);
    QCOMPARE(log.lines(), QStringList());
}

void LoggerTest::aFailedWriteIsSaidOnceAndLaterLinesAreTriedAgain()
{
    FaultyWrites calls;
    calls.error = ENOSPC;
    const RecordedLog log;
    const auto logger = makeLogger();
    const SystemCalls::Replacement replacement(calls);
    logger->log(1, frame, text("one"), {});
    logger->log(1, frame, text("two"), {});
    calls.error = 0;
    logger->log(1, frame, text("three"), {});
    calls.error = EIO;
    logger->log(1, frame, text("four"), {});

    QCOMPARE(untimed(logged()), (QStringList{text("[INFO] |[Scene plays]three"), QString()}));
    QCOMPARE(log.lines(),
             QStringList{text("-[Logger writeToLogFile:] ") + QString::fromUtf8(logPath()) +
                         text(": No space left on device")});
    QCOMPARE(logger->logFileProblem(), text("No space left on device"));
    QTRY_COMPARE(logger->logArray().size(), std::size_t(4));
}

void LoggerTest::aLineThatWasCutIsEndedBeforeTheNext()
{
    FaultyWrites calls;
    calls.most = 10;
    const RecordedLog log;
    const auto logger = makeLogger();
    const SystemCalls::Replacement replacement(calls);
    logger->log(1, frame, text("one"), {});
    QCOMPARE(logged().size(), 10);
    calls.most = 1 << 20;
    calls.error = ENOSPC;
    logger->log(1, frame, text("two"), {});
    calls.error = 0;
    logger->log(1, frame, text("three"), {});
    logger->log(1, frame, text("four"), {});

    const QList<QByteArray> lines = logged().split('\n');
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.at(0).startsWith("[INFO]  ") && lines.at(0).size() == 10);
    QVERIFY(lines.at(1).endsWith("]three"));
    QVERIFY(lines.at(2).endsWith("]four"));
    QCOMPARE(log.lines().size(), 1);
}

void LoggerTest::recordsComeInBatches()
{
    const auto logger = Logger::create();
    QSignalSpy willChange(logger.get(), &Logger::logArrayWillChange);
    QSignalSpy changed(logger.get(), &Logger::logArrayChanged);
    connect(logger.get(), &Logger::logArrayWillChange, this,
            [&logger] { QCOMPARE(logger->logArray().size(), std::size_t(0)); });
    QVERIFY(!logger->timerIsRunning());
    for (int message = 0; message < 3; ++message)
        logger->level(1, text("%d"), message);
    QVERIFY(logger->timerIsRunning());
    QCOMPARE(logger->logQueue().size(), std::size_t(3));
    QCOMPARE(logger->logArray().size(), std::size_t(0));

    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("0"), text("1"), text("2")}));
    QCOMPARE(willChange.size(), 1);
    QCOMPARE(changed.size(), 1);
    QVERIFY(!logger->timerIsRunning());
    QVERIFY(logger->logQueue().empty());
}

void LoggerTest::tenMessagesFromAWorkerComeInOrderAndInOneBatch()
{
    const auto logger = Logger::create();
    QSignalSpy changed(logger.get(), &Logger::logArrayChanged);
    bool isToldOnTheMainThread = true;
    connect(
        logger.get(), &Logger::logArrayChanged, this,
        [this, &isToldOnTheMainThread] {
            isToldOnTheMainThread = QThread::currentThread() == thread();
        },
        Qt::DirectConnection);
    std::thread worker([&logger] {
        for (int message = 0; message < 10; ++message)
            logger->level(1, text("%d"), message);
    });
    worker.join();
    QVERIFY(logger->timerIsRunning());

    QStringList expected;
    for (int message = 0; message < 10; ++message)
        expected.append(QString::number(message));
    QTRY_COMPARE(messagesOf(*logger), expected);
    QCOMPARE(changed.size(), 1);
    QVERIFY(isToldOnTheMainThread);
}

void LoggerTest::neverTwoTimersArePending()
{
    UserDefaults::standard().setValue(intervalKey, 0.02);
    const auto logger = Logger::create();
    QSignalSpy changed(logger.get(), &Logger::logArrayChanged);
    // Runs what was handed to the main thread, and no timer.
    const auto schedule = [] { QCoreApplication::sendPostedEvents(); };
    logger->level(1, text("a"));
    schedule();
    logger->flush();
    QVERIFY(!logger->timerIsRunning());
    for (int message = 0; message < 3; ++message) {
        logger->level(1, text("b"));
        schedule();
    }
    QTRY_COMPARE(logger->logArray().size(), std::size_t(4));
    // A second timer would fire before the one of this message, and tell of a batch of none.
    logger->level(1, text("c"));
    QTRY_COMPARE(logger->logArray().size(), std::size_t(5));
    QCOMPARE(changed.size(), 3);
    QVERIFY(!logger->timerIsRunning());
}

void LoggerTest::theTimerFiresInANestedEventLoop()
{
    const auto logger = Logger::create();
    logger->level(1, text("outer"));
    QEventLoop loop;
    connect(logger.get(), &Logger::logArrayChanged, &loop, [&logger, &loop] {
        if (logger->logArray().size() == 1) {
            // Told in the middle of a batch; the next one does not wait for its end.
            logger->level(1, text("inner"));
        } else {
            loop.quit();
        }
    });
    QTimer::singleShot(30000, &loop, [&loop] { loop.exit(1); });
    QCOMPARE(loop.exec(), 0);
    QCOMPARE(messagesOf(*logger), (QStringList{text("outer"), text("inner")}));
}

void LoggerTest::theIntervalIsReadWithTheFirstMessage_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<float>("interval");
    QTest::newRow("none") << QVariant() << 0.0F;
    QTest::newRow("a number") << QVariant(2.5) << 2.5F;
    QTest::newRow("a text") << QVariant(text("0.25")) << 0.25F;
    QTest::newRow("with its unit") << QVariant(text("3s")) << 3.0F;
    QTest::newRow("tiny") << QVariant(0.00001) << 0.00001F;
    QTest::newRow("with an exponent") << QVariant(text("1.5e2")) << 150.0F;
    QTest::newRow("two points") << QVariant(text("1.5.2")) << 1.5F;
    QTest::newRow("no whole part") << QVariant(text(" .5")) << 0.5F;
    QTest::newRow("without end") << QVariant(text("inf")) << 0.0F;
    QTest::newRow("no number") << QVariant(text("soon")) << 0.0F;
    QTest::newRow("negative") << QVariant(-1) << 0.0F;
    QTest::newRow("not a number") << QVariant(text("nan")) << 0.0F;
}

void LoggerTest::theIntervalIsReadWithTheFirstMessage()
{
    QFETCH(QVariant, value);
    QFETCH(float, interval);
    if (value.isValid())
        UserDefaults::standard().setValue(intervalKey, value);
    const auto logger = Logger::create();
    logger->level(1, text("a"));
    QCOMPARE(logger->interval(), interval);
}

void LoggerTest::laterMessagesDoNotPutTheBatchOff()
{
    UserDefaults::standard().setValue(intervalKey, 0.05);
    const auto logger = Logger::create();
    QDeadlineTimer deadline(std::chrono::seconds(30));
    while (logger->logArray().empty() && !deadline.hasExpired()) {
        logger->level(1, text("a"));
        QCoreApplication::processEvents();
    }
    QVERIFY(!logger->logArray().empty());
}

void LoggerTest::flushDoesNotWaitForTheTimer()
{
    for (const char *interval : {"3600", "999999999999999999999999"}) {
        UserDefaults::standard().setValue(intervalKey, text(interval));
        const auto logger = Logger::create();
        logger->level(1, text("a"));
        QVERIFY(logger->interval() >= 3600.0F);
        // What was handed to the main thread has run; the timer itself has not.
        QEventLoop loop;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
        QVERIFY(logger->timerIsRunning());
        QVERIFY(logger->logArray().empty());
        logger->flush();
        QCOMPARE(messagesOf(*logger), QStringList{text("a")});
        QVERIFY(!logger->timerIsRunning());
    }
}

void LoggerTest::whatIsLoggedWhileABatchIsToldComesInTheNext()
{
    const auto logger = Logger::create();
    connect(logger.get(), &Logger::logArrayWillChange, logger.get(), [&logger] {
        if (logger->logArray().size() < 2)
            logger->level(1, text("meanwhile"));
    });
    logger->level(1, text("a"));
    logger->level(1, text("b"));
    logger->flush();
    QCOMPARE(messagesOf(*logger), (QStringList{text("a"), text("b")}));
    QVERIFY(logger->timerIsRunning());
    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("a"), text("b"), text("meanwhile")}));
    QVERIFY(!logger->timerIsRunning());
}

void LoggerTest::whoHearsOfABatchAndWantsAnotherGetsEachRecordOnce()
{
    const auto logger = Logger::create();
    bool hasLogged = false;
    connect(logger.get(), &Logger::logArrayWillChange, logger.get(), [&logger, &hasLogged] {
        if (!std::exchange(hasLogged, true))
            logger->level(1, text("meanwhile"));
        logger->flush();
    });
    connect(logger.get(), &Logger::logArrayChanged, logger.get(), [&logger] { logger->flush(); });
    QSignalSpy changed(logger.get(), &Logger::logArrayChanged);
    logger->level(1, text("a"));
    logger->flush();
    QCOMPARE(messagesOf(*logger), QStringList{text("a")});
    QCOMPARE(changed.size(), 1);
    QTRY_COMPARE(messagesOf(*logger), (QStringList{text("a"), text("meanwhile")}));
    QVERIFY(logger->logQueue().empty());
    QVERIFY(!logger->timerIsRunning());
    // A batch of none is told, too.
    logger->flush();
    QCOMPARE(logger->logArray().size(), std::size_t(2));
}

void LoggerTest::recordsAreRemovedByIdentity()
{
    const auto logger = Logger::create();
    for (int message = 0; message < 3; ++message)
        logger->log(1, frame, text("same"), {});
    logger->flush();
    const Logger::Records all = logger->logArray();
    QSignalSpy willChange(logger.get(), &Logger::logArrayWillChange);
    QSignalSpy changed(logger.get(), &Logger::logArrayChanged);

    logger->removeObjects({all[1], std::make_shared<const LogClass>(*all[0])});

    QCOMPARE(logger->logArray(), (Logger::Records{all[0], all[2]}));
    QCOMPARE(willChange.size(), 1);
    QCOMPARE(changed.size(), 1);
}

void LoggerTest::allRecordsAreRemoved()
{
    const auto logger = Logger::create();
    logger->level(1, text("a"));
    logger->flush();
    logger->level(1, text("b"));
    QSignalSpy changed(logger.get(), &Logger::logArrayChanged);
    logger->removeAllObjects();
    QVERIFY(logger->logArray().empty());
    QCOMPARE(changed.size(), 1);
    // What waits is not in the list yet.
    QTRY_COMPARE(messagesOf(*logger), QStringList{text("b")});
}

void LoggerTest::whoHearsOfAChangeMayLog()
{
    const auto logger = Logger::create();
    logger->level(1, text("a"));
    logger->flush();
    int told = 0;
    connect(logger.get(), &Logger::logArrayChanged, logger.get(), [&logger, &told] {
        if (++told < 3)
            logger->level(2, text("%d"), told);
    });
    logger->removeObjects(logger->logArray());
    logger->removeAllObjects();
    QCOMPARE(told, 2);
}

void LoggerTest::aLoggerThatHasGoneIsNotScheduled()
{
    auto logger = Logger::create();
    logger->level(1, text("a"));
    const std::weak_ptr<Logger> weak = logger;
    logger.reset();
    QVERIFY(weak.expired());
    const auto other = Logger::create();
    other->level(1, text("b"));
    QTRY_COMPARE(messagesOf(*other), QStringList{text("b")});
}

void LoggerTest::tenThreadsLoseNothingAndMixNothing()
{
    constexpr int threads = 10;
    constexpr int messages = 10000;
    scratch_->file("log", "of the run before\n");
    const auto logger = makeLogger();
    UserDefaults::standard().synchronize();
    std::latch start(threads);
    std::vector<std::thread> workers;
    for (int thread = 0; thread < threads; ++thread) {
        workers.emplace_back([&logger, &start, thread] {
            start.arrive_and_wait();
            for (int message = 0; message < messages; ++message)
                logger->level(1, text("thread %d message %d."), thread, message);
        });
    }
    // The list takes batches while they log.
    while (logger->logArray().empty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    for (std::thread &worker : workers)
        worker.join();

    static const QRegularExpression pattern(
        QStringLiteral("^\\[INFO\\]  \\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\| "
                       "\\[LoggerTest tenThreadsLoseNothingAndMixNothing\\]"
                       "thread (\\d) message (\\d+)\\.$"));
    std::vector<int> next(threads, 0);
    QList<QByteArray> lines = logged().split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    QCOMPARE(lines.size(), threads * messages);
    for (const QByteArray &line : lines) {
        const QRegularExpressionMatch match = pattern.match(QString::fromUtf8(line));
        QVERIFY2(match.hasMatch(), line.constData());
        QCOMPARE(match.captured(2).toInt(), next[match.captured(1).toUInt()]++);
    }
    QTRY_COMPARE(logger->logArray().size(), std::size_t(threads * messages));
    std::fill(next.begin(), next.end(), 0);
    for (const auto &record : logger->logArray()) {
        const QStringList words = record->message.split(QLatin1Char(' '));
        QCOMPARE(words.at(3).chopped(1).toInt(), next[words.at(1).toUInt()]++);
    }
    QVERIFY(logger->logQueue().empty());
    QTRY_VERIFY(!logger->timerIsRunning());
}

void LoggerTest::theSharedLoggerIsOne()
{
    Logger *fromAnotherThread = nullptr;
    std::thread worker([&fromAnotherThread] { fromAnotherThread = &Logger::shared(); });
    worker.join();
    QCOMPARE(fromAnotherThread, &Logger::shared());
    QVERIFY(!Logger::shared().isSetUp());
}

void LoggerTest::theConsoleTakesTheBytesAsTheyAre()
{
    int ends[2] = {-1, -1};
    QCOMPARE(::pipe2(ends, O_CLOEXEC), 0);
    const int saved = ::dup(STDERR_FILENO);
    QVERIFY(::dup2(ends[1], STDERR_FILENO) >= 0);
    Logger::writeToConsole(QString::fromUtf8("\xc3\xa9 no newline"));
    ::dup2(saved, STDERR_FILENO);
    ::close(saved);
    ::close(ends[1]);
    QByteArray read(64, '\0');
    read.truncate(qMax<ssize_t>(::read(ends[0], read.data(), size_t(read.size())), 0));
    ::close(ends[0]);
    QCOMPARE(read, QByteArray("\xc3\xa9 no newline"));
}

QTEST_GUILESS_MAIN(LoggerTest)
#include "LoggerTest.moc"
