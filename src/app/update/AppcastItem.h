#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QUrl>

#include <cstdint>

/// One release in a feed, as the feed tells it: texts without blanks at their ends, nothing of it
/// checked. The empty item is the one that has no contents.
///
/// Thread: any (a value)
struct AppcastItem
{
    /// The file of the release (RSS 2.0, <enclosure>).
    struct Enclosure
    {
        QUrl url;
        std::int64_t length = 0; ///< bytes
        QString type;            ///< its media type
        QByteArray signature;    ///< Ed25519, of the file's bytes; empty where there is none

        bool operator==(const Enclosure &) const = default;
    };

    // The names under which its properties stand, as the feed writes them.
    static const QString titleKey;
    static const QString descriptionKey; ///< its notes, plain text
    static const QString dateKey;        ///< RFC 822
    static const QString releaseTypeKey; ///< "beta" or "alpha"; an ordinary release has none
    static const QString versionKey;
    static const QString operatingSystemKey; ///< for all systems where there is none
    static const QString minimumSystemKey;   ///< the oldest version of that system

    QMap<QString, QString> properties;
    Enclosure enclosure;

    [[nodiscard]] bool isEmpty() const { return *this == AppcastItem(); }
    /// Null where it has none.
    [[nodiscard]] QString property(const QString &key) const { return properties.value(key); }

    bool operator==(const AppcastItem &) const = default;
};
