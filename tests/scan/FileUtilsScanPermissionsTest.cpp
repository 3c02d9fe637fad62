#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"
#include "platform/ScriptedSystemCalls.h"
#include "scan/Reports.h"

#include <QTest>

#include <cerrno>
#include <cstring>

namespace {

const QString folderLine = QStringLiteral("-[FileUtils recursiveScan:]_block_invoke (1): file://");
const QString entryLine = QStringLiteral("-[FileUtils recursiveScan:] (2): file://");

/// Takes permissions away, and gives them back when it goes.
class Permissions
{
  public:
    Permissions(const QByteArray &path, mode_t permissions) : path_(path)
    {
        ::chmod(path.constData(), permissions);
    }
    ~Permissions() { ::chmod(path_.constData(), 0755); }
    Permissions(const Permissions &) = delete;
    Permissions &operator=(const Permissions &) = delete;

  private:
    QByteArray path_;
};

} // namespace

/// The scan of what the user may not read, without root's rights.
class FileUtilsScanPermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { scratch_.reset(); }

    void anUnreadableFolderIsLoggedSkippedAndTold();
    void aDroppedFolderThatCannotBeReadIsLoggedAndTold();
    void aFolderThatCanOnlyBeListedHasFilesOfUnknownSize();
    void entriesThatCannotBeLookedUpAreLoggedAndSkipped();
    void aFileThatMayNotBeReadIsQueuedWithItsSize();

  private:
    [[nodiscard]] QString text(const QByteArray &name) const
    {
        return QString::fromLatin1(scratch_->path(name));
    }

    std::unique_ptr<Scratch> scratch_;
};

/// top/before/1, top/closed/2, top/closed/inner/3, top/later/4.
void FileUtilsScanPermissionsTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    for (const char *folder : {"top", "top/before", "top/closed", "top/closed/inner", "top/later"})
        QVERIFY(!scratch_->folder(folder).isEmpty());
    for (const char *file : {"top/before/1", "top/closed/2", "top/closed/inner/3", "top/later/4"})
        QVERIFY(!scratch_->file(file, "12345").isEmpty());
}

void FileUtilsScanPermissionsTest::anUnreadableFolderIsLoggedSkippedAndTold()
{
    const Permissions none(scratch_->path("top/closed"), 0);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch_->path("top"));
    QCOMPARE(Reports::files(report),
             QByteArrayList({scratch_->path("top/before/1"), scratch_->path("top/later/4")}));
    QCOMPARE(Reports::folders(report),
             QByteArrayList({scratch_->path("top"), scratch_->path("top/before"),
                             scratch_->path("top/closed"), scratch_->path("top/later")}));
    QCOMPARE(log.lines(), QStringList({folderLine + text("top/closed")}));
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(Reports::paths(failures), QByteArrayList({scratch_->path("top/closed")}));
    QCOMPARE(failures.front().errornr, EACCES);
    QCOMPARE(failures.front().errormsg, QString::fromLocal8Bit(std::strerror(EACCES)));
}

void FileUtilsScanPermissionsTest::aDroppedFolderThatCannotBeReadIsLoggedAndTold()
{
    const QByteArray closed = scratch_->path("top/closed");
    const Permissions none(closed, 0);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(closed);
    QVERIFY(report.files.empty());
    QCOMPARE(Reports::folders(report), QByteArrayList({closed}));
    QCOMPARE(log.lines(), QStringList({folderLine + text("top/closed")}));
    QCOMPARE(Reports::paths(fileUtils.takeScanFailures()), QByteArrayList({closed}));
}

/// Reading without searching: the names are there, and nothing behind them.
void FileUtilsScanPermissionsTest::aFolderThatCanOnlyBeListedHasFilesOfUnknownSize()
{
    const QByteArray closed = scratch_->path("top/closed");
    const Permissions listOnly(closed, 0444);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(closed);
    QCOMPARE(Reports::files(report), QByteArrayList({closed + "/2"}));
    QCOMPARE(report.files.front()->filesize(), -1.0);
    QCOMPARE(Reports::folders(report), QByteArrayList({closed, closed + "/inner"}));
    QCOMPARE(log.lines(), QStringList({folderLine + text("top/closed/inner")}));
    QCOMPARE(Reports::paths(fileUtils.takeScanFailures()), QByteArrayList({closed + "/inner"}));
}

/// The same where the file system does not tell what its entries are.
void FileUtilsScanPermissionsTest::entriesThatCannotBeLookedUpAreLoggedAndSkipped()
{
    const QByteArray closed = scratch_->path("top/closed");
    const Permissions listOnly(closed, 0444);
    ScriptedSystemCalls calls;
    calls.blanksKinds = true;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(closed);
    QVERIFY(report.files.empty());
    QCOMPARE(Reports::folders(report), QByteArrayList({closed}));
    QStringList lines = log.lines();
    lines.sort();
    QCOMPARE(lines,
             QStringList({entryLine + text("top/closed/2"), entryLine + text("top/closed/inner")}));
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(Reports::paths(failures), QByteArrayList({closed + "/2", closed + "/inner"}));
    QCOMPARE(failures.front().errornr, EACCES);
}

void FileUtilsScanPermissionsTest::aFileThatMayNotBeReadIsQueuedWithItsSize()
{
    const QByteArray file = scratch_->path("top/later/4");
    const Permissions none(file, 0);
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch_->path("top/later"));
    QCOMPARE(Reports::files(report), QByteArrayList({file}));
    QCOMPARE(report.files.front()->filesize(), 5.0);
    QVERIFY(fileUtils.takeScanFailures().empty());
}

UNPRIVILEGED_TEST_MAIN(FileUtilsScanPermissionsTest)
#include "FileUtilsScanPermissionsTest.moc"
