#pragma once

#include "platform/MainThread.h"

#include <memory>
#include <utility>

/// The record of one change of an observed property. Flags, codes and sizes all fit a double.
struct PropertyChange
{
    double oldValue = 0;
    double newValue = 0;

    [[nodiscard]] bool isChange() const { return oldValue != newValue; }
};

/// The one way in which the project observes a property: the setter calls its object's
/// observeValueForKeyPath(), which hands the record to the operation that follows the change, on
/// the main thread and never at once. The object stays alive until then.
///
/// Thread: any
template <class Object>
void postChange(std::shared_ptr<Object> object, void (Object::*follow)(const PropertyChange &),
                const PropertyChange &change)
{
    MainThread::post([object = std::move(object), follow, change] { (*object.*follow)(change); });
}
