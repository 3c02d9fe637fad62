#include "cli/LogOption.h"

#include "kit/Scratch.h"
#include "scan/FolderScannerController.h"

#include <QTest>

namespace {

/// What the scan of the paths queues.
void scan(EraseRun &run, const std::vector<QByteArray> &paths)
{
    FileUtils utils;
    for (const QByteArray &path : paths) {
        ScanReport report = utils.readFilesFromPath(path);
        run.addObjectsFromArray(std::move(report.files));
        run.addFolderObjectsToQueueFromDict(std::move(report.folders));
    }
}

} // namespace

class LogOptionTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void withoutTheOptionNothingIsWanted()
    {
        QVERIFY(!LogOption({}, "/start").isWanted());
        QVERIFY(LogOption("", "/start").isWanted());
    }

    void aRelativePathStartsAtTheStartFolder_data()
    {
        QTest::addColumn<QByteArray>("given");
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("relative") << QByteArray("log") << QByteArray("/start/log");
        QTest::newRow("dot") << QByteArray("./a/log") << QByteArray("/start/a/log");
        QTest::newRow("absolute") << QByteArray("/a/log") << QByteArray("/a/log");
        QTest::newRow("a folder stays one") << QByteArray("a/") << QByteArray("/start/a/");
        QTest::newRow("the root") << QByteArray("/") << QByteArray("/");
        QTest::newRow("empty") << QByteArray("") << QByteArray("");
    }
    void aRelativePathStartsAtTheStartFolder()
    {
        QFETCH(QByteArray, given);
        QFETCH(QByteArray, path);
        QCOMPARE(LogOption(given, "/start").path(), path);
    }

    void whatSpeaksAgainstItIsSaid_data()
    {
        QTest::addColumn<QByteArray>("log");
        QTest::addColumn<QByteArray>("item");
        QTest::addColumn<QString>("problem");
        const QString none;
        const QString inFolder = QStringLiteral("The log would stand in a folder to be erased");
        const QString itself = QStringLiteral("The log is among what is to be erased");
        const auto row = [](const char *name, const char *log, const char *item,
                            const QString &problem) {
            QTest::newRow(name) << QByteArray(log) << QByteArray(item) << problem;
        };
        row("beside it", "new", "folder", none);
        row("existing, beside it", "log", "folder", none);
        row("in it", "folder/new", "folder", inFolder);
        row("deep in it", "folder/inner/new", "folder", inFolder);
        row("in it by way of a link", "way/new", "folder", inFolder);
        row("of a link only the link goes", "folder/new", "way", none);
        row("itself", "log", "log", itself);
        row("itself, not there yet", "new", "new", itself);
        row("by another name", "log", "other name", itself);
        row("by a link", "log", "link", itself);
        row("a missing item", "log", "missing", none);
        row("a folder", "folder", "file", QStringLiteral("This is a folder, not a file."));
        row("in a missing folder", "missing/log", "file",
            QStringLiteral("The folder that should hold it does not exist."));
        row("no file", "", "file", QStringLiteral("No file is named."));
    }
    void whatSpeaksAgainstItIsSaid()
    {
        QFETCH(QByteArray, log);
        QFETCH(QByteArray, item);
        QFETCH(QString, problem);
        const Scratch scratch;
        scratch.folder("folder");
        scratch.folder("folder/inner");
        scratch.file("file", "x");
        const QByteArray existing = scratch.file("log", "kept");
        scratch.link("link", "log");
        scratch.link("way", "folder");
        QCOMPARE(::link(existing.constData(), scratch.path("other name").constData()), 0);

        const QString said = LogOption(log, scratch.path()).problem({scratch.path(item)}, {});

        const QString shown = log.isEmpty() ? QStringLiteral("\"\"") : QString::fromUtf8(log);
        QCOMPARE(said, problem.isEmpty() ? QString() : shown + QStringLiteral(": ") + problem);
        QCOMPARE(Scratch::content(existing), QByteArray("kept"));
        QVERIFY(!Scratch::exists(scratch.path("new")));
    }

    void aReportIsAnotherFile()
    {
        const Scratch scratch;
        const QByteArray log = scratch.file("log", "x");
        const LogOption option(log, scratch.path());
        const QString problem =
            QString::fromUtf8(log) + QStringLiteral(": The log and the report cannot be one file");
        QCOMPARE(option.problem({}, log), problem);
        QCOMPARE(option.problem({}, scratch.link("link", "log")), problem);
        QCOMPARE(option.problem({}, scratch.path("report")), QString());
        QCOMPARE(LogOption("new", scratch.path()).problem({}, scratch.path("new")),
                 QStringLiteral("new: The log and the report cannot be one file"));
    }

    void aReportThatIsNotThereYetIsKnownByItsPlace()
    {
        const Scratch scratch;
        scratch.folder("folder");
        scratch.link("way", "folder");
        const LogOption option("folder/new", scratch.path());
        const QString problem =
            QStringLiteral("folder/new: The log and the report cannot be one file");
        QCOMPARE(option.problem({}, scratch.path("way/new")), problem);
        QCOMPARE(option.problem({}, scratch.path("folder/../folder/new")), problem);
        QCOMPARE(option.problem({}, scratch.path("new")), QString());
    }

    void aLinkWhoseTargetIsLeftAloneDoesNotCount()
    {
        const Scratch scratch;
        const QByteArray log = scratch.file("log", "x");
        const QByteArray link = scratch.link("link", "log");
        EraseRun run;
        scan(run, {link});
        const QString problem = QStringLiteral("log: The log is among what is to be erased");
        const LogOption followed("log", scratch.path());
        QCOMPARE(followed.problem({link}, {}), problem);
        QCOMPARE(followed.problem(run), problem);
        const LogOption left("log", scratch.path(), true);
        QCOMPARE(left.problem({link}, {}), QString());
        QCOMPARE(left.problem(run), QString());
        QCOMPARE(left.problem({log}, {}), problem);
    }

    void aLogInAFolderOfTheRunIsSaid()
    {
        const Scratch scratch;
        EraseRun run;
        scan(run, {scratch.folder("folder")});
        QCOMPARE(LogOption("folder/new", scratch.path()).problem(run),
                 QStringLiteral("folder/new: The log would stand in a folder to be erased"));
        QCOMPARE(LogOption("new", scratch.path()).problem(run), QString());
    }

    void aQueuedLinkOrOtherNameOfTheLogIsSaid_data()
    {
        QTest::addColumn<QByteArray>("item");
        QTest::addColumn<bool>("isTheLog");
        QTest::newRow("a link to it") << QByteArray("with link") << true;
        QTest::newRow("another name of it") << QByteArray("with name") << true;
        QTest::newRow("a file of the same name") << QByteArray("with log") << false;
        QTest::newRow("a link to another file") << QByteArray("with other") << false;
    }
    void aQueuedLinkOrOtherNameOfTheLogIsSaid()
    {
        QFETCH(QByteArray, item);
        QFETCH(bool, isTheLog);
        const Scratch scratch;
        const QByteArray log = scratch.file("log", "x");
        scratch.file("file", "x");
        for (const char *folder : {"with link", "with name", "with log", "with other"})
            scratch.folder(folder);
        scratch.link("with link/a", "../log");
        QCOMPARE(::link(log.constData(), scratch.path("with name/a").constData()), 0);
        scratch.file("with log/log", "x");
        scratch.link("with other/a", "../file");
        EraseRun run;
        scan(run, {scratch.path(item)});
        QCOMPARE(run.queueArray()->items().size(), std::size_t(1));

        const QString problem = LogOption("log", scratch.path()).problem(run);

        QCOMPARE(problem, isTheLog ? QStringLiteral("log: The log is among what is to be erased")
                                   : QString());
    }
};

QTEST_GUILESS_MAIN(LogOptionTest)
#include "LogOptionTest.moc"
