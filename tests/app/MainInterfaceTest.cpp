#include "app/MainInterface.h"

#include "app/AppDelegate.h"
#include "app/update/LoopbackServer.h"
#include "app/update/SigningKey.h"
#include "app/update/Updater.h"
#include "kit/Scratch.h"
#include "platform/ApplicationService.h"
#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"
#include "platform/NotificationHub.h"
#include "ui/DialogBox.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/PreferencesView.h"
#include "ui/RunningDialog.h"
#include "ui/SwitchButton.h"
#include "ui/ThemedPreferences.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

#include <optional>

namespace {

const QString checkKey = QStringLiteral("checkForUpdates");
const QString betaKey = QStringLiteral("checkForBetaReleases");

/// A feed of one release, with this in addition.
QByteArray feed(const QByteArray &more = {}, const QByteArray &url = "https://vantorel.org/file",
                const QByteArray &signature = QByteArray(64, 's'))
{
    return "<rss xmlns:sparkle='urn:one' xmlns:vantorel='urn:two'><channel><item>"
           "<vantorel:version>9.8</vantorel:version>" +
           more + "<enclosure url='" + url +
           "' length='1000' type='application/zip' vantorel:signature='" + signature.toBase64() +
           "'/></item></channel></rss>";
}

template <class Widget> Widget *theOnly()
{
    Widget *found = nullptr;
    for (QWidget *widget : QApplication::allWidgets()) {
        if (auto *one = qobject_cast<Widget *>(widget))
            found = one;
    }
    return found;
}

} // namespace

/// How the parts of the window find the updater, which here is made for a feed of the test's own.
class MainInterfaceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void thePreferencesOfferWhatTheBuildCanDo();
    void theFeedIsAskedWhenTheInterfaceHasStarted();
    void switchedOffItIsAskedOnlyFromTheSwitchOn();
    void whoAsksIsAnsweredEvenWhenItIsSwitchedOff();
    void theWorkflowDecidesOnTestReleases();
    void anOfferClosesNoMenu();
    void whereNothingShowsADownloadItsPlaceIsSaid();

  private:
    void start();
    void chooseCheckForUpdates();
    bool isReached();

    std::optional<ThemedPreferences> preferences_;
    std::optional<Scratch> scratch_;
    SigningKey key_;
    std::optional<LoopbackServer> server_;
    std::optional<ApplicationService> service_;
    std::shared_ptr<AppDelegate> delegate_;
    std::optional<MainInterface> interface_;
};

/// Neither a file manager on the bus nor a program that opens folders.
void MainInterfaceTest::initTestCase()
{
    QVERIFY(qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"));
    QVERIFY(qputenv("PATH", "/nonexistent"));
}

void MainInterfaceTest::init()
{
    preferences_.emplace();
    scratch_.emplace();
    UserDefaults::standard().registerDefaults({{checkKey, true}});
    server_.emplace();
    server_->answer("/feed", feed());
    service_.emplace(QStringLiteral("no bus"));
    delegate_ = AppDelegate::create({});
    Updater::Settings updates = Updater::Settings::ofThisBuild();
    updates.feed = server_->url(QStringLiteral("/feed"));
    updates.key = key_.publicKey();
    updates.downloadFolder = scratch_->folder("Downloads");
    interface_.emplace(*delegate_, *service_, true, updates);
}

void MainInterfaceTest::cleanup()
{
    interface_.reset();
    delegate_.reset();
    service_.reset();
    server_.reset();
    scratch_.reset();
    preferences_.reset();
}

void MainInterfaceTest::start()
{
    NotificationHub::shared().post(NotificationName::applicationDidStartGUI);
}

/// A request of the test's own: what was sent before has come by then.
bool MainInterfaceTest::isReached()
{
    server_->answer("/other", "other");
    QNetworkAccessManager network;
    const QNetworkReply *reply =
        network.get(QNetworkRequest(server_->url(QStringLiteral("/other"))));
    return QTest::qWaitFor([reply] { return reply->isFinished(); }, 20'000) &&
           reply->error() == QNetworkReply::NoError;
}

void MainInterfaceTest::chooseCheckForUpdates()
{
    theOnly<MainWindow>()->mainMenu()->checkForUpdates()->trigger();
}

void MainInterfaceTest::thePreferencesOfferWhatTheBuildCanDo()
{
    const auto *view = theOnly<PreferencesView>();
    QVERIFY(view->checkForUpdates()->isEnabled());
    QVERIFY(view->betaReleases()->isEnabled());
    QVERIFY(view->alphaReleases()->isEnabled());
}

void MainInterfaceTest::theFeedIsAskedWhenTheInterfaceHasStarted()
{
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    QVERIFY(isReached());
    QCOMPARE(server_->count("/feed"), 0);
    start();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked().front().title,
             QStringLiteral("A new version of Vantorel is available"));
    QCOMPARE(answers.asked().front().info, QStringLiteral("Version 9.8"));
    QCOMPARE(server_->count("/feed"), 1);
}

void MainInterfaceTest::switchedOffItIsAskedOnlyFromTheSwitchOn()
{
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    UserDefaults::standard().setValue(checkKey, false);
    start();
    QVERIFY(isReached());
    QCOMPARE(server_->count("/feed"), 0);
    UserDefaults::standard().setValue(checkKey, true);
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(server_->count("/feed"), 1);
}

void MainInterfaceTest::whoAsksIsAnsweredEvenWhenItIsSwitchedOff()
{
    const DialogBox::Answers answers({DialogGeometry::FirstButton, DialogGeometry::FirstButton});
    UserDefaults::standard().setValue(checkKey, false);
    start();
    server_->answer("/feed", feed("<vantorel:operatingSystem>another</vantorel:operatingSystem>"));
    chooseCheckForUpdates();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked().front().title, QStringLiteral("Vantorel Update"));
    QCOMPARE(server_->count("/feed"), 1);
}

