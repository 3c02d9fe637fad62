#include "support/ValueTransformer.h"

#include <QByteArray>

ValueTransformer::~ValueTransformer() = default;

QVariant ValueTransformer::transformedValue(const QVariant &value) const
{
    return value;
}

QMetaType ValueTransformer::transformedValueClass()
{
    // Kept on purpose: every transformer declares raw data, also where it makes texts or pictures.
    return QMetaType::fromType<QByteArray>();
}

bool ValueTransformer::allowsReverseTransformation()
{
    return false;
}
