#include "platform/NotificationHub.h"

#include <QTest>

namespace {

constexpr QLatin1String name("Something");

} // namespace

class NotificationHubTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aPostReachesItsObserversAtOnceAndInOrder();
    void onlyThePostedNameIsHeard();
    void theSenderAndWhatComesWithItAreHandedOver();
    void nobodyNeedsToListen();
    void anObserverThatHasLeftHearsNothing_data();
    void anObserverThatHasLeftHearsNothing();
    void aMovedTokenGoesOnObserving();
    void aTokenThatTakesAnotherEndsItsOwn();
    void anObserverThatIsStoppedByAnEarlierOneHearsNoMore();
    void anObserverMayStopItself();
    void anObserverThatStopsItselfDoesNotHearItsOwnPost();
    void anObserverThatJoinsMeanwhileHearsTheNextOne();
    void postsFromWithinAreDeliveredAtOnce();
    void theSharedHubIsOne();
};

void NotificationHubTest::aPostReachesItsObserversAtOnceAndInOrder()
{
    NotificationHub hub;
    QList<int> heard;
    const auto first = hub.observe(name, [&heard](const auto &) { heard.append(1); });
    const auto second = hub.observe(name, [&heard](const auto &) { heard.append(2); });
    hub.post(name);
    QCOMPARE(heard, (QList<int>{1, 2}));
}

void NotificationHubTest::onlyThePostedNameIsHeard()
{
    NotificationHub hub;
    int heard = 0;
    const auto token = hub.observe(name, [&heard](const auto &) { ++heard; });
    hub.post(QLatin1String("something"));
    hub.post(QLatin1String("Something else"));
    QCOMPARE(heard, 0);
}

void NotificationHubTest::theSenderAndWhatComesWithItAreHandedOver()
{
    NotificationHub hub;
    NotificationHub::Notification heard;
    const auto token = hub.observe(name, [&heard](const auto &given) { heard = given; });
    hub.post(name, this, 7);
    QCOMPARE(heard.name, name);
    QCOMPARE(heard.object, static_cast<const void *>(this));
    QCOMPARE(heard.userInfo, QVariant(7));
    hub.post(name);
    QVERIFY(!heard.object && !heard.userInfo.isValid());
}

void NotificationHubTest::nobodyNeedsToListen()
{
    NotificationHub hub;
    hub.post(name);
    int heard = 0;
    const auto token = hub.observe(name, [&heard](const auto &) { ++heard; });
    QCOMPARE(heard, 0);
}

void NotificationHubTest::anObserverThatHasLeftHearsNothing_data()
{
    QTest::addColumn<bool>("isStopped");
    QTest::newRow("its token has gone") << false;
    QTest::newRow("it was stopped") << true;
}

void NotificationHubTest::anObserverThatHasLeftHearsNothing()
{
    QFETCH(bool, isStopped);
    NotificationHub hub;
    int heard = 0;
    std::optional<NotificationHub::Token> token =
        hub.observe(name, [&heard](const auto &) { ++heard; });
    hub.post(name);
    if (isStopped)
        token->stop();
    else
        token.reset();
    hub.post(name);
    QCOMPARE(heard, 1);
}

void NotificationHubTest::aMovedTokenGoesOnObserving()
{
    NotificationHub hub;
    int heard = 0;
    NotificationHub::Token kept;
    {
        NotificationHub::Token token = hub.observe(name, [&heard](const auto &) { ++heard; });
        kept = std::move(token);
    }
    hub.post(name);
    QCOMPARE(heard, 1);
}

void NotificationHubTest::aTokenThatTakesAnotherEndsItsOwn()
{
    NotificationHub hub;
    QList<int> heard;
    NotificationHub::Token token = hub.observe(name, [&heard](const auto &) { heard.append(1); });
    token = hub.observe(name, [&heard](const auto &) { heard.append(2); });
    hub.post(name);
    QCOMPARE(heard, QList<int>{2});
}

void NotificationHubTest::anObserverThatIsStoppedByAnEarlierOneHearsNoMore()
{
    NotificationHub hub;
    int heard = 0;
    NotificationHub::Token second;
    const auto first = hub.observe(name, [&second](const auto &) { second.stop(); });
    second = hub.observe(name, [&heard](const auto &) { ++heard; });
    hub.post(name);
    QCOMPARE(heard, 0);
}

void NotificationHubTest::anObserverMayStopItself()
{
    NotificationHub hub;
    int heard = 0;
    NotificationHub::Token token;
    token = hub.observe(name, [&heard, &token, kept = std::make_shared<int>(1)](const auto &) {
        token.stop();
        heard += *kept;
    });
    hub.post(name);
    hub.post(name);
    QCOMPARE(heard, 1);
}

void NotificationHubTest::anObserverThatStopsItselfDoesNotHearItsOwnPost()
{
    NotificationHub hub;
    int heard = 0;
    NotificationHub::Token token;
    token = hub.observe(name, [&](const auto &) {
        ++heard;
        token.stop();
        hub.post(name);
    });
    hub.post(name);
    QCOMPARE(heard, 1);
}

void NotificationHubTest::anObserverThatJoinsMeanwhileHearsTheNextOne()
{
    NotificationHub hub;
    int heard = 0;
    NotificationHub::Token late;
    const auto first = hub.observe(
        name, [&](const auto &) { late = hub.observe(name, [&heard](const auto &) { ++heard; }); });
    hub.post(name);
    QCOMPARE(heard, 0);
}

void NotificationHubTest::postsFromWithinAreDeliveredAtOnce()
{
    NotificationHub hub;
    QStringList heard;
    const auto outer = hub.observe(name, [&](const auto &) {
        hub.post(QLatin1String("inner"));
        heard.append(QStringLiteral("outer"));
    });
    const auto inner = hub.observe(QLatin1String("inner"),
                                   [&](const auto &) { heard.append(QStringLiteral("inner")); });
    hub.post(name);
    QCOMPARE(heard, (QStringList{QStringLiteral("inner"), QStringLiteral("outer")}));
}

void NotificationHubTest::theSharedHubIsOne()
{
    QCOMPARE(&NotificationHub::shared(), &NotificationHub::shared());
}

QTEST_APPLESS_MAIN(NotificationHubTest)
#include "NotificationHubTest.moc"
