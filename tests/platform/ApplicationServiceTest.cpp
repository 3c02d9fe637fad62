#include "platform/ApplicationService.h"

#include "kit/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QTest>

using namespace std::chrono_literals;

namespace {

using Paths = std::vector<QByteArray>;

const QString name = QStringLiteral("org.vantorel.Vantorel");
const QString path = QStringLiteral("/org/vantorel/Vantorel");
const QString desktopInterface = QStringLiteral("org.freedesktop.Application");
const PlatformData platformData{QStringLiteral("token"), QStringLiteral("id")};

/// A call on its way, and its answer.
struct Sent
{
    std::unique_ptr<QDBusPendingCallWatcher> watcher;

    [[nodiscard]] bool isAnswered() const { return watcher->isFinished(); }
    [[nodiscard]] QDBusMessage answer() const { return watcher->reply(); }
};

QDBusMessage messageTo(const QString &owner, const QString &interface, const QString &member,
                       const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(owner, path, interface, member);
    message.setArguments(arguments);
    return message;
}

QVariantList openArguments(const QStringList &uris)
{
    return {uris, platformData.toMap()};
}

} // namespace

class ApplicationServiceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theObjectIsThereBeforeTheName();
    void filesAreOpenedByTheirBytesInOneCall();
    void openingNoFilesIsToldAsWell();
    void theWindowIsAskedFor();
    void anActionIsToldByItsName();
    void ourOwnCallTakesPathsAndLocations();
    void ourOwnCallWithoutFilesCallsNothing_data();
    void ourOwnCallWithoutFilesCallsNothing();
    void ourOwnCallIsReachedFromAShell();
    void callsOfOtherTypesAreRefused();
    void bothInterfacesAreDescribed();
    void whatComesBeforeTheReceiverIsKeptInOrder();
    void aCallIsAnsweredWhenItIsDelivered();
    void callsDuringAReceiversOwnLoopKeepTheOrder();
    void theNameIsNotTakenFromItsOwner();
    void nobodyQueuesForTheName();
    void theOwnerMayAskAgain();
    void closingSendsBackWhatWasNotDelivered();
    void closingSendsBackWhatIsOnItsWay();
    void closingGivesTheNameUp();
    void withoutABusNobodyIsReached();

  private:
    ApplicationService::Receiver recorder();
    Sent send(const QString &interface, const QString &member, const QVariantList &arguments);
    QDBusMessage answerTo(const QString &interface, const QString &member,
                          const QVariantList &arguments);
    void settle();
    [[nodiscard]] bool isOwned() const { return caller_->interface()->isServiceRegistered(name); }

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<QDBusConnection> caller_;
    std::unique_ptr<ApplicationService> service_;
    QStringList told_;
    std::vector<Paths> opened_;
    std::vector<PlatformData> data_;
};

void ApplicationServiceTest::init()
{
    bus_ = std::make_unique<PrivateBus>();
    QVERIFY(bus_->isThere());
    caller_ = std::make_unique<QDBusConnection>(bus_->connection());
    service_ = std::make_unique<ApplicationService>(bus_->connection().name());
    told_.clear();
    opened_.clear();
    data_.clear();
}

void ApplicationServiceTest::cleanup()
{
    service_.reset();
    caller_.reset();
    bus_.reset();
}

ApplicationService::Receiver ApplicationServiceTest::recorder()
{
    return {[this](const Paths &paths, const PlatformData &data) {
                told_.append(QStringLiteral("open"));
                opened_.push_back(paths);
                data_.push_back(data);
            },
            [this](const PlatformData &data) {
                told_.append(QStringLiteral("activate"));
                data_.push_back(data);
            },
            [this](const QString &action, const PlatformData &data) {
                told_.append(QStringLiteral("action ") + action);
                data_.push_back(data);
            }};
}

Sent ApplicationServiceTest::send(const QString &interface, const QString &member,
                                  const QVariantList &arguments)
{
    const QString owner = QDBusConnection(service_->connection()).baseService();
    return {std::make_unique<QDBusPendingCallWatcher>(
        caller_->asyncCall(messageTo(owner, interface, member, arguments)))};
}

