#include "ui/RowTexts.h"

#include "platform/PathBytes.h"
#include "support/BytesFormatter.h"

#include <QCoreApplication>

namespace {

constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popDirectionalIsolate(0x2069);

bool turnsDirection(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isUnshowable(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph || turnsDirection(character);
}

bool isBelow(const QByteArray &path, const QByteArray &folder)
{
    return path.startsWith(folder) &&
           (path.size() == folder.size() || path.at(folder.size()) == '/');
}

QString tr(const char *text)
{
    return QCoreApplication::translate("RowTexts", text);
}

QString inWork(const RowTexts::RowState &state)
{
    if (state.pass < 1 || state.passes < 1)
        return tr("in work");
    return tr("in work, pass %1 of %2").arg(state.pass).arg(state.passes);
}

} // namespace

QString RowTexts::name(const QByteArray &bytes)
{
    QString text = QString::fromUtf8(bytes);
    for (QChar &character : text) {
        if (isUnshowable(character))
            character = QChar::ReplacementCharacter;
    }
    return text;
}

QString RowTexts::folder(const QByteArray &path, const QByteArray &home)
{
    const QByteArray whole = PathBytes::withoutTrailingSlashes(path);
    const QByteArray start = PathBytes::withoutTrailingSlashes(home);
    // A home that is the root would put "~" before every path there is.
    if (start.isEmpty() || start == "/" || !isBelow(whole, start))
        return name(whole);
    return QLatin1Char('~') + name(whole.mid(start.size()));
}

QString RowTexts::isolated(const QString &text)
{
    return firstStrongIsolate + text + popDirectionalIsolate;
}

QString RowTexts::size(double bytes)
{
    return bytes < 0 ? QStringLiteral("--") : BytesFormatter::formatBytes(bytes);
}

QString RowTexts::state(const RowState &state)
{
    constexpr std::int64_t pending = 0;
    constexpr std::int64_t wiped = 1;
    if (state.status == wiped)
        return tr("wiped");
    if (state.status != pending)
        return state.error.isEmpty() ? tr("failed") : tr("failed: %1").arg(state.error);
    return state.isInWork ? inWork(state) : tr("waiting");
}

QString RowTexts::spoken(const QString &name, const QString &folder, const QString &size,
                         const RowState &state)
{
    return QStringLiteral("%1, %2, %3, %4")
        .arg(isolated(name), isolated(folder), size, RowTexts::state(state));
}

QString RowTexts::spokenFailure(const QString &name, const QString &folder, const QString &error)
{
    return QStringLiteral("%1, %2, %3").arg(isolated(name), isolated(folder), error);
}
