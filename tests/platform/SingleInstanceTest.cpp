#include "platform/SingleInstance.h"

#include "kit/FakeService.h"
#include "kit/PrivateBus.h"
#include "platform/ApplicationHandOver.h"
#include "platform/ApplicationService.h"
#include "platform/FileEntries.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace {

using Paths = std::vector<QByteArray>;
using SingleInstance::Standing;

const QString name = QStringLiteral("org.vantorel.Vantorel");
const QString path = QStringLiteral("/org/vantorel/Vantorel");

void say(const QStringList &words)
{
    std::puts(qPrintable(words.join(QLatin1Char(' '))));
    std::fflush(stdout);
}

QStringList words(const PlatformData &data)
{
    return {QStringLiteral("token=") + data.activationToken,
            QStringLiteral("id=") + data.startupId};
}

ApplicationService::Receiver speaker()
{
    return {[](const Paths &paths, const PlatformData &data) {
                say(QStringList(QStringLiteral("open")) + words(data) + FileEntries::uris(paths));
            },
            [](const PlatformData &data) {
                say(QStringList(QStringLiteral("activate")) + words(data));
            },
            [](const QString &action, const PlatformData &) {
                say({QStringLiteral("action"), action});
            }};
}

QString text(Standing standing)
{
    switch (standing) {
    case Standing::First:
        return QStringLiteral("first");
    case Standing::HandedOver:
        return QStringLiteral("handed over");
    case Standing::Alone:
        break;
    }
    return QStringLiteral("alone");
}

/// A start as the program makes it: "start", patience in milliseconds, file locations.
int runStart(const QStringList &arguments)
{
    ApplicationService service;
    const SingleInstance::Start start{FileEntries::pathsOfUris(arguments.mid(2)),
                                      PlatformData::fromEnvironment(),
                                      std::chrono::milliseconds(arguments.at(1).toInt())};
    const Standing standing = SingleInstance::begin(service, start);
    say({text(standing)});
    if (standing == Standing::HandedOver)
        return 0;
    service.deliverTo(speaker());
    return QCoreApplication::exec();
}

/// Owns the name and never answers.
[[noreturn]] void runHanging()
{
    ApplicationService service;
    say({text(SingleInstance::begin(service, {}))});
    for (;;)
        ::pause();
}

/// Owns the name and ends without an answer when it is called.
int runLeaving()
{
    FakeService service(name, path);
    service.answerWith = [](const FakeService::Call &call) -> QVariantList {
        say({QStringLiteral("leaving"), call.member});
        ::_exit(0);
    };
    say({service.appear(QDBusConnection::sessionBus()) ? QStringLiteral("first")
                                                       : QStringLiteral("failed")});
    return QCoreApplication::exec();
}

int runChild(const QStringList &arguments)
{
    if (arguments.front() == QStringLiteral("hanging"))
        runHanging();
    return arguments.front() == QStringLiteral("leaving") ? runLeaving() : runStart(arguments);
}

/// This program again, on the bus of the address.
class Child
{
  public:
    Child(const QString &address, const QStringList &arguments, const PlatformData &data = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), data.activationToken);
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), data.startupId);
        process_.setProcessEnvironment(environment);
        process_.start(QCoreApplication::applicationFilePath(),
                       QStringList(QStringLiteral("child")) + arguments);
    }
    ~Child()
    {
        process_.kill();
        process_.waitForFinished();
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    /// The next line that it says; empty where none comes.
    QString line()
    {
        (void)QTest::qWaitFor(
            [this] { return process_.canReadLine() || process_.state() == QProcess::NotRunning; },
            30000);
        return QString::fromUtf8(process_.readLine()).trimmed();
    }
    [[nodiscard]] bool hasEnded() const { return process_.state() == QProcess::NotRunning; }
    bool ends()
    {
        return QTest::qWaitFor([this] { return hasEnded(); }, 30000) &&
               process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }
    void kill() { ::kill(pid_t(process_.processId()), SIGKILL); }
    QByteArray errors() { return process_.readAllStandardError(); }

  private:
    QProcess process_;
};

/// This program again, for a bus that starts it on demand.
class StartedByTheBus
{
  public:
    StartedByTheBus()
    {
        const QByteArray script =
            scratch_.file("start", "#!/bin/sh\necho $$ > '" + scratch_.path("pid") + "'\nexec '" +
                                       QFile::encodeName(QCoreApplication::applicationFilePath()) +
                                       "' child start 30000 > '" + scratch_.path("said") + "'\n");
        ::chmod(script.constData(), 0755);
        scratch_.folder("services");
        scratch_.file("services/org.vantorel.Vantorel.service",
                      "[D-BUS Service]\nName=org.vantorel.Vantorel\nExec=" + script + '\n');
    }
    ~StartedByTheBus()
    {
        const int process = Scratch::content(scratch_.path("pid")).trimmed().toInt();
        if (process > 0)
            ::kill(process, SIGKILL);
    }
    StartedByTheBus(const StartedByTheBus &) = delete;
    StartedByTheBus &operator=(const StartedByTheBus &) = delete;

