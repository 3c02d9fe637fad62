#include "app/LogPathPresenter.h"

#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"
#include "platform/BackgroundQueue.h"
#include "platform/UserDefaults.h"
#include "ui/PathField.h"
#include "ui/PreferencesView.h"
#include "ui/RunningDialog.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"

#include <QFileDialog>
#include <QTest>

#include <atomic>
#include <optional>
#include <semaphore>

namespace {

const QString key = QStringLiteral("logFilePath");
const QString atOnce = QStringLiteral("holds no names of erased files");

/// A disk that answers nobody who asks for this path until it is told to.
class SilentDisk final : public ForwardingSystemCalls
{
  public:
    explicit SilentDisk(QByteArray path) : path_(std::move(path)) {}

    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        if (path_ == path) {
            ++asked_;
            mayAnswer_.acquire();
        }
        return ForwardingSystemCalls::open(folder, path, access, lastLink);
    }
    [[nodiscard]] int asked() const { return asked_; }
    void answer() { mayAnswer_.release(1000); }

  private:
    QByteArray path_;
    std::atomic<int> asked_ = 0;
    std::counting_semaphore<> mayAnswer_{0};
};

} // namespace

class LogPathPresenterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void theRemarkSaysWhatAPathIsGoodFor_data();
    void theRemarkSaysWhatAPathIsGoodFor();
    void aTypedPathIsStoredAndLookedAt();
    void lookingMakesAndEmptiesNothing();
    void theLatestPathIsTheOneThatIsSpokenOf();
    void aPathOnADiskThatDoesNotAnswerHoldsUpNoOther();
    void aPathThatIsTakenAgainIsLookedAtAgain();
    void theViewLooksAgainWhenItComes();
    void aLateAnswerDoesNotTakeThePlaceOfALaterRemark();
    void aNewFileIsTakenWithoutAQuestion();
    void anExistingFileIsTakenOnlyWithAYes_data();
    void anExistingFileIsTakenOnlyWithAYes();
    void theFileDialogRemembersNothing();

  private:
    [[nodiscard]] QString stored() const { return UserDefaults::standard().text(key); }
    [[nodiscard]] QString remark() const { return view_->logRemark()->text(); }
    [[nodiscard]] QString path(const char *name) const
    {
        return QFile::decodeName(scratch_->path(name));
    }
    void choose(const QString &path)
    {
        presenter_->setChooser(
            [path](QWidget *, const QString &, const auto &chosen) { chosen(path); });
        Q_EMIT view_->chooseLogClicked();
    }

    Scratch settings_;
    std::optional<ThemedPreferences> preferences_;
    std::optional<Scratch> scratch_;
    std::optional<PreferencesView> view_;
    std::optional<LogPathPresenter> presenter_;
};

void LogPathPresenterTest::initTestCase()
{
    // Looked up once, with the first settings of the process.
    qputenv("XDG_CONFIG_HOME", settings_.path());
}

void LogPathPresenterTest::init()
{
    preferences_.emplace();
    scratch_.emplace();
    view_.emplace();
    presenter_.emplace(&*view_, nullptr);
}

void LogPathPresenterTest::cleanup()
{
    presenter_.reset();
    view_.reset();
    scratch_.reset();
    preferences_.reset();
}

void LogPathPresenterTest::theRemarkSaysWhatAPathIsGoodFor_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("countsAtOnce");
    QTest::addColumn<QString>("problem");
    QTest::addColumn<QString>("remark");
    using Answer = LogPathCheck::Answer;
    const auto row = [](const char *name, const QString &path, Answer answer, bool countsAtOnce,
                        const QString &problem, const QString &remark) {
        QTest::newRow(name) << path << int(answer) << countsAtOnce << problem << remark;
    };
    const QString path = QStringLiteral("/a");
    const QString none;
    const QString full = QStringLiteral("No space left on device");
    const QString isEmptied =
        QStringLiteral("this file is there and is emptied when the log begins");
    const QString folder = LogPathCheck{Answer::Folder, 0}.sentence();
    row("no path", QString(), Answer::NoPath, true, none, none);
    row("a new file", path, Answer::Free, true, none, atOnce);
    row("later", path, Answer::Free, false, none,
        atOnce + QStringLiteral("; counts from the next start"));
    row("a file", path, Answer::Existing, true, none, isEmptied);
    row("a folder", path, Answer::Folder, true, none, folder);
    row("lines are missing", path, Answer::Existing, true, full,
        QStringLiteral("this log is not complete: ") + full);
    row("a folder by now", path, Answer::Folder, true, full, folder);
}

