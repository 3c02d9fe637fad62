#pragma once

#include <QString>

/// One shown entry of the log.
struct LogClass
{
    QString type;   ///< the level's name, brackets included
    QString time;   ///< when the record was made, "HH:mm:ss.zzz", local
    QString caller; ///< "[Class operation]"
    QString message;
};
