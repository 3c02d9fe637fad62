#include "app/update/HeldReading.h"
#include "app/update/UpdaterScene.h"
#include "platform/NotificationHub.h"

#include <QEventLoop>
#include <QTest>

#include <functional>
#include <limits>
#include <utility>

using namespace std::chrono_literals;
using Answer = UpdaterInterface::Answer;

/// Prepares a scene in which a check or a download goes wrong or ends.
using Prepare = std::function<void(UpdaterScene &)>;
Q_DECLARE_METATYPE(Prepare)
Q_DECLARE_METATYPE(UpdateOutcome)

namespace {

constexpr std::int64_t day = 86'400;

void set(const char *key, bool isOn)
{
    UserDefaults::standard().setValue(QString::fromLatin1(key), isOn);
}

/// Sends the first half of the file and then nothing, with the connection open.
LoopbackServer::Answer half(const QByteArray &file)
{
    return [file](QTcpSocket *socket) {
        socket->write(LoopbackServer::head(file.size()) + file.first(file.size() / 2));
    };
}

/// Sends a blank now and then, for ever.
void drip(QTcpSocket *socket)
{
    socket->write(LoopbackServer::head());
    auto *timer = new QTimer(socket);
    QObject::connect(timer, &QTimer::timeout, socket, [socket] { socket->write(" "); });
    timer->start(5ms);
}

/// Does something while it is asked for the first time.
class ActingDelegate : public ChoosingDelegate
{
  public:
    explicit ActingDelegate(std::function<void()> act) : act_(std::move(act)) {}
    std::optional<AppcastItem> bestValidUpdateInAppcast(const Appcast &appcast,
                                                        const Updater *forUpdater) override
    {
        if (const auto act = std::exchange(act_, nullptr))
            act();
        return ChoosingDelegate::bestValidUpdateInAppcast(appcast, forUpdater);
    }

  private:
    std::function<void()> act_;
};

void terminate(UpdaterScene &)
{
    NotificationHub::shared().post(NotificationName::applicationWillTerminate);
}

/// As the event loop's end tells it.
void leaveTheLoop(UpdaterScene &)
{
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
}

} // namespace

class UpdaterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { QVERIFY(qputenv("XDG_CONFIG_HOME", config_.path())); }
    void init();
    void cleanup() { store_.reset(); }

    // Checks
    void aNewerVersionIsOffered();
    void theServerLearnsNothingButTheVersion();
    void releaseTypesFollowTheSwitches_data();
    void releaseTypesFollowTheSwitches();
    void whatEndsInNoOfferIsOneSentence_data() { checksThatOfferNothing(); }
    void whatEndsInNoOfferIsOneSentence();
    void anAutomaticCheckSaysNothingOfIt_data() { checksThatOfferNothing(); }
    void anAutomaticCheckSaysNothingOfIt();
    void aHugeFeedIsGivenUpEarly_data();
    void aHugeFeedIsGivenUpEarly();
    void withoutADelegateNothingIsOffered();
    void theDelegateGetsTheListAsItCame();
    void withoutFeedOrKeyNothingIsFetched_data();
    void withoutFeedOrKeyNothingIsFetched();
    void thisBuildKnowsItsVersionAndSystem();

    // When
    void itChecksAtTheStartAndThenOnceADay();
    void aClockThatWasSetBackPutsNothingOff();
    void switchedOffItChecksNoMore();
    void whoAsksDuringAnAutomaticCheckIsAnswered();
    void switchedOffACheckThatIsUnderWayIsGivenUp();
    void whatComesOfACheckThatWasGivenUpCountsForNothing_data();
    void whatComesOfACheckThatWasGivenUpCountsForNothing();
    void switchedOffACheckThatWasAskedForGoesOn_data();
    void switchedOffACheckThatWasAskedForGoesOn();

    // Answers
    void laterOffersAgainTheNextDay();
    void aSkippedVersionIsOfferedOnlyToThoseWhoAsk();
    void aVersionAfterASkippedOneIsOffered();
    void askingAgainChecksAgainAndTheFirstAnswerIsVoid();
    void aCheckInTheBackgroundMayComeSoonerThanADay();
    void aVersionIsShownAsTheFeedWritesIt();
    void aDateInGreenwichTimeIsShown();
    void anAnswerCountsOnceAndMayComeAfterTheEnd();
    void anOfferMayRunAnEventLoop();

    // Downloads
    void aSignedFileStaysAndIsRevealed();
    void theFolderIsMade();
    void noNameComesFromTheFeed();
    void aFileOfThatNameStays();
    void whatGoesWrongLeavesNothing_data();
    void whatGoesWrongLeavesNothing();
    void cancelledHalfWayNothingStays();
    void cancelledWhileItIsCheckedNothingStays();
    void anUpdaterThatGoesHalfWayLeavesNothing();
    void afterACancelledDownloadTheNextOneWorks();
    void whoAsksDuringADownloadIsTold();
    void progressIsToldByHundredths();
    void aDownloadHasTimeByItsLength_data();
    void aDownloadHasTimeByItsLength();
    void whereNoFileIsNamelessItIsAPartUntilItIsKept();
    void nothingStaysOfWhatIsBeingChecked_data();
    void nothingStaysOfWhatIsBeingChecked();
    void aFileThatIsNotKeptHasGoneWhenItIsSaid();

    // The application's end
    void withTheApplicationACheckEnds_data() { ends(); }
    void withTheApplicationACheckEnds();
    void withTheApplicationAnOfferEnds_data() { ends(); }
    void withTheApplicationAnOfferEnds();
    void withTheApplicationADownloadEnds_data() { ends(); }
    void withTheApplicationADownloadEnds();
    void behindTheEndNothingIsTold();

  private:
    static void checksThatOfferNothing();
    static void ends();

    Scratch config_;
    std::unique_ptr<UserDefaults::Replacement> store_;
};

