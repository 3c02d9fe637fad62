#pragma once

/// Hears of the view animator's swaps; both operations are optional (OptionalDelegate).
///
/// Thread: main
class ViewAnimatorDelegate
{
  public:
    enum class Call { animationStarted, animationFinished };

    virtual ~ViewAnimatorDelegate() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;

    virtual void animationStarted() {}
    virtual void animationFinished() {}
};
