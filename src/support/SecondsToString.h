#pragma once

#include "support/ValueTransformer.h"

#include <QString>

/// Words an estimate of the time that remains: "About 5 seconds", "Less than a minute", "About 3
/// hours". The time that has passed is worded by TimeFormatter.
///
/// Thread:     main; stateless
/// Units:      seconds
/// Failure:    none; no value, less than a second, what is not a number and what is beyond
///             NumberText::largestShown read "--"
class SecondsToString final : public ValueTransformer
{
  public:
    QVariant transformedValue(const QVariant &value) const override;

    static QString approximateDuration(double seconds);
};
