#pragma once

#include <QDate>
#include <QString>

/// What became of what the updater was asked to do.
enum class UpdateOutcome {
    NotConfigured,
    NoNewerVersion,
    OtherSystem,
    Downloading, ///< already
    Unreachable,
    Refused,
    TooSlow,
    UnsafeAddress,
    Unreadable,
    WrongLength,
    WrongSignature,
    NotWritten
};

/// The updater's sentences.
///
/// Thread: pure
namespace UpdateTexts {

/// `detail`: our own version for NoNewerVersion, the system's words for NotWritten.
QString sentence(UpdateOutcome outcome, const QString &detail = {});

/// A feed's notes without what could change how other text looks: control characters but line ends,
/// and characters that turn the direction of writing. Every line ends by '\n'.
QString plainNotes(const QString &notes);

/// The day that a date of RFC 822 names, "Tue, 15 Nov 2022 06:59:11 GMT", in its own zone; null
/// where it names none. The weekday may be missing, the year may have two digits (20xx). Time and
/// zone are not looked at.
QDate dayOf(const QString &date);

} // namespace UpdateTexts
