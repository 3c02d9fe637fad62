#pragma once

#include "app/run/CautionCount.h"
#include "engine/WipeDescriptionObject.h"

#include <cstdint>

class EraseRun;
class ReadyView;

/// Says in the ready view what a run would erase, and how.
///
/// Thread:       main
/// Holds weakly: the view, which outlives it
class ReadyPresenter
{
  public:
    explicit ReadyPresenter(ReadyView *view) : view_(view) {}

    void showQueue(const EraseRun &run);
    /// A number outside the catalogue comes with an empty description and has no passes.
    void showMethod(std::int64_t method, const WipeDescriptionObject &description);
    void showCautions(const CautionCount &count, bool skipLinkTargets);

  private:
    ReadyView *view_;
    std::int64_t passes_ = 0;
};
