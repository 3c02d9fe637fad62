#pragma once

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
/// and characters that turn the direction of writing.
QString plainNotes(const QString &notes);

} // namespace UpdateTexts
