#include "app/MainInterface.h"

#include "app/AppDelegate.h"
#include "app/update/LoopbackServer.h"
#include "app/update/SigningKey.h"
#include "app/update/Updater.h"
#include "platform/ApplicationService.h"
#include "platform/NotificationHub.h"
#include "ui/DialogBox.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/PreferencesView.h"
#include "ui/SwitchButton.h"
#include "ui/ThemedPreferences.h"

#include <QAction>
#include <QApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

#include <optional>

namespace {

const QString checkKey = QStringLiteral("checkForUpdates");
const QString betaKey = QStringLiteral("checkForBetaReleases");

/// A feed of one release, with this in addition.
QByteArray feed(const QByteArray &more = {})
{
    return "<rss xmlns:sparkle='urn:one' xmlns:vantorel='urn:two'><channel><item>"
           "<vantorel:version>9.8</vantorel:version>" +
           more +
           "<enclosure url='https://vantorel.org/file' length='1000' type='application/zip' "
           "vantorel:signature='" +
           QByteArray(64, 's').toBase64() + "'/></item></channel></rss>";
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
    void init();
    void cleanup();

    void thePreferencesOfferWhatTheBuildCanDo();
    void theFeedIsAskedWhenTheInterfaceHasStarted();
    void switchedOffItIsAskedOnlyFromTheSwitchOn();
    void whoAsksIsAnsweredEvenWhenItIsSwitchedOff();
    void theWorkflowDecidesOnTestReleases();

  private:
    void start();
    void chooseCheckForUpdates();
    bool isReached();

    std::optional<ThemedPreferences> preferences_;
    std::optional<LoopbackServer> server_;
    std::optional<ApplicationService> service_;
    std::shared_ptr<AppDelegate> delegate_;
    std::optional<MainInterface> interface_;
};

void MainInterfaceTest::init()
{
    preferences_.emplace();
    UserDefaults::standard().registerDefaults({{checkKey, true}});
    server_.emplace();
    server_->answer("/feed", feed());
    service_.emplace(QStringLiteral("no bus"));
    delegate_ = AppDelegate::create({});
    Updater::Settings updates = Updater::Settings::ofThisBuild();
    updates.feed = server_->url(QStringLiteral("/feed"));
    updates.key = SigningKey().publicKey();
    interface_.emplace(*delegate_, *service_, true, updates);
}

void MainInterfaceTest::cleanup()
{
    interface_.reset();
    delegate_.reset();
    service_.reset();
    server_.reset();
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
    QCOMPARE(answers.asked().front().title, QStringLiteral("A new version of Vantorel is there"));
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
    QCOMPARE(answers.asked().at(1).title, QStringLiteral("A new version of Vantorel is there"));
}

QTEST_MAIN(MainInterfaceTest)
#include "MainInterfaceTest.moc"
