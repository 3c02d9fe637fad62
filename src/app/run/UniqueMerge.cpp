#include "app/run/UniqueMerge.h"

#include <QHash>

#include <algorithm>
#include <bit>
#include <vector>

namespace {

/// The places that are taken, each seen through its item. Open addressing, at most half full: a
/// million items are merged between two frames of a window, and what that costs is waiting for
/// memory.
class PlaceSet
{
  public:
    explicit PlaceSet(std::size_t places) : slots_(std::bit_ceil(2 * places + 1)) {}

    /// Asks for the memory that an insert() of this hash will look at.
    void prefetch(std::size_t hash) const { __builtin_prefetch(&slots_[hash & mask()]); }

    /// Whether the place was free.
    bool insert(const QueueObject &item, std::size_t hash)
    {
        for (std::size_t at = hash & mask();; at = (at + 1) & mask()) {
            Slot &slot = slots_[at];
            if (slot.item == nullptr) {
                slot = {&item, hash};
                return true;
            }
            if (slot.hash == hash && isSamePlace(*slot.item, item))
                return false;
        }
    }

  private:
    struct Slot
    {
        const QueueObject *item = nullptr;
        std::size_t hash = 0;
    };

    static bool isSamePlace(const QueueObject &left, const QueueObject &right)
    {
        return left.filename() == right.filename() && left.filepath() == right.filepath();
    }
    [[nodiscard]] std::size_t mask() const { return slots_.size() - 1; }

    std::vector<Slot> slots_;
};

/// Hashes items' places. Siblings share their folder's bytes, which are hashed once then.
class PlaceHash
{
  public:
    std::size_t operator()(const QueueArray::Item &item)
    {
        const QByteArray &folder = item->filepath();
        if (folder.constData() != folder_.constData() || folder.size() != folder_.size()) {
            folder_ = folder;
            folderHash_ = qHash(folder_, seed_);
        }
        return qHashMulti(seed_, folderHash_, item->filename());
    }

  private:
    std::size_t seed_ = QHashSeed::globalSeed();
    QByteArray folder_; ///< held, so that no other's bytes take its place
    std::size_t folderHash_ = qHash(folder_, seed_);
};

/// Inserts the items' places in order, and answers of each whether it was free.
std::vector<bool> insertAll(PlaceSet &places, const QueueArray::Items &items)
{
    constexpr std::size_t ahead = 16;
    std::vector<std::size_t> hashes(items.size());
    std::transform(items.begin(), items.end(), hashes.begin(), PlaceHash());
    std::vector<bool> isNew(items.size());
    for (std::size_t at = 0; at < items.size(); ++at) {
        places.prefetch(hashes[std::min(at + ahead, items.size() - 1)]);
        isNew[at] = places.insert(*items[at], hashes[at]);
    }
    return isNew;
}

} // namespace

QueueArray::Items UniqueMerge::makeUniqueArray(const QueueArray &queue,
                                               QueueArray::Items newObjects)
{
    PlaceSet places(queue.count() + newObjects.size());
    insertAll(places, queue.items());
    const std::vector<bool> isNew = insertAll(places, newObjects);
    std::size_t kept = 0;
    for (std::size_t at = 0; at < newObjects.size(); ++at) {
        if (isNew[at] && kept++ != at)
            newObjects[kept - 1] = std::move(newObjects[at]);
    }
    newObjects.resize(kept);
    return newObjects;
}
