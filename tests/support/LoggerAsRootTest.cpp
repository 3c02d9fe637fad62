#include "support/Logger.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "support/LogPathCheck.h"

#include <QTest>

#include <sys/mount.h>

using Answer = LogPathCheck::Answer;

namespace {

/// A file system in memory, unmounted when it goes.
class MemoryMount
{
  public:
    explicit MemoryMount(QByteArray folder)
        : folder_(std::move(folder)),
          isMounted_(::mount("none", folder_.constData(), "tmpfs", 0, "size=4k") == 0)
    {
    }
    ~MemoryMount() { ::umount2(folder_.constData(), MNT_DETACH); }
    MemoryMount(const MemoryMount &) = delete;
    MemoryMount &operator=(const MemoryMount &) = delete;

    [[nodiscard]] bool isMounted() const { return isMounted_; }
    [[nodiscard]] bool makeReadOnly() const
    {
        return ::mount("none", folder_.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, "size=4k") ==
               0;
    }

  private:
    QByteArray folder_;
    bool isMounted_;
};

} // namespace

/// What takes a file system of its own.
class LoggerAsRootTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aReadOnlyFileSystemIsSaid()
    {
        const Scratch scratch;
        const MemoryMount mount(scratch.folder("disk"));
        QVERIFY(mount.isMounted());
        const QByteArray file = scratch.file("disk/log", "kept");
        QVERIFY(!file.isEmpty() && mount.makeReadOnly());

        QCOMPARE(LogPathCheck::of(file).answer, Answer::ReadOnly);
        QCOMPARE(LogPathCheck::of(scratch.path("disk/new")).answer, Answer::ReadOnly);

        const RecordedLog log;
        const std::shared_ptr<Logger> logger = Logger::create();
        logger->setLogFilePath(file);
        logger->level(1, QStringLiteral("one"));
        QCOMPARE(logger->logFileProblem(), QStringLiteral("The file system is read-only."));
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(Scratch::content(file), QByteArray("kept"));
    }

    void aDiskThatBecomesFullCostsLinesAndIsSaidOnce()
    {
        const Scratch scratch;
        const MemoryMount mount(scratch.folder("disk"));
        QVERIFY(mount.isMounted());
        const QByteArray file = scratch.path("disk/log");
        const RecordedLog log;
        const std::shared_ptr<Logger> logger = Logger::create();
        logger->setLogFilePath(file);

        for (int message = 0; message < 100; ++message)
            logger->level(1, QStringLiteral("%d %@"), message, QString(100, QLatin1Char('x')));

        QVERIFY(!logger->logFileProblem().isEmpty());
        QCOMPARE(log.lines().size(), 1);
        QVERIFY2(log.lines().first().startsWith(
                     QStringLiteral("-[Logger writeToLogFile:] %1: ").arg(QString::fromUtf8(file))),
                 qUtf8Printable(log.lines().first()));
        QVERIFY(Scratch::content(file).size() <= 4096);
        QVERIFY(Scratch::content(file).contains("]0 xxx"));
        QTRY_COMPARE(logger->logArray().size(), std::size_t(100));
    }
};

QTEST_GUILESS_MAIN(LoggerAsRootTest)
#include "LoggerAsRootTest.moc"
