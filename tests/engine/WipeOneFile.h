#pragma once

#include "engine/FileWiper.h"
#include "engine/QueueStatsObject.h"
#include "platform/PathBytes.h"

#include <QTest>

#include <memory>

/// Remembers what a wiper told.
class RecordingWiperDelegate final : public FileWiperDelegate
{
  public:
    [[nodiscard]] bool answers(Call) const override { return true; }
    void wipeFinishedWithResult(std::int64_t result) override
    {
        ++calls;
        lastResult = result;
    }

    int calls = 0;
    std::int64_t lastResult = 0;
};

inline std::shared_ptr<QueueObject> queueItem(const QByteArray &path, std::int64_t method,
                                              const ScanFacts &facts = {})
{
    auto item = QueueObject::create();
    item->setFullpath(path);
    item->setFilepath(PathBytes::withoutLastComponent(path));
    item->setFilename(PathBytes::lastComponent(path));
    item->setWipe_method(method);
    item->setScanFacts(facts);
    return item;
}

/// Runs a wiper over the item until its thread has ended, and answers the item's status; -1 where
/// that did not happen, or the delegate was not told the same, once.
inline std::int64_t wipe(const std::shared_ptr<QueueObject> &item, bool skipLinkTargets = false)
{
    auto delegate = std::make_shared<RecordingWiperDelegate>();
    auto wiper = FileWiper::create();
    wiper->setDelegate(delegate);
    wiper->setCurrentObject(item);
    wiper->setSkipLinkTargets(skipLinkTargets);
    wiper->start();
    const std::weak_ptr<FileWiper> ended = wiper;
    wiper.reset();
    if (!QTest::qWaitFor([&ended] { return ended.expired(); }, 60000))
        return -1;
    const bool isToldOnce = delegate->calls == 1 && delegate->lastResult == item->status();
    return isToldOnce && item->finished() ? item->status() : -1;
}