void LogPathPresenterTest::theRemarkSaysWhatAPathIsGoodFor()
{
    QFETCH(QString, path);
    QFETCH(int, answer);
    QFETCH(bool, countsAtOnce);
    QFETCH(QString, problem);
    QTEST(LogPathPresenter::remark(path, {LogPathCheck::Answer(answer), 0}, countsAtOnce, problem),
          "remark");
}

void LogPathPresenterTest::aTypedPathIsStoredAndLookedAt()
{
    QCOMPARE(remark(), QString());
    Q_EMIT view_->logPathTaken(path("log"));
    QTRY_COMPARE(stored(), path("log"));
    QCOMPARE(view_->pathField()->text(), path("log"));
    QTRY_COMPARE(remark(), atOnce);
    Q_EMIT view_->logPathTaken(path("no folder/log"));
    QTRY_COMPARE(remark(), LogPathCheck::of(QFile::encodeName(path("no folder/log"))).sentence());
    Q_EMIT view_->logPathTaken(QString());
    QTRY_COMPARE(stored(), QString());
    QCOMPARE(remark(), QString());
}

void LogPathPresenterTest::lookingMakesAndEmptiesNothing()
{
    const QByteArray file = scratch_->file("log", QByteArray("content"));
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    Q_EMIT view_->logPathTaken(path("log"));
    QTRY_COMPARE(remark(), QStringLiteral("this file is there and is emptied when the log begins"));
    QCOMPARE(Scratch::content(file), QByteArray("content"));
    Q_EMIT view_->logPathTaken(path("other"));
    QTRY_COMPARE(remark(), atOnce);
    QVERIFY(!Scratch::exists(scratch_->path("other")));
}

void LogPathPresenterTest::theLatestPathIsTheOneThatIsSpokenOf()
{
    for (int time = 0; time < 20; ++time)
        Q_EMIT view_->logPathTaken(path("log"));
    Q_EMIT view_->logPathTaken(QFile::decodeName(scratch_->path()));
    const QString sentence = LogPathCheck::of(scratch_->path()).sentence();
    QTRY_COMPARE(remark(), sentence);
    // The other answers come, and what they start has an end, too.
    for (int time = 0; time < 2; ++time) {
        QVERIFY(BackgroundQueue::finish(std::chrono::seconds(20)));
        QCoreApplication::processEvents();
    }
    QCOMPARE(remark(), sentence);
}

