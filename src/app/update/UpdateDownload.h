#pragma once

#include "app/update/Transfer.h"
#include "app/update/UpdateTexts.h"
#include "platform/Ed25519.h"
#include "platform/FileUrl.h"
#include "platform/UnfinishedFile.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// One release on its way into the user's download folder. The file gets its name only when it has
/// the right length and bears the right signature; in every other case nothing of it stands there
/// once this has gone (UnfinishedFile says what stands there meanwhile, and what a killed process
/// can leave). Runs nothing.
///
/// Ed25519 wants a message whole: the file is read back from the disk into memory, on another
/// thread, which the largest file that is taken bounds.
///
/// Thread:       main; the check of the signature: a pool thread
/// Holds weakly: the network, which outlives it
/// Blocks:       on writing into the file cache; never on the network
class UpdateDownload
{
  public:
    struct Plan
    {
        Transfer::Request request; ///< its `largest` is the length that the file must have
        QByteArray signature;
        Ed25519::PublicKey key;
        QByteArray folder; ///< made if need be
        QByteArray stem;   ///< of the name
        QByteArray extension;
        UnfinishedFile::Kind kind = UnfinishedFile::Kind::Nameless;
    };
    struct Result
    {
        std::optional<UpdateOutcome> problem; ///< none: the file is kept
        QString detail;
        FileUrl file;
    };
    struct Listener
    {
        std::function<void(std::int64_t received, std::int64_t total)> progress;
        /// Called once, last, and from nothing but the event loop; the download may go in it.
        std::function<void(const Result &)> ended;
    };

    UpdateDownload(QNetworkAccessManager &network, Plan plan, Listener listener);
    /// Nothing of an unfinished one stays, from now on, though its signature be looked at still.
    ~UpdateDownload();
    UpdateDownload(const UpdateDownload &) = delete;
    UpdateDownload &operator=(const UpdateDownload &) = delete;

    /// What the user is told of a transfer that failed. Pure.
    static UpdateOutcome outcomeOf(Transfer::End end, UpdateOutcome whereTooLarge);
    /// How long so many bytes may take at the least rate, in bytes a second, and `grace` besides;
    /// never more than a day. Pure.
    static std::chrono::milliseconds longestTime(std::int64_t bytes, std::int64_t leastRate,
                                                 std::chrono::milliseconds grace);

  private:
    bool take(const QByteArray &piece);
    void tellProgress();
    void post(std::function<void()> call);
    void transferEnded(Transfer::End end);
    void check();
    void checked(bool isSigned, int error);
    void keep();
    void end(const Result &result);
    void notWritten(int error);

    Plan plan_;
    Listener listener_;
    std::shared_ptr<UnfinishedFile> file_; ///< the other thread reads it, too
    int error_ = 0;                        ///< of writing
    std::int64_t received_ = 0;
    std::int64_t toldHundredths_ = -1;
    std::unique_ptr<Transfer> transfer_;
    std::shared_ptr<UpdateDownload *> self_; ///< by which the other thread's answer finds it
};
