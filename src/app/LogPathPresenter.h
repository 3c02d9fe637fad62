#pragma once

#include "platform/NotificationHub.h"
#include "support/LogPathCheck.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

class PreferencesView;
class QWidget;

/// The preference that names the log file: shows it, says beside it whether a log can be written
/// there and from when on it counts, and lets the user choose another. Nothing of it makes or
/// empties a file; one that is there is opened for writing, and closed again.
///
/// Thread:       main; the disk is asked on a pool thread
/// Holds weakly: the view, which outlives it
class LogPathPresenter : public QObject
{
    Q_OBJECT

  public:
    /// Lets the user name a file; calls `chosen` with an absolute path, or not at all.
    using Chooser = std::function<void(QWidget *window, const QString &current,
                                       const std::function<void(const QString &)> &chosen)>;

    LogPathPresenter(PreferencesView *view, QObject *parent);

    void setChooser(Chooser chooser) { chooser_ = std::move(chooser); }

    /// What is said of a path. `problem` is why lines are missing there, empty where none are.
    static QString remark(const QString &path, const LogPathCheck &check, bool countsAtOnce,
                          const QString &problem);

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    using Answered = std::function<void(const LogPathCheck &)>;

    void choose();
    void take(const QString &path);
    void review();
    void check(const QString &path, const Answered &answered);
    [[nodiscard]] static bool countsAtOnce(const QString &path);
    [[nodiscard]] static bool isOurs(const QString &path);
    [[nodiscard]] static QString problemOf(const QString &path);

    PreferencesView *view_;
    Chooser chooser_;
    NotificationHub::Token runEnd_;
    std::uint64_t reviews_ = 0;
    std::uint64_t takes_ = 0;
};
