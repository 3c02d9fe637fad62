#pragma once

#include "app/update/Updater.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>

class DialogBox;

/// Shows what the updater finds, in dialogs: an offer, a download's progress, the answer to what
/// was asked for. An offer that nobody asked for waits until no run is busy and no other dialog is
/// open.
///
/// Thread: main
/// Owns:   the updater, and the dialog that shows a download
/// Blocks: in its dialogs, with event loops of their own
class UpdatePresenter : public QObject
{
    Q_OBJECT

  public:
    /// When an offer that nobody asked for would disturb.
    using IsBusy = std::function<bool()>;
    using Reveal = std::function<void(const FileUrl &)>;

    UpdatePresenter(Updater::Settings settings, IsBusy isBusy, Reveal reveal,
                    QObject *parent = nullptr);
    ~UpdatePresenter() override;

    [[nodiscard]] Updater &updater() { return *updater_; }
    [[nodiscard]] bool hasWaitingOffer() const { return bool(answer_); }
    /// Shows the offer that waits, or tries again later.
    void offerWhenItSuits();

    /// "Version 1.2.0 of 21 November 2026", the notes below it. Pure.
    static QString offerText(const UpdateOffer &offer);
    /// "1.20 MB of 40.00 MB". Pure.
    static QString progressText(std::int64_t received, std::int64_t total);

  private:
    void offer(const UpdateOffer &offer, UpdaterInterface::AnswerCall answer);
    [[nodiscard]] UpdaterInterface::Answer ask(const UpdateOffer &offer);
    void showDownload(const UpdateOffer &offer);
    void showProgress(std::int64_t received, std::int64_t total);
    void endDownload();

    IsBusy isBusy_;
    std::unique_ptr<Updater> updater_;
    UpdateOffer offer_; ///< that waits
    UpdaterInterface::AnswerCall answer_;
    QTimer retry_;
    QPointer<DialogBox> download_;
    bool hasEnded_ = false;
};
