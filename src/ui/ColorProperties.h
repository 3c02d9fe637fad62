#pragma once

#include <QByteArray>
#include <QColor>
#include <QLatin1String>
#include <QString>
#include <QVariantMap>

#include <optional>

/// A colour as four doubles from 0 to 1.
struct ColorComponents
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const ColorComponents &) const = default;
    /// In sRGB, rounded once.
    [[nodiscard]] QColor color() const;
};

/// The table of colours in the preferences, key "colorProperties": colour-property keys such as
/// "DefaultWindowView_bggradstart_dark", and to each a colour in the encoding of archived().
///
/// Thread:  main
/// Failure: nothing where a key is missing or its bytes are no colour
namespace ColorProperties {

/// The 24 colours that count until a user stores a table of his own.
QVariantMap defaultTable();

/// Four doubles, lossless; unarchived() is its only reader.
QByteArray archived(const ColorComponents &color);
std::optional<ColorComponents> unarchived(const QByteArray &bytes);

/// "<style>_<property>_<light|dark>", with "_inactive" where asked for.
QString key(const QString &styleName, QLatin1String property, bool isDark, bool isInactive = false);

/// The stored table's colour under this key; the whole default table counts where none is stored.
std::optional<QColor> color(const QString &key);

/// What color() has for this style under the current theme.
std::optional<QColor> current(const QString &styleName, QLatin1String property);

/// What color() has for this style, else the default table's: what has to be drawn in some colour.
QColor colorOrDefault(const QString &styleName, QLatin1String property, bool isDark);
QColor currentOrDefault(const QString &styleName, QLatin1String property);

} // namespace ColorProperties
