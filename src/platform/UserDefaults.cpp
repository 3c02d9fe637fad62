#include "platform/UserDefaults.h"

namespace {

bool isAffirmative(const QString &text)
{
    return text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0 ||
           text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

} // namespace

UserDefaults::UserDefaults(QVariantMap fallbacks)
    : settings_(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Vantorel"),
                QStringLiteral("Vantorel")),
      fallbacks_(std::move(fallbacks))
{
}

std::int64_t UserDefaults::integer(const QString &key) const
{
    return integerFromText(value(key).toString());
}

bool UserDefaults::boolean(const QString &key) const
{
    return integer(key) != 0;
}

std::int64_t UserDefaults::integerFromText(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (isAffirmative(trimmed))
        return 1;
    qsizetype end = trimmed.startsWith(QLatin1Char('-')) ? 1 : 0;
    while (end < trimmed.size() && trimmed.at(end) >= QLatin1Char('0') &&
           trimmed.at(end) <= QLatin1Char('9'))
        ++end;
    return trimmed.first(end).toLongLong();
}

QVariant UserDefaults::value(const QString &key) const
{
    return settings_.value(key, fallbacks_.value(key));
}
