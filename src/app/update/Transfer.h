#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <cstdint>
#include <functional>

class QNetworkAccessManager;
class QNetworkProxy;
class QNetworkReply;

/// One file fetched from a server, piece by piece, within limits. Begins when it is made; given up
/// when it goes.
///
/// Follows up to five redirections where UpdateAddress allows them, sends and keeps no cookies, and
/// asks for the bytes as they are: what a server compresses all the same arrives compressed, so
/// that the limit counts what is received.
///
/// Which proxies lead to a server is looked up first, on another thread: for proxies that are found
/// automatically the system loads and runs a script. This machine itself is reached without.
///
/// Thread:       main; looking up proxies: a pool thread
/// Holds weakly: the network, which outlives it, and whose proxies are this one's for the time
/// Blocks:       never
/// Failure:      told as the end; the pieces that came before it are worth nothing
class Transfer : public QObject
{
    Q_OBJECT

  public:
    enum class End {
        Done,
        Unreachable,
        Refused, ///< anything but 200 OK
        TooSlow,
        TooLarge,
        UnsafeAddress,
        Stopped ///< by the one who takes the pieces
    };
    /// The proxies by one of which an address is reached, the best one first.
    using Proxies = std::function<QList<QNetworkProxy>(const QUrl &)>;
    struct Request
    {
        QUrl url;
        QUrl feed; ///< by which addresses are judged
        QByteArray agent;
        std::int64_t largest = 0; ///< bytes
        /// How long nothing may come.
        std::chrono::milliseconds silence{};
        /// How long all of it may take; 0: as long as it wants.
        std::chrono::milliseconds whole{};
        Proxies proxies{}; ///< called on a pool thread; none: the system's
    };
    /// Answers false to stop.
    using Take = std::function<bool(const QByteArray &piece)>;
    /// Called once, last, and never from inside the constructor; the transfer may go in it.
    using Ended = std::function<void(End)>;

    Transfer(QNetworkAccessManager &network, Request request, Take take, Ended ended);
    ~Transfer() override;

  private:
    void lookUpProxies(const QUrl &url);
    void ask(const QUrl &url, const QList<QNetworkProxy> &proxies);
    void look();
    void follow(const QUrl &url);
    bool read();
    void finished();
    void end(End end);
    void release();
    void letGo();
    [[nodiscard]] int status() const;

    QNetworkAccessManager &network_;
    Request request_;
    Take take_;
    Ended ended_;
    QNetworkReply *reply_ = nullptr; ///< none while proxies are looked up, and once it has ended
    std::int64_t received_ = 0;
    int redirections_ = 0;
    QTimer silence_;
    QTimer whole_;
};
