#pragma once

#include "app/update/Updater.h"

#include <memory>

class AppDelegate;
class ApplicationService;
class MainVC;

/// Makes the windows, the workflow controller over them, and connects what is pressed to what it
/// does, and the ways in which the application ends. Wiring only.
///
/// Thread: main
/// Owns:   the windows, and the controller
class MainInterface
{
  public:
    /// `service` outlives it. `isFirst`: the service's name is ours, so that a hidden window can be
    /// brought back for as long as the session bus is there.
    MainInterface(AppDelegate &delegate, ApplicationService &service, bool isFirst,
                  Updater::Settings updates = Updater::Settings::ofThisBuild());
    ~MainInterface();
    MainInterface(const MainInterface &) = delete;
    MainInterface &operator=(const MainInterface &) = delete;

  private:
    struct Parts;

    std::unique_ptr<Parts> parts_;
};
