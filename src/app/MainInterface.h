#pragma once

#include <memory>

class AppDelegate;
class MainVC;

/// Makes the windows, the workflow controller over them, and connects what is pressed to what it
/// does. Wiring only.
///
/// Thread: main
/// Owns:   the windows, and the controller
class MainInterface
{
  public:
    explicit MainInterface(AppDelegate &delegate);
    ~MainInterface();
    MainInterface(const MainInterface &) = delete;
    MainInterface &operator=(const MainInterface &) = delete;

  private:
    struct Parts;

    std::unique_ptr<Parts> parts_;
};
