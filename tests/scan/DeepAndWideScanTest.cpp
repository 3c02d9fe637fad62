#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "platform/Descriptor.h"
#include "platform/FolderChain.h"
#include "platform/RecordingDescriptors.h"
#include "scan/Reports.h"

#include <QSet>
#include <QTest>

#include <string>

#include <sys/resource.h>

namespace {

/// Lets the process open no more than so many descriptors.
class DescriptorLimit
{
  public:
    explicit DescriptorLimit(rlim_t limit)
    {
        ::getrlimit(RLIMIT_NOFILE, &old_);
        rlimit narrow = old_;
        narrow.rlim_cur = limit;
        isSet_ = ::setrlimit(RLIMIT_NOFILE, &narrow) == 0;
    }
    ~DescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &old_); }
    DescriptorLimit(const DescriptorLimit &) = delete;
    DescriptorLimit &operator=(const DescriptorLimit &) = delete;

    [[nodiscard]] bool isSet() const { return isSet_; }

  private:
    rlimit old_ = {};
    bool isSet_ = false;
};

/// A folder of so many names, which are numbers. They are hard links to a few empty files beside
/// it, since these are made much faster than files; removed by number, too, without listing.
class WideFolder
{
  public:
    WideFolder(const QByteArray &path, const QByteArray &sources, int names)
        : sources_(open(sources)), folder_(open(path))
    {
        while (names_ < names && add(names_))
            ++names_;
        isComplete_ = names_ == names;
    }
    ~WideFolder()
    {
        while (names_ > 0)
            ::unlinkat(folder_.fd(), std::to_string(--names_).c_str(), 0);
    }
    WideFolder(const WideFolder &) = delete;
    WideFolder &operator=(const WideFolder &) = delete;

    [[nodiscard]] bool isComplete() const { return isComplete_; }

  private:
    static constexpr int linksOfOneFile = 50'000; // ext4 allows 65,000

    static Descriptor open(const QByteArray &path)
    {
        return Descriptor(::open(path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    }

    bool add(int number)
    {
        const std::string source = std::to_string(number / linksOfOneFile);
        if (number % linksOfOneFile == 0 &&
            ::mknodat(sources_.fd(), source.c_str(), S_IFREG | 0644, 0) != 0)
            return false;
        return ::linkat(sources_.fd(), source.c_str(), folder_.fd(), std::to_string(number).c_str(),
                        0) == 0;
    }

    Descriptor sources_;
    Descriptor folder_;
    int names_ = 0;
    bool isComplete_ = false;
};

bool isLong()
{
    return qEnvironmentVariableIntValue("VANTOREL_LONG_TESTS") == 1;
}

} // namespace

/// Trees as deep and as wide as the scan has to take them. A folder of a million files is made
/// where the environment says VANTOREL_LONG_TESTS=1, else of a hundred thousand.
class DeepAndWideScanTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aVeryDeepTreeIsWalkedWithFewDescriptors();
    void everyFileOfAWideFolderIsFoundOnceAndCounted();
};

void DeepAndWideScanTest::aVeryDeepTreeIsWalkedWithFewDescriptors()
{
    const int levels = isLong() ? 100'000 : 3000;
    const Scratch scratch;
    const QByteArray top = scratch.folder("top");
    FolderChain chain(top, "d", levels);
    QVERIFY(chain.isComplete());
    QVERIFY(chain.addFile("f"));

    RecordingDescriptors calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    ScanReport report;
    {
        const DescriptorLimit limit(64);
        QVERIFY(limit.isSet());
        report = fileUtils.readFilesFromPath(top);
    }
    QVERIFY(calls.mostOpen() < 40);
    QCOMPARE(calls.openNow(), 0);
    QCOMPARE(report.files.size(), std::size_t(1));
    QVERIFY(report.files.front()->fullpath() == chain.bottomPath() + "/f");
    QCOMPARE(report.files.front()->filesize(), -1.0);
    // Every folder that has a path of its own for the system, and one failure for those below.
    QCOMPARE(report.folders.size(), std::size_t((PATH_MAX - 1 - top.size()) / 2 + 1));
    QCOMPARE(fileUtils.takeScanFailures().size(), std::size_t(1));
    QCOMPARE(log.lines().size(), 1);
}

void DeepAndWideScanTest::everyFileOfAWideFolderIsFoundOnceAndCounted()
{
    const int files = isLong() ? 1'000'000 : 100'000;
    const Scratch scratch;
    const QByteArray top = scratch.folder("top");
    QVERIFY(!scratch.folder("top/inner").isEmpty());
    const WideFolder wide(top, scratch.folder("sources"), files);
    QVERIFY(wide.isComplete());
    const auto stats = QueueStatsObject::create();
    FileUtils fileUtils;
    fileUtils.setQueueStatsObject(stats);
    const ScanReport report = fileUtils.readFilesFromPath(top);
    QCOMPARE(report.files.size(), std::size_t(files));
    QSet<QByteArray> names;
    for (const QueueArray::Item &item : report.files)
        names.insert(item->filename());
    QCOMPARE(names.size(), qsizetype(files));
    QCOMPARE(Reports::folders(report), QByteArrayList({top, top + "/inner"}));
    QVERIFY(fileUtils.takeScanFailures().empty());
    QTRY_COMPARE(stats->scanFoundFiles(), std::int64_t(files));
    QCOMPARE(stats->scanFoundBytes(), 0.0);
}

QTEST_GUILESS_MAIN(DeepAndWideScanTest)
#include "DeepAndWideScanTest.moc"
