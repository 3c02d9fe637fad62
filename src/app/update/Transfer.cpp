#include "app/update/Transfer.h"

#include "app/update/UpdateAddress.h"
#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QPointer>

#include <utility>

namespace {

constexpr qint64 bufferSize = 256 * 1024;
constexpr int mostRedirections = 5;
constexpr int ok = 200; // RFC 9110, section 15
constexpr int firstError = 400;

QNetworkRequest requestFor(const QUrl &url, const QByteArray &agent)
{
    QNetworkRequest request(url);
    request.setRawHeader("User-Agent", agent);
    request.setRawHeader("Accept-Encoding", "identity");
    // Qt would tell the language and the country.
    request.setRawHeader("Accept-Language", "*");
    // Qt loses its way when one redirection leads to the next, so they are followed here.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    // A single file gains nothing from it.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    return request;
}

QList<QNetworkProxy> systemProxies(const QUrl &url)
{
    return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
}

/// Those that have been looked up. Without it, Qt would ask the system again, and wait.
class KnownProxies : public QNetworkProxyFactory
{
  public:
    explicit KnownProxies(QList<QNetworkProxy> proxies) : proxies_(std::move(proxies)) {}
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery & /*query*/) override
    {
        return proxies_;
    }

  private:
    QList<QNetworkProxy> proxies_;
};

} // namespace

Transfer::Transfer(QNetworkAccessManager &network, Request request, Take take, Ended ended)
    : network_(network), request_(std::move(request)), take_(std::move(take)),
      ended_(std::move(ended))
{
    for (QTimer *timer : {&silence_, &whole_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this] { end(End::TooSlow); });
    }
    if (!UpdateAddress::isAllowed(request_.url, request_.feed)) {
        QTimer::singleShot(0, this, [this] { end(End::UnsafeAddress); });
        return;
    }
    if (request_.whole.count() > 0)
        whole_.start(request_.whole);
    lookUpProxies(request_.url);
}

Transfer::~Transfer()
{
    release();
}

void Transfer::lookUpProxies(const QUrl &url)
{
    silence_.start(request_.silence);
    if (UpdateAddress::isOnThisMachine(url)) {
        ask(url, {QNetworkProxy(QNetworkProxy::NoProxy)});
        return;
    }
    const Proxies proxies = request_.proxies ? request_.proxies : systemProxies;
    BackgroundQueue::submit([self = QPointer(this), url, proxies] {
        MainThread::post([self, url, found = proxies(url)] {
            if (self && self->ended_)
                self->ask(url, found);
        });
    });
}

void Transfer::ask(const QUrl &url, const QList<QNetworkProxy> &proxies)
{
    network_.setProxyFactory(new KnownProxies(proxies));
    reply_ = network_.get(requestFor(url, request_.agent));
    reply_->setReadBufferSize(bufferSize);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &Transfer::look);
    connect(reply_, &QNetworkReply::readyRead, this, &Transfer::read);
    connect(reply_, &QNetworkReply::finished, this, &Transfer::finished);
    silence_.start(request_.silence);
}

int Transfer::status() const
{
    return reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void Transfer::look()
{
    const QVariant target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (target.isValid())
        follow(reply_->url().resolved(target.toUrl()));
    else if (status() == ok &&
             reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong() > request_.largest)
        end(End::TooLarge);
}

void Transfer::follow(const QUrl &url)
{
    if (!UpdateAddress::isAllowed(url, request_.feed)) {
        end(End::UnsafeAddress);
    } else if (++redirections_ > mostRedirections) {
        end(End::Refused);
    } else {
        letGo();
        lookUpProxies(url);
    }
}

/// Whether it goes on. If not, this may be gone. What comes with a refusal is passed over, for an
/// answer that is not read never ends.
bool Transfer::read()
{
    const bool isWanted = status() == ok;
    while (reply_->bytesAvailable() > 0) {
        if (isWanted)
            silence_.start(request_.silence);
        const QByteArray piece = reply_->read(bufferSize);
        received_ += piece.size();
        const bool isTooLarge = received_ > request_.largest;
        if (isTooLarge || (isWanted && !take_(piece))) {
            end(!isWanted ? End::Refused : isTooLarge ? End::TooLarge : End::Stopped);
            return false;
        }
    }
    return true;
}

void Transfer::finished()
{
    if (!read())
        return;
    const bool isWhole = reply_->error() == QNetworkReply::NoError;
    if (isWhole && status() == ok)
        end(End::Done);
    else
        end(isWhole || status() >= firstError ? End::Refused : End::Unreachable);
}

/// The last that is done in any operation: behind it, this may be gone.
void Transfer::end(End end)
{
    release();
    if (const Ended ended = std::exchange(ended_, nullptr))
        ended(end);
}

void Transfer::release()
{
    silence_.stop();
    whole_.stop();
    if (reply_)
        letGo();
}

void Transfer::letGo()
{
    QNetworkReply *const reply = std::exchange(reply_, nullptr);
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
}