/// And its answer, when it comes at last, counts no more.
void LogPathPresenterTest::aPathOnADiskThatDoesNotAnswerHoldsUpNoOther()
{
    SilentDisk disk(scratch_->path("silent"));
    const SystemCalls::Replacement replacement(disk);
    for (int times = 1; times <= 10; ++times)
        Q_EMIT view_->logPathTaken(path("silent"));
    const bool isSilent = QTest::qWaitFor([&disk] { return disk.asked() == 10; }, 20'000);
    Q_EMIT view_->logPathTaken(path("log"));
    const bool isTaken = QTest::qWaitFor([this] { return remark() == atOnce; }, 20'000);
    disk.answer();
    QVERIFY(BackgroundQueue::finish(std::chrono::seconds(20)));
    QVERIFY(isSilent && isTaken);
    QCoreApplication::processEvents();
    QCOMPARE(stored(), path("log"));
    QVERIFY(BackgroundQueue::finish(std::chrono::seconds(20)));
    QCoreApplication::processEvents();
    QCOMPARE(remark(), atOnce);
}

void LogPathPresenterTest::aPathThatIsTakenAgainIsLookedAtAgain()
{
    const QByteArray folder = scratch_->folder("folder");
    Q_EMIT view_->logPathTaken(path("folder/log"));
    QTRY_COMPARE(remark(), atOnce);
    QCOMPARE(::rmdir(folder.constData()), 0);
    Q_EMIT view_->logPathTaken(path("folder/log"));
    QTRY_COMPARE(remark(), QStringLiteral("The folder that should hold it does not exist."));
}

void LogPathPresenterTest::theViewLooksAgainWhenItComes()
{
    const QByteArray folder = scratch_->folder("folder");
    Q_EMIT view_->logPathTaken(path("folder/log"));
    QTRY_COMPARE(remark(), atOnce);
    QCOMPARE(::rmdir(folder.constData()), 0);
    view_->show();
    QTRY_COMPARE(remark(), QStringLiteral("The folder that should hold it does not exist."));
}

void LogPathPresenterTest::aLateAnswerDoesNotTakeThePlaceOfALaterRemark()
{
    QVERIFY(!scratch_->folder("silent").isEmpty());
    SilentDisk disk(scratch_->path("silent"));
    const SystemCalls::Replacement replacement(disk);
    UserDefaults::standard().setValue(key, path("silent"));
    const bool isSilent = QTest::qWaitFor([&disk] { return disk.asked() == 1; }, 20'000);
    UserDefaults::standard().setValue(key, path("log"));
    const bool isSaid = QTest::qWaitFor([this] { return remark() == atOnce; }, 20'000);
    disk.answer();
    QVERIFY(BackgroundQueue::finish(std::chrono::seconds(20)));
    QVERIFY(isSilent && isSaid);
    QCoreApplication::processEvents();
    QCOMPARE(remark(), atOnce);
}

void LogPathPresenterTest::aNewFileIsTakenWithoutAQuestion()
{
    const DialogBox::Answers answers({});
    choose(path("log"));
    QTRY_COMPARE(stored(), path("log"));
    QVERIFY(answers.asked().empty());
}

void LogPathPresenterTest::anExistingFileIsTakenOnlyWithAYes_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isTyped");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("Yes") << int(DialogGeometry::FirstButton) << false << true;
    QTest::newRow("No") << int(DialogGeometry::SecondButton) << false << false;
    QTest::newRow("Escape") << int(DialogGeometry::Cancelled) << false << false;
    QTest::newRow("typed, Yes") << int(DialogGeometry::FirstButton) << true << true;
    QTest::newRow("typed, No") << int(DialogGeometry::SecondButton) << true << false;
}

void LogPathPresenterTest::anExistingFileIsTakenOnlyWithAYes()
{
    QFETCH(int, answer);
    QFETCH(bool, isTyped);
    QFETCH(bool, isTaken);
    const QByteArray file = scratch_->file("log", QByteArray("content"));
    const DialogBox::Answers answers({answer});
    view_->pathField()->setText(path("log"));
    if (isTyped)
        Q_EMIT view_->logPathTaken(path("log"));
    else
        choose(path("log"));
    QTRY_COMPARE(answers.asked().size(), std::size_t(1));
    QVERIFY(answers.asked()[0].info.contains(path("log")));
    QCOMPARE(answers.asked()[0].activeButton, 2);
    QTRY_COMPARE(stored(), isTaken ? path("log") : QString());
    QTRY_COMPARE(view_->pathField()->text(), stored());
    QCOMPARE(Scratch::content(file), QByteArray("content"));
}

void LogPathPresenterTest::theFileDialogRemembersNothing()
{
    Q_EMIT view_->chooseLogClicked();
    auto *dialog = view_->findChild<QFileDialog *>();
    QVERIFY(dialog);
    dialog->setDirectory(QFile::decodeName(scratch_->path()));
    dialog->selectFile(path("log"));
    QMetaObject::invokeMethod(dialog, "accept");
    QTRY_COMPARE(stored(), path("log"));
    QTRY_VERIFY(!view_->findChild<QFileDialog *>());
    QVERIFY(!Scratch::exists(settings_.path("QtProject.conf")));
}

QTEST_MAIN(LogPathPresenterTest)
#include "LogPathPresenterTest.moc"
