#pragma once

#include <QColor>
#include <QHash>
#include <QLatin1String>
#include <QString>

#include <initializer_list>
#include <optional>

/// The colours of one themed element, taken from the preferences once and kept until it is built
/// anew or dropped. Drawing reads nothing else.
///
/// Thread: main
class ColorCache
{
  public:
    /// A colour's name in the cache, and the property word of its colour-property key.
    struct Entry
    {
        QLatin1String key;
        QLatin1String property;
    };

    [[nodiscard]] bool isBuilt() const { return colors_.has_value(); }
    void drop() { colors_.reset(); }

    /// Starts again with what the table has for this style; what it has not gets no entry, and an
    /// element without a style name finds nothing.
    void build(const QString &styleName, bool isDark, std::initializer_list<Entry> entries);
    /// Into a cache that is built.
    void insert(QLatin1String key, const QColor &color) { colors_->insert(key, color); }

    /// Nothing for what was not found and while there is no cache.
    [[nodiscard]] std::optional<QColor> color(QLatin1String key) const;
    [[nodiscard]] qsizetype count() const { return colors_ ? colors_->size() : 0; }

    /// The colour of a window that is not the main one.
    static std::optional<QColor> inactiveColor(const QString &styleName, bool isDark);

  private:
    std::optional<QHash<QString, QColor>> colors_;
};
