#pragma once

#include "engine/ProtectedPlaces.h"
#include "engine/QueueStatsObject.h"
#include "engine/ScanReport.h"
#include "platform/TreeWalk.h"

#include <QByteArray>
#include <QElapsedTimer>

#include <atomic>
#include <map>
#include <memory>

/// Counts found items in the statistics, from the thread that finds them: it hands them over to the
/// main thread in batches, at least ten times a second and the last ones when it goes.
///
/// Thread: scan worker; the counting itself: main
class FoundCounter
{
  public:
    explicit FoundCounter(std::shared_ptr<QueueStatsObject> stats);
    ~FoundCounter() { flush(); }
    FoundCounter(const FoundCounter &) = delete;
    FoundCounter &operator=(const FoundCounter &) = delete;

    void add(const QueueObject &item);
    static void count(QueueStatsObject &stats, std::int64_t files, double bytes);

  private:
    void flush();

    std::shared_ptr<QueueStatsObject> stats_;
    std::int64_t files_ = 0; ///< found, and not yet handed over
    double bytes_ = 0;
    QElapsedTimer sinceFlush_;
};

/// The scan of one item that the user handed over: makes a queue item of everything that is no
/// folder and records every folder. No file is opened.
///
/// Thread:  scan worker
/// Blocks:  on disk I/O
/// Failure: logged, noted and survived; a size that cannot be read is -1
class TreeScan final : public TreeVisitor
{
  public:
    struct Order
    {
        std::shared_ptr<QueueStatsObject> stats; ///< null: nothing is counted
        std::int32_t givenLength = -1;           ///< as in ScanFacts
        bool skipLinkTargets = false;
        const std::atomic<bool> &shouldCancel;
    };
    struct Findings
    {
        QueueArray::Items &files;
        FolderMap &folders;
        ScanFailures &failures;
    };

    TreeScan(Order order, Findings findings);

    void scanFolder(const QByteArray &path);
    void scanFile(const QByteArray &path);
    [[nodiscard]] QueueArray::Item makeItem(const QByteArray &path);

    bool enterFolder(const QByteArray &path) override;
    bool openedFolder(const QByteArray &path, const FileStatus &status) override;
    void visitEntry(int folder, const QByteArray &folderPath, const char *name,
                    FileKind kind) override;
    void leaveFolder(int parent, const QByteArray &path, const char *name) override;
    void unreadableFolder(const QByteArray &path, int error) override;
    void unreadableEntry(const QByteArray &path, int error) override;
    [[nodiscard]] bool shouldStop() const override { return order_.shouldCancel; }

  private:
    struct Name;

    QueueArray::Item makeItem(const Name &name);
    void noteUnfinished(const QByteArray &top);
    std::uint64_t fileSystemType(std::uint64_t device, const QByteArray &path);

    Order order_;
    Findings findings_;
    FoundCounter counter_;
    ProtectedPlaces protectedPlaces_;
    QByteArray current_; ///< the deepest folder that was entered and not left
    std::map<std::uint64_t, std::uint64_t> fileSystemTypes_; ///< by device
};