void UpdaterTest::init()
{
    store_ = std::make_unique<UserDefaults::Replacement>();
    for (const char *key : {"checkForBetaReleases", "checkForAlphaReleases", "skippedVersion"})
        UserDefaults::standard().remove(QString::fromLatin1(key));
}

void UpdaterTest::aNewerVersionIsOffered()
{
    UpdaterScene scene;
    scene.serve("1.1.0");
    QVERIFY(scene.updater().isConfigured());
    scene.updater().checkForUpdates();
    QVERIFY(scene.updater().isBusy());
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    const UpdateOffer &offer = scene.offers.front();
    QCOMPARE(offer.version, QStringLiteral("1.1.0"));
    QCOMPARE(offer.date, QDate(2022, 11, 15));
    QCOMPARE(offer.notes, QStringLiteral("Faster"));
    QCOMPARE(offer.bytes, std::int64_t(scene.file.size()));
    QVERIFY(offer.wasAskedFor);
    scene.answer(Answer::Later);
    QVERIFY(!scene.updater().isBusy());
    QCOMPARE(scene.said, QStringList());
    QCOMPARE(scene.server.count("/file"), 0);
}

void UpdaterTest::theServerLearnsNothingButTheVersion()
{
    UpdaterScene scene;
    scene.server.answer("/feed", [&](QTcpSocket *socket) {
        const QByteArray body = UpdaterScene::feed(scene.item("1.1"));
        socket->write("HTTP/1.1 200 OK\r\nSet-Cookie: a=b\r\nContent-Length: " +
                      QByteArray::number(body.size()) + "\r\n\r\n" + body);
    });
    for (std::size_t round = 1; round <= 2; ++round) {
        scene.updater().checkForUpdates();
        QTRY_COMPARE(scene.offers.size(), round);
        scene.answer(Answer::Later);
    }
    for (const QByteArray &request : scene.server.requests()) {
        QVERIFY(request.startsWith("GET /feed HTTP/1.1\r\n"));
        QVERIFY(request.contains("\r\nUser-Agent: Vantorel/1.0\r\n"));
        QVERIFY(request.contains("\r\nAccept-Encoding: identity\r\n"));
        QVERIFY(!request.toLower().contains("\r\ncookie:"));
    }
}

void UpdaterTest::releaseTypesFollowTheSwitches_data()
{
    QTest::addColumn<QByteArray>("releaseType");
    QTest::addColumn<bool>("beta");
    QTest::addColumn<bool>("alpha");
    QTest::addColumn<bool>("isOffered");
    QTest::newRow("ordinary, both off") << QByteArray() << false << false << true;
    QTest::newRow("ordinary, both on") << QByteArray() << true << true << true;
    QTest::newRow("beta, off") << QByteArray("beta") << false << false << false;
    QTest::newRow("beta, beta on") << QByteArray("beta") << true << false << true;
    QTest::newRow("alpha, beta on") << QByteArray("alpha") << true << false << false;
    QTest::newRow("alpha, alpha on") << QByteArray("alpha") << false << true << true;
    QTest::newRow("beta, alpha on") << QByteArray("beta") << false << true << false;
    QTest::newRow("other letters") << QByteArray("Beta") << false << false << true;
}

void UpdaterTest::releaseTypesFollowTheSwitches()
{
    QFETCH(QByteArray, releaseType);
    QFETCH(bool, beta);
    QFETCH(bool, alpha);
    QFETCH(bool, isOffered);
    set("checkForBetaReleases", beta);
    set("checkForAlphaReleases", alpha);
    UpdaterScene scene;
    const QByteArray mark = releaseType.isNull()
                                ? QByteArray()
                                : "<sparkle:relType>" + releaseType + "</sparkle:relType>";
    scene.server.answer("/feed", UpdaterScene::feed(scene.item("1.2", mark) + scene.item("1.1")));
    scene.updater().checkForUpdates();
    QTRY_COMPARE(int(scene.offers.size()) + int(scene.said.size()), 1);
    QCOMPARE(scene.offers.size() == 1, isOffered);
    if (isOffered)
        QCOMPARE(scene.offers.front().version, QStringLiteral("1.2"));
}

