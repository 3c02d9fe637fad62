#include "app/AppDelegate.h"

#include "kit/Scratch.h"
#include "kit/Unprivileged.h"

#include <QProcess>
#include <QTest>

/// What becomes of a start where the support folder cannot be made.
class AppDelegatePermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void aFolderThatCannotBeMadeIsToldWithItsPath();
    void theProgramSaysSoAndEnds();

  private:
    Scratch scratch_;
    QByteArray data_;
};

void AppDelegatePermissionsTest::init()
{
    if (data_.isEmpty())
        data_ = scratch_.folder("data");
    QVERIFY(!data_.isEmpty() && ::chmod(data_.constData(), 0555) == 0);
    qputenv("XDG_DATA_HOME", data_);
}

void AppDelegatePermissionsTest::aFolderThatCannotBeMadeIsToldWithItsPath()
{
    QByteArray path;
    QVERIFY(!AppDelegate::initialize(&path));
    QCOMPARE(path, data_ + "/Vantorel");
}

void AppDelegatePermissionsTest::theProgramSaysSoAndEnds()
{
    QProcess program;
    program.start(QStringLiteral(VANTOREL_WINDOW), {});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 1);
    // The system log's lines come before.
    QVERIFY(program.readAllStandardError().endsWith("\nvantorel: No access to: " + data_ +
                                                    "/Vantorel\n"));
}

UNPRIVILEGED_TEST_MAIN(AppDelegatePermissionsTest)
#include "AppDelegatePermissionsTest.moc"
