#include "support/NumberText.h"

#include <QLocale>

#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>

namespace {

template <std::signed_integral Integer> Integer saturated(double value)
{
    // The lower end is a power of two and exact as a double; the upper end is not.
    constexpr auto lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    if (std::isnan(value))
        return 0;
    if (value <= lowest)
        return std::numeric_limits<Integer>::min();
    if (value >= -lowest)
        return std::numeric_limits<Integer>::max();
    return static_cast<Integer>(value);
}

} // namespace

std::int32_t NumberText::truncatedTo32Bits(double value)
{
    return saturated<std::int32_t>(value);
}

std::int64_t NumberText::truncatedTo64Bits(double value)
{
    return saturated<std::int64_t>(value);
}

QString NumberText::withTwoDecimals(double value)
{
    constexpr int decimals = 2;
    constexpr auto signAndPoint = 2;
    constexpr auto longest =
        std::numeric_limits<double>::max_exponent10 + 1 + signAndPoint + decimals;
    std::array<char, longest> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    return QString::fromLatin1(digits.data(), end - digits.data());
}

QString NumberText::grouped(std::int64_t count)
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::DefaultNumberOptions);
    return locale.toString(qlonglong(count));
}