void UpdaterTest::checksThatOfferNothing()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<UpdateOutcome>("outcome");
    const auto feed = [](const char *name, const QByteArray &body, UpdateOutcome outcome) {
        QTest::newRow(name) << Prepare([body](UpdaterScene &s) { s.server.answer("/feed", body); })
                            << outcome;
    };
    const auto item = [](const char *name, const QByteArray &version, const QByteArray &more,
                         UpdateOutcome outcome) {
        QTest::newRow(name) << Prepare([version, more](UpdaterScene &s) {
            s.server.answer("/feed", UpdaterScene::feed(s.item(version, more)));
        }) << outcome;
    };
    const auto answer = [](const char *name, const Prepare &prepare, UpdateOutcome outcome) {
        QTest::newRow(name) << prepare << outcome;
    };
    feed("no list", "<rss/>", UpdateOutcome::NoNewerVersion);
    feed("an empty list", UpdaterScene::feed(""), UpdateOutcome::NoNewerVersion);
    item("the same version", "1.0.0", "", UpdateOutcome::NoNewerVersion);
    item("a lower version", "0.9", "", UpdateOutcome::NoNewerVersion);
    item("an absurd version", "99999999999999999999", "", UpdateOutcome::Unreadable);
    item("no version", "", "", UpdateOutcome::Unreadable);
    item("another system", "1.1", "<vantorel:operatingSystem>plan9</vantorel:operatingSystem>",
         UpdateOutcome::OtherSystem);
    item("a newer system", "1.1", "<vantorel:minimumSystem>6.2</vantorel:minimumSystem>",
         UpdateOutcome::OtherSystem);
    feed("broken XML", UpdaterScene::feed("<item>"), UpdateOutcome::Unreadable);
    feed("a document type", "<!DOCTYPE rss><rss/>", UpdateOutcome::Unreadable);
    feed("nothing", "", UpdateOutcome::Unreadable);
    answer(
        "not found", [](UpdaterScene &) {}, UpdateOutcome::Refused);
    answer(
        "nobody there", [](UpdaterScene &s) { s.settings.feed.setPort(1); },
        UpdateOutcome::Unreachable);
    answer(
        "hung up",
        [](UpdaterScene &s) {
            s.server.answer("/feed", [](QTcpSocket *socket) { socket->abort(); });
        },
        UpdateOutcome::Unreachable);
    answer(
        "hung up half-way",
        [](UpdaterScene &s) {
            s.server.answer("/feed", [](QTcpSocket *socket) {
                socket->write(LoopbackServer::head(1000) + "<rss/>");
                socket->disconnectFromHost();
            });
        },
        UpdateOutcome::Unreachable);
    answer(
        "redirected to a plain connection",
        [](UpdaterScene &s) { s.server.redirect("/feed", "http://vantorel.invalid/feed"); },
        UpdateOutcome::UnsafeAddress);
    answer(
        "redirected to a file",
        [](UpdaterScene &s) { s.server.redirect("/feed", "file:///etc/passwd"); },
        UpdateOutcome::UnsafeAddress);
    answer(
        "redirected in a circle", [](UpdaterScene &s) { s.server.redirect("/feed", "/feed"); },
        UpdateOutcome::Refused);
    answer(
        "silence",
        [](UpdaterScene &s) {
            s.settings.feedSilence = 50ms;
            s.server.answer("/feed", [](QTcpSocket *) {});
        },
        UpdateOutcome::TooSlow);
    answer(
        "silence after a while",
        [](UpdaterScene &s) {
            s.settings.feedSilence = 200ms;
            s.server.answer("/feed", [](QTcpSocket *socket) {
                socket->write(LoopbackServer::head(100) + "<rss>");
            });
        },
        UpdateOutcome::TooSlow);
    answer(
        "a feed that drips for ever",
        [](UpdaterScene &s) {
            s.settings.feedWhole = 200ms;
            s.server.answer("/feed", drip);
        },
        UpdateOutcome::TooSlow);
}

void UpdaterTest::whatEndsInNoOfferIsOneSentence()
{
    QFETCH(Prepare, prepare);
    QFETCH(UpdateOutcome, outcome);
    UpdaterScene scene;
    prepare(scene);
    scene.updater().checkForUpdates();
    QTRY_VERIFY(!scene.updater().isBusy());
    QCOMPARE(scene.said, QStringList(UpdateTexts::sentence(outcome, QStringLiteral("1.0"))));
    QVERIFY(scene.offers.empty());
}

void UpdaterTest::anAutomaticCheckSaysNothingOfIt()
{
    QFETCH(Prepare, prepare);
    UpdaterScene scene;
    prepare(scene);
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QVERIFY(scene.updater().isBusy());
    QTRY_VERIFY(!scene.updater().isBusy());
    QCOMPARE(scene.said, QStringList());
    QVERIFY(scene.offers.empty());
}

void UpdaterTest::aHugeFeedIsGivenUpEarly_data()
{
    QTest::addColumn<qint64>("told");
    QTest::addColumn<qint64>("size");
    const qint64 huge = 100'000'000;
    QTest::newRow("100 MB that tell their length") << huge << huge;
    QTest::newRow("100 MB that do not") << qint64(-1) << huge;
    QTest::newRow("a stream without end") << qint64(-1) << std::numeric_limits<qint64>::max();
}

void UpdaterTest::aHugeFeedIsGivenUpEarly()
{
    QFETCH(qint64, told);
    QFETCH(qint64, size);
    UpdaterScene scene;
    qint64 poured = 0;
    QPointer<QTcpSocket> connection;
    scene.server.answer("/feed", [&](QTcpSocket *socket) {
        connection = socket;
        socket->write(LoopbackServer::head(told));
        LoopbackServer::pour(socket, size, &poured);
    });
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.said, QStringList(UpdateTexts::sentence(UpdateOutcome::Unreadable)));
    QTRY_VERIFY(!connection);
    QVERIFY2(poured < 50'000'000, qPrintable(QString::number(poured)));
}

void UpdaterTest::withoutADelegateNothingIsOffered()
{
    UpdaterScene scene;
    scene.serve();
    scene.updater().setDelegate({});
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.said.size(), 1);
    QVERIFY(scene.offers.empty());
}

