#pragma once

#include <QByteArray>
#include <QHash>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <functional>

/// An HTTP server of the test's own on the loopback interface. Each path has what answers it; what
/// has none is not found.
class LoopbackServer
{
  public:
    using Answer = std::function<void(QTcpSocket *)>;

    explicit LoopbackServer(QTcpServer *server = new QTcpServer) : server_(server)
    {
        QObject::connect(server, &QTcpServer::pendingConnectionAvailable, server,
                         [this] { accept(); });
        server->listen(QHostAddress::LocalHost);
    }

    [[nodiscard]] QUrl url(const QString &path,
                           const QString &scheme = QStringLiteral("http")) const
    {
        return QUrl(
            QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(server_->serverPort()).arg(path));
    }
    void answer(const QByteArray &path, Answer answer) { answers_[path] = std::move(answer); }
    void answer(const QByteArray &path, const QByteArray &body)
    {
        answers_[path] = [body](QTcpSocket *socket) {
            socket->write(head(body.size()) + body);
            socket->disconnectFromHost();
        };
    }
    void redirect(const QByteArray &path, const QByteArray &target)
    {
        answers_[path] = [target](QTcpSocket *socket) {
            socket->write("HTTP/1.1 302 Found\r\nLocation: " + target +
                          "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
            socket->disconnectFromHost();
        };
    }
    [[nodiscard]] const QByteArrayList &requests() const { return requests_; }
    [[nodiscard]] int count(const QByteArray &path) const
    {
        int count = 0;
        for (const QByteArray &request : requests_)
            count += request.startsWith("GET " + path + ' ') ? 1 : 0;
        return count;
    }

    /// Without a size the body ends with the connection.
    static QByteArray head(qint64 size = -1)
    {
        const QByteArray length =
            size < 0 ? QByteArray() : "Content-Length: " + QByteArray::number(size) + "\r\n";
        return "HTTP/1.1 200 OK\r\n" + length + "Connection: close\r\n\r\n";
    }
    /// Keeps the connection busy with as much of `size` as the other side takes.
    static void pour(QTcpSocket *socket, qint64 size, qint64 *poured)
    {
        const QByteArray piece(64 * 1024, ' ');
        const auto more = [socket, piece, size, poured] {
            while (socket->bytesToWrite() < 2 * piece.size() && *poured < size)
                *poured += socket->write(piece);
            if (*poured >= size)
                socket->disconnectFromHost();
        };
        QObject::connect(socket, &QTcpSocket::bytesWritten, socket, more);
        more();
    }

  private:
    void accept()
    {
        while (QTcpSocket *socket = server_->nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket,
                             [this, socket, request = QByteArray()]() mutable {
                                 request += socket->readAll();
                                 if (request.endsWith("\r\n\r\n"))
                                     serve(socket, std::exchange(request, {}));
                             });
        }
    }
    void serve(QTcpSocket *socket, const QByteArray &request)
    {
        requests_.append(request);
        const QByteArray path = request.split(' ').value(1);
        if (answers_.contains(path)) {
            const Answer answer = answers_[path];
            answer(socket);
        } else {
            socket->write("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n"
                          "Connection: close\r\n\r\nnone");
            socket->disconnectFromHost();
        }
    }

    std::unique_ptr<QTcpServer> server_;
    QHash<QByteArray, Answer> answers_;
    QByteArrayList requests_;
};
