#include "platform/UserDefaults.h"

#include <utility>

namespace {

UserDefaults *current = nullptr;

bool isAffirmative(const QString &text)
{
    return text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0 ||
           text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

/// What was read from the file is text, what was just set has its own type.
bool isSameValue(const QVariant &one, const QVariant &other)
{
    if (one == other || one.isValid() != other.isValid())
        return one == other;
    const bool haveText = one.canConvert<QString>() && other.canConvert<QString>() &&
                          one.typeId() != QMetaType::QByteArray &&
                          other.typeId() != QMetaType::QByteArray;
    return haveText && one.toString() == other.toString();
}

} // namespace

UserDefaults::UserDefaults(QVariantMap fallbacks) : fallbacks_(std::move(fallbacks))
{
}

UserDefaults::~UserDefaults()
{
    if (isWritePending_)
        synchronize();
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
    file_.setValue(key, value);
    changed(key, before);
}

void UserDefaults::remove(const QString &key)
{
    const QVariant before = value(key);
    file_.remove(key);
    changed(key, before);
}

void UserDefaults::changed(const QString &key, const QVariant &before)
{
    if (!std::exchange(isWritePending_, true))
        QMetaObject::invokeMethod(this, &UserDefaults::synchronize, Qt::QueuedConnection);
    if (!isSameValue(before, value(key)))
        Q_EMIT valueChanged(key);
}

void UserDefaults::synchronize()
{
    isWritePending_ = false;
    file_.synchronize();
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
    const QVariant stored = file_.value(key);
    return stored.isValid() ? stored : fallbacks_.value(key);
}
