#pragma once

#include "support/Description.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <type_traits>
#include <variant>
#include <vector>

/// One argument of a format, with what it is.
class FormatArgument
{
  public:
    struct Integer
    {
        std::int64_t value = 0;
        std::uint64_t bits = 0; ///< as an unsigned number of the argument's own width
        bool isSigned = true;
    };

    template <typename Value>
    FormatArgument(const Value &value) : description_(Description::of(value))
    {
        if constexpr (std::is_enum_v<Value>)
            number_ = integer(static_cast<std::underlying_type_t<Value>>(value));
        else if constexpr (std::is_integral_v<Value>)
            number_ = integer(value);
        else if constexpr (std::is_floating_point_v<Value>)
            number_ = static_cast<double>(value);
        else
            isText_ = std::is_convertible_v<Value, QString> || std::is_base_of_v<QByteArray, Value>;
    }
    /// UTF-8.
    FormatArgument(const char *text) : description_(QString::fromUtf8(text)), isText_(true) {}

    [[nodiscard]] const QString &description() const { return description_; }
    [[nodiscard]] bool isText() const { return isText_; }
    /// Null where it is none.
    [[nodiscard]] const Integer *asInteger() const { return std::get_if<Integer>(&number_); }
    [[nodiscard]] std::optional<double> asDouble() const;

  private:
    template <typename Value> static Integer integer(Value value)
    {
        if constexpr (std::is_same_v<Value, bool>)
            return integer(static_cast<int>(value));
        else
            return {static_cast<std::int64_t>(value),
                    static_cast<std::uint64_t>(static_cast<std::make_unsigned_t<Value>>(value)),
                    std::is_signed_v<Value>};
    }

    QString description_;
    bool isText_ = false;
    std::variant<std::monostate, Integer, double> number_;
};

/// Expands a printf format with arguments whose types are known, so that a format from anywhere
/// reads nothing that was not given: "%" with d i u x X o c s f F e E g G and "@" (any argument's
/// own words), flags, width, precision, "*", length modifiers (which say nothing here) and "1$".
/// Arguments that no directive asks for are passed over. Numbers are written in the C locale.
///
/// Thread:  pure
/// Failure: a directive without its argument, with one of another type, or one that is not known:
///          no text, and why
namespace FormatExpander {

struct Expansion
{
    QString text;
    QString problem; ///< empty: the text stands
};

Expansion expand(const QString &format, const std::vector<FormatArgument> &arguments);

} // namespace FormatExpander
