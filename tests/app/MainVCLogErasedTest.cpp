#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "support/Logger.h"
#include "ui/FinishedView.h"
#include "ui/TextLabel.h"

#include <QTest>

/// A log that is erased by the start that writes it. The logger is the process's: one test.
class MainVCLogErasedTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLogThatARunErasesIsMissedAloud();
};

void MainVCLogErasedTest::aLogThatARunErasesIsMissedAloud()
{
    const Scratch scratch;
    const QByteArray log = scratch.path("log");
    Stage stage;
    const TextLabel &note = *stage.outlets.viewFinished->note();
    const auto isMissed = [&note] {
        return note.text().endsWith(
            QLatin1String("The log is not complete: It was among what was to be erased."));
    };
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    QVERIFY(stage.scan({scratch.file("a", 10)}));
    QVERIFY(stage.run());
    QVERIFY(!isMissed());
    const auto size = Scratch::content(log).size();

    QVERIFY(stage.scan({log}));
    QVERIFY(stage.run());
    QVERIFY(isMissed());
    QVERIFY(!Scratch::exists(log));
    // Not a line of this run was there to be overwritten.
    QVERIFY(stage.stats().wipedFilesString().startsWith(QString::number(size)));

    QVERIFY(stage.scan({scratch.file("b", 10)}));
    QVERIFY(stage.run());
    QVERIFY(isMissed());
    QVERIFY(!Scratch::exists(log));
}

QTEST_MAIN(MainVCLogErasedTest)
#include "MainVCLogErasedTest.moc"
