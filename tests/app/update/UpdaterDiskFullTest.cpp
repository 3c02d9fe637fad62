#include "app/update/UpdaterScene.h"

#include <QTest>

#include <sys/mount.h>
#include <sys/statvfs.h>

namespace {

/// A file system of one megabyte.
class SmallDisk
{
  public:
    SmallDisk() : folder_(scratch_.folder("disk"))
    {
        isMounted_ = ::mount("tmpfs", folder_.constData(), "tmpfs", 0, "size=1m") == 0;
    }
    ~SmallDisk()
    {
        if (isMounted_)
            ::umount2(folder_.constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isMounted() const { return isMounted_; }
    [[nodiscard]] QByteArray path() const { return folder_; }
    [[nodiscard]] std::uint64_t freeBytes() const
    {
        struct statvfs status = {};
        return ::statvfs(folder_.constData(), &status) == 0
                   ? std::uint64_t(status.f_bavail) * status.f_bsize
                   : 0;
    }

  private:
    Scratch scratch_;
    QByteArray folder_;
    bool isMounted_ = false;
};

} // namespace

class UpdaterDiskFullTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { QVERIFY(qputenv("XDG_CONFIG_HOME", config_.path())); }

    void aDownloadThatDoesNotFitIsSaidAndLeavesNothing();
    void aDownloadThatFitsStays();

  private:
    Scratch config_;
};

void UpdaterDiskFullTest::aDownloadThatDoesNotFitIsSaidAndLeavesNothing()
{
    const SmallDisk disk;
    QVERIFY(disk.isMounted());
    const std::uint64_t before = disk.freeBytes();
    UpdaterScene scene(disk.path());
    scene.file = QByteArray(3'000'000, 'x');
    scene.serve();
    scene.download();
    QTRY_COMPARE(scene.said,
                 QStringList(UpdateTexts::sentence(UpdateOutcome::NotWritten,
                                                   QStringLiteral("No space left on device"))));
    QCOMPARE(scene.files(), QStringList());
    QCOMPARE(disk.freeBytes(), before);
    QVERIFY(!scene.progress.empty());
    QCOMPARE(scene.ended, 1);
    QVERIFY(scene.revealed.empty());
}

void UpdaterDiskFullTest::aDownloadThatFitsStays()
{
    const SmallDisk disk;
    QVERIFY(disk.isMounted());
    UpdaterScene scene(disk.path());
    scene.serve();
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(Scratch::content(scene.revealed.front().path()), scene.file);
}

QTEST_MAIN(UpdaterDiskFullTest)
#include "UpdaterDiskFullTest.moc"
