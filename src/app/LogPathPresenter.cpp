#include "app/LogPathPresenter.h"

#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"
#include "platform/UserDefaults.h"
#include "support/Logger.h"
#include "ui/DialogBoxes.h"
#include "ui/PathField.h"
#include "ui/PreferencesView.h"

#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QSettings>

namespace {

const QString logPathKey = QStringLiteral("logFilePath");

void showFileDialog(QWidget *window, const QString &current,
                    const std::function<void(const QString &)> &chosen)
{
    // The dialog would keep the folders that it showed in settings of Qt's own; there it cannot.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
    auto *dialog = new QFileDialog(window, LogPathPresenter::tr("Choose a log file"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(current);
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog, chosen);
    dialog->open();
}

} // namespace

LogPathPresenter::LogPathPresenter(PreferencesView *view, QObject *parent)
    : QObject(parent), view_(view), chooser_(showFileDialog)
{
    connect(view_, &PreferencesView::logPathTaken, this, &LogPathPresenter::take);
    connect(view_, &PreferencesView::chooseLogClicked, this, &LogPathPresenter::choose);
    connect(&UserDefaults::standard(), &UserDefaults::valueChanged, this,
            [this](const QString &changed) {
                if (changed == logPathKey)
                    review();
            });
    // The first run settles which file this start logs to.
    runEnd_ = NotificationHub::shared().observe(NotificationName::runDidEnd,
                                                [this](const auto &) { review(); });
    view_->installEventFilter(this);
    review();
}

/// The disk may have become another one while the view was away. A window that is only minimised
/// keeps what is half typed.
bool LogPathPresenter::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == view_ && event->type() == QEvent::Show && !event->spontaneous())
        review();
    return QObject::eventFilter(watched, event);
}

void LogPathPresenter::review()
{
    const QString path = UserDefaults::standard().text(logPathKey);
    view_->pathField()->setText(path);
    view_->setLogRemark(QString());
    if (path.isEmpty())
        return;
    check(path, [this, path, review = ++reviews_](const LogPathCheck &answer) {
        if (review == reviews_)
            view_->setLogRemark(remark(path, answer, countsAtOnce(path), problemOf(path)));
    });
}

/// A disk that does not answer must not stop the window.
void LogPathPresenter::check(const QString &path, const Answered &answered)
{
    BackgroundQueue::submit(
        [self = QPointer<LogPathPresenter>(this), bytes = QFile::encodeName(path), answered] {
            MainThread::post([self, answered, answer = LogPathCheck::of(bytes)] {
                if (self)
                    answered(answer);
            });
        });
}

bool LogPathPresenter::countsAtOnce(const QString &path)
{
    const Logger &logger = Logger::shared();
    return !logger.isSetUp() || isOurs(path);
}

/// The file that is logged to already.
bool LogPathPresenter::isOurs(const QString &path)
{
    const Logger &logger = Logger::shared();
    return logger.isSetUp() && logger.isLogFileOpen() &&
           logger.logFilePath() == QFile::encodeName(path);
}

/// Why lines of the log that is being written are missing.
QString LogPathPresenter::problemOf(const QString &path)
{
    return isOurs(path) ? Logger::shared().logFileProblem() : QString();
}

QString LogPathPresenter::remark(const QString &path, const LogPathCheck &check, bool countsAtOnce,
                                 const QString &problem)
{
    if (path.isEmpty())
        return {};
    if (!check.isWritable())
        return check.sentence();
    if (!problem.isEmpty())
        return tr("this log is not complete: %1").arg(problem);
    if (check.answer == LogPathCheck::Answer::Existing && countsAtOnce && !isOurs(path))
        return tr("this file is there and is emptied when the log begins");
    return countsAtOnce ? tr("holds no names of erased files")
                        : tr("holds no names of erased files; counts from the next start");
}

void LogPathPresenter::choose()
{
    chooser_(view_->window(), UserDefaults::standard().text(logPathKey),
             [self = QPointer<LogPathPresenter>(this)](const QString &path) {
                 if (self)
                     self->take(path);
             });
}

/// The answers come in any order; the path that was named last counts.
void LogPathPresenter::take(const QString &path)
{
    check(path, [this, path, take = ++takes_](const LogPathCheck &answer) {
        if (take != takes_)
            return;
        UserDefaults &defaults = UserDefaults::standard();
        const bool isOther = path != defaults.text(logPathKey) && !isOurs(path);
        const bool isTaken =
            answer.answer != LogPathCheck::Answer::Existing || !isOther ||
            DialogBoxes::alertBoxYesNo(
                tr("Use this file for the log?"),
                tr("%1\n\nis there already. It is emptied when the log begins.").arg(path), false);
        // The preferences tell of changes only, but the disk may have become another one.
        if (isTaken && path != defaults.text(logPathKey))
            defaults.setValue(logPathKey, path);
        else
            review();
    });
}
