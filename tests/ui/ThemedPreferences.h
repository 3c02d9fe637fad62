#pragma once

#include "kit/Scratch.h"
#include "platform/UserDefaults.h"
#include "ui/ColorProperties.h"
#include "ui/ThemeKeys.h"

#include <optional>

/// Preferences in a folder of the test's own, with the table of colours and a theme.
class ThemedPreferences
{
  public:
    ThemedPreferences()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           QFile::decodeName(scratch_.path()));
        preferences_.emplace();
        UserDefaults::standard().registerDefaults(
            {{QStringLiteral("colorProperties"), ColorProperties::defaultTable()},
             {ThemeKeys::theme, 0}});
    }

    void setDark(bool isDark) { UserDefaults::standard().setValue(ThemeKeys::theme, int(isDark)); }
    /// The whole table is this one from now on.
    void setColors(const QVariantMap &table)
    {
        UserDefaults::standard().setValue(QStringLiteral("colorProperties"), table);
    }

  private:
    Scratch scratch_;
    std::optional<UserDefaults::Replacement> preferences_;
};
