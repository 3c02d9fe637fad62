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