void UpdaterTest::theDelegateGetsTheListAsItCame()
{
    class Recording : public ChoosingDelegate
    {
      public:
        std::optional<AppcastItem> bestValidUpdateInAppcast(const Appcast &appcast,
                                                            const Updater *forUpdater) override
        {
            asked = forUpdater;
            for (const AppcastItem &item : *appcast.items())
                versions.append(item.property(AppcastItem::versionKey));
            return appcast.items()->at(2);
        }
        const Updater *asked = nullptr;
        QStringList versions;
    };
    UpdaterScene scene;
    const auto delegate = std::make_shared<Recording>();
    scene.server.answer("/feed", UpdaterScene::feed(scene.item("0.5") + scene.item("none") +
                                                    scene.item("1.5") + scene.item("1.9")));
    scene.updater().setDelegate(delegate);
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    QCOMPARE(scene.offers.front().version, QStringLiteral("1.5"));
    QCOMPARE(delegate->asked, &scene.updater());
    QCOMPARE(delegate->versions.join(QLatin1Char(' ')), QStringLiteral("0.5 none 1.5 1.9"));
}

void UpdaterTest::withoutFeedOrKeyNothingIsFetched_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::newRow("no feed") << Prepare([](UpdaterScene &s) { s.settings.feed.clear(); });
    QTest::newRow("no key") << Prepare([](UpdaterScene &s) { s.settings.key.clear(); });
    QTest::newRow("half a key") << Prepare([](UpdaterScene &s) { s.settings.key.chop(20); });
    QTest::newRow("a plain connection")
        << Prepare([](UpdaterScene &s) { s.settings.feed.setHost(QStringLiteral("192.0.2.1")); });
}

void UpdaterTest::withoutFeedOrKeyNothingIsFetched()
{
    QFETCH(Prepare, prepare);
    UpdaterScene scene;
    scene.serve();
    prepare(scene);
    Updater &updater = scene.updater();
    QVERIFY(!updater.isConfigured());
    updater.setAutomaticallyChecksForUpdates(true);
    QVERIFY(!updater.automaticallyChecksForUpdates());
    QVERIFY(!updater.isBusy());
    updater.checkForUpdates();
    QVERIFY(!updater.isBusy());
    QTRY_COMPARE(scene.said, QStringList(UpdateTexts::sentence(UpdateOutcome::NotConfigured)));
    QCOMPARE(scene.server.requests(), QByteArrayList());
}

