#include "support/Logger.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"
#include "support/LogPathCheck.h"

#include <QTest>

using Answer = LogPathCheck::Answer;

namespace {

bool allow(const QByteArray &path, mode_t mode)
{
    return ::chmod(path.constData(), mode) == 0;
}

std::shared_ptr<Logger> loggerTo(const QByteArray &path)
{
    const std::shared_ptr<Logger> logger = Logger::create();
    logger->setLogFilePath(path);
    return logger;
}

} // namespace

/// What permissions do to the log file.
class LoggerPermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aFileThatMayNotBeWrittenStaysAsItIs_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<mode_t>("fileMode");
        QTest::addColumn<mode_t>("folderMode");
        QTest::newRow("the file is closed") << QByteArray("log") << mode_t(0400) << mode_t(0700);
        QTest::newRow("the folder is closed to new files")
            << QByteArray("new") << mode_t(0600) << mode_t(0500);
        QTest::newRow("the folder cannot be entered")
            << QByteArray("log") << mode_t(0600) << mode_t(0600);
        QTest::newRow("the folder cannot be entered for a new file")
            << QByteArray("new") << mode_t(0600) << mode_t(0600);
    }
    void aFileThatMayNotBeWrittenStaysAsItIs()
    {
        QFETCH(QByteArray, name);
        QFETCH(mode_t, fileMode);
        QFETCH(mode_t, folderMode);
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/log", "kept");
        QVERIFY(allow(file, fileMode) && allow(folder, folderMode));
        const QByteArray path = folder + '/' + name;
        const LogPathCheck check = LogPathCheck::of(path);
        const RecordedLog log;
        const std::shared_ptr<Logger> logger = loggerTo(path);

        logger->level(1, QStringLiteral("one"));
        logger->level(1, QStringLiteral("two"));

        QCOMPARE(check.answer, Answer::NotAllowed);
        QVERIFY(!logger->isLogFileOpen());
        QCOMPARE(logger->logFileProblem(), check.sentence());
        QCOMPARE(log.lines(), QStringList{QStringLiteral("-[Logger createNewLogFileAtPath:] %1: %2")
                                              .arg(QString::fromUtf8(path), check.sentence())});
        QTRY_COMPARE(logger->logArray().size(), std::size_t(2));
        QVERIFY(allow(folder, 0700) && allow(file, 0600));
        QCOMPARE(Scratch::content(file), QByteArray("kept"));
        QVERIFY(!Scratch::exists(scratch.path("folder/new")));
    }

    void aFileInAClosedFolderIsWrittenAllTheSame()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/log", "old");
        QVERIFY(allow(folder, 0500));
        QCOMPARE(LogPathCheck::of(file).answer, Answer::Existing);

        loggerTo(file)->level(1, QStringLiteral("new"));

        QVERIFY(Scratch::content(file).endsWith("]new\n"));
        QVERIFY(Scratch::content(file).startsWith("[INFO]"));
        QVERIFY(allow(folder, 0700));
    }

    void aFileThatMayOnlyBeWrittenIsEnough()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("log", "old");
        QVERIFY(allow(file, 0200));
        QCOMPARE(LogPathCheck::of(file).answer, Answer::Existing);

        loggerTo(file)->level(1, QStringLiteral("new"));

        QVERIFY(allow(file, 0600));
        QVERIFY(Scratch::content(file).endsWith("]new\n"));
    }
};

UNPRIVILEGED_TEST_MAIN(LoggerPermissionsTest)
#include "LoggerPermissionsTest.moc"
