#pragma once

#include <QMetaType>
#include <QVariant>

/// Turns a value of the model into what a view shows, one way. The base hands every value on
/// unchanged. A null QVariant stands for "no value", both in and out.
///
/// Thread:     main; stateless
/// Failure:    none; every input has an output
class ValueTransformer
{
  public:
    ValueTransformer() = default;
    virtual ~ValueTransformer();

    virtual QVariant transformedValue(const QVariant &value) const;

    static QMetaType transformedValueClass();
    static bool allowsReverseTransformation();

  private:
    Q_DISABLE_COPY_MOVE(ValueTransformer)
};