QDBusMessage ApplicationServiceTest::answerTo(const QString &interface, const QString &member,
                                              const QVariantList &arguments)
{
    const Sent sent = send(interface, member, arguments);
    (void)QTest::qWaitFor([&sent] { return sent.isAnswered(); }, 30000);
    return sent.answer();
}

/// Until all calls that were sent before have arrived: this one comes behind them.
void ApplicationServiceTest::settle()
{
    const QDBusMessage answer = answerTo(QStringLiteral("org.freedesktop.DBus.Properties"),
                                         QStringLiteral("GetAll"), {desktopInterface});
    QVERIFY(answer.type() == QDBusMessage::ReplyMessage);
}

void ApplicationServiceTest::theObjectIsThereBeforeTheName()
{
    service_->deliverTo(recorder());
    QVERIFY(!isOwned());
    const QDBusMessage answer =
        answerTo(desktopInterface, QStringLiteral("Activate"), {platformData.toMap()});
    QVERIFY(answer.type() == QDBusMessage::ReplyMessage);
    QCOMPARE(told_, QStringList(QStringLiteral("activate")));
}

void ApplicationServiceTest::filesAreOpenedByTheirBytesInOneCall()
{
    service_->deliverTo(recorder());
    Paths expected;
    QStringList uris;
    for (int number = 0; number < 200; ++number) {
        expected.push_back("/folder/\xFF " + QByteArray::number(number));
        uris.append(QStringLiteral("file:///folder/%FF%20") + QString::number(number));
    }
    const QDBusMessage answer =
        answerTo(desktopInterface, QStringLiteral("Open"), openArguments(uris));
    QVERIFY(answer.type() == QDBusMessage::ReplyMessage);
    QVERIFY(answer.arguments().isEmpty());
    QCOMPARE(opened_, std::vector<Paths>({expected}));
    QVERIFY(data_ == std::vector<PlatformData>({platformData}));
}

void ApplicationServiceTest::openingNoFilesIsToldAsWell()
{
    service_->deliverTo(recorder());
    answerTo(desktopInterface, QStringLiteral("Open"), openArguments({}));
    answerTo(desktopInterface, QStringLiteral("Open"),
             openArguments({QStringLiteral("https://example.org/a")}));
    QCOMPARE(opened_, std::vector<Paths>({Paths(), Paths()}));
}

void ApplicationServiceTest::theWindowIsAskedFor()
{
    service_->deliverTo(recorder());
    answerTo(desktopInterface, QStringLiteral("Activate"), {platformData.toMap()});
    answerTo(desktopInterface, QStringLiteral("Activate"), {QVariantMap()});
    QCOMPARE(told_, QStringList({QStringLiteral("activate"), QStringLiteral("activate")}));
    QVERIFY(data_ == std::vector<PlatformData>({platformData, PlatformData()}));
}

void ApplicationServiceTest::anActionIsToldByItsName()
{
    service_->deliverTo(recorder());
    QDBusMessage answer = answerTo(
        desktopInterface, QStringLiteral("ActivateAction"),
        {QStringLiteral("some-action"), QVariantList{QStringLiteral("x")}, platformData.toMap()});
    QVERIFY(answer.type() == QDBusMessage::ReplyMessage);
    QCOMPARE(told_, QStringList(QStringLiteral("action some-action")));
    QVERIFY(data_ == std::vector<PlatformData>({platformData}));
}

void ApplicationServiceTest::ourOwnCallTakesPathsAndLocations()
{
    service_->deliverTo(recorder());
    const QDBusMessage answer = answerTo(
        name, QStringLiteral("securelyEraseFiles"),
        {QStringList{QStringLiteral("/folder/a%20b"), QStringLiteral("relative"),
                     QStringLiteral("file:///folder/%FF"), QStringLiteral("file://elsewhere/a")},
         QStringLiteral("user data")});
    QVERIFY(answer.type() == QDBusMessage::ReplyMessage);
    QCOMPARE(answer.signature(), QStringLiteral("s"));
    QCOMPARE(answer.arguments(), QVariantList{QString()});
    QCOMPARE(opened_, std::vector<Paths>({{"/folder/a%20b", "/folder/\xFF"}}));
}

void ApplicationServiceTest::ourOwnCallWithoutFilesCallsNothing_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("an empty list") << QStringList();
    QTest::newRow("empty texts") << QStringList({QString(), QString()});
    QTest::newRow("nothing that names a file") << QStringList({QStringLiteral("a text")});
}

