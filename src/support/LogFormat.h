#pragma once

#include "support/Description.h"

#include <QString>

#include <source_location>
#include <type_traits>

/// The format of a message, with the place from which it is logged. Normally a text; of another
/// object its description is the format.
/// Kept on purpose: a "%" in such a description is a directive like any other.
///
/// Thread: pure
class LogFormat
{
  public:
    template <typename Format>
    LogFormat(const Format &format,
              const std::source_location &where = std::source_location::current())
        : where_(where)
    {
        if constexpr (std::is_same_v<Format, QString>)
            text_ = format;
        else if constexpr (!std::is_null_pointer_v<Format>)
            text_ = Description::of(format);
    }

    /// Null: nothing is to be logged.
    [[nodiscard]] const QString &text() const { return text_; }
    [[nodiscard]] const std::source_location &where() const { return where_; }

  private:
    QString text_;
    std::source_location where_;
};
