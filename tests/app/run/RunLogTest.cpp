#include "app/run/RunLog.h"

#include "app/run/EraseRun.h"
#include "app/run/Items.h"
#include "kit/Scratch.h"
#include "support/Logger.h"

#include <QTest>

namespace {

constexpr std::int64_t dod = 4;

FailedFile failedFile(const QByteArray &path, const QString &why, bool removedWithFolder = false)
{
    const QueueArray::Item item = Items::at(path);
    item->setErrormsg(why);
    item->setFinished(true);
    return {item, path, removedWithFolder};
}

/// "[INFO] caller message" of the last record.
QString lastRecord()
{
    Logger &logger = Logger::shared();
    logger.flush();
    if (logger.logArray().empty())
        return {};
    const LogClass &record = *logger.logArray().back();
    return record.type + QLatin1Char(' ') + record.caller + QLatin1Char(' ') + record.message;
}

} // namespace

class RunLogTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { Logger::shared().setLogFilePath(scratch_.path("log")); }
    void init() { Logger::shared().removeAllObjects(); }

    void aRunStartsWithItsMethodAndWhatIsToBeDone()
    {
        EraseRun run;
        run.addObjectsFromArray({Items::at("/secret/a", 1000), Items::at("/secret/b", 540)});
        RunLog::runStarted(dod, run);
        QCOMPARE(lastRecord(), QStringLiteral("[INFO] [RunLog runStarted] Run started: 3-Pass DoD "
                                              "5220.22-M (E), 2 files, 1540 bytes"));
    }

    void aRunEndsWithWhatWasDone()
    {
        EraseRun run;
        run.queueStatsObject()->setTotalFilesWiped(11);
        run.queueStatsObject()->setTotalBytesWiped(1e15 + 1);
        run.queueStatsObject()->setFilesFailed(2);
        run.queueStatsObject()->setTotalFilesRemaining(3);
        RunLog::runEnded(1, run);
        QCOMPARE(lastRecord(),
                 QStringLiteral("[INFO] [RunLog runEnded] Run ended: 1-Pass Zero, 11 files erased, "
                                "1000000000000001 bytes, 2 failed, 3 not touched"));
    }

    void oneFileIsSingularAndUnknownSizesAreNone()
    {
        EraseRun run;
        run.addObjectsFromArray({Items::at("/secret/a", -1)});
        RunLog::runStarted(10, run);
        QCOMPARE(lastRecord(), QStringLiteral("[INFO] [RunLog runStarted] Run started: 35-Pass "
                                              "Gutmann Method, 1 file, 0 bytes"));
    }

    void aMethodThatDoesNotExistIsSaidByItsNumber()
    {
        for (const std::int64_t method : {-1, 0, 11}) {
            RunLog::runStarted(method, EraseRun());
            QVERIFY2(lastRecord().contains(QStringLiteral(": unknown method %1,").arg(method)),
                     qUtf8Printable(lastRecord()));
        }
    }

    void aFailedFileIsItsTextWithoutItsName()
    {
        RunLog::fileFailed(failedFile("/secret/a", QStringLiteral("100% full: %@ %s %d")));
        QCOMPARE(lastRecord(), QStringLiteral("[ERROR] [RunLog fileFailed] 100% full: %@ %s %d"));
    }

    void onlyWhatWentWithItsFolderIsLoggedAgain()
    {
        EraseRun run;
        const QueueArray::Item item = Items::at("/secret/a");
        item->setErrormsg(QStringLiteral("Permission denied"));
        run.addFailure(item);
        RunLog::foldersRemoved(run);
        QCOMPARE(lastRecord(), QString());

        RunLog::fileFailed(failedFile("/secret/.b", QStringLiteral("Permission denied"), true));
        QCOMPARE(lastRecord(),
                 QStringLiteral("[ERROR] [RunLog fileFailed] Permission denied (removed with its "
                                "folder, not overwritten)"));
    }

    void aCancelledScanIsAWarning()
    {
        RunLog::scanCancelled();
        QCOMPARE(lastRecord(), QStringLiteral("[WARN] [RunLog scanCancelled] Scan cancelled"));
    }

    void theFileHasALineEachAndNoNames()
    {
        const QByteArray before = Scratch::content(scratch_.path("log"));
        RunLog::fileFailed(failedFile("/secret/a", QStringLiteral("Permission denied")));
        const QByteArray after = Scratch::content(scratch_.path("log"));
        QVERIFY(after.startsWith(before));
        QCOMPARE(after.mid(before.size()).count('\n'), 1);
        QVERIFY(after.endsWith(" | [RunLog fileFailed]Permission denied\n"));
        QVERIFY(!after.contains("secret"));
    }

  private:
    Scratch scratch_;
};

QTEST_GUILESS_MAIN(RunLogTest)
#include "RunLogTest.moc"