void ApplicationServiceTest::ourOwnCallWithoutFilesCallsNothing()
{
    QFETCH(QStringList, entries);
    service_->deliverTo(recorder());
    const QDBusMessage answer =
        answerTo(name, QStringLiteral("securelyEraseFiles"), {entries, QString()});
    QCOMPARE(answer.signature(), QStringLiteral("s"));
    QCOMPARE(answer.arguments(), QVariantList{QString()});
    QCOMPARE(told_, QStringList());
}

void ApplicationServiceTest::ourOwnCallIsReachedFromAShell()
{
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
    service_->deliverTo(recorder());
    QProcess shell;
    shell.start(QStringLiteral("dbus-send"),
                {QStringLiteral("--bus=") + bus_->address(),
                 QStringLiteral("--print-reply=literal"), QStringLiteral("--dest=") + name, path,
                 QStringLiteral("org.vantorel.Vantorel.securelyEraseFiles"),
                 QStringLiteral("array:string:/folder/a,file:///folder/%FF"),
                 QStringLiteral("string:")});
    QTRY_VERIFY(shell.state() == QProcess::NotRunning);
    QCOMPARE(shell.exitCode(), 0);
    QCOMPARE(shell.readAllStandardOutput().trimmed(), QByteArray());
    QCOMPARE(opened_, std::vector<Paths>({{"/folder/a", "/folder/\xFF"}}));
}

void ApplicationServiceTest::callsOfOtherTypesAreRefused()
{
    service_->deliverTo(recorder());
    const QString file = QStringLiteral("file:///a");
    for (const QDBusMessage &answer :
         {answerTo(desktopInterface, QStringLiteral("Open"), {file, QVariantMap()}),
          answerTo(desktopInterface, QStringLiteral("Open"), {QStringList(file)}),
          answerTo(name, QStringLiteral("securelyEraseFiles"), {QStringList(file)}),
          answerTo(name, QStringLiteral("close"), {})})
        QVERIFY(answer.type() == QDBusMessage::ErrorMessage);
    QCOMPARE(told_, QStringList());
}

void ApplicationServiceTest::bothInterfacesAreDescribed()
{
    const QString description = answerTo(QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                         QStringLiteral("Introspect"), {})
                                    .arguments()
                                    .value(0)
                                    .toString();
    for (const char *text :
         {"<interface name=\"org.freedesktop.Application\">", "<method name=\"ActivateAction\">",
          "<interface name=\"org.vantorel.Vantorel\">",
          "<arg type=\"s\" name=\"error\" direction=\"out\""})
        QVERIFY2(description.contains(QLatin1String(text)), text);
}

void ApplicationServiceTest::whatComesBeforeTheReceiverIsKeptInOrder()
{
    std::vector<Sent> calls;
    calls.push_back(
        send(desktopInterface, QStringLiteral("Open"),
             openArguments({QStringLiteral("file:///a"), QStringLiteral("file:///b")})));
    calls.push_back(send(desktopInterface, QStringLiteral("Activate"), {QVariantMap()}));
    calls.push_back(send(name, QStringLiteral("securelyEraseFiles"),
                         {QStringList(QStringLiteral("/c")), QString()}));
    settle();
    QCOMPARE(told_, QStringList());
    service_->deliverTo(recorder());
    QCOMPARE(told_, QStringList({QStringLiteral("open"), QStringLiteral("activate"),
                                 QStringLiteral("open")}));
    QCOMPARE(opened_, std::vector<Paths>({{"/a", "/b"}, {"/c"}}));
    for (const Sent &call : calls) {
        QTRY_VERIFY(call.isAnswered());
        QVERIFY(call.answer().type() == QDBusMessage::ReplyMessage);
    }
    QCOMPARE(calls.back().answer().arguments(), QVariantList{QString()});
}

void ApplicationServiceTest::aCallIsAnsweredWhenItIsDelivered()
{
    const Sent sent = send(desktopInterface, QStringLiteral("Activate"), {QVariantMap()});
    settle();
    QVERIFY(!sent.isAnswered());
    service_->deliverTo(recorder());
    QTRY_VERIFY(sent.isAnswered());
}