    [[nodiscard]] QByteArray services() const { return scratch_.path("services"); }
    [[nodiscard]] bool wasStarted() const { return Scratch::exists(scratch_.path("pid")); }
    [[nodiscard]] QByteArray said() const { return Scratch::content(scratch_.path("said")); }

  private:
    Scratch scratch_;
};

} // namespace

class SingleInstanceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { bus_ = std::make_unique<PrivateBus>(); }
    void cleanup() { bus_.reset(); }

    void aLaterStartLeavesItsFilesInOneBatch();
    void twoHundredFilesGoAtOnce();
    void namesNeedNotBeUtf8();
    void aLaterStartWithoutFilesAsksForTheWindow();
    void theCallsSayWhoIsMeant_data();
    void theCallsSayWhoIsMeant();
    void startsAtTheSameTimeMakeOneFirst();
    void aLaterStartGoesOnAloneWhereTheFirstHangs();
    void aLaterStartSucceedsAFirstThatLeaves();
    void aLaterStartSucceedsAFirstThatDied();
    void aLaterStartGoesOnAloneWhereTheFirstRefuses();
    void aStartByTheBusGetsTheCallItWasStartedFor();
    void aHandOverStartsNobody();
    void withoutABusTheStartGoesOnAlone();

  private:
    std::unique_ptr<Child> child(const QStringList &arguments, const PlatformData &data = {})
    {
        return std::make_unique<Child>(bus_->address(), arguments, data);
    }
    std::unique_ptr<Child> start(const QStringList &uris = {}, const PlatformData &data = {})
    {
        return child(QStringList({QStringLiteral("start"), QStringLiteral("30000")}) + uris, data);
    }

    std::unique_ptr<PrivateBus> bus_;
};

void SingleInstanceTest::aLaterStartLeavesItsFilesInOneBatch()
{
    const auto first = start({QStringLiteral("file:///own")});
    QCOMPARE(first->line(), QStringLiteral("first"));
    const auto second = start({QStringLiteral("file:///b"), QStringLiteral("file:///a")},
                              {QStringLiteral("token"), QStringLiteral("id_TIME7")});
    QCOMPARE(second->line(), QStringLiteral("handed over"));
    QVERIFY(second->ends());
    QCOMPARE(first->line(), QStringLiteral("open token=token id=id_TIME7 file:///b file:///a"));
    const auto third = start();
    QCOMPARE(third->line(), QStringLiteral("handed over"));
    QCOMPARE(first->line(), QStringLiteral("activate token= id="));
}

void SingleInstanceTest::twoHundredFilesGoAtOnce()
{
    QStringList uris;
    for (int number = 0; number < 200; ++number)
        uris.append(QStringLiteral("file:///folder/%1").arg(number));
    const auto first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const auto second = start(uris);
    QCOMPARE(second->line(), QStringLiteral("handed over"));
    QCOMPARE(first->line(), QStringLiteral("open token= id= ") + uris.join(QLatin1Char(' ')));
}

void SingleInstanceTest::namesNeedNotBeUtf8()
{
    const auto first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const auto second = start({QStringLiteral("file:///%FF%FE"), QStringLiteral("file:///a%0Ab")});
    QCOMPARE(second->line(), QStringLiteral("handed over"));
    QCOMPARE(first->line(), QStringLiteral("open token= id= file:///%FF%FE file:///a%0Ab"));
}

void SingleInstanceTest::aLaterStartWithoutFilesAsksForTheWindow()
{
    const auto first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const auto second = start({}, {QStringLiteral("token"), QString()});
    QCOMPARE(second->line(), QStringLiteral("handed over"));
    QVERIFY(second->ends());
    QCOMPARE(first->line(), QStringLiteral("activate token=token id="));
}

void SingleInstanceTest::theCallsSayWhoIsMeant_data()
{
    QTest::addColumn<QStringList>("uris");
    QTest::addColumn<QString>("member");
    QTest::newRow("files") << QStringList(
                                  {QStringLiteral("file:///a"), QStringLiteral("file:///%FF")})
                           << QStringLiteral("Open");
    QTest::newRow("no files") << QStringList() << QStringLiteral("Activate");
}

void SingleInstanceTest::theCallsSayWhoIsMeant()
{
    QFETCH(QStringList, uris);
    QFETCH(QString, member);
    FakeService first(name, path);
    QVERIFY(first.appear(bus_->connection()));
    const auto second = start(uris, {QStringLiteral("token"), QStringLiteral("id")});
    QCOMPARE(second->line(), QStringLiteral("handed over"));
    QCOMPARE(first.calls.size(), size_t(1));
    const FakeService::Call call = first.calls.front();
    QCOMPARE(call.interface, QStringLiteral("org.freedesktop.Application"));
    QCOMPARE(call.member, member);
    QCOMPARE(call.signature, uris.isEmpty() ? QStringLiteral("a{sv}") : QStringLiteral("asa{sv}"));
    if (!uris.isEmpty())
        QCOMPARE(call.arguments.front().toStringList(), uris);
    const QVariantMap data = qdbus_cast<QVariantMap>(call.arguments.back());
    QVERIFY(PlatformData::fromMap(data) ==
            PlatformData({QStringLiteral("token"), QStringLiteral("id")}));
}

