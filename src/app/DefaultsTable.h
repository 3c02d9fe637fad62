#pragma once

#include <QString>
#include <QVariantMap>

/// The fallbacks of all preferences that have one.
///
/// Thread: pure
namespace DefaultsTable {

/// What the fallbacks depend on.
struct Facts
{
    QString version;
    QString build;
    QString supportPath;
    bool offersDarkAppearance = true;
};

QVariantMap defaults(const Facts &facts);

/// What is written over the user's own theme settings where the platform has no dark appearance.
QVariantMap withoutDarkAppearance();

} // namespace DefaultsTable
