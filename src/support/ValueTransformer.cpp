#include "support/ValueTransformer.h"

#include <QByteArray>

ValueTransformer::~ValueTransformer() = default;

QVariant ValueTransformer::transformedValue(const QVariant &value) const
{
    return value;
}

QVariant ValueTransformer::reverseTransformedValue(const QVariant &) const
{
    return {};
}

QMetaType ValueTransformer::transformedValueClass()
{
    // Kept on purpose: raw data, also where a transformer makes texts or pictures.
    return QMetaType::fromType<QByteArray>();
}

bool ValueTransformer::allowsReverseTransformation()
{
    return false;
}
