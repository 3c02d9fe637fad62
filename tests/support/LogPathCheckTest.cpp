#include "support/LogPathCheck.h"

#include "kit/Scratch.h"

#include <QTest>

#include <cerrno>

using Answer = LogPathCheck::Answer;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

LogPathFacts nothing(int error = 0)
{
    return {std::nullopt, error};
}

LogPathFacts standing(FileKind kind, int error = 0)
{
    return {kind, error};
}

} // namespace

class LogPathCheckTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void eachObstacleHasItsAnswer_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<LogPathFacts>("facts");
        QTest::addColumn<int>("answer");
        const auto row = [](const char *name, const QByteArray &path, const LogPathFacts &facts,
                            Answer answer) { QTest::newRow(name) << path << facts << int(answer); };
        row("free", "/a/log", nothing(), Answer::Free);
        row("existing", "/a/log", standing(FileKind::Regular), Answer::Existing);
        row("null", {}, nothing(), Answer::NoPath);
        row("empty", "", nothing(), Answer::NoPath);
        row("relative", "log", nothing(), Answer::Relative);
        row("relative to the home folder", "~/log", nothing(), Answer::Relative);
        row("a NUL in it", QByteArray("/a/lo\0g", 7), nothing(), Answer::NoName);
        row("the root", "/", standing(FileKind::Folder), Answer::Folder);
        row("a folder", "/a", standing(FileKind::Folder), Answer::Folder);
        row("a slash at the end", "/a/log/", nothing(), Answer::Folder);
        row("a dot at the end", "/a/.", nothing(), Answer::Folder);
        row("two dots at the end", "/a/..", nothing(), Answer::Folder);
        row("a hidden file", "/a/.log", nothing(), Answer::Free);
        row("dots that end a name", "/a/log..", nothing(), Answer::Free);
        row("a link", "/a/log", standing(FileKind::Link), Answer::Link);
        row("a FIFO", "/a/log", standing(FileKind::Fifo), Answer::NotRegular);
        row("a socket", "/a/log", standing(FileKind::Socket), Answer::NotRegular);
        row("a terminal", "/a/log", standing(FileKind::CharacterDevice), Answer::NotRegular);
        row("a disk", "/a/log", standing(FileKind::BlockDevice), Answer::NotRegular);
        row("what nobody knows", "/a/log", standing(FileKind::Unknown), Answer::NotRegular);
        row("folder missing", "/a/log", nothing(ENOENT), Answer::NoFolder);
        row("below a file", "/a/log", nothing(ENOTDIR), Answer::BelowFile);
        row("folder closed", "/a/log", nothing(EACCES), Answer::NotAllowed);
        row("file closed", "/a/log", standing(FileKind::Regular, EACCES), Answer::NotAllowed);
        row("file immutable", "/a/log", standing(FileKind::Regular, EPERM), Answer::NotAllowed);
        row("read-only", "/a/log", nothing(EROFS), Answer::ReadOnly);
        row("read-only file", "/a/log", standing(FileKind::Regular, EROFS), Answer::ReadOnly);
        row("a lease", "/a/log", standing(FileKind::Regular, EWOULDBLOCK), Answer::InUse);
        row("name too long", "/a/log", nothing(ENAMETOOLONG), Answer::Other);
        row("a program that runs", "/a/log", standing(FileKind::Regular, ETXTBSY), Answer::Other);
    }
    void eachObstacleHasItsAnswer()
    {
        QFETCH(QByteArray, path);
        QFETCH(LogPathFacts, facts);
        QFETCH(int, answer);
        const LogPathCheck check = LogPathCheck::decide(path, facts);
        QCOMPARE(int(check.answer), answer);
        const bool isWritable = check.answer == Answer::Free || check.answer == Answer::Existing;
        QCOMPARE(check.isWritable(), isWritable);
        QCOMPARE(check.sentence().isEmpty(), isWritable);
        QVERIFY(isWritable || check.sentence().endsWith(QLatin1Char('.')));
    }

    void eachAnswerHasASentenceOfItsOwn()
    {
        QStringList sentences;
        for (int answer = int(Answer::NoPath); answer <= int(Answer::Other); ++answer)
            sentences.append(LogPathCheck{Answer(answer), EIO}.sentence());
        QCOMPARE(sentences.removeDuplicates(), qsizetype(0));
        QVERIFY(!sentences.contains(QString()));
        QCOMPARE((LogPathCheck{Answer::Other, ENAMETOOLONG}.sentence()),
                 text("This file cannot be written: File name too long."));
    }

    void theDiskIsAskedAndLeftAsItIs()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("log", "kept");
        const QByteArray folder = scratch.folder("folder");
        const QByteArray link = scratch.link("link", "log");
        const QByteArray dangling = scratch.link("dangling", "nowhere");
        const QByteArray fifo = scratch.path("fifo");
        QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
        const auto answerFor = [](const QByteArray &path) { return LogPathCheck::of(path).answer; };

        QCOMPARE(answerFor(scratch.path("new")), Answer::Free);
        QCOMPARE(answerFor(scratch.path("folder/new")), Answer::Free);
        QCOMPARE(answerFor(scratch.path("\xff\n")), Answer::Free);
        QCOMPARE(answerFor(file), Answer::Existing);
        QCOMPARE(answerFor(folder), Answer::Folder);
        QCOMPARE(answerFor(link), Answer::Link);
        QCOMPARE(answerFor(dangling), Answer::Link);
        QCOMPARE(answerFor(fifo), Answer::NotRegular);
        QCOMPARE(answerFor("/dev/null"), Answer::NotRegular);
        QCOMPARE(answerFor("/dev/full"), Answer::NotRegular);
        QCOMPARE(answerFor("/proc/self/comm"), Answer::NotRegular);
        QCOMPARE(answerFor("/proc/self/new"), Answer::NotAllowed);
        QCOMPARE(answerFor(scratch.path("missing/new")), Answer::NoFolder);
        QCOMPARE(answerFor(scratch.path("log/new")), Answer::BelowFile);
        QCOMPARE(answerFor("log"), Answer::Relative);
        QCOMPARE(answerFor(""), Answer::NoPath);
        QCOMPARE(answerFor(scratch.path(QByteArray(300, 'x'))), Answer::Other);

        QCOMPARE(Scratch::content(file), QByteArray("kept"));
        QVERIFY(!Scratch::exists(scratch.path("new")));
        QVERIFY(!Scratch::exists(scratch.path("nowhere")));
    }
};

QTEST_GUILESS_MAIN(LogPathCheckTest)
#include "LogPathCheckTest.moc"
