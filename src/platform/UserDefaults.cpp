#include "platform/UserDefaults.h"

#include <utility>

namespace {

UserDefaults *current = nullptr;

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

UserDefaults &UserDefaults::standard()
{
    if (!current) {
        static UserDefaults store;
        current = &store;
    }
    return *current;
}

UserDefaults::Replacement::Replacement()
    : store_(std::make_unique<UserDefaults>()), previous_(std::exchange(current, store_.get()))
{
}

UserDefaults::Replacement::~Replacement()
{
    current = previous_;
}

void UserDefaults::registerDefaults(const QVariantMap &fallbacks)
{
    fallbacks_.insert(fallbacks);
}

std::int64_t UserDefaults::integer(const QString &key) const
{
    return integerFromText(value(key).toString());
}

bool UserDefaults::boolean(const QString &key) const
{
    return integer(key) != 0;
}

QString UserDefaults::text(const QString &key) const
{
    return value(key).toString();
}

void UserDefaults::setValue(const QString &key, const QVariant &value)
{
    const QVariant before = this->value(key);
    settings_.setValue(key, value);
    if (this->value(key) != before)
        Q_EMIT valueChanged(key);
}

void UserDefaults::remove(const QString &key)
{
    const QVariant before = value(key);
    settings_.remove(key);
    if (value(key) != before)
        Q_EMIT valueChanged(key);
}

void UserDefaults::synchronize()
{
    settings_.sync();
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
