#pragma once

#include "app/update/Updater.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class Announcer;
class DialogBox;

/// Shows what the updater finds, in dialogs: an offer, a download's progress, the answer to what
/// was asked for. As long as that would disturb, it waits: a sentence as it is, an offer as a check
/// that is made again then, since what was offered may be withdrawn or not wanted any more.
///
/// Thread: main
/// Owns:   the updater, and the dialog that shows a download
/// Blocks: in its dialogs, with event loops of their own
class UpdatePresenter : public QObject
{
    Q_OBJECT

  public:
    /// When a dialog would disturb, one that was asked for, too.
    using IsBusy = std::function<bool()>;
    using Reveal = std::function<void(const FileUrl &)>;

    UpdatePresenter(Updater::Settings settings, IsBusy isBusy, Reveal reveal,
                    QObject *parent = nullptr);
    ~UpdatePresenter() override;

    [[nodiscard]] Updater &updater() { return *updater_; }
    [[nodiscard]] bool isWaiting() const { return waiting_.has_value(); }
    /// Goes on with what waits, or tries again later.
    void goOnWhenItSuits();
    /// One sentence in a dialog, now or as soon as it suits.
    void say(const QString &sentence);

    /// "Version 1.2.0 of 21 November 2026", the notes below it. Pure.
    static QString offerText(const UpdateOffer &offer);
    /// "1.20 MB of 40.00 MB". Pure.
    static QString progressText(std::int64_t received, std::int64_t total);

  private:
    struct Waiting
    {
        bool wasAskedFor = false;
        QString sentence; ///< empty: an offer
    };

    void offer(const UpdateOffer &offer, const UpdaterInterface::AnswerCall &answer);
    [[nodiscard]] static UpdaterInterface::Answer ask(const UpdateOffer &offer);
    void wait(Waiting waiting);
    void showDownload(const UpdateOffer &offer);
    void showProgress(std::int64_t received, std::int64_t total);
    void endDownload();

    IsBusy isBusy_;
    std::unique_ptr<Updater> updater_;
    std::optional<Waiting> waiting_; ///< what the updater told last
    QTimer retry_;
    QPointer<DialogBox> download_;
    QPointer<Announcer> announcer_; ///< of the download
    std::int64_t announcedQuarters_ = 0;
    bool hasEnded_ = false;
};
