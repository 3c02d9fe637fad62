#include "app/run/UniqueMerge.h"

#include <QSet>

#include <algorithm>

namespace {

/// An item seen as its place. Holds no bytes of its own, so a million of them stay small.
struct Place
{
    const QueueObject *item;

    bool operator==(const Place &other) const
    {
        return item->filename() == other.item->filename() &&
               item->filepath() == other.item->filepath();
    }
};

size_t qHash(const Place &place, size_t seed)
{
    return qHashMulti(seed, place.item->filepath(), place.item->filename());
}

} // namespace

QueueArray::Items UniqueMerge::makeUniqueArray(const QueueArray &queue,
                                               QueueArray::Items newObjects)
{
    QSet<Place> places;
    for (const QueueArray::Item &item : queue.items())
        places.insert({item.get()});
    const auto isKnown = [&places](const QueueArray::Item &item) {
        const qsizetype before = places.size();
        places.insert({item.get()});
        return places.size() == before;
    };
    newObjects.erase(std::remove_if(newObjects.begin(), newObjects.end(), isKnown),
                     newObjects.end());
    return newObjects;
}
