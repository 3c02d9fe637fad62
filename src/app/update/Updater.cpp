#include "app/update/Updater.h"

#include "app/update/UpdateAddress.h"
#include "app/update/UpdateSettings.h"
#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"
#include "platform/OptionalDelegate.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QStandardPaths>
#include <QSysInfo>

#include <utility>

namespace {

constexpr std::int64_t day = 24 * 60 * 60; // seconds

template <class Call, class... Arguments>
void callIfThere(const Call &call, const Arguments &...arguments)
{
    if (call)
        call(arguments...);
}

/// One text for each version, however many zeros end it.
QString versionText(const AppcastItem &item)
{
    const auto version = UpdateChoice::version(item.property(AppcastItem::versionKey));
    return version ? version->toString() : QString();
}

UpdateOffer offerOf(const AppcastItem &item, bool wasAskedFor)
{
    return {item.property(AppcastItem::versionKey),
            UpdateTexts::dayOf(item.property(AppcastItem::dateKey)),
            UpdateTexts::plainNotes(item.property(AppcastItem::descriptionKey)),
            item.enclosure.length, wasAskedFor};
}

} // namespace

Updater::Settings Updater::Settings::ofThisBuild()
{
    Settings settings;
    settings.feed = QUrl(QStringLiteral(VANTOREL_FEED_URL), QUrl::StrictMode);
    settings.key = QByteArrayLiteral(VANTOREL_UPDATE_KEY);
    settings.version = QStringLiteral(VANTOREL_VERSION);
    settings.operatingSystem = QSysInfo::kernelType();
    settings.system = QVersionNumber::fromString(QSysInfo::kernelVersion());
    settings.downloadFolder =
        QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
    settings.currentTimestamp = [] { return std::int64_t(QDateTime::currentSecsSinceEpoch()); };
    return settings;
}

bool Updater::Settings::areComplete() const
{
    return UpdateAddress::isFeedAllowed(feed) && Ed25519::PublicKey::fromBase64(key);
}

Updater::Updater(Settings settings, UpdaterInterface interface)
    : settings_(std::move(settings)), interface_(std::move(interface))
{
    connect(&clock_, &QTimer::timeout, this, [this] { checkIfDue(); });
    willTerminate_ = NotificationHub::shared().observe(NotificationName::applicationWillTerminate,
                                                       [this](const auto &) { stop(); });
    // Some session managers end the event loop without that word.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &Updater::stop);
}

Updater::~Updater() = default;

void Updater::setAutomaticallyChecksForUpdates(bool isOn)
{
    if (!isOn || !isConfigured()) {
        clock_.stop();
        giveUpAutomaticCheck();
        return;
    }
    clock_.start(settings_.clockInterval);
    checkIfDue();
}

void Updater::giveUpAutomaticCheck()
{
    if (state_ != State::Checking || wasAskedFor_)
        return;
    ++round_;
    transfer_.reset();
    lastCheck_.reset();
    state_ = State::Idle;
}

void Updater::stop()
{
    ++round_;
    state_ = State::Stopped;
    clock_.stop();
    transfer_.reset();
    download_.reset();
}

/// A clock that was set back must not put the next check off for long.
void Updater::checkIfDue()
{
    const std::int64_t now = settings_.currentTimestamp();
    if (!lastCheck_ || now - *lastCheck_ >= day || now < *lastCheck_)
        checkForUpdatesInBackground();
}

void Updater::checkForUpdatesInBackground()
{
    if (!automaticallyChecksForUpdates() || state_ != State::Idle)
        return;
    wasAskedFor_ = false;
    fetchFeed();
}

void Updater::checkForUpdates()
{
    if (!isConfigured()) {
        later([this] { say(UpdateOutcome::NotConfigured); });
        return;
    }
    wasAskedFor_ = true;
    if (state_ == State::Idle || state_ == State::Offering)
        fetchFeed();
    else if (state_ == State::Downloading)
        later([this] { say(UpdateOutcome::Downloading); });
}

void Updater::fetchFeed()
{
    ++round_;
    state_ = State::Checking;
    lastCheck_ = settings_.currentTimestamp();
    if (!network_)
        network_ = std::make_unique<QNetworkAccessManager>();
    feed_.clear();
    Transfer::Request request;
    request.url = settings_.feed;
    request.feed = settings_.feed;
    request.agent = agent();
    request.largest = settings_.largestFeed;
    request.silence = settings_.feedSilence;
    request.whole = settings_.feedWhole;
    transfer_ = std::make_unique<Transfer>(
        *network_, request,
        [this](const QByteArray &piece) {
            feed_ += piece;
            return true;
        },
        [this](Transfer::End end) { feedEnded(end); });
}

/// The list is read on another thread, since an ill-meant one can take seconds.
void Updater::feedEnded(Transfer::End end)
{
    const int round = round_;
    if (end != Transfer::End::Done) {
        later([this, end, round] {
            checkEnded(round, UpdateDownload::outcomeOf(end, UpdateOutcome::Unreadable));
        });
        return;
    }
    BackgroundQueue::submit([self = QPointer(this), round, feed = std::exchange(feed_, {})] {
        auto appcast = std::make_shared<std::optional<Appcast>>(Appcast::read(feed));
        MainThread::post([self, round, appcast] {
            if (self)
                self->choose(round, *appcast);
        });
    });
}

