#include "app/update/UpdateDownload.h"

#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"
#include "platform/PathBytes.h"
#include "platform/SystemError.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <utility>

using namespace std::chrono_literals;

UpdateDownload::UpdateDownload(QNetworkAccessManager &network, Plan plan, Listener listener)
    : plan_(std::move(plan)), listener_(std::move(listener)),
      self_(std::make_shared<UpdateDownload *>(this))
{
    QDir().mkpath(QFile::decodeName(plan_.folder));
    file_ = UnfinishedFile::make(plan_.folder, plan_.stem + plan_.extension, error_, plan_.kind);
    if (file_)
        transfer_ = std::make_unique<Transfer>(
            network, plan_.request, [this](const QByteArray &piece) { return take(piece); },
            [this](Transfer::End end) { post([this, end] { transferEnded(end); }); });
    else
        post([this] { notWritten(error_); });
}

UpdateDownload::~UpdateDownload()
{
    if (file_)
        file_->discard();
}

/// Runs the call later, if this is still there.
void UpdateDownload::post(std::function<void()> call)
{
    MainThread::post([weak = std::weak_ptr(self_), call = std::move(call)] {
        if (const auto self = weak.lock())
            call();
    });
}

bool UpdateDownload::take(const QByteArray &piece)
{
    error_ = file_->write(piece);
    received_ += piece.size();
    tellProgress();
    return error_ == 0;
}

void UpdateDownload::tellProgress()
{
    const std::int64_t hundredths = received_ * 100 / plan_.request.largest;
    if (std::exchange(toldHundredths_, hundredths) != hundredths)
        listener_.progress(received_, plan_.request.largest);
}

UpdateOutcome UpdateDownload::outcomeOf(Transfer::End end, UpdateOutcome whereTooLarge)
{
    switch (end) {
    case Transfer::End::Refused:
        return UpdateOutcome::Refused;
    case Transfer::End::TooSlow:
        return UpdateOutcome::TooSlow;
    case Transfer::End::TooLarge:
        return whereTooLarge;
    case Transfer::End::UnsafeAddress:
        return UpdateOutcome::UnsafeAddress;
    default:
        return UpdateOutcome::Unreachable;
    }
}

std::chrono::milliseconds UpdateDownload::longestTime(std::int64_t bytes, std::int64_t leastRate,
                                                      std::chrono::milliseconds grace)
{
    const std::chrono::milliseconds most = 24h;
    const std::int64_t seconds = std::min<std::int64_t>(bytes / leastRate, most / 1s);
    return std::min(most, seconds * 1s + grace);
}

void UpdateDownload::transferEnded(Transfer::End end)
{
    if (error_)
        notWritten(error_);
    else if (end != Transfer::End::Done)
        this->end({outcomeOf(end, UpdateOutcome::WrongLength), {}, {}});
    else if (received_ != plan_.request.largest)
        this->end({UpdateOutcome::WrongLength, {}, {}});
    else
        check();
}

/// The file goes along with the answer, so that it is closed where it was opened.
void UpdateDownload::check()
{
    BackgroundQueue::submit([weak = std::weak_ptr(self_), file = file_, key = plan_.key,
                             signature = plan_.signature, length = received_]() mutable {
        const auto content = file->content(length);
        const bool isSigned = content && key.verifies(*content, signature);
        const int error = !content ? EIO : isSigned ? file->sync() : 0;
        MainThread::post([weak = std::move(weak), file = std::move(file), isSigned, error] {
            if (const auto self = weak.lock())
                (*self)->checked(isSigned, error);
        });
    });
}

void UpdateDownload::checked(bool isSigned, int error)
{
    if (error)
        notWritten(error);
    else if (isSigned)
        keep();
    else
        end({UpdateOutcome::WrongSignature, {}, {}});
}

void UpdateDownload::keep()
{
    QByteArray name;
    if (const int error = file_->keep(plan_.stem, plan_.extension, name))
        notWritten(error);
    else
        end({std::nullopt, {}, FileUrl(PathBytes::join(plan_.folder, name))});
}

void UpdateDownload::notWritten(int error)
{
    end({UpdateOutcome::NotWritten, SystemError::text(error), {}});
}

void UpdateDownload::end(const Result &result)
{
    const auto ended = std::exchange(listener_.ended, nullptr);
    ended(result);
}