void MainInterfaceTest::anOfferClosesNoMenu()
{
    const DialogBox::Answers answers({DialogGeometry::SecondButton});
    start();
    chooseCheckForUpdates();
    QMenu menu;
    menu.addAction(QStringLiteral("An entry"));
    menu.popup(QPoint());
    for (int round = 0; round < 3; ++round)
        QVERIFY(isReached());
    BackgroundQueue::finish(std::chrono::seconds(10)); // the feed has been read
    bool isDelivered = false;
    MainThread::post([&isDelivered] { isDelivered = true; });
    QTRY_VERIFY(isDelivered);
    QCOMPARE(server_->count("/feed"), 1);
    QVERIFY(menu.isVisible());
    QVERIFY(answers.asked().empty());
    menu.close();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    // The offer had come and had to wait, for it was fetched again.
    QCOMPARE(server_->count("/feed"), 2);
}

void MainInterfaceTest::theWorkflowDecidesOnTestReleases()
{
    const DialogBox::Answers answers({DialogGeometry::FirstButton, DialogGeometry::SecondButton});
    UserDefaults::standard().setValue(checkKey, false);
    server_->answer("/feed", feed("<sparkle:relType>beta</sparkle:relType>"));
    start();
    chooseCheckForUpdates();
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked().at(0).title, QStringLiteral("Vantorel Update"));
    UserDefaults::standard().setValue(betaKey, true);
    chooseCheckForUpdates();
    QTRY_COMPARE(answers.asked().size(), std::size_t(2));
    QCOMPARE(answers.asked().at(1).title, QStringLiteral("A new version of Vantorel is available"));
}

void MainInterfaceTest::whereNothingShowsADownloadItsPlaceIsSaid()
{
    const QByteArray file(1000, 'x');
    server_->answer("/file", file);
    server_->answer(
        "/feed", feed({}, server_->url(QStringLiteral("/file")).toEncoded(), key_.signature(file)));
    QString said;
    QTimer user;
    connect(&user, &QTimer::timeout, &user, [&said] {
        DialogBox *dialog = RunningDialog::current();
        // A download is left to itself.
        if (!dialog || dialog->title().startsWith(QStringLiteral("Downloading")))
            return;
        said = dialog->info();
        dialog->buttonPressed(dialog->buttonsArray().first());
    });
    user.start(5);
    UserDefaults::standard().setValue(checkKey, false);
    start();
    chooseCheckForUpdates();
    const QString path = QFile::decodeName(scratch_->path("Downloads/Vantorel-9.8.zip"));
    QTRY_VERIFY2(said.contains(path), qPrintable(said));
}

QTEST_MAIN(MainInterfaceTest)
#include "MainInterfaceTest.moc"