void SingleInstanceTest::startsAtTheSameTimeMakeOneFirst()
{
    constexpr int rounds = 5;
    constexpr int starts = 4;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::unique_ptr<Child>> children;
        QStringList given;
        for (int number = 0; number < starts; ++number) {
            given.append(QStringLiteral("file:///%1").arg(number));
            children.push_back(start({given.back()}));
        }
        Child *first = nullptr;
        for (int number = 0; number < starts; ++number) {
            const QString standing = children[size_t(number)]->line();
            if (standing == QStringLiteral("first")) {
                QVERIFY(first == nullptr);
                first = children[size_t(number)].get();
                given.removeOne(QStringLiteral("file:///%1").arg(number));
            } else {
                QCOMPARE(standing, QStringLiteral("handed over"));
            }
        }
        QVERIFY(first != nullptr);
        QStringList opened;
        for (int number = 1; number < starts; ++number)
            opened.append(first->line().split(QLatin1Char(' ')).back());
        std::sort(opened.begin(), opened.end());
        QCOMPARE(opened, given);
    }
}

void SingleInstanceTest::aLaterStartGoesOnAloneWhereTheFirstHangs()
{
    const auto first = child({QStringLiteral("hanging")});
    QCOMPARE(first->line(), QStringLiteral("first"));
    const auto second =
        child({QStringLiteral("start"), QStringLiteral("300"), QStringLiteral("file:///a")});
    QCOMPARE(second->line(), QStringLiteral("alone"));
    QVERIFY(!second->hasEnded());
    QByteArray errors;
    QTRY_VERIFY((errors += second->errors()).endsWith('\n'));
    QCOMPARE(errors.count("SingleInstance the running Vantorel does not answer: "), 1);
}

void SingleInstanceTest::aLaterStartSucceedsAFirstThatLeaves()
{
    const auto first = child({QStringLiteral("leaving")});
    QCOMPARE(first->line(), QStringLiteral("first"));
    const auto second = start({QStringLiteral("file:///a")});
    QCOMPARE(second->line(), QStringLiteral("first"));
    QCOMPARE(first->line(), QStringLiteral("leaving Open"));
    const auto third = start({QStringLiteral("file:///b")});
    QCOMPARE(second->line(), QStringLiteral("open token= id= file:///b"));
}

void SingleInstanceTest::aLaterStartSucceedsAFirstThatDied()
{
    const auto first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    first->kill();
    const auto second = start({QStringLiteral("file:///a")});
    QCOMPARE(second->line(), QStringLiteral("first"));
}

void SingleInstanceTest::aLaterStartGoesOnAloneWhereTheFirstRefuses()
{
    FakeService first(name, path);
    first.answer = FakeService::Answer::Refusal;
    QVERIFY(first.appear(bus_->connection()));
    const auto second = start({QStringLiteral("file:///a")});
    QCOMPARE(second->line(), QStringLiteral("alone"));
    QCOMPARE(first.calls.size(), size_t(1));
    QByteArray errors;
    QTRY_VERIFY((errors += second->errors()).endsWith('\n'));
    QVERIFY(errors.contains("SingleInstance the running Vantorel does not answer: not allowed"));
}

void SingleInstanceTest::aStartByTheBusGetsTheCallItWasStartedFor()
{
    const StartedByTheBus program;
    PrivateBus bus(program.services());
    QDBusMessage call = QDBusMessage::createMethodCall(
        name, path, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"));
    call << QStringList(QStringLiteral("file:///%FF")) << QVariantMap();
    const QDBusPendingCall pending = bus.connection().asyncCall(call);
    QTRY_VERIFY_WITH_TIMEOUT(pending.isFinished(), 30000);
    QVERIFY(pending.reply().type() == QDBusMessage::ReplyMessage);
    QTRY_COMPARE(program.said(), QByteArray("first\nopen token= id= file:///%FF\n"));
}

void SingleInstanceTest::aHandOverStartsNobody()
{
    const StartedByTheBus program;
    PrivateBus bus(program.services());
    const ApplicationHandOver::Answer answer =
        ApplicationHandOver::call(bus.connection().name(), {"/a"}, {}, std::chrono::seconds(20));
    QVERIFY(answer.outcome == ApplicationHandOver::Outcome::Unanswered);
    QVERIFY(!answer.cause.isEmpty());
    QVERIFY(!program.wasStarted());
}

void SingleInstanceTest::withoutABusTheStartGoesOnAlone()
{
    Child lonely(QStringLiteral("unix:path=/nowhere/bus"),
                 {QStringLiteral("start"), QStringLiteral("30000"), QStringLiteral("file:///a")});
    QCOMPARE(lonely.line(), QStringLiteral("alone"));
    QVERIFY(!lonely.hasEnded());
    QCOMPARE(lonely.errors().count("SingleInstance"), 0);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 2 && arguments.at(1) == QStringLiteral("child"))
        return runChild(arguments.mid(2));
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SingleInstanceTest.moc"
