#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <utility>

/// Calls on their way from any threads to one: taken out in the order in which they were put in.
/// What a thread wrote before push(), the call sees.
///
/// Thread: push() any; takeInto() the receiving one
/// Blocks: never
class CallList
{
  public:
    using Call = std::function<void()>;

    CallList() = default;
    CallList(const CallList &) = delete;
    CallList &operator=(const CallList &) = delete;
    ~CallList()
    {
        std::deque<Call> unrun;
        takeInto(unrun);
    }

    void push(Call call)
    {
        Node *node = new Node{std::move(call), newest_.load(std::memory_order_relaxed)};
        while (!newest_.compare_exchange_weak(node->older, node, std::memory_order_release,
                                              std::memory_order_relaxed)) {
        }
    }

    /// Moves what is there to the end of `calls`.
    void takeInto(std::deque<Call> &calls)
    {
        const auto before = static_cast<std::ptrdiff_t>(calls.size());
        for (Node *node = newest_.exchange(nullptr, std::memory_order_acquire); node != nullptr;) {
            calls.insert(calls.begin() + before, std::move(node->call));
            delete std::exchange(node, node->older);
        }
    }

  private:
    struct Node
    {
        Call call;
        Node *older = nullptr;
    };

    std::atomic<Node *> newest_ = nullptr;
};
