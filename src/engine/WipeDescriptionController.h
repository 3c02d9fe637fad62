#pragma once

#include "engine/WipeDescriptionObject.h"

#include <vector>

/// The catalogue of wipe methods. A method's number is its index; entry 0 is empty.
///
/// Thread: any (made once, then only read)
class WipeDescriptionController
{
  public:
    WipeDescriptionController() { setupDescriptions(); }

    [[nodiscard]] const std::vector<WipeDescriptionObject> &wipeDescriptions() const
    {
        return wipeDescriptions_;
    }

  private:
    void setupDescriptions();

    std::vector<WipeDescriptionObject> wipeDescriptions_;
};
