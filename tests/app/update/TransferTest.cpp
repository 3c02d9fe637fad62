#include "app/update/Transfer.h"

#include "app/update/LoopbackServer.h"
#include "app/update/TestCertificate.h"

#include "platform/BackgroundQueue.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QSslServer>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <limits>
#include <optional>
#include <semaphore>

using namespace std::chrono_literals;
using End = Transfer::End;

Q_DECLARE_METATYPE(Transfer::End)

namespace {

/// Fetches one address, and keeps what comes.
struct Fetch
{
    explicit Fetch(const QUrl &url, std::int64_t largest = 1'000'000,
                   const Transfer::Proxies &proxies = {}, std::chrono::milliseconds silence = 20s)
        : transfer(std::make_unique<Transfer>(
              network, Transfer::Request{url, url, "Test/1", largest, silence, 0s, proxies},
              [this](const QByteArray &piece) {
                  body += piece;
                  return !stops;
              },
              [this](End how) {
                  ++ends;
                  end = how;
              }))
    {
    }

    bool stops = false;
    QByteArray body;
    int ends = 0;
    End end{};
    QNetworkAccessManager network;
    std::unique_ptr<Transfer> transfer;
};

/// A look-up that waits until the test lets it go on, and then leads to the server.
struct HeldLookUp
{
    explicit HeldLookUp(const LoopbackServer &server)
        : proxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"),
                quint16(server.url({}).port()))
    {
    }
    /// The thread must not find the test gone.
    ~HeldLookUp() { end(); }

    Transfer::Proxies proxies()
    {
        return [this](const QUrl &url) {
            asked = url;
            thread = QThread::currentThread();
            hasBegun = true;
            mayEnd.acquire();
            return QList<QNetworkProxy>{proxy};
        };
    }
    /// What has been found has come by then.
    void end()
    {
        mayEnd.release();
        BackgroundQueue::finish(60s);
        QCoreApplication::sendPostedEvents();
    }

    QNetworkProxy proxy;
    QUrl asked;
    QThread *thread = nullptr;
    std::atomic<bool> hasBegun = false;
    std::counting_semaphore<> mayEnd{0};
};

/// What it was is not to be read any more once it has gone: it is overwritten.
class GoneForGood : public Transfer
{
  public:
    using Transfer::Transfer;
    static void operator delete(void *memory, std::size_t size)
    {
        auto *const bytes = static_cast<volatile unsigned char *>(memory);
        std::fill(bytes, bytes + size, 0xEE);
        ::operator delete(memory);
    }
};

/// Answers with this, and ends or does not end the connection.
LoopbackServer::Answer answerOf(const QByteArray &bytes, bool ends = true)
{
    return [bytes, ends](QTcpSocket *socket) {
        socket->write(bytes);
        if (ends)
            socket->disconnectFromHost();
    };
}

QTcpServer *secureServer(const TestCertificate &certificate)
{
    auto *server = new QSslServer;
    server->setSslConfiguration(certificate.configuration());
    return server;
}

/// A name of nobody's: it is the proxy's to find it.
const QUrl elsewhere(QStringLiteral("https://vantorel.invalid/x"));
const QByteArray throughTheProxy = "CONNECT vantorel.invalid:443 HTTP/1.1\r\n";
const QString https = QStringLiteral("https");
const QString x = QStringLiteral("/x");

} // namespace

class TransferTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theServerLearnsNothingButTheAgent();
    void aServerWithATrustedCertificateIsAsked();
    void aServerWithACertificateOfNobodysIsNot();
    void aSecureConnectionIsNeverLeft_data();
    void aSecureConnectionIsNeverLeft();
    void anotherSecureAddressIsFollowed();
    void aRelativeRedirectionIsFollowed();
    void fiveRedirectionsAreFollowedAndNoMore();
    void whatComesWithARedirectionIsNotRead();
    void nothingButAllOfItIsTaken_data();
    void nothingButAllOfItIsTaken();
    void theLargestSizeIsStillTaken();
    void whoTakesThePiecesCanStop();
    void compressedBytesStayAsTheyAre();
    void anAddressThatIsNotAllowedIsNotAsked();
    void givenUpItSaysNothing();
    void aRefusalIsNotListenedToForLong_data();
    void aRefusalIsNotListenedToForLong();
    void itMayGoInItsEnd_data();
    void itMayGoInItsEnd();

    // Proxies
    void proxiesAreLookedUpOnAnotherThread();
    void theSystemsProxiesAreUsed();
    void givenUpDuringTheLookUpItAsksNobody();
    void aLookUpThatTakesTooLongIsGivenUp();
    void thisMachineIsReachedWithoutALookUp();
};