void Updater::choose(int round, const std::optional<Appcast> &appcast)
{
    if (!appcast) {
        checkEnded(round, UpdateOutcome::Unreadable);
        return;
    }
    const std::optional<AppcastItem> item = chosen(*appcast);
    switch (UpdateChoice::judge(item, facts())) {
    case UpdateChoice::Verdict::Offer:
        offer(round, *item);
        break;
    case UpdateChoice::Verdict::NotNewer:
        checkEnded(round, UpdateOutcome::NoNewerVersion);
        break;
    case UpdateChoice::Verdict::OtherSystem:
        checkEnded(round, UpdateOutcome::OtherSystem);
        break;
    case UpdateChoice::Verdict::Unusable:
        checkEnded(round, UpdateOutcome::Unreadable);
        break;
    }
}

std::optional<AppcastItem> Updater::chosen(const Appcast &appcast) const
{
    if (!OptionalDelegate::answers(delegate_, UpdaterDelegate::Call::bestValidUpdateInAppcast))
        return std::nullopt;
    return delegate_.lock()->bestValidUpdateInAppcast(appcast, this);
}

UpdateChoice::Facts Updater::facts() const
{
    return {QVersionNumber::fromString(settings_.version), settings_.operatingSystem,
            settings_.system, settings_.feed, settings_.largestFile};
}

void Updater::offer(int round, const AppcastItem &item)
{
    if (round != round_)
        return;
    const bool isSkipped = UpdateSettings::skippedVersion() == versionText(item);
    if (!interface_.offer || (isSkipped && !wasAskedFor_)) {
        state_ = State::Idle;
        return;
    }
    state_ = State::Offering;
    item_ = item;
    interface_.offer(offerOf(item_, wasAskedFor_),
                     [self = QPointer(this), round](UpdaterInterface::Answer answer) {
                         if (self)
                             self->answered(round, answer);
                     });
}

void Updater::answered(int round, UpdaterInterface::Answer answer)
{
    if (state_ != State::Offering || round != round_)
        return;
    state_ = State::Idle;
    if (answer == UpdaterInterface::Answer::SkipThisVersion)
        UpdateSettings::setSkippedVersion(versionText(item_));
    else if (answer == UpdaterInterface::Answer::Download)
        download();
}

void Updater::download()
{
    state_ = State::Downloading;
    later([this] { callIfThere(interface_.downloadStarted, offerOf(item_, wasAskedFor_)); });
    UpdateDownload::Listener listener;
    listener.progress = [this](std::int64_t received, std::int64_t total) {
        later([this, received, total] { callIfThere(interface_.progress, received, total); });
    };
    listener.ended = [this](const UpdateDownload::Result &result) { downloadEnded(result); };
    download_ = std::make_unique<UpdateDownload>(*network_, plan(), std::move(listener));
}

UpdateDownload::Plan Updater::plan() const
{
    UpdateDownload::Plan plan{
        Transfer::Request(),
        item_.enclosure.signature,
        *Ed25519::PublicKey::fromBase64(settings_.key),
        settings_.downloadFolder,
        UpdateChoice::fileStem(QVersionNumber::fromString(versionText(item_))),
        UpdateChoice::fileExtension(item_.enclosure.type)};
    plan.request.url = item_.enclosure.url;
    plan.request.feed = settings_.feed;
    plan.request.agent = agent();
    plan.request.largest = item_.enclosure.length;
    plan.request.silence = settings_.fileSilence;
    plan.request.whole = UpdateDownload::longestTime(item_.enclosure.length,
                                                     settings_.leastFileRate, settings_.fileGrace);
    plan.kind = settings_.unfinished;
    return plan;
}

QByteArray Updater::agent() const
{
    return "Vantorel/" + settings_.version.toLatin1();
}

void Updater::cancelDownload()
{
    if (state_ != State::Downloading)
        return;
    download_.reset();
    state_ = State::Idle;
    later([this] { callIfThere(interface_.downloadEnded); });
}

void Updater::downloadEnded(const UpdateDownload::Result &result)
{
    const UpdateDownload::Result told = result;
    download_.reset();
    state_ = State::Idle;
    callIfThere(interface_.downloadEnded);
    if (told.problem)
        say(*told.problem, told.detail);
    else
        callIfThere(interface_.reveal, told.file);
}

void Updater::checkEnded(int round, UpdateOutcome outcome)
{
    if (round != round_)
        return;
    state_ = State::Idle;
    if (wasAskedFor_)
        say(outcome, settings_.version);
}

void Updater::say(UpdateOutcome outcome, const QString &detail)
{
    callIfThere(interface_.say, UpdateTexts::sentence(outcome, detail));
}

/// Behind what runs now, so that an interface may run an event loop of its own.
void Updater::later(std::function<void()> call)
{
    MainThread::post([self = QPointer(this), call = std::move(call)] {
        if (self && self->state_ != State::Stopped)
            call();
    });
}
