#pragma once

#include "platform/CallList.h"

#include <QThread>

#include <semaphore>

/// A thread that stays and runs the tasks handed to it one after the other, all signals blocked. A
/// task that is handed over while another one runs waits for its end.
///
/// Thread:  submit() any, one at a time
/// Failure: submit() is false where the system has no thread to give
class ResidentThread : private QThread
{
  public:
    ResidentThread() = default;

    [[nodiscard]] bool submit(CallList::Call task);

  protected:
    void run() override;

  private:
    CallList tasks_;
    std::counting_semaphore<> waiting_{0};
};
