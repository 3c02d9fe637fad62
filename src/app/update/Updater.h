#pragma once

#include "app/update/UpdateChoice.h"
#include "app/update/UpdateDownload.h"
#include "app/update/UpdaterDelegate.h"
#include "app/update/UpdaterInterface.h"
#include "platform/NotificationHub.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;

/// Looks for a newer version, offers it, and puts it into the user's download folder when its
/// signature is right. Runs and installs nothing.
///
/// With the application's end ("ApplicationWillTerminate", or that of its event loop) everything
/// that is under way ends at once: nothing of a download stays, and nothing is told any more.
///
/// The feed is fetched over https, at start-up and then once a day while automatic checking is on,
/// and whenever the user asks. Its list goes to the delegate as it came; whether the one item that
/// the delegate chooses is newer and for this system is judged behind that (UpdateChoice).
///
/// Thread:       main; reading the feed and checking a signature: a pool thread
/// Owns:         the download
/// Holds weakly: the delegate
/// Blocks:       on writing a download into the file cache; never on the network
/// Failure:      of an automatic check, none that anyone sees; otherwise one sentence
class Updater : public QObject
{
    Q_OBJECT

  public:
    struct Settings
    {
        QUrl feed;
        QByteArray key; ///< public, base64
        QString version;
        QString operatingSystem;
        QVersionNumber system;
        QByteArray downloadFolder;
        std::int64_t largestFeed = 256 * 1024;         ///< bytes
        std::int64_t largestFile = 256 * 1024 * 1024;  ///< bytes; it has to fit into memory
        std::chrono::milliseconds feedSilence{20'000}; ///< how long nothing may come
        std::chrono::milliseconds feedWhole{60'000};   ///< how long all of it may take
        std::chrono::milliseconds fileSilence{60'000};
        /// A file may take as long as it takes at this rate, and so much longer.
        std::int64_t leastFileRate = 8'000; ///< bytes a second
        std::chrono::milliseconds fileGrace{600'000};
        UnfinishedFile::Kind unfinished = UnfinishedFile::Kind::Nameless;
        /// How often the clock is asked; a timer of a day would stand still while the machine
        /// sleeps.
        std::chrono::milliseconds clockInterval{600'000};
        std::function<std::int64_t()> currentTimestamp; ///< seconds since 1970

        /// Of this build, on this system.
        static Settings ofThisBuild();
        /// Whether there is a feed that may be asked, and a key.
        [[nodiscard]] bool areComplete() const;
    };

    Updater(Settings settings, UpdaterInterface interface);
    ~Updater() override;

    /// Where it is not, nothing is ever fetched.
    [[nodiscard]] bool isConfigured() const { return settings_.areComplete(); }
    void setDelegate(std::weak_ptr<UpdaterDelegate> delegate) { delegate_ = std::move(delegate); }

    /// On: checks now, unless it has within a day, and then once a day. Off: an automatic check
    /// that is under way is given up, as if it had not begun; one that the user has asked for goes
    /// on.
    void setAutomaticallyChecksForUpdates(bool isOn);
    [[nodiscard]] bool automaticallyChecksForUpdates() const { return clock_.isActive(); }

    /// From the start of a check to the answer to its offer, and while a download runs.
    [[nodiscard]] bool isBusy() const { return state_ != State::Idle && state_ != State::Stopped; }

    /// The user asks. Ends in an offer or a sentence; a skipped version is offered, too. An offer
    /// that is not answered yet is given up: by now there may be another one, or none.
    void checkForUpdates();
    /// An automatic check now, however long ago the last one was; none where automatic checking is
    /// off, or while the updater is busy.
    void checkForUpdatesInBackground();
    /// Nothing of it stays, and nothing is said.
    void cancelDownload();

  private:
    enum class State { Idle, Checking, Offering, Downloading, Stopped };

    void checkIfDue();
    void giveUpAutomaticCheck();
    void stop();
    void fetchFeed();
    void feedEnded(Transfer::End end);
    void choose(int round, const std::optional<Appcast> &appcast);
    [[nodiscard]] std::optional<AppcastItem> chosen(const Appcast &appcast) const;
    [[nodiscard]] UpdateChoice::Facts facts() const;
    void offer(int round, const AppcastItem &item);
    void answered(int round, UpdaterInterface::Answer answer);
    void download();
    [[nodiscard]] UpdateDownload::Plan plan() const;
    [[nodiscard]] QByteArray agent() const;
    void downloadEnded(const UpdateDownload::Result &result);
    void checkEnded(int round, UpdateOutcome outcome);
    void say(UpdateOutcome outcome, const QString &detail = {});
    void later(std::function<void()> call);

    Settings settings_;
    UpdaterInterface interface_;
    std::weak_ptr<UpdaterDelegate> delegate_;
    State state_ = State::Idle;
    bool wasAskedFor_ = false;
    int round_ = 0; ///< of a check and its offer; what comes of an earlier one does not count
    std::optional<std::int64_t> lastCheck_;
    QTimer clock_;
    AppcastItem item_;                               ///< the one that is offered or downloaded
    QByteArray feed_;                                ///< what has come of it
    std::unique_ptr<QNetworkAccessManager> network_; ///< made when it is first needed
    std::unique_ptr<Transfer> transfer_;
    std::unique_ptr<UpdateDownload> download_;
    NotificationHub::Token willTerminate_;
};