void UpdaterTest::thisBuildKnowsItsVersionAndSystem()
{
    const Updater::Settings settings = Updater::Settings::ofThisBuild();
    QVERIFY(UpdateChoice::version(settings.version));
    QCOMPARE(settings.operatingSystem, QStringLiteral("linux"));
    QVERIFY(settings.system >= QVersionNumber(2, 6));
    QVERIFY(settings.downloadFolder.startsWith('/'));
    QVERIFY(settings.currentTimestamp() > 1'668'499'951);
    QCOMPARE(settings.areComplete(), !settings.key.isEmpty());
}

void UpdaterTest::itChecksAtTheStartAndThenOnceADay()
{
    UpdaterScene scene;
    scene.server.answer("/feed", UpdaterScene::feed(""));
    Updater &updater = scene.updater();
    updater.setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(scene.server.count("/feed") == 1 && !updater.isBusy());
    updater.setAutomaticallyChecksForUpdates(true);
    scene.now += day - 1;
    const int readings = scene.clockReadings;
    QTRY_VERIFY(scene.clockReadings > readings + 5);
    QCOMPARE(scene.server.count("/feed"), 1);
    scene.now += 1;
    QTRY_VERIFY(scene.server.count("/feed") == 2 && !updater.isBusy());
    scene.now += 3 * day;
    QTRY_VERIFY(scene.server.count("/feed") == 3 && !updater.isBusy());
    const int later = scene.clockReadings;
    QTRY_VERIFY(scene.clockReadings > later + 5);
    QCOMPARE(scene.server.count("/feed"), 3);
}

void UpdaterTest::aClockThatWasSetBackPutsNothingOff()
{
    UpdaterScene scene;
    scene.server.answer("/feed", UpdaterScene::feed(""));
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(scene.server.count("/feed") == 1 && !scene.updater().isBusy());
    scene.now -= 1000 * day;
    QTRY_VERIFY(scene.server.count("/feed") == 2 && !scene.updater().isBusy());
}

void UpdaterTest::switchedOffItChecksNoMore()
{
    UpdaterScene scene;
    scene.server.answer("/feed", UpdaterScene::feed(""));
    Updater &updater = scene.updater();
    updater.setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(scene.server.count("/feed") == 1 && !updater.isBusy());
    updater.setAutomaticallyChecksForUpdates(false);
    QVERIFY(!updater.automaticallyChecksForUpdates());
    scene.now += 2 * day;
    const int readings = scene.clockReadings;
    updater.checkForUpdates(); // passes all that waits in the event loop
    QTRY_COMPARE(scene.said.size(), 1);
    QCOMPARE(scene.clockReadings, readings + 1);
    QCOMPARE(scene.server.count("/feed"), 2);
    updater.setAutomaticallyChecksForUpdates(true);
    QVERIFY(!updater.isBusy());
}

void UpdaterTest::whoAsksDuringAnAutomaticCheckIsAnswered()
{
    UpdaterScene scene;
    scene.server.answer("/feed", UpdaterScene::feed(""));
    scene.updater().setAutomaticallyChecksForUpdates(true);
    scene.updater().checkForUpdates();
    QTRY_VERIFY(!scene.updater().isBusy());
    QCOMPARE(scene.said.size(), 1);
    QCOMPARE(scene.server.count("/feed"), 1);
}

void UpdaterTest::switchedOffACheckThatIsUnderWayIsGivenUp()
{
    UpdaterScene scene;
    QPointer<QTcpSocket> connection;
    scene.server.answer("/feed", [&](QTcpSocket *socket) { connection = socket; });
    Updater &updater = scene.updater();
    updater.setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(connection);
    updater.setAutomaticallyChecksForUpdates(false);
    QVERIFY(!updater.isBusy());
    QTRY_VERIFY(!connection);
    scene.serve();
    updater.setAutomaticallyChecksForUpdates(true);
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    QVERIFY(!scene.offers.front().wasAskedFor);
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::whatComesOfACheckThatWasGivenUpCountsForNothing_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::newRow("an offer") << QByteArray("1.1");
    QTest::newRow("nothing new") << QByteArray("1.0");
}

void UpdaterTest::whatComesOfACheckThatWasGivenUpCountsForNothing()
{
    QFETCH(QByteArray, version);
    UpdaterScene scene;
    scene.serve(version);
    const auto delegate = std::make_shared<ActingDelegate>([&] {
        scene.updater().setAutomaticallyChecksForUpdates(false);
        scene.serve("1.2");
        scene.updater().checkForUpdates();
    });
    scene.updater().setDelegate(delegate);
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QTRY_COMPARE(scene.server.count("/feed"), 2);
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    QCOMPARE(scene.offers.front().version, QStringLiteral("1.2"));
    QVERIFY(scene.offers.front().wasAskedFor);
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::switchedOffACheckThatWasAskedForGoesOn_data()
{
    QTest::addColumn<bool>("beganByItself");
    QTest::newRow("from its begin") << false;
    QTest::newRow("after it had begun by itself") << true;
}

void UpdaterTest::switchedOffACheckThatWasAskedForGoesOn()
{
    QFETCH(bool, beganByItself);
    UpdaterScene scene;
    scene.serve();
    if (beganByItself)
        scene.updater().setAutomaticallyChecksForUpdates(true);
    scene.updater().checkForUpdates();
    scene.updater().setAutomaticallyChecksForUpdates(false);
    QVERIFY(scene.updater().isBusy());
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    QVERIFY(scene.offers.front().wasAskedFor);
    QCOMPARE(scene.server.count("/feed"), 1);
}

void UpdaterTest::laterOffersAgainTheNextDay()
{
    UpdaterScene scene;
    scene.serve();
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    QVERIFY(!scene.offers.front().wasAskedFor);
    scene.now += 5 * day; // an offer that waits is not made again
    const int readings = scene.clockReadings;
    QTRY_VERIFY(scene.clockReadings > readings + 5);
    QCOMPARE(scene.server.count("/feed"), 1);
    scene.answer(Answer::Later);
    QTRY_COMPARE(scene.offers.size(), std::size_t(2));
}

void UpdaterTest::aSkippedVersionIsOfferedOnlyToThoseWhoAsk()
{
    UpdaterScene scene;
    scene.serve("1.1.0");
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    scene.answer(Answer::SkipThisVersion);
    QCOMPARE(UserDefaults::standard().text(QStringLiteral("skippedVersion")),
             QStringLiteral("1.1"));
    scene.now += day;
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QTRY_VERIFY(scene.server.count("/feed") == 2 && !scene.updater().isBusy());
    QCOMPARE(scene.offers.size(), std::size_t(1));
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.offers.size(), std::size_t(2));
}

void UpdaterTest::aVersionAfterASkippedOneIsOffered()
{
    UpdaterScene scene;
    scene.serve("1.2");
    UpdateSettings::setSkippedVersion(QStringLiteral("1.1"));
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
}

void UpdaterTest::askingAgainChecksAgainAndTheFirstAnswerIsVoid()
{
    UpdaterScene scene;
    scene.serve();
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    const UpdaterInterface::AnswerCall first = scene.answer;
    scene.serve("1.2");
    scene.updater().checkForUpdates();
    first(Answer::SkipThisVersion);
    QVERIFY(scene.updater().isBusy());
    QTRY_COMPARE(scene.offers.size(), std::size_t(2));
    QVERIFY(scene.offers.at(1).wasAskedFor);
    QCOMPARE(scene.offers.at(1).version, QStringLiteral("1.2"));
    QCOMPARE(scene.server.count("/feed"), 2);
    first(Answer::Download);
    QVERIFY(scene.updater().isBusy());
    scene.answer(Answer::Later);
    QVERIFY(!scene.updater().isBusy());
    QCOMPARE(UpdateSettings::skippedVersion(), QString());
    QCOMPARE(scene.server.count("/file"), 0);
}

void UpdaterTest::aCheckInTheBackgroundMayComeSoonerThanADay()
{
    UpdaterScene scene;
    scene.serve("1.0");
    Updater &updater = scene.updater();
    updater.checkForUpdatesInBackground(); // switched off
    QVERIFY(!updater.isBusy());
    updater.setAutomaticallyChecksForUpdates(true);
    updater.checkForUpdatesInBackground(); // under way
    QTRY_VERIFY(!updater.isBusy());
    QCOMPARE(scene.server.count("/feed"), 1);
    updater.checkForUpdatesInBackground();
    QTRY_VERIFY(scene.server.count("/feed") == 2 && !updater.isBusy());
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::aVersionIsShownAsTheFeedWritesIt()
{
    UpdaterScene scene;
    scene.serve("9.1.0");
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(scene.offers.front().version, QStringLiteral("9.1.0"));
    QCOMPARE(scene.files(), QStringList(QStringLiteral("Vantorel-9.1.zip")));
}

/// As most feeds write it.
void UpdaterTest::aDateInGreenwichTimeIsShown()
{
    UpdaterScene scene;
    scene.server.answer("/feed", UpdaterScene::feed(scene.item("1.1")).replace("+0000</", "GMT</"));
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    QCOMPARE(scene.offers.front().date, QDate(2022, 11, 15));
}

void UpdaterTest::anAnswerCountsOnceAndMayComeAfterTheEnd()
{
    UpdaterScene scene;
    scene.serve();
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    scene.answer(Answer::Later);
    scene.answer(Answer::Download);
    QVERIFY(!scene.updater().isBusy());
    scene.end();
    scene.answer(Answer::Download);
    QCOMPARE(scene.files(), QStringList());
}

void UpdaterTest::anOfferMayRunAnEventLoop()
{
    UpdaterScene scene;
    scene.serve();
    scene.interface.offer = [](const UpdateOffer &, const UpdaterInterface::AnswerCall &call) {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
        call(Answer::Download);
    };
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
}

void UpdaterTest::aSignedFileStaysAndIsRevealed()
{
    UpdaterScene scene;
    scene.serve();
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(scene.files(), QStringList(QStringLiteral("Vantorel-1.1.zip")));
    const QByteArray path = scene.folder + "/Vantorel-1.1.zip";
    QCOMPARE(scene.revealed.front().path(), path);
    QCOMPARE(Scratch::content(path), scene.file);
    QCOMPARE(Scratch::permissions(path) & 0133, mode_t(0));
    QCOMPARE(scene.started, 1);
    QCOMPARE(scene.ended, 1);
    QCOMPARE(scene.said, QStringList());
    QVERIFY(!scene.updater().isBusy());
}

void UpdaterTest::theFolderIsMade()
{
    UpdaterScene scene;
    scene.settings.downloadFolder = scene.folder + "/a/b";
    scene.serve();
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QVERIFY(Scratch::exists(scene.folder + "/a/b/Vantorel-1.1.zip"));
}

void UpdaterTest::noNameComesFromTheFeed()
{
    UpdaterScene scene;
    const QByteArray path = "/x/..%2F..%2Fevil.sh?name=/etc/passwd";
    const QByteArray body = UpdaterScene::feed(scene.item("1.1"))
                                .replace("/file", path)
                                .replace("application/zip", "../evil.desktop");
    scene.server.answer("/feed", body);
    scene.server.answer(path, [&](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\nContent-Disposition: attachment; filename=\"evil.sh\"\r\n"
                      "Connection: close\r\n\r\n" +
                      scene.file);
        socket->disconnectFromHost();
    });
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(scene.files(), QStringList(QStringLiteral("Vantorel-1.1")));
}

void UpdaterTest::aFileOfThatNameStays()
{
    UpdaterScene scene;
    scene.scratch.file("Downloads/Vantorel-1.1.zip", "theirs");
    scene.serve();
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(scene.revealed.front().path(), scene.folder + "/Vantorel-1.1 (2).zip");
    QCOMPARE(Scratch::content(scene.folder + "/Vantorel-1.1.zip"), QByteArray("theirs"));
}

void UpdaterTest::whatGoesWrongLeavesNothing_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, UpdateOutcome outcome, const Prepare &prepare) {
        QTest::newRow(name) << prepare << UpdateTexts::sentence(outcome);
    };
    const auto body = [](const QByteArray &head, const QByteArray &bytes) {
        return [head, bytes](QTcpSocket *socket) {
            socket->write(head + bytes);
            socket->disconnectFromHost();
        };
    };
    row("a byte short", UpdateOutcome::WrongLength,
        [=](UpdaterScene &s) { s.server.answer("/file", s.file.chopped(1)); });
    row("a byte long", UpdateOutcome::WrongLength,
        [](UpdaterScene &s) { s.server.answer("/file", s.file + 'x'); });
    row("a byte long, not told", UpdateOutcome::WrongLength, [=](UpdaterScene &s) {
        s.server.answer("/file", body(LoopbackServer::head(), s.file + 'x'));
    });
    row("nothing", UpdateOutcome::WrongLength,
        [](UpdaterScene &s) { s.server.answer("/file", ""); });
    row("another length in the feed", UpdateOutcome::WrongLength, [](UpdaterScene &s) {
        s.length = s.file.size() + 1;
        s.serve();
    });
    row("one bit", UpdateOutcome::WrongSignature, [](UpdaterScene &s) {
        QByteArray file = s.file;
        file[1000] = char(file.at(1000) ^ 1);
        s.server.answer("/file", file);
    });
    row("signed by another", UpdateOutcome::WrongSignature, [](UpdaterScene &s) {
        s.signature = SigningKey().signature(s.file);
        s.serve();
    });
    row("the signature of another file", UpdateOutcome::WrongSignature, [](UpdaterScene &s) {
        s.signature = s.key.signature("another");
        s.serve();
    });
    row("not found", UpdateOutcome::Refused,
        [](UpdaterScene &s) { s.server.redirect("/file", "/nowhere"); });
    row("cut off", UpdateOutcome::Unreachable, [=](UpdaterScene &s) {
        s.server.answer("/file", body(LoopbackServer::head(s.file.size()), s.file.chopped(1)));
    });
    row("redirected to a plain connection", UpdateOutcome::UnsafeAddress,
        [](UpdaterScene &s) { s.server.redirect("/file", "http://vantorel.invalid/file"); });
    row("stuck", UpdateOutcome::TooSlow, [](UpdaterScene &s) {
        s.settings.fileSilence = 200ms;
        s.server.answer("/file", half(s.file));
    });
    row("dripping for ever", UpdateOutcome::TooSlow, [](UpdaterScene &s) {
        s.settings.leastFileRate = 1'000'000'000;
        s.settings.fileGrace = 200ms;
        s.server.answer("/file", drip);
    });
    QTest::newRow("the folder is a file")
        << Prepare([](UpdaterScene &s) { s.settings.downloadFolder = s.scratch.file("file", "x"); })
        << UpdateTexts::sentence(UpdateOutcome::NotWritten, QStringLiteral("Not a directory"));
}

