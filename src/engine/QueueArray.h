#pragma once

#include "engine/QueueObject.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The erase queue: items in the order in which they are erased. The run owns it; the wipe
/// controller holds it weakly.
///
/// Thread: main
class QueueArray
{
  public:
    using Item = std::shared_ptr<QueueObject>;
    using Items = std::vector<Item>;

    [[nodiscard]] const Items &items() const { return items_; }
    [[nodiscard]] std::size_t count() const { return items_.size(); }
    [[nodiscard]] bool isEmpty() const { return items_.empty(); }

    void append(Item item);
    void append(Items items);
    void insert(std::size_t at, Item item);
    void remove(std::size_t at);
    void clear() { takeAll(); }
    /// Empties the queue and answers what was in it.
    Items takeAll();

    /// The first item, in order, whose `finished` is NO; none when all are finished. Constant time
    /// over a run: remembers how far everything is finished, and forgets it when the order of what
    /// it passed changes or a finished item is set back.
    [[nodiscard]] Item firstUnfinished();

  private:
    void forgetFinished() { finishedCount_ = 0; }

    Items items_;
    std::size_t finishedCount_ = 0; ///< so many items at the start are known to be finished
    std::uint64_t reopenedCount_ = 0;
};
