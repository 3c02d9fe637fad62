#include "app/MainVC.h"

#include "app/LogPathPresenter.h"
#include "app/Stage.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"
#include "platform/BackgroundQueue.h"
#include "support/Logger.h"
#include "ui/CautionBand.h"
#include "ui/FinishedView.h"
#include "ui/TextLabel.h"

#include <QTest>

namespace {

/// A log that takes its first line, and then no more for want of space.
class FullLog final : public ForwardingSystemCalls
{
  public:
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        const QByteArrayView line(static_cast<const char *>(bytes), qsizetype(count));
        const bool isLine = line.startsWith("[INFO]  ") || line.startsWith("[ERROR] ");
        if (isLine && lines_++ > 0)
            return -ENOSPC;
        return ForwardingSystemCalls::write(fd, bytes, count);
    }

  private:
    int lines_ = 0; ///< of the log, which the main thread writes
};

} // namespace

/// What the window says of a log that could not be written to its end. The logger is the process's:
/// one test.
class MainVCLogProblemTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLogThatEndsInTheMiddleIsSaidAndTheRunHasNotFailed();
};

void MainVCLogProblemTest::aLogThatEndsInTheMiddleIsSaidAndTheRunHasNotFailed()
{
    const Scratch scratch;
    const QByteArray log = scratch.path("log");
    const QByteArray file = scratch.file("a", 1000);
    FullLog disk;
    const SystemCalls::Replacement replacement(disk);
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    const LogPathPresenter presenter(stage.outlets.viewPreferences, nullptr);
    QVERIFY(stage.scan({file}));
    QVERIFY(stage.run());

    QVERIFY(!Scratch::exists(file));
    QCOMPARE(Scratch::content(log).count('\n'), 1);
    const FinishedView &view = *stage.outlets.viewFinished;
    const QString sentence = QStringLiteral("The log is not complete: No space left on device.");
    QCOMPARE(view.note()->text(),
             QStringLiteral("Folders that became empty were removed. ") + sentence);
    QVERIFY(view.failureBand()->isHidden());
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 0);
    QVERIFY(stage.heard.last().endsWith(QStringLiteral(". 0 failed. ") + sentence));
    QTRY_COMPARE(stage.outlets.viewPreferences->logRemark()->text(),
                 QStringLiteral("this log is not complete: No space left on device"));
    // The calls are put back when no thread uses them.
    QVERIFY(BackgroundQueue::finish(std::chrono::seconds(20)));
}

QTEST_MAIN(MainVCLogProblemTest)
#include "MainVCLogProblemTest.moc"