void UpdaterTest::whatGoesWrongLeavesNothing()
{
    QFETCH(Prepare, prepare);
    QFETCH(QString, sentence);
    UpdaterScene scene;
    scene.serve();
    prepare(scene);
    scene.download();
    QTRY_COMPARE(scene.said.size(), 1);
    QCOMPARE(scene.said.front(), sentence);
    QCOMPARE(scene.files(), QStringList());
    QCOMPARE(scene.started, 1);
    QCOMPARE(scene.ended, 1);
    QVERIFY(scene.revealed.empty());
    QVERIFY(!scene.updater().isBusy());
}

void UpdaterTest::cancelledHalfWayNothingStays()
{
    UpdaterScene scene;
    scene.serve();
    QPointer<QTcpSocket> connection;
    scene.server.answer("/file", [&](QTcpSocket *socket) {
        connection = socket;
        half(scene.file)(socket);
    });
    scene.download();
    QTRY_VERIFY(!scene.progress.empty() && scene.progress.back().first == scene.file.size() / 2);
    QVERIFY(connection);
    scene.updater().cancelDownload();
    QVERIFY(!scene.updater().isBusy());
    QCOMPARE(scene.ended, 0);
    QTRY_COMPARE(scene.ended, 1);
    QTRY_VERIFY(!connection);
    QCOMPARE(scene.files(), QStringList());
    QCOMPARE(scene.said, QStringList());
    QVERIFY(scene.revealed.empty());
}

