#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"

#include <QTest>

#include <cerrno>
#include <cstring>
#include <memory>

#include <sys/mount.h>

namespace {

QStringList failureLines(const QByteArray &path, int error)
{
    return {QStringLiteral("-[FileUtils deleteFolder:] ") + QString::fromUtf8(path) +
            QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error))};
}

} // namespace

/// What is mounted below a folder is not the folder's.
class FolderRemovalMountTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theSweepLeavesWhatIsMountedBelow();
    void deleteFolderLeavesWhatIsMountedBelow();
    void aMountedFolderIsNotRemovedItself();

    void theSweepLeavesAFolderOfTheSameFileSystemThatIsBoundBelow()
    {
        const Scratch scratch;
        const QByteArray outside = scratch.folder("outside");
        const QByteArray precious = scratch.file("outside/precious", QByteArray("kept"));
        const QByteArray top = scratch.folder("top");
        const QByteArray bound = scratch.folder("top/.bound");
        QCOMPARE(::mount(outside.constData(), bound.constData(), nullptr, MS_BIND, nullptr), 0);

        const FolderSweep sweep = FileUtils().deleteFoldersFromArray({{top, {}}});

        QCOMPARE(::umount2(bound.constData(), MNT_DETACH), 0);
        QCOMPARE(Scratch::content(precious), QByteArray("kept"));
        QVERIFY(sweep.removedFiles.empty());
        QVERIFY(sweep.removedFolders.empty());
    }

  private:
    std::unique_ptr<Scratch> scratch_;
    QByteArray top_;
    QByteArray mounted_;
    QByteArray file_;
};

void FolderRemovalMountTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    top_ = scratch_->folder("top");
    mounted_ = scratch_->folder("top/.mounted");
    QCOMPARE(::mount("scratch", mounted_.constData(), "tmpfs", MS_NOSUID | MS_NODEV, "size=64k"),
             0);
    file_ = scratch_->file("top/.mounted/file", QByteArray("kept"));
    QVERIFY(!file_.isEmpty());
}

void FolderRemovalMountTest::cleanup()
{
    QCOMPARE(::umount2(mounted_.constData(), MNT_DETACH), 0);
    scratch_.reset();
}

void FolderRemovalMountTest::theSweepLeavesWhatIsMountedBelow()
{
    const RecordedLog log;
    const FolderSweep sweep = FileUtils().deleteFoldersFromArray({{top_, {}}});
    QCOMPARE(Scratch::content(file_), QByteArray("kept"));
    QVERIFY(sweep.removedFolders.empty());
    QVERIFY(sweep.removedFiles.empty());
    QCOMPARE(log.lines(), failureLines(top_, EXDEV));
}

void FolderRemovalMountTest::deleteFolderLeavesWhatIsMountedBelow()
{
    const QByteArray other = scratch_->file("top/other", 1);
    const RecordedLog log;
    FileUtils().deleteFolder(top_);
    QCOMPARE(Scratch::content(file_), QByteArray("kept"));
    QVERIFY(!Scratch::exists(other));
    QCOMPARE(log.lines(), failureLines(top_, EXDEV));
}

void FolderRemovalMountTest::aMountedFolderIsNotRemovedItself()
{
    QCOMPARE(::unlink(file_.constData()), 0);
    const RecordedLog log;
    FileUtils().deleteFoldersFromArray({{mounted_, {}}});
    QVERIFY(Scratch::exists(mounted_));
    QCOMPARE(log.lines(), failureLines(mounted_, EBUSY));
}

QTEST_GUILESS_MAIN(FolderRemovalMountTest)
#include "FolderRemovalMountTest.moc"
