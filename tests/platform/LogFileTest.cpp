#include "platform/LogFile.h"

#include "kit/Lease.h"
#include "kit/Scratch.h"

#include <QTest>

#include <cerrno>

class LogFileTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aFileIsMadeOrEmptied()
    {
        const Scratch scratch;
        LogFile made;
        QCOMPARE(made.open(scratch.path("new")), 0);
        QCOMPARE(made.write("one\n"), 0);
        QCOMPARE(Scratch::content(scratch.path("new")), QByteArray("one\n"));
        const QByteArray path = scratch.file("old", "of the run before\n");
        LogFile emptied;
        QCOMPARE(emptied.open(path), 0);
        QCOMPARE(emptied.write("two\n"), 0);
        QCOMPARE(Scratch::content(path), QByteArray("two\n"));
    }

    void aLeaseOfAnotherProgramIsNotWaitedFor()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("log", "kept");
        {
            const Lease lease(path);
            QVERIFY(lease.isHeld());
            QCOMPARE(LogFile::look(path).error, EWOULDBLOCK);
            LogFile file;
            QCOMPARE(file.open(path), EWOULDBLOCK);
            QVERIFY(!file.isOpen());
        }
        QCOMPARE(Scratch::content(path), QByteArray("kept"));
    }

    void theKernelsOwnFilesAreNoLogs()
    {
        const LogPathFacts facts = LogFile::look("/proc/self/comm");
        QVERIFY(facts.kind == FileKind::Unknown);
        QCOMPARE(facts.error, 0);
        QCOMPARE(LogFile::look("/proc/self/new").error, EACCES);
        const QByteArray name = Scratch::content("/proc/self/comm");
        LogFile file;
        QCOMPARE(file.open("/proc/self/comm"), EINVAL);
        QCOMPARE(Scratch::content("/proc/self/comm"), name);
    }

    void whatMayBeMissedIsToldByItsLastName()
    {
        const Scratch scratch;
        const QByteArray path = scratch.path("log");
        const QByteArray other = scratch.path("other");
        LogFile file;
        QVERIFY(!file.isRemoved());
        QCOMPARE(file.open(path), 0);
        QCOMPARE(::link(path.constData(), other.constData()), 0);
        QCOMPARE(::unlink(path.constData()), 0);
        QVERIFY(!file.isRemoved());
        QCOMPARE(::unlink(other.constData()), 0);
        QVERIFY(file.isRemoved());
    }
};

QTEST_GUILESS_MAIN(LogFileTest)
#include "LogFileTest.moc"
