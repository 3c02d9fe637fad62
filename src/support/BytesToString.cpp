#include "support/BytesToString.h"

#include "support/BytesFormatter.h"

QVariant BytesToString::transformedValue(const QVariant &value) const
{
    return BytesFormatter::formatBytes(value.toDouble());
}
