#pragma once

#include <QMetaType>
#include <QVariant>

/// Turns a value of the model into what a view shows and, where a class goes both ways, back. The
/// base hands every value on unchanged and goes one way. A null QVariant stands for "no value",
/// both in and out.
///
/// What a class declares is asked of that class, by its name:
/// BytesToString::transformedValueClass().
///
/// Thread:     main; stateless
/// Failure:    none; every input has an output
class ValueTransformer
{
  public:
    ValueTransformer() = default;
    virtual ~ValueTransformer();

    virtual QVariant transformedValue(const QVariant &value) const;
    /// No value, unless the class goes both ways.
    virtual QVariant reverseTransformedValue(const QVariant &value) const;

    static QMetaType transformedValueClass();
    static bool allowsReverseTransformation();

  private:
    Q_DISABLE_COPY_MOVE(ValueTransformer)
};
