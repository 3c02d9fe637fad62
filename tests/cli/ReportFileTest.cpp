#include "cli/ReportFile.h"

#include "kit/Scratch.h"

#include <QDir>
#include <QTest>

#include <csignal>

class ReportFileTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void writesTheReport()
    {
        const Scratch scratch;
        ReportFile file(scratch.path("report.json"));

        QVERIFY(!file.isOpen());
        QCOMPARE(file.open(), QString());
        QVERIFY(file.isOpen());
        QCOMPARE(file.write("{}\n"), QString());

        QCOMPARE(Scratch::content(scratch.path("report.json")), QByteArray("{}\n"));
    }

    void anOldReportStaysUntilTheNewOneIsComplete()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("report.json", "old and longer");
        ReportFile file(path);

        QCOMPARE(file.open(), QString());
        QCOMPARE(Scratch::content(path), QByteArray("old and longer"));
        QCOMPARE(file.write("new"), QString());

        QCOMPARE(Scratch::content(path), QByteArray("new"));
    }

    void aReportThatIsNeverWrittenLeavesTheOldOneAndNothingElse()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("report.json", "old");
        {
            ReportFile file(path);
            QCOMPARE(file.open(), QString());
        }

        QCOMPARE(Scratch::content(path), QByteArray("old"));
        QCOMPARE(QDir(QString::fromUtf8(scratch.path()))
                     .entryList(QDir::NoDotAndDotDot | QDir::Hidden | QDir::AllEntries),
                 QStringList{QStringLiteral("report.json")});
    }

    void aFileThatIsRemovedMeanwhileIsMadeAnew()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("report.json", "to be erased");
        ReportFile file(path);
        QCOMPARE(file.open(), QString());

        QCOMPARE(::unlink(path.constData()), 0);

        QCOMPARE(file.write("new"), QString());
        QCOMPARE(Scratch::content(path), QByteArray("new"));
    }

    void aNameInAnyAlphabetIsTaken()
    {
        const Scratch scratch;
        const QByteArray path = scratch.path("B\xc3\xa9richt \xe6\xbc\xa2;%20.json");
        ReportFile file(path);

        QCOMPARE(file.open(), QString());
        QCOMPARE(file.write("{}"), QString());

        QVERIFY(Scratch::exists(path));
    }

    void whatCannotBeOpenedSaysWhy_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("problem");
        QTest::newRow("in a missing folder") << QByteArray("missing/report")
                                             << QStringLiteral("/missing/report: No such file or "
                                                               "directory");
        QTest::newRow("below a file")
            << QByteArray("file/report") << QStringLiteral("/file/report: Not a directory");
        QTest::newRow("a folder") << QByteArray("folder")
                                  << QStringLiteral("/folder: Is a directory");
        QTest::newRow("not UTF-8")
            << QByteArray("\xff\n")
            << QStringLiteral("/\\xff\\n: the name of a report has to be UTF-8");
    }
    void whatCannotBeOpenedSaysWhy()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, problem);
        const Scratch scratch;
        scratch.file("file", "x");
        scratch.folder("folder");
        ReportFile file(scratch.path(name));

        QCOMPARE(file.open(), QString::fromUtf8(scratch.path()) + problem);

        QVERIFY(!file.isOpen());
        QCOMPARE(Scratch::content(scratch.path("file")), QByteArray("x"));
    }

    void liesInAFolderByWhereItReallyIs_data()
    {
        QTest::addColumn<QByteArray>("report");
        QTest::addColumn<QByteArray>("item");
        QTest::addColumn<bool>("liesIn");
        QTest::newRow("in the folder") << QByteArray("folder/r") << QByteArray("folder") << true;
        QTest::newRow("the folder itself") << QByteArray("folder") << QByteArray("folder") << true;
        QTest::newRow("deep below it")
            << QByteArray("folder/inner/r") << QByteArray("folder") << true;
        QTest::newRow("below what is not there yet")
            << QByteArray("folder/missing/r") << QByteArray("folder") << true;
        QTest::newRow("by way of a link") << QByteArray("link/r") << QByteArray("folder") << true;
        QTest::newRow("by way of dots")
            << QByteArray("other/../folder/./r") << QByteArray("folder") << true;
        QTest::newRow("out by way of dots")
            << QByteArray("folder/../r") << QByteArray("folder") << false;
        QTest::newRow("beside it") << QByteArray("r") << QByteArray("folder") << false;
        QTest::newRow("in another one") << QByteArray("other/r") << QByteArray("folder") << false;
        QTest::newRow("in one whose name begins the same")
            << QByteArray("folder2/r") << QByteArray("folder") << false;
        QTest::newRow("in the folder above")
            << QByteArray("folder/r") << QByteArray("folder/inner") << false;
        QTest::newRow("of a link only the link goes")
            << QByteArray("folder/r") << QByteArray("link") << false;
        QTest::newRow("a file holds nothing")
            << QByteArray("folder/a") << QByteArray("folder/a") << false;
        QTest::newRow("nor does what is missing")
            << QByteArray("missing/r") << QByteArray("missing") << false;
    }
    void liesInAFolderByWhereItReallyIs()
    {
        QFETCH(QByteArray, report);
        QFETCH(QByteArray, item);
        QFETCH(bool, liesIn);
        const Scratch scratch;
        for (const char *folder : {"folder", "folder/inner", "folder2", "other"})
            QVERIFY(!scratch.folder(folder).isEmpty());
        scratch.file("folder/a", "x");
        scratch.link("link", "folder");

        QCOMPARE(ReportFile(scratch.path(report)).liesIn(scratch.path(item)), liesIn);
    }

    void aPipeTakesTheReportAndStaysAPipe()
    {
        const Scratch scratch;
        const QByteArray path = scratch.path("pipe");
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        const int reader = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ReportFile file(path);

        QCOMPARE(file.open(), QString());
        QCOMPARE(file.write("{}\n"), QString());

        QByteArray read(16, '\0');
        read.truncate(qMax<ssize_t>(::read(reader, read.data(), size_t(read.size())), 0));
        ::close(reader);
        QCOMPARE(read, QByteArray("{}\n"));
        struct stat status = {};
        QCOMPARE(::lstat(path.constData(), &status), 0);
        QVERIFY(S_ISFIFO(status.st_mode));
    }

    void aReaderThatGoesAwayIsSaid()
    {
        const Scratch scratch;
        const QByteArray path = scratch.path("pipe");
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        const int reader = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ReportFile file(path);
        QCOMPARE(file.open(), QString());
        ::close(reader);
        const auto handler = std::signal(SIGPIPE, SIG_IGN);

        const QString problem = file.write("{}\n");

        std::signal(SIGPIPE, handler);
        QCOMPARE(problem, QString::fromUtf8(path) + QStringLiteral(": Broken pipe"));
    }

    void aFolderThatVanishesMeanwhileIsSaid()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        ReportFile file(folder + "/report");
        QCOMPARE(file.open(), QString());

        QVERIFY(QDir(QString::fromUtf8(folder)).removeRecursively());

        QCOMPARE(file.write("{}\n"),
                 QString::fromUtf8(folder) + QStringLiteral("/report: No such file or directory"));
        QVERIFY(!Scratch::exists(folder));
    }
};

QTEST_GUILESS_MAIN(ReportFileTest)
#include "ReportFileTest.moc"