/// All that is sent, so that what Qt adds in another version is seen.
void TransferTest::theServerLearnsNothingButTheAgent()
{
    LoopbackServer server;
    server.answer("/x", "body");
    Fetch fetch(server.url(x));
    QTRY_COMPARE(fetch.ends, 1);
    QByteArrayList lines = server.requests().value(0).trimmed().split('\n');
    for (QByteArray &line : lines)
        line = line.trimmed();
    std::sort(lines.begin(), lines.end());
    const QByteArray host = server.url(x).authority().toLatin1();
    QCOMPARE(lines,
             QByteArrayList({"Accept-Encoding: identity", "Accept-Language: *",
                             "Cache-Control: no-cache", "Connection: Keep-Alive", "GET /x HTTP/1.1",
                             "Host: " + host, "Pragma: no-cache", "User-Agent: Test/1"}));
}

void TransferTest::aServerWithATrustedCertificateIsAsked()
{
    const TestCertificate certificate;
    const TestCertificate::Trust trust(certificate);
    LoopbackServer server(secureServer(certificate));
    server.answer("/x", "secure");
    Fetch fetch(server.url(x, https));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Done);
    QCOMPARE(fetch.body, QByteArray("secure"));
}

void TransferTest::aServerWithACertificateOfNobodysIsNot()
{
    LoopbackServer server(secureServer(TestCertificate()));
    server.answer("/x", "secure");
    Fetch fetch(server.url(x, https));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Unreachable);
    QCOMPARE(server.requests(), QByteArrayList());
}

void TransferTest::aSecureConnectionIsNeverLeft_data()
{
    QTest::addColumn<bool>("isOnThisMachine");
    QTest::newRow("for another machine") << false;
    QTest::newRow("for this one") << true;
}

void TransferTest::aSecureConnectionIsNeverLeft()
{
    QFETCH(bool, isOnThisMachine);
    const TestCertificate certificate;
    const TestCertificate::Trust trust(certificate);
    LoopbackServer server(secureServer(certificate));
    LoopbackServer plain;
    plain.answer("/x", "plain");
    server.redirect("/x", isOnThisMachine ? plain.url(x).toEncoded()
                                          : QByteArray("http://vantorel.invalid/x"));
    Fetch fetch(server.url(x, https));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::UnsafeAddress);
    QCOMPARE(fetch.body, QByteArray());
    QCOMPARE(plain.requests(), QByteArrayList());
}

void TransferTest::anotherSecureAddressIsFollowed()
{
    const TestCertificate certificate;
    const TestCertificate::Trust trust(certificate);
    LoopbackServer first(secureServer(certificate));
    LoopbackServer second(secureServer(certificate));
    first.redirect("/x", second.url(x, https).toEncoded());
    second.answer("/x", "moved");
    Fetch fetch(first.url(x, https));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Done);
    QCOMPARE(fetch.body, QByteArray("moved"));
}

void TransferTest::fiveRedirectionsAreFollowedAndNoMore()
{
    LoopbackServer server;
    for (int step = 1; step <= 6; ++step)
        server.redirect("/" + QByteArray::number(step), "/" + QByteArray::number(step - 1));
    server.answer("/0", "moved");
    Fetch five(server.url(QStringLiteral("/5")));
    QTRY_COMPARE(five.ends, 1);
    QCOMPARE(five.end, End::Done);
    QCOMPARE(five.body, QByteArray("moved"));
    Fetch six(server.url(QStringLiteral("/6")));
    QTRY_COMPARE(six.ends, 1);
    QCOMPARE(six.end, End::Refused);
    QCOMPARE(six.body, QByteArray());
    QCOMPARE(server.count("/0"), 1);
}

void TransferTest::whatComesWithARedirectionIsNotRead()
{
    LoopbackServer server;
    qint64 poured = 0;
    server.answer("/x", [&](QTcpSocket *socket) {
        socket->write("HTTP/1.1 302 Found\r\nLocation: /y\r\nConnection: close\r\n\r\n");
        LoopbackServer::pour(socket, 100'000'000, &poured);
    });
    server.answer("/y", "moved");
    Fetch fetch(server.url(x));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.body, QByteArray("moved"));
    QVERIFY(poured < 50'000'000);
}

void TransferTest::aRelativeRedirectionIsFollowed()
{
    LoopbackServer server;
    server.redirect("/x", "/y/z");
    server.answer("/y/z", "moved");
    Fetch fetch(server.url(x));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Done);
    QCOMPARE(fetch.body, QByteArray("moved"));
}

