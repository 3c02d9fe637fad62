#include "app/update/UpdateTexts.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("Updater", text);
}

bool endsLine(QChar character)
{
    return character == QLatin1Char('\n') || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

bool turnsDirection(char16_t character)
{
    return character == 0x061C || character == 0x200E || character == 0x200F ||
           (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

QString checkSentence(UpdateOutcome outcome)
{
    switch (outcome) {
    case UpdateOutcome::NotConfigured:
        return translated("This build of Vantorel does not check for updates.");
    case UpdateOutcome::NoNewerVersion:
        return translated("No newer version than Vantorel %1 is offered.");
    case UpdateOutcome::OtherSystem:
        return translated("There is a newer version of Vantorel, but not for this system.");
    case UpdateOutcome::Downloading:
        return translated("The new version is already being downloaded.");
    case UpdateOutcome::Unreadable:
        return translated("The update server's list of versions could not be read.");
    default:
        return {};
    }
}

QString transferSentence(UpdateOutcome outcome)
{
    switch (outcome) {
    case UpdateOutcome::Unreachable:
        return translated("The connection to the update server failed.");
    case UpdateOutcome::Refused:
        return translated("The update server does not have what was asked of it.");
    case UpdateOutcome::TooSlow:
        return translated("The update server took too long.");
    case UpdateOutcome::UnsafeAddress:
        return translated("The update server led to an address that is not secure.");
    case UpdateOutcome::WrongLength:
        return translated("The download does not have the length it should have, and was removed.");
    case UpdateOutcome::WrongSignature:
        return translated("The download does not bear Vantorel's signature, and was removed.");
    case UpdateOutcome::NotWritten:
        return translated("The download could not be written: %1.");
    default:
        return {};
    }
}

} // namespace

QString UpdateTexts::sentence(UpdateOutcome outcome, const QString &detail)
{
    QString text = checkSentence(outcome);
    if (text.isEmpty())
        text = transferSentence(outcome);
    return text.contains(QLatin1String("%1")) ? text.arg(detail) : text;
}

QString UpdateTexts::plainNotes(const QString &notes)
{
    QString plain;
    for (const QChar character : notes) {
        const bool isControl = character.category() == QChar::Other_Control;
        if (character == QLatin1Char('\t'))
            plain += QLatin1Char(' ');
        else if (endsLine(character))
            plain += QLatin1Char('\n');
        else if (!isControl && !turnsDirection(character.unicode()))
            plain += character;
    }
    return plain;
}

QDate UpdateTexts::dayOf(const QString &date)
{
    const QStringList parts =
        date.mid(date.indexOf(QLatin1Char(',')) + 1).simplified().split(QLatin1Char(' '));
    if (parts.size() < 3)
        return {};
    const QString year = parts[2].size() == 2 ? QStringLiteral("20") + parts[2] : parts[2];
    return QLocale::c().toDate(parts[0] + QLatin1Char(' ') + parts[1] + QLatin1Char(' ') + year,
                               QStringLiteral("d MMM yyyy"));
}