void UpdaterTest::cancelledWhileItIsCheckedNothingStays()
{
    UpdaterScene scene;
    scene.serve();
    scene.interface.progress = [&](std::int64_t received, std::int64_t total) {
        if (received == total)
            scene.updater().cancelDownload();
    };
    scene.download();
    QTRY_COMPARE(scene.ended, 1);
    scene.updater().checkForUpdates();
    scene.updater().cancelDownload();
    QTRY_COMPARE(scene.ended, 2);
    QCOMPARE(scene.files(), QStringList());
    QVERIFY(scene.revealed.empty());
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::anUpdaterThatGoesHalfWayLeavesNothing()
{
    UpdaterScene scene;
    scene.serve();
    scene.server.answer("/file", half(scene.file));
    scene.download();
    QTRY_VERIFY(!scene.progress.empty());
    scene.end();
    QCOMPARE(scene.files(), QStringList());
    QVERIFY(scene.revealed.empty());
}

void UpdaterTest::afterACancelledDownloadTheNextOneWorks()
{
    UpdaterScene scene;
    scene.serve();
    scene.server.answer("/file", half(scene.file));
    scene.download();
    QTRY_VERIFY(!scene.progress.empty());
    scene.updater().cancelDownload();
    scene.serve();
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(scene.files(), QStringList(QStringLiteral("Vantorel-1.1.zip")));
}

void UpdaterTest::whoAsksDuringADownloadIsTold()
{
    UpdaterScene scene;
    scene.serve();
    scene.server.answer("/file", half(scene.file));
    scene.download();
    QTRY_VERIFY(!scene.progress.empty());
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.said, QStringList(UpdateTexts::sentence(UpdateOutcome::Downloading)));
    QCOMPARE(scene.server.count("/feed"), 1);
}

void UpdaterTest::progressIsToldByHundredths()
{
    UpdaterScene scene;
    scene.file = QByteArray(20'000'000, 'x');
    scene.serve();
    scene.download();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QVERIFY(scene.progress.size() <= 101);
    std::int64_t before = 0;
    for (const auto &[received, total] : scene.progress) {
        QVERIFY(received > before);
        QCOMPARE(total, std::int64_t(scene.file.size()));
        before = received;
    }
    QCOMPARE(before, std::int64_t(scene.file.size()));
}

