#include "app/UpdatePresenter.h"

#include "support/BytesFormatter.h"
#include "ui/DialogBox.h"
#include "ui/DialogBoxes.h"
#include "ui/TextLabel.h"

#include <QLocale>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto whenToAskAgain = 30s;
// A dialog has no scroll bar.
constexpr int longestNotes = 600; // characters
constexpr int mostLines = 12;

} // namespace

UpdatePresenter::UpdatePresenter(Updater::Settings settings, IsBusy isBusy, Reveal reveal,
                                 QObject *parent)
    : QObject(parent), isBusy_(std::move(isBusy))
{
    UpdaterInterface interface;
    interface.offer = [this](const UpdateOffer &offer, UpdaterInterface::AnswerCall answer) {
        this->offer(offer, std::move(answer));
    };
    interface.downloadStarted = [this](const UpdateOffer &offer) { showDownload(offer); };
    interface.progress = [this](std::int64_t received, std::int64_t total) {
        showProgress(received, total);
    };
    interface.downloadEnded = [this] { endDownload(); };
    interface.reveal = std::move(reveal);
    interface.say = [](const QString &sentence) {
        DialogBoxes::alertBoxDefault(tr("Vantorel Update"), sentence);
    };
    updater_ = std::make_unique<Updater>(std::move(settings), std::move(interface));
    retry_.setInterval(whenToAskAgain);
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &UpdatePresenter::offerWhenItSuits);
}

UpdatePresenter::~UpdatePresenter() = default;

void UpdatePresenter::offer(const UpdateOffer &offer, UpdaterInterface::AnswerCall answer)
{
    offer_ = offer;
    answer_ = std::move(answer);
    offerWhenItSuits();
}

void UpdatePresenter::offerWhenItSuits()
{
    if (!answer_)
        return;
    if (!offer_.wasAskedFor && isBusy_()) {
        retry_.start();
        return;
    }
    retry_.stop();
    if (!offer_.wasAskedFor && !updater_->automaticallyChecksForUpdates()) {
        std::exchange(answer_, {})(UpdaterInterface::Answer::Later);
        return;
    }
    const UpdaterInterface::AnswerCall answer = std::exchange(answer_, {});
    answer(ask(offer_));
}

/// A dialog that was closed in any other way has not been answered.
UpdaterInterface::Answer UpdatePresenter::ask(const UpdateOffer &offer)
{
    DialogBox dialog(tr("A new version of Vantorel is there"), offerText(offer));
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
    QString notes = lines.mid(0, mostLines).join(QLatin1Char('\n')).left(longestNotes).trimmed();
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
    download_ = &dialog;
    dialog.runModal();
    if (!hasEnded_)
        updater_->cancelDownload();
}

void UpdatePresenter::showProgress(std::int64_t received, std::int64_t total)
{
    if (download_)
        download_->infoTextfield()->setText(progressText(received, total));
}

void UpdatePresenter::endDownload()
{
    hasEnded_ = true;
    if (download_)
        download_->closeWindow();
}
