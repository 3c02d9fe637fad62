#include "app/UpdatePresenter.h"

#include "app/Announcer.h"
#include "support/BytesFormatter.h"
#include "ui/DialogBox.h"
#include "ui/DialogBoxes.h"
#include "ui/TextLabel.h"

#include <QLocale>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto whenToTryAgain = 30s;
constexpr auto whenToTryAgainIfAsked = 1s;
// A dialog has no scroll bar.
constexpr int longestNotes = 600; // characters
constexpr int mostLines = 12;
constexpr std::int64_t quarters = 4;

/// The first characters, without half of one at the end.
QString beginning(const QString &text, qsizetype most)
{
    QString start = text.left(most);
    if (!start.isEmpty() && start.back().isHighSurrogate())
        start.chop(1);
    return start;
}

} // namespace

UpdatePresenter::UpdatePresenter(Updater::Settings settings, IsBusy isBusy, Reveal reveal,
                                 QObject *parent)
    : QObject(parent), isBusy_(std::move(isBusy))
{
    UpdaterInterface interface;
    interface.offer = [this](const UpdateOffer &offer, const UpdaterInterface::AnswerCall &answer) {
        this->offer(offer, answer);
    };
    interface.downloadStarted = [this](const UpdateOffer &offer) { showDownload(offer); };
    interface.progress = [this](std::int64_t received, std::int64_t total) {
        showProgress(received, total);
    };
    interface.downloadEnded = [this] { endDownload(); };
    interface.reveal = std::move(reveal);
    interface.say = [this](const QString &sentence) { say(sentence); };
    updater_ = std::make_unique<Updater>(std::move(settings), std::move(interface));
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &UpdatePresenter::goOnWhenItSuits);
}

UpdatePresenter::~UpdatePresenter() = default;

void UpdatePresenter::offer(const UpdateOffer &offer, const UpdaterInterface::AnswerCall &answer)
{
    const bool wouldSupplant = !offer.wasAskedFor && waiting_ && waiting_->wasAskedFor;
    if (wouldSupplant || isBusy_()) {
        answer(UpdaterInterface::Answer::Later);
        if (!wouldSupplant)
            wait({offer.wasAskedFor, {}});
        return;
    }
    waiting_.reset();
    answer(ask(offer));
}

void UpdatePresenter::say(const QString &sentence)
{
    if (isBusy_()) {
        wait({true, sentence});
        return;
    }
    waiting_.reset();
    DialogBoxes::alertBoxDefault(tr("Vantorel Update"), sentence);
}

/// What the updater has found out since takes the place of what waits; the question stays.
void UpdatePresenter::wait(Waiting waiting)
{
    waiting.wasAskedFor = waiting.wasAskedFor || (waiting_ && waiting_->wasAskedFor);
    waiting_ = std::move(waiting);
    retry_.start(waiting_->wasAskedFor ? whenToTryAgainIfAsked : whenToTryAgain);
}

void UpdatePresenter::goOnWhenItSuits()
{
    if (!waiting_)
        return;
    if (isBusy_()) {
        wait(*waiting_);
        return;
    }
    const Waiting waited = *std::exchange(waiting_, std::nullopt);
    if (!waited.sentence.isEmpty())
        say(waited.sentence);
    else if (waited.wasAskedFor)
        updater_->checkForUpdates();
    else
        updater_->checkForUpdatesInBackground();
}

/// A dialog that was closed in any other way has not been answered.
UpdaterInterface::Answer UpdatePresenter::ask(const UpdateOffer &offer)
{
    DialogBox dialog(tr("A new version of Vantorel is available"), offerText(offer));
    dialog.addButtonWithTitle(tr("Download"));
    dialog.addButtonWithTitle(tr("Later"));
    dialog.addButtonWithTitle(tr("Skip This Version"));
    // What nobody asked for must not be taken for a key that was meant for something else.
    dialog.activeButton(offer.wasAskedFor ? 1 : 2);
    switch (dialog.runModal()) {
    case DialogGeometry::FirstButton:
        return UpdaterInterface::Answer::Download;
    case DialogGeometry::ThirdButton:
        return UpdaterInterface::Answer::SkipThisVersion;
    default:
        return UpdaterInterface::Answer::Later;
    }
}

QString UpdatePresenter::offerText(const UpdateOffer &offer)
{
    QString text = offer.date.isValid()
                       ? tr("Version %1 of %2")
                             .arg(offer.version,
                                  QLocale::c().toString(offer.date, QStringLiteral("d MMMM yyyy")))
                       : tr("Version %1").arg(offer.version);
    QStringList lines = offer.notes.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const bool isCut = lines.size() > mostLines || offer.notes.size() > longestNotes;
    QString notes =
        beginning(lines.mid(0, mostLines).join(QLatin1Char('\n')), longestNotes).trimmed();
    if (isCut)
        notes += QChar(0x2026);
    if (!notes.isEmpty())
        text += QStringLiteral("\n\n") + notes;
    return text;
}

QString UpdatePresenter::progressText(std::int64_t received, std::int64_t total)
{
    if (total > 0 && received >= total)
        return tr("Checking the signature\u2026");
    return tr("%1 of %2")
        .arg(BytesFormatter::formatBytes(double(received)),
             BytesFormatter::formatBytes(double(total)));
}

void UpdatePresenter::showDownload(const UpdateOffer &offer)
{
    hasEnded_ = false;
    DialogBox dialog(tr("Downloading Vantorel %1").arg(offer.version),
                     progressText(0, offer.bytes));
    dialog.addButtonWithTitle(tr("Cancel"));
    dialog.activeButton(1);
    Announcer announcer(&dialog);
    announcer_ = &announcer;
    announcedQuarters_ = 0;
    download_ = &dialog;
    dialog.runModal();
    if (!hasEnded_)
        updater_->cancelDownload();
}

void UpdatePresenter::showProgress(std::int64_t received, std::int64_t total)
{
    if (!download_)
        return;
    const QString text = progressText(received, total);
    download_->infoTextfield()->setText(text);
    download_->setAccessibleDescription(text);
    const std::int64_t reached = total > 0 ? quarters * received / total : 0;
    if (reached > std::exchange(announcedQuarters_, reached))
        announcer_->announce(text);
}

void UpdatePresenter::endDownload()
{
    hasEnded_ = true;
    if (download_)
        download_->closeWindow();
}
