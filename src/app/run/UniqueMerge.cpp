#include "app/run/UniqueMerge.h"

#include <QSet>

#include <algorithm>

namespace {

/// An item seen as its place. Holds no bytes of its own, so a million of them stay small; with its
/// hash, so that few of them are looked at to tell them apart.
struct Place
{
    explicit Place(const QueueArray::Item &object)
        : item(object.get()),
          hash(qHashMulti(QHashSeed::globalSeed(), object->filepath(), object->filename()))
    {
    }

    bool operator==(const Place &other) const
    {
        return hash == other.hash && item->filename() == other.item->filename() &&
               item->filepath() == other.item->filepath();
    }

    const QueueObject *item;
    size_t hash;
};

size_t qHash(const Place &place, size_t seed)
{
    return place.hash ^ seed;
}

} // namespace

QueueArray::Items UniqueMerge::makeUniqueArray(const QueueArray &queue,
                                               QueueArray::Items newObjects)
{
    QSet<Place> places;
    places.reserve(qsizetype(queue.count() + newObjects.size()));
    for (const QueueArray::Item &item : queue.items())
        places.insert(Place(item));
    const auto isKnown = [&places](const QueueArray::Item &item) {
        const qsizetype before = places.size();
        places.insert(Place(item));
        return places.size() == before;
    };
    newObjects.erase(std::remove_if(newObjects.begin(), newObjects.end(), isKnown),
                     newObjects.end());
    return newObjects;
}
