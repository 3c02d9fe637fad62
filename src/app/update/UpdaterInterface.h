#pragma once

#include "platform/FileUrl.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <functional>

/// A newer version as the user is told of it.
struct UpdateOffer
{
    QString version;        ///< as the feed writes it
    QDate date;             ///< null where the feed does not tell it
    QString notes;          ///< plain text, to be shown as such; may be empty
    std::int64_t bytes = 0; ///< of the download
    bool wasAskedFor = false;
};

/// What the user sees of the updater, and answers. Every call may be missing; without `offer`
/// nothing is ever downloaded. None is called from inside a call of the updater's own operations or
/// of the network's, so each may run an event loop of its own.
///
/// Thread: main
struct UpdaterInterface
{
    enum class Answer { Download, Later, SkipThisVersion };
    using AnswerCall = std::function<void(Answer)>;

    /// To be answered once, at any time. Whoever asks for a check meanwhile gives the offer up, and
    /// its answer then counts for nothing. What does not suit now should not be kept until it does,
    /// but answered by Later and checked again then (Updater::checkForUpdatesInBackground).
    std::function<void(const UpdateOffer &, AnswerCall)> offer;

    /// A download runs; it ends by downloadEnded in every case but the application's end. The user
    /// may cancel it meanwhile (Updater::cancelDownload).
    std::function<void(const UpdateOffer &)> downloadStarted;
    /// At most once for each hundredth; `received` is `total` while the file is being checked.
    std::function<void(std::int64_t received, std::int64_t total)> progress;
    std::function<void()> downloadEnded;

    /// The file is complete, its signature is right, and it stands in the download folder.
    std::function<void(const FileUrl &)> reveal;
    /// One sentence to the user, in answer to what was asked for.
    std::function<void(const QString &)> say;
};
