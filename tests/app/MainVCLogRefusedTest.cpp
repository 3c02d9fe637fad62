#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "support/Logger.h"
#include "ui/CautionBand.h"
#include "ui/FinishedView.h"
#include "ui/TextLabel.h"

#include <QTest>

/// What the window says of a log that could not be opened. The logger is the process's: one test.
class MainVCLogRefusedTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLogThatCannotBeOpenedIsSaidAtTheEndOfTheRun();
};

void MainVCLogRefusedTest::aLogThatCannotBeOpenedIsSaidAtTheEndOfTheRun()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", 1000);
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"),
                                      QFile::decodeName(scratch.folder("log")));
    QVERIFY(stage.scan({file}));
    QVERIFY(stage.run());

    QVERIFY(!Scratch::exists(file));
    const FinishedView &view = *stage.outlets.viewFinished;
    QCOMPARE(view.note()->text(),
             QStringLiteral("Folders that became empty were removed. The log is not complete: This "
                            "is a folder, not a file."));
    QVERIFY(view.failureBand()->isHidden());
}

QTEST_MAIN(MainVCLogRefusedTest)
#include "MainVCLogRefusedTest.moc"