void TransferTest::nothingButAllOfItIsTaken_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::newRow("created") << QByteArray("201 Created");
    QTest::newRow("a part") << QByteArray("206 Partial Content");
    QTest::newRow("a choice") << QByteArray("300 Multiple Choices");
    QTest::newRow("a password is wanted") << QByteArray("401 Unauthorized");
    QTest::newRow("gone") << QByteArray("410 Gone");
    QTest::newRow("the server's own fault") << QByteArray("503 Service Unavailable");
}

void TransferTest::nothingButAllOfItIsTaken()
{
    QFETCH(QByteArray, status);
    LoopbackServer server;
    server.answer("/x", [status](QTcpSocket *socket) {
        socket->write("HTTP/1.1 " + status +
                      "\r\nWWW-Authenticate: Basic realm=\"x\"\r\n"
                      "Content-Length: 4\r\nConnection: close\r\n\r\nbody");
        socket->disconnectFromHost();
    });
    Fetch fetch(server.url(x));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Refused);
    QCOMPARE(fetch.body, QByteArray());
}

void TransferTest::theLargestSizeIsStillTaken()
{
    LoopbackServer server;
    server.answer("/x", QByteArray(1000, 'x'));
    Fetch fits(server.url(x), 1000);
    QTRY_COMPARE(fits.ends, 1);
    QCOMPARE(fits.end, End::Done);
    Fetch tooLarge(server.url(x), 999);
    QTRY_COMPARE(tooLarge.ends, 1);
    QCOMPARE(tooLarge.end, End::TooLarge);
}

void TransferTest::whoTakesThePiecesCanStop()
{
    LoopbackServer server;
    qint64 poured = 0;
    server.answer("/x", [&](QTcpSocket *socket) {
        socket->write(LoopbackServer::head());
        LoopbackServer::pour(socket, 100'000'000, &poured);
    });
    Fetch fetch(server.url(x), 100'000'000);
    fetch.stops = true;
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Stopped);
    QVERIFY(fetch.body.size() < 1'000'000);
}

void TransferTest::compressedBytesStayAsTheyAre()
{
    const QByteArray compressed =
        QByteArray::fromHex("1f8b08000000000000034b4c4a06002413e44803000000"); // not what it says
    LoopbackServer server;
    server.answer("/x", [&](QTcpSocket *socket) {
        socket->write("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nConnection: close\r\n\r\n" +
                      compressed);
        socket->disconnectFromHost();
    });
    Fetch fetch(server.url(x));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.body, compressed);
}

void TransferTest::anAddressThatIsNotAllowedIsNotAsked()
{
    Fetch fetch(QUrl(QStringLiteral("http://192.0.2.1/x")));
    QCOMPARE(fetch.ends, 0);
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::UnsafeAddress);
}

void TransferTest::givenUpItSaysNothing()
{
    LoopbackServer server;
    QPointer<QTcpSocket> connection;
    server.answer("/x", [&](QTcpSocket *socket) { connection = socket; });
    Fetch fetch(server.url(x));
    QTRY_VERIFY(connection);
    fetch.transfer.reset();
    QTRY_VERIFY(!connection);
    QCOMPARE(fetch.ends, 0);
}

void TransferTest::aRefusalIsNotListenedToForLong_data()
{
    QTest::addColumn<qint64>("size");
    QTest::newRow("many words") << qint64(900'000);
    QTest::newRow("words without end") << std::numeric_limits<qint64>::max();
}

void TransferTest::aRefusalIsNotListenedToForLong()
{
    QFETCH(qint64, size);
    LoopbackServer server;
    qint64 poured = 0;
    server.answer("/x", [&](QTcpSocket *socket) {
        socket->write("HTTP/1.1 404 Not Found\r\nConnection: close\r\n\r\n");
        LoopbackServer::pour(socket, size, &poured);
    });
    Fetch fetch(server.url(x));
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::Refused);
    QCOMPARE(fetch.body, QByteArray());
    QVERIFY(poured < 50'000'000);
}

void TransferTest::itMayGoInItsEnd_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<End>("end");
    QTest::newRow("done") << QByteArray("/good") << End::Done;
    QTest::newRow("told to be too large") << QByteArray("/long") << End::TooLarge;
    QTest::newRow("too large") << QByteArray("/longer than told") << End::TooLarge;
    QTest::newRow("stopped") << QByteArray("/stop") << End::Stopped;
    QTest::newRow("silent") << QByteArray("/silent") << End::TooSlow;
    QTest::newRow("refused") << QByteArray("/nowhere") << End::Refused;
    QTest::newRow("refused at length") << QByteArray("/chatter") << End::Refused;
    QTest::newRow("led in a circle") << QByteArray("/circle") << End::Refused;
    QTest::newRow("led away") << QByteArray("/away") << End::UnsafeAddress;
    QTest::newRow("hung up") << QByteArray("/cut") << End::Unreachable;
}

