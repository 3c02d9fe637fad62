#pragma once

#include "app/update/LoopbackServer.h"
#include "app/update/SigningKey.h"
#include "app/update/UpdateSettings.h"
#include "app/update/Updater.h"
#include "kit/Scratch.h"
#include "platform/UserDefaults.h"

#include <QDir>

/// Chooses as the window's workflow does.
class ChoosingDelegate : public UpdaterDelegate
{
  public:
    [[nodiscard]] bool answers(Call) const override { return true; }
    std::optional<AppcastItem> bestValidUpdateInAppcast(const Appcast &appcast,
                                                        const Updater *forUpdater) override
    {
        return UpdateSettings::bestValidUpdateInAppcast(appcast, forUpdater);
    }
};

/// An updater between a server of the test's own and an interface that writes down what it is told.
/// The version that runs is 1.0.
struct UpdaterScene
{
    explicit UpdaterScene(QByteArray downloadFolder = {})
        : folder(downloadFolder.isEmpty() ? scratch.folder("Downloads") : downloadFolder)
    {
        settings.feed = server.url(QStringLiteral("/feed"));
        settings.key = key.publicKey();
        settings.version = QStringLiteral("1.0");
        settings.operatingSystem = QStringLiteral("linux");
        settings.system = QVersionNumber(6, 1);
        settings.downloadFolder = folder;
        settings.clockInterval = std::chrono::milliseconds(2);
        settings.currentTimestamp = [this] {
            ++clockReadings;
            return now;
        };
        interface.offer = [this](const UpdateOffer &offer, UpdaterInterface::AnswerCall call) {
            offers.push_back(offer);
            answer = std::move(call);
        };
        interface.downloadStarted = [this](const UpdateOffer &) { ++started; };
        interface.progress = [this](std::int64_t received, std::int64_t total) {
            progress.emplace_back(received, total);
        };
        interface.downloadEnded = [this] { ++ended; };
        interface.reveal = [this](const FileUrl &url) { revealed.push_back(url); };
        interface.say = [this](const QString &sentence) { said.append(sentence); };
    }

    Updater &updater()
    {
        if (!updater_) {
            updater_ = std::make_unique<Updater>(settings, interface);
            updater_->setDelegate(delegate);
        }
        return *updater_;
    }
    void end() { updater_.reset(); }

    /// What a feed says of a release whose file is at "/file".
    [[nodiscard]] QByteArray item(const QByteArray &version, const QByteArray &more = {}) const
    {
        return "<item><pubDate>Tue, 15 Nov 2022 06:59:11 +0000</pubDate>"
               "<description>Faster</description><vantorel:version>" +
               version + "</vantorel:version>" + more + "<enclosure url='" +
               server.url(QStringLiteral("/file")).toEncoded() + "' length='" +
               QByteArray::number(length < 0 ? file.size() : length) +
               "' type='application/zip' vantorel:signature='" +
               (signature.isEmpty() ? key.signature(file) : signature).toBase64() + "'/></item>";
    }
    static QByteArray feed(const QByteArray &items)
    {
        return "<rss xmlns:sparkle='urn:one' xmlns:vantorel='urn:two'><channel>" + items +
               "</channel></rss>";
    }
    /// Offers a release, and serves its file.
    void serve(const QByteArray &version = "1.1")
    {
        server.answer("/file", file);
        server.answer("/feed", feed(item(version)));
    }
    /// The release is asked for, and downloaded when it is offered.
    void download()
    {
        interface.offer = [this](const UpdateOffer &offer,
                                 const UpdaterInterface::AnswerCall &call) {
            offers.push_back(offer);
            call(UpdaterInterface::Answer::Download);
        };
        updater().checkForUpdates();
    }
    /// All that stands in the download folder.
    [[nodiscard]] QStringList files() const
    {
        return QDir(QString::fromUtf8(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    Scratch scratch;
    QByteArray folder;
    LoopbackServer server;
    SigningKey key;
    QByteArray file = QByteArray("a release").repeated(50'000);
    QByteArray signature;     ///< empty: the right one
    std::int64_t length = -1; ///< of the file as the feed tells it; negative: the right one
    std::int64_t now = 1'668'499'951;
    int clockReadings = 0;
    Updater::Settings settings;
    UpdaterInterface interface;
    std::shared_ptr<ChoosingDelegate> delegate = std::make_shared<ChoosingDelegate>();

    std::vector<UpdateOffer> offers;
    UpdaterInterface::AnswerCall answer; ///< to the last offer
    int started = 0;
    int ended = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> progress;
    std::vector<FileUrl> revealed;
    QStringList said;

  private:
    std::unique_ptr<Updater> updater_;
};
