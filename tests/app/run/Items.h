#pragma once

#include "engine/QueueArray.h"
#include "platform/PathBytes.h"

#include <QByteArrayList>

/// Queue items as a scan makes them, without any file.
namespace Items {

inline QueueArray::Item at(const QByteArray &path, double size = 1)
{
    const QueueArray::Item item = QueueObject::create();
    item->setFullpath(path);
    item->setFilepath(PathBytes::withoutLastComponent(path));
    item->setFilename(PathBytes::lastComponent(path));
    item->setFilesize(size);
    item->setMaxValue(size);
    return item;
}

inline QByteArrayList paths(const QueueArray::Items &items)
{
    QByteArrayList paths;
    for (const QueueArray::Item &item : items)
        paths.append(item->fullpath());
    return paths;
}

} // namespace Items