void UpdaterTest::aDownloadHasTimeByItsLength_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("rate");
    QTest::addColumn<qint64>("milliseconds");
    QTest::newRow("nothing") << qint64(0) << qint64(8'000) << qint64(600'000);
    QTest::newRow("less than a second") << qint64(7'999) << qint64(8'000) << qint64(600'000);
    QTest::newRow("a second") << qint64(8'000) << qint64(8'000) << qint64(601'000);
    QTest::newRow("40 MB") << qint64(40'000'000) << qint64(8'000) << qint64(5'600'000);
    QTest::newRow("256 MiB") << qint64(268'435'456) << qint64(8'000) << qint64(34'154'000);
    QTest::newRow("a day") << qint64(85'800) << qint64(1) << qint64(86'400'000);
    QTest::newRow("over a day") << qint64(85'801) << qint64(1) << qint64(86'400'000);
    QTest::newRow("absurd") << std::numeric_limits<qint64>::max() << qint64(1)
                            << qint64(86'400'000);
}

void UpdaterTest::aDownloadHasTimeByItsLength()
{
    QFETCH(qint64, bytes);
    QFETCH(qint64, rate);
    QTEST(qint64(UpdateDownload::longestTime(bytes, rate, 600s).count()), "milliseconds");
}

void UpdaterTest::whereNoFileIsNamelessItIsAPartUntilItIsKept()
{
    UpdaterScene scene;
    scene.settings.unfinished = UnfinishedFile::Kind::Named;
    scene.serve();
    HeldReading reading;
    scene.download();
    QTRY_VERIFY(reading.isReached());
    QCOMPARE(scene.files(), QStringList(QStringLiteral("Vantorel-1.1.zip.part")));
    reading.goOn();
    QTRY_COMPARE(scene.revealed.size(), std::size_t(1));
    QCOMPARE(scene.files(), QStringList(QStringLiteral("Vantorel-1.1.zip")));
}

void UpdaterTest::nothingStaysOfWhatIsBeingChecked_data()
{
    QTest::addColumn<Prepare>("end");
    QTest::newRow("cancelled") << Prepare([](UpdaterScene &s) { s.updater().cancelDownload(); });
    QTest::newRow("the updater goes") << Prepare([](UpdaterScene &s) { s.end(); });
    QTest::newRow("the application ends") << Prepare(terminate);
    QTest::newRow("the event loop ends") << Prepare(leaveTheLoop);
}

void UpdaterTest::nothingStaysOfWhatIsBeingChecked()
{
    QFETCH(Prepare, end);
    UpdaterScene scene;
    scene.settings.unfinished = UnfinishedFile::Kind::Named;
    scene.serve();
    {
        HeldReading reading;
        scene.download();
        QTRY_VERIFY(reading.isReached());
        end(scene);
        QCOMPARE(scene.files(), QStringList());
    }
    // The other thread's answer comes to nobody.
    bool isDelivered = false;
    MainThread::post([&isDelivered] { isDelivered = true; });
    QTRY_VERIFY(isDelivered);
    QCOMPARE(scene.files(), QStringList());
    QVERIFY(scene.revealed.empty());
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::aFileThatIsNotKeptHasGoneWhenItIsSaid()
{
    UpdaterScene scene;
    scene.settings.unfinished = UnfinishedFile::Kind::Named;
    scene.signature = scene.key.signature("another");
    scene.serve();
    QStringList files(QStringLiteral("not asked"));
    scene.interface.downloadEnded = [&] { files = scene.files(); };
    scene.download();
    QTRY_COMPARE(scene.said.size(), 1);
    QCOMPARE(files, QStringList());
}

void UpdaterTest::ends()
{
    QTest::addColumn<Prepare>("end");
    QTest::newRow("it tells so") << Prepare(terminate);
    QTest::newRow("its event loop ends") << Prepare(leaveTheLoop);
}

void UpdaterTest::withTheApplicationACheckEnds()
{
    QFETCH(Prepare, end);
    UpdaterScene scene;
    QPointer<QTcpSocket> connection;
    scene.server.answer("/feed", [&](QTcpSocket *socket) { connection = socket; });
    scene.updater().checkForUpdates();
    QTRY_VERIFY(connection);
    end(scene);
    QVERIFY(!scene.updater().isBusy());
    QTRY_VERIFY(!connection);
    scene.updater().checkForUpdates();
    scene.updater().setAutomaticallyChecksForUpdates(true);
    QVERIFY(!scene.updater().isBusy());
    QCOMPARE(scene.server.count("/feed"), 1);
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::withTheApplicationAnOfferEnds()
{
    QFETCH(Prepare, end);
    UpdaterScene scene;
    scene.serve();
    scene.updater().checkForUpdates();
    QTRY_COMPARE(scene.offers.size(), std::size_t(1));
    end(scene);
    scene.answer(Answer::Download);
    scene.answer(Answer::SkipThisVersion);
    QVERIFY(!scene.updater().isBusy());
    QCOMPARE(UpdateSettings::skippedVersion(), QString());
    QCOMPARE(scene.server.count("/file"), 0);
    QCOMPARE(scene.files(), QStringList());
}

void UpdaterTest::withTheApplicationADownloadEnds()
{
    QFETCH(Prepare, end);
    UpdaterScene scene;
    scene.settings.unfinished = UnfinishedFile::Kind::Named;
    scene.serve();
    QPointer<QTcpSocket> connection;
    scene.server.answer("/file", [&](QTcpSocket *socket) {
        connection = socket;
        half(scene.file)(socket);
    });
    scene.download();
    QTRY_VERIFY(!scene.progress.empty());
    QCOMPARE(scene.files().size(), 1);
    end(scene);
    QCOMPARE(scene.files(), QStringList());
    QTRY_VERIFY(!connection);
    QCOMPARE(scene.ended, 0);
    QCOMPARE(scene.said, QStringList());
}

void UpdaterTest::behindTheEndNothingIsTold()
{
    UpdaterScene scene;
    scene.settings.feed.clear();
    scene.updater().checkForUpdates();
    terminate(scene);
    bool isDelivered = false;
    MainThread::post([&isDelivered] { isDelivered = true; });
    QTRY_VERIFY(isDelivered);
    QCOMPARE(scene.said, QStringList());
}

QTEST_MAIN(UpdaterTest)
#include "UpdaterTest.moc"
