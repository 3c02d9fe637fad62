#pragma once

#include <QString>

/// The name and the description of a wipe method, as shown to the user.
struct WipeDescriptionObject
{
    QString name;
    QString info; ///< one or more lines
};
