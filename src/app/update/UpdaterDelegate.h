#pragma once

#include "app/update/Appcast.h"

#include <optional>

class Updater;

/// Decides for the updater; its operation is optional (OptionalDelegate). Where nobody answers,
/// nothing is offered.
///
/// Thread: main
class UpdaterDelegate
{
  public:
    enum class Call { bestValidUpdateInAppcast };

    virtual ~UpdaterDelegate() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;

    /// The item to offer. The empty item or none: nothing is offered.
    virtual std::optional<AppcastItem> bestValidUpdateInAppcast(const Appcast &appcast,
                                                                const Updater *forUpdater);
};

inline std::optional<AppcastItem> UpdaterDelegate::bestValidUpdateInAppcast(const Appcast &,
                                                                            const Updater *)
{
    return std::nullopt;
}
