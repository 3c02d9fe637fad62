#include "app/update/AppcastItem.h"

const QString AppcastItem::titleKey = QStringLiteral("title");
const QString AppcastItem::descriptionKey = QStringLiteral("description");
const QString AppcastItem::dateKey = QStringLiteral("pubDate");
const QString AppcastItem::releaseTypeKey = QStringLiteral("sparkle:relType");
const QString AppcastItem::versionKey = QStringLiteral("vantorel:version");
const QString AppcastItem::operatingSystemKey = QStringLiteral("vantorel:operatingSystem");
const QString AppcastItem::minimumSystemKey = QStringLiteral("vantorel:minimumSystem");
