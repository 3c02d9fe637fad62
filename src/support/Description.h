#pragma once

#include "support/LoggedError.h"

#include <QByteArray>
#include <QDebug>
#include <QString>

#include <exception>
#include <type_traits>

/// The words for an object of any kind that can be logged.
///
/// Thread: pure
namespace Description {

/// The cause's words rather than the failure's own, where there are some.
inline QString ofError(const LoggedError &error)
{
    const bool hasCause =
        error.underlyingError && !error.underlyingError->localizedDescription.isEmpty();
    return hasCause ? error.underlyingError->localizedDescription : error.localizedDescription;
}

template <typename Object> QString ofAnything(const Object &object)
{
    if constexpr (std::is_enum_v<Object>) {
        return QString::number(static_cast<qlonglong>(object));
    } else {
        QString text;
        QDebug(&text).nospace().noquote() << object;
        return text;
    }
}

/// Never null: nothing has no words, which is another thing than no text.
template <typename Object> QString of(const Object &object)
{
    if constexpr (std::is_null_pointer_v<Object>)
        return QStringLiteral("");
    else if constexpr (std::is_base_of_v<LoggedError, Object>)
        return QStringLiteral("") + ofError(object);
    else if constexpr (std::is_base_of_v<std::exception, Object>)
        return QStringLiteral("") + QString::fromUtf8(object.what());
    else if constexpr (std::is_base_of_v<QByteArray, Object>)
        return QStringLiteral("") + QString::fromUtf8(object.constData()); // up to its first NUL
    else if constexpr (std::is_convertible_v<Object, QString>)
        return QStringLiteral("") + QString(object);
    else
        return QStringLiteral("") + ofAnything(object);
}

} // namespace Description
