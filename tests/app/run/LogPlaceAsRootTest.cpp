#include "app/run/LogPlace.h"

#include "app/run/EraseRun.h"
#include "kit/Scratch.h"

#include <QTest>

#include <sys/mount.h>

using LastLink = SystemCalls::LastLink;

namespace {

/// A file or folder that is there under a second path, unmounted when it goes.
class BindMount
{
  public:
    BindMount(const QByteArray &source, QByteArray target)
        : target_(std::move(target)), isMounted_(::mount(source.constData(), target_.constData(),
                                                         nullptr, MS_BIND, nullptr) == 0)
    {
    }
    ~BindMount() { ::umount2(target_.constData(), MNT_DETACH); }
    BindMount(const BindMount &) = delete;
    BindMount &operator=(const BindMount &) = delete;

    [[nodiscard]] bool isMounted() const { return isMounted_; }

  private:
    QByteArray target_;
    bool isMounted_;
};

void scan(EraseRun &run, const QByteArray &path)
{
    ScanReport report = FileUtils().readFilesFromPath(path);
    run.addObjectsFromArray(std::move(report.files));
    run.addFolderObjectsToQueueFromDict(std::move(report.folders));
}

} // namespace

/// Files that have a second name by a mount alone. Needs root, for the mounts; it only scans.
class LogPlaceAsRootTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aFileMountedOverAnotherIsThatFile()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/notes", "content");
        const QByteArray alias = scratch.file("alias", "");
        const BindMount mount(file, alias);
        QVERIFY(mount.isMounted());
        EraseRun run;
        scan(run, folder);
        QVERIFY(LogPlace::isSameFile(alias, file, LastLink::Stop));
        QVERIFY(LogPlace::isQueued(alias, run, LastLink::Stop));

        EraseRun other;
        scan(other, alias);
        QVERIFY(LogPlace::isQueued(file, other, LastLink::Stop));
        QVERIFY(!LogPlace::isQueued(scratch.file("third", ""), other, LastLink::Stop));
    }

    /// Also where it is a folder deep in what is to be erased that is mounted.
    void aFolderMountedElsewhereIsThatFolder()
    {
        const Scratch scratch;
        const QByteArray top = scratch.folder("top");
        QVERIFY(!scratch.folder("top/inner").isEmpty());
        const QByteArray deep = scratch.folder("top/inner/deep");
        const QByteArray alias = scratch.folder("alias");
        const BindMount mount(deep, alias);
        QVERIFY(mount.isMounted());
        EraseRun run;
        scan(run, top);
        QVERIFY(LogPlace::isInFolder(alias + "/log", run));
        QVERIFY(LogPlace::isInFolder(alias + "/log", deep));
        QVERIFY(!LogPlace::isInFolder(scratch.path("log"), run));

        EraseRun other;
        scan(other, alias);
        QVERIFY(LogPlace::isInFolder(deep + "/log", other));
        QVERIFY(!LogPlace::isInFolder(top + "/log", other));
    }
};

QTEST_GUILESS_MAIN(LogPlaceAsRootTest)
#include "LogPlaceAsRootTest.moc"
