#include "support/PercentageToString.h"

#include "support/NumberText.h"

#include <cmath>
#include <cstdint>

namespace {

std::int64_t integerValue(const QVariant &number)
{
    const int type = number.typeId();
    // QVariant would round these, and an integer would lose digits on the way through a double.
    if (type != QMetaType::Double && type != QMetaType::Float)
        return number.toLongLong();
    const double value = number.toDouble();
    return std::isfinite(value) ? NumberText::truncatedTo64Bits(value) : 0;
}

} // namespace

QVariant PercentageToString::transformedValue(const QVariant &value) const
{
    return QStringLiteral("%1 %").arg(integerValue(value));
}
