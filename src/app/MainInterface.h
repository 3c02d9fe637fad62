#pragma once

#include <memory>

class AppDelegate;
class MainVC;

/// Makes the windows, the workflow controller over them, and connects what is pressed to what it
/// does, and the ways in which the application ends. Wiring only.
///
/// Thread: main
/// Owns:   the windows, and the controller
class MainInterface
{
  public:
    /// `canBeReopened`: something outside can bring a hidden window back.
    MainInterface(AppDelegate &delegate, bool canBeReopened);
    ~MainInterface();
    MainInterface(const MainInterface &) = delete;
    MainInterface &operator=(const MainInterface &) = delete;

  private:
    struct Parts;

    std::unique_ptr<Parts> parts_;
};
