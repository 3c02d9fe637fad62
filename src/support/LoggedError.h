#pragma once

#include <QString>

#include <memory>

/// A failure with the one that caused it, if another did.
struct LoggedError
{
    QString localizedDescription;
    std::shared_ptr<const LoggedError> underlyingError;
};
