#pragma once

/// Whether the platform offers a dark appearance: the one place that is asked.
///
/// Thread: main
namespace DarkAppearance {

bool isSupported();

/// While it lives, isSupported() answers what it was given. For tests.
class Replacement
{
  public:
    explicit Replacement(bool isSupported);
    ~Replacement();
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

  private:
    bool previous_;
};

} // namespace DarkAppearance