void TransferTest::itMayGoInItsEnd()
{
    QFETCH(QByteArray, path);
    LoopbackServer server;
    const QByteArray large(2000, 'x');
    server.answer("/good", "body");
    server.answer("/long", large);
    server.answer("/longer%20than%20told", answerOf(LoopbackServer::head() + large));
    server.answer("/stop", answerOf(LoopbackServer::head() + "stop"));
    server.answer("/silent", answerOf("", false));
    server.answer("/chatter", answerOf("HTTP/1.1 410 Gone\r\n\r\n" + large, false));
    server.redirect("/circle", "/circle");
    server.redirect("/away", "http://vantorel.invalid/");
    server.answer("/cut", answerOf(LoopbackServer::head(100) + "<"));
    const QUrl url = server.url(QString::fromLatin1(path));
    QNetworkAccessManager network;
    std::optional<End> ended;
    std::unique_ptr<GoneForGood> transfer;
    const std::chrono::milliseconds silence = path == "/silent" ? 300ms : 20s;
    transfer = std::make_unique<GoneForGood>(
        network, Transfer::Request{url, url, "Test/1", 1000, silence, 0s},
        [](const QByteArray &piece) { return piece != "stop"; },
        [&](End how) {
            transfer.reset();
            ended = how;
        });
    QTRY_VERIFY(ended);
    QTEST(*ended, "end");
}

void TransferTest::proxiesAreLookedUpOnAnotherThread()
{
    LoopbackServer server;
    HeldLookUp lookUp(server);
    Fetch fetch(elsewhere, 1000, lookUp.proxies());
    QTRY_VERIFY(lookUp.hasBegun);
    QCOMPARE(lookUp.asked, elsewhere);
    QVERIFY(lookUp.thread != QThread::currentThread());
    lookUp.end();
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(server.requests().size(), 1);
    QVERIFY(server.requests().first().startsWith(throughTheProxy));
}

/// By the variables that every system knows, without those by which a desktop's settings count.
void TransferTest::theSystemsProxiesAreUsed()
{
    LoopbackServer server;
    for (const char *name : {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_FULL_SESSION",
                             "GNOME_DESKTOP_SESSION_ID", "no_proxy", "NO_PROXY"})
        qunsetenv(name);
    QVERIFY(qputenv("https_proxy", server.url({}).toEncoded()));
    Fetch fetch(elsewhere);
    QTRY_COMPARE(fetch.ends, 1);
    qunsetenv("https_proxy");
    QCOMPARE(fetch.end, End::Unreachable);
    QCOMPARE(server.requests().size(), 1);
    QVERIFY(server.requests().first().startsWith(throughTheProxy));
}

void TransferTest::givenUpDuringTheLookUpItAsksNobody()
{
    LoopbackServer server;
    HeldLookUp lookUp(server);
    Fetch fetch(elsewhere, 1000, lookUp.proxies());
    QTRY_VERIFY(lookUp.hasBegun);
    fetch.transfer.reset();
    lookUp.end();
    Fetch next(server.url(x));
    QTRY_COMPARE(next.ends, 1);
    QCOMPARE(server.requests().size(), 1);
    QCOMPARE(server.count("/x"), 1);
    QCOMPARE(fetch.ends, 0);
}

void TransferTest::aLookUpThatTakesTooLongIsGivenUp()
{
    LoopbackServer server;
    HeldLookUp lookUp(server);
    Fetch fetch(elsewhere, 1000, lookUp.proxies(), 50ms);
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.end, End::TooSlow);
    lookUp.end();
    Fetch next(server.url(x));
    QTRY_COMPARE(next.ends, 1);
    QCOMPARE(server.requests().size(), 1);
    QCOMPARE(server.count("/x"), 1);
    QCOMPARE(fetch.ends, 1);
}

void TransferTest::thisMachineIsReachedWithoutALookUp()
{
    LoopbackServer server;
    server.answer("/x", "body");
    LoopbackServer proxy;
    HeldLookUp lookUp(proxy);
    Fetch fetch(server.url(x), 1000, lookUp.proxies());
    QTRY_COMPARE(fetch.ends, 1);
    QCOMPARE(fetch.body, QByteArray("body"));
    QVERIFY(lookUp.asked.isEmpty());
    QVERIFY(proxy.requests().isEmpty());
}

QTEST_MAIN(TransferTest)
#include "TransferTest.moc"
