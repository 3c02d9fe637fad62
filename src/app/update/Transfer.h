#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <cstdint>
#include <functional>

class QNetworkAccessManager;
class QNetworkReply;

/// One file fetched from a server, piece by piece, within limits. Begins when it is made; given up
/// when it goes.
///
/// Follows up to five redirections where UpdateAddress allows them, sends and keeps no cookies, and
/// asks for the bytes as they are: what a server compresses all the same arrives compressed, so
/// that the limit counts what is received.
///
/// Thread:       main
/// Holds weakly: the network, which outlives it
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
    };
    /// Answers false to stop.
    using Take = std::function<bool(const QByteArray &piece)>;
    /// Called once, last, and never from inside the constructor; the transfer may go in it.
    using Ended = std::function<void(End)>;

    Transfer(QNetworkAccessManager &network, Request request, Take take, Ended ended);
    ~Transfer() override;

  private:
    void ask(const QUrl &url);
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
    QNetworkReply *reply_ = nullptr; ///< none once it has ended
    std::int64_t received_ = 0;
    int redirections_ = 0;
    QTimer silence_;
    QTimer whole_;
};