/// The receiver of the first call waits in a loop of its own, as a dialog does, until the last one
/// has come.
void ApplicationServiceTest::callsDuringAReceiversOwnLoopKeepTheOrder()
{
    const Sent first = send(desktopInterface, QStringLiteral("Open"),
                            openArguments({QStringLiteral("file:///1")}));
    const Sent second = send(desktopInterface, QStringLiteral("Open"),
                             openArguments({QStringLiteral("file:///2")}));
    settle();
    Sent third;
    QStringList order;
    service_->deliverTo({[&](const Paths &paths, const PlatformData &) {
                             order.append(QString::fromUtf8(paths.front()));
                             if (paths.front() != "/1")
                                 return;
                             QTRY_VERIFY(first.isAnswered());
                             third = send(desktopInterface, QStringLiteral("Open"),
                                          openArguments({QStringLiteral("file:///3")}));
                             QTRY_COMPARE(order.size(), 3);
                         },
                         [](const PlatformData &) {},
                         [](const QString &, const PlatformData &) {}});
    QCOMPARE(order,
             QStringList({QStringLiteral("/1"), QStringLiteral("/2"), QStringLiteral("/3")}));
    QTRY_VERIFY(first.isAnswered() && second.isAnswered() && third.isAnswered());
}

void ApplicationServiceTest::theNameIsNotTakenFromItsOwner()
{
    ApplicationService other(bus_->connection().name());
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
    QVERIFY(other.requestName(20s) == ApplicationService::Name::Taken);
    QCOMPARE(caller_->interface()->serviceOwner(name).value(),
             QDBusConnection(service_->connection()).baseService());
}

void ApplicationServiceTest::nobodyQueuesForTheName()
{
    ApplicationService other(bus_->connection().name());
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
    QVERIFY(other.requestName(20s) == ApplicationService::Name::Taken);
    service_->close();
    QTRY_VERIFY(!isOwned());
    QVERIFY(other.requestName(20s) == ApplicationService::Name::Owned);
}

void ApplicationServiceTest::theOwnerMayAskAgain()
{
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
}

void ApplicationServiceTest::closingSendsBackWhatWasNotDelivered()
{
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
    const Sent sent = send(desktopInterface, QStringLiteral("Open"),
                           openArguments({QStringLiteral("file:///a")}));
    settle();
    bool wasOwned = true;
    connect(sent.watcher.get(), &QDBusPendingCallWatcher::finished, this,
            [&] { wasOwned = isOwned(); });
    service_->close();
    QTRY_VERIFY(sent.isAnswered());
    QCOMPARE(sent.answer().errorName(),
             QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"));
    QTRY_VERIFY(!wasOwned);
    service_->deliverTo(recorder());
    QCOMPARE(told_, QStringList());
}

/// A call that has come in but not yet to the object: the bus's own answer stands behind it.
void ApplicationServiceTest::closingSendsBackWhatIsOnItsWay()
{
    service_->deliverTo(recorder());
    const Sent sent = send(desktopInterface, QStringLiteral("Activate"), {QVariantMap()});
    const QDBusMessage wait = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    caller_->call(wait);
    QDBusConnection(service_->connection()).call(wait);
    service_->close();
    QTRY_VERIFY(sent.isAnswered());
    QVERIFY(sent.answer().type() == QDBusMessage::ErrorMessage);
    QCOMPARE(told_, QStringList());
}

void ApplicationServiceTest::closingGivesTheNameUp()
{
    QVERIFY(service_->requestName(20s) == ApplicationService::Name::Owned);
    service_->deliverTo(recorder());
    service_->close();
    service_->close();
    QTRY_VERIFY(!isOwned());
    const QDBusMessage answer =
        answerTo(desktopInterface, QStringLiteral("Activate"), {QVariantMap()});
    QVERIFY(answer.type() == QDBusMessage::ErrorMessage);
    QCOMPARE(told_, QStringList());
}

void ApplicationServiceTest::withoutABusNobodyIsReached()
{
    ApplicationService alone(QStringLiteral("no such connection"));
    QVERIFY(alone.requestName(20s) == ApplicationService::Name::Unreachable);
    alone.deliverTo(recorder());
    alone.close();
    QCOMPARE(told_, QStringList());
}

QTEST_GUILESS_MAIN(ApplicationServiceTest)
#include "ApplicationServiceTest.moc"
