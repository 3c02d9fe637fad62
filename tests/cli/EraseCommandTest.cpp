#include "cli/Program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

using Arguments = Program::Arguments;

constexpr unsigned socketMode = S_IFSOCK | 0600;

Outcome run(const Scratch &scratch, Arguments arguments)
{
    arguments.insert(arguments.begin(), "erase");
    return Program(scratch, arguments).run();
}

/// The text without its last line, which is checked and says how long the run took.
QByteArray withoutElapsed(const QByteArray &output)
{
    static const QRegularExpression last(QStringLiteral("Elapsed: (1 second|\\d+ seconds)\n$"));
    QString text = QString::fromUtf8(output);
    return text.contains(last) ? text.remove(last).toUtf8() : "no elapsed time in: " + output;
}

QJsonObject jsonOf(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

int figure(const QJsonObject &report, const char *group, const char *key)
{
    return report.value(QLatin1String(group)).toObject().value(QLatin1String(key)).toInt(-1);
}

/// A file that cannot be erased, whoever asks for it.
QByteArray makeSocket(const Scratch &scratch, const QByteArray &name)
{
    const QByteArray path = scratch.path(name);
    return ::mknod(path.constData(), socketMode, 0) == 0 ? path : QByteArray();
}

QByteArrayList linesWith(const QByteArray &text, const QByteArray &part)
{
    QByteArrayList lines = text.split('\n');
    lines.removeIf([&part](const QByteArray &line) { return !line.contains(part); });
    return lines;
}

/// To the user without rights, where this is root.
void giveAway(const std::vector<QByteArray> &paths)
{
    for (const QByteArray &path : paths) {
        if (::getuid() == 0)
            QCOMPARE(::lchown(path.constData(), Program::nobody, Program::nobody), 0);
    }
}

} // namespace

class EraseCommandTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    // What it says

    void aFolderGoesWithAllThatItHolds()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("letters");
        scratch.folder("letters/old");
        scratch.folder("letters/old/empty");
        scratch.file("letters/a.txt", 10000);
        scratch.file("letters/.hidden", 5);
        scratch.file("letters/old/b.txt", "");

        const Outcome outcome = run(scratch, {"--yes", folder});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(withoutElapsed(outcome.output),
                 QByteArray("Found:   3 files (10.01 KB) and 3 folders\n"
                            "Method:  3-Pass DoD 5220.22-M (E)\n"
                            "Erased:  10.01 KB in 3 files\n"
                            "Failed:  0\n"
                            "Folders: 3 of 3 removed\n"));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(folder));
    }

    void aFileAloneHasNoLineOfFolders()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome = run(scratch, {"-y", "-m", "1", file});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(withoutElapsed(outcome.output),
                 QByteArray("Found:   1 file (5 Bytes) and 0 folders\n"
                            "Method:  1-Pass Zero\n"
                            "Erased:  5 Bytes in 1 files\n"
                            "Failed:  0\n"));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(file));
    }

    void anEmptyFolderIsRemoved()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("empty");

        const Outcome outcome = run(scratch, {"-y", folder});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(withoutElapsed(outcome.output),
                 QByteArray("Found:   0 files (0 Bytes) and 1 folder\n"
                            "Method:  3-Pass DoD 5220.22-M (E)\n"
                            "Erased:  0 Bytes in 0 files\n"
                            "Failed:  0\n"
                            "Folders: 1 of 1 removed\n"));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(folder));
    }

    void aMissingPathFailsWithErrorTwoAndTheOthersGoOn()
    {
        const Scratch scratch;
        const QByteArray missing = scratch.path("missing");
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome = run(scratch, {"-y", "--json", missing, file});

        QCOMPARE(linesWith(outcome.errors, missing),
                 QByteArrayList{missing + ": No such file or directory"});
        const QJsonObject failure =
            jsonOf(outcome.output).value(QStringLiteral("failed")).toArray().at(0).toObject();
        QCOMPARE(failure.value(QStringLiteral("path")).toString().toUtf8(), missing);
        QCOMPARE(failure.value(QStringLiteral("errno")).toInt(), 2);
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!Scratch::exists(file));
    }

    void quietSaysNothingButFailures()
    {
        const Scratch scratch;
        const QByteArray missing = scratch.path("missing");
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome = run(scratch, {"-yq", file, missing});

        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.errors, missing + ": No such file or directory\n");
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!Scratch::exists(file));
    }

    void oneItemNamedTwiceIsErasedOnce()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/a", 7);

        const Outcome outcome = run(scratch, {"-y", "--json", file, folder, file, folder + "/"});

        QCOMPARE(figure(jsonOf(outcome.output), "files", "found"), 1);
        QCOMPARE(figure(jsonOf(outcome.output), "bytes", "wiped"), 7);
        QCOMPARE(figure(jsonOf(outcome.output), "folders", "removed"), 1);
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(folder));
    }

    // What it does not touch

    void withoutYesAndWithoutATerminalNothingIsTouched()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");

        const Outcome outcome = run(scratch, {file});

        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(
            outcome.errors,
            QByteArray("vantorel-cli: no terminal to ask on; add --yes to erase without asking\n"));
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void anAnswerThatComesThroughAPipeIsNone()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");
        const QByteArray answer = scratch.file("answer", "y\n");

        const Outcome outcome =
            Program(scratch, {"erase", file}).on(Program::Input, answer.constData()).run();

        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aDryRunShowsWhatItFoundAndTouchesNothing()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/a", "content");
        scratch.folder("folder/empty");
        scratch.link("folder/link", "a");
        struct stat before = {};
        QCOMPARE(::lstat(file.constData(), &before), 0);

        const Outcome outcome = run(scratch, {"--dry-run", "--yes", "-m", "10", folder});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.output, QByteArray("Found:   2 files (14 Bytes) and 2 folders\n"
                                            "Method:  35-Pass Gutmann Method\n"
                                            "Caution: 1 symbolic link; the files they point to "
                                            "will be overwritten\n"));
        QCOMPARE(outcome.exitCode, 0);
        struct stat after = {};
        QCOMPARE(::lstat(file.constData(), &after), 0);
        QCOMPARE(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
        QVERIFY(Scratch::exists(scratch.path("folder/empty")));
        QVERIFY(Scratch::exists(scratch.path("folder/link")));
    }

    void aDryRunWritesItsReport()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome =
            run(scratch, {"-n", "--json", "--report", scratch.path("report"), file});

        const QJsonObject report = jsonOf(outcome.output);
        QCOMPARE(figure(report, "files", "found"), 1);
        QCOMPARE(figure(report, "files", "remaining"), 1);
        QCOMPARE(figure(report, "files", "wiped"), 0);
        QCOMPARE(figure(report, "bytes", "found"), 5);
        QCOMPARE(figure(report, "bytes", "wiped"), 0);
        QCOMPARE(Scratch::content(scratch.path("report")), outcome.output);
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(Scratch::exists(file));
    }

    void wrongUsageTouchesNothing_data()
    {
        QTest::addColumn<Arguments>("arguments");
        QTest::addColumn<QByteArray>("problem");
        QTest::newRow("no path") << Arguments{"-y"}
                                 << QByteArray("nothing to erase: name files or folders");
        QTest::newRow("unknown option")
            << Arguments{"-y", "a", "--shred"} << QByteArray("unknown option: --shred");
        QTest::newRow("missing value")
            << Arguments{"-y", "a", "-m"} << QByteArray("needs a value: -m");
        QTest::newRow("no such method")
            << Arguments{"-y", "a", "-m11"}
            << QByteArray("no such method: 11 (1 to 10, see \"vantorel-cli methods\")");
    }
    void wrongUsageTouchesNothing()
    {
        QFETCH(Arguments, arguments);
        QFETCH(QByteArray, problem);
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");

        const Outcome outcome = run(scratch, arguments);

        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.errors, "vantorel-cli: " + problem + "\nTry \"vantorel-cli --help\".\n");
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    // No other run of this test names such a place, and this one erases nothing in any case.
    void thePlacesOfTheSystemAreRefusedAndTheOthersGoOn_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("place");
        for (const char *path : {"/", "//", "/./", "/proc", "/proc/", "/sys", "/dev", "//dev/."}) {
            const QByteArray name = QByteArray(path).replace("/.", "/").replace("//", "/");
            QTest::newRow(path) << QByteArray(path)
                                << (name.size() > 1 && name.endsWith('/') ? name.chopped(1) : name);
        }
    }
    void thePlacesOfTheSystemAreRefusedAndTheOthersGoOn()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, place);
        const Scratch scratch;
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome = run(scratch, {"--dry-run", path, file});

        QCOMPARE(outcome.errors, place + ": Refused: \"" + place + "\" is never erased\n");
        QVERIFY(outcome.output.startsWith("Found:   1 file (5 Bytes) and 0 folders\n"));
        QCOMPARE(outcome.exitCode, 1);
    }

    void dotsThatNameNoFolderOfTheirOwnAreRefused_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("alone") << QByteArray("..");
        QTest::newRow("with a slash") << QByteArray("../");
        QTest::newRow("behind a folder") << QByteArray("folder/..");
    }
    void dotsThatNameNoFolderOfTheirOwnAreRefused()
    {
        QFETCH(QByteArray, path);
        const Scratch scratch;
        scratch.folder("here");
        scratch.folder("here/folder");
        const QByteArray file = scratch.file("file", "content");

        const Outcome outcome =
            Program(scratch, {"erase", "-y", path}).in(scratch.path("here")).run();

        QVERIFY2(
            outcome.errors.endsWith("/..: Refused: \"..\" names no file or folder of its own\n"),
            outcome.errors.constData());
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void anEmptyPathIsRefusedAndTheOthersGoOn()
    {
        const Scratch scratch;
        const QByteArray kept = scratch.file("kept", "content");
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome = run(scratch, {"-y", "--json", "", file});

        QVERIFY2(
            outcome.errors.startsWith("\"\": Refused: an empty path names nothing\nFound:   1 "),
            outcome.errors.constData());
        const QJsonObject report = jsonOf(outcome.output);
        const QJsonArray failed = report.value(QStringLiteral("failed")).toArray();
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed.at(0).toObject().value(QStringLiteral("errno")), QJsonValue(0));
        QCOMPARE(figure(report, "files", "wiped"), 1);
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!Scratch::exists(file));
        QCOMPARE(Scratch::content(kept), QByteArray("content"));
    }

    void whereAllIsRefusedThatIsTheOutcome()
    {
        const Scratch scratch;

        const Outcome outcome = run(scratch, {"-y", "--json", ""});

        QVERIFY(outcome.output.contains("Refused: an empty path names nothing"));
        QCOMPARE(outcome.errors, QByteArray("\"\": Refused: an empty path names nothing\n"));
        QCOMPARE(outcome.exitCode, 1);
    }

    // Paths

    void aRelativePathStartsInTheWorkingFolder_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("goes");
        QTest::newRow("a name") << QByteArray("file") << QByteArray("here/file");
        QTest::newRow("a dot before it") << QByteArray("./file") << QByteArray("here/file");
        QTest::newRow("dots and slashes") << QByteArray(".//././file") << QByteArray("here/file");
        QTest::newRow("slashes after it") << QByteArray("file//") << QByteArray("here/file");
        QTest::newRow("below a folder")
            << QByteArray("folder//inside/") << QByteArray("here/folder/inside");
        QTest::newRow("a folder and a slash") << QByteArray("folder/") << QByteArray("here/folder");
        QTest::newRow("the folder above") << QByteArray("../there") << QByteArray("there");
    }
    void aRelativePathStartsInTheWorkingFolder()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, goes);
        const Scratch scratch;
        scratch.folder("here");
        scratch.folder("here/folder");
        scratch.file("here/folder/inside", 5);
        scratch.file("here/file", 5);
        scratch.file("there", 5);
        scratch.file("file", "kept");

        const Outcome outcome =
            Program(scratch, {"erase", "-yq", path}).in(scratch.path("here")).run();

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
        for (const char *name : {"here/folder", "here/folder/inside", "here/file", "there"})
            QCOMPARE(Scratch::exists(scratch.path(name)),
                     name != goes && !(goes == "here/folder" && QByteArray(name).startsWith(goes)));
        QCOMPARE(Scratch::content(scratch.path("file")), QByteArray("kept"));
    }

    void theWorkingFolderItselfCanBeErased()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("here");
        scratch.file("here/file", 5);

        const Outcome outcome = Program(scratch, {"erase", "-yq", "."}).in(folder).run();

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(folder));
    }

    void inAFolderThatIsGoneRelativePathsNameNothing()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "content");
        const QByteArray fromTheRoot = file.sliced(1);

        const Outcome outcome = Program(scratch, {"erase", "-y", fromTheRoot})
                                    .inRemovedFolder(scratch.folder("gone"))
                                    .run();

        QVERIFY2(outcome.errors.endsWith(": No such file or directory\n"),
                 outcome.errors.constData());
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aNameIsAnyBytes_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("alike"); ///< what a careless reader could take it for
        QTest::newRow("newline") << QByteArray("a\nb") << QByteArray("a");
        QTest::newRow("only a newline") << QByteArray("\n") << QByteArray("n");
        QTest::newRow("not UTF-8") << QByteArray("a\xff\xfe") << QByteArray("a\xef\xbf\xbd");
        QTest::newRow("semicolon") << QByteArray("a;b") << QByteArray("a%3Bb");
        QTest::newRow("percent") << QByteArray("a%20b") << QByteArray("a b");
        QTest::newRow("blanks") << QByteArray(" a ") << QByteArray("a");
        QTest::newRow("letters of an alphabet")
            << QByteArray("\xc3\xa4\xe6\xbc\xa2") << QByteArray("a");
        QTest::newRow("decomposed") << QByteArray("a\xcc\x88") << QByteArray("\xc3\xa4");
        QTest::newRow("backslash") << QByteArray("a\\n") << QByteArray("a\n");
        QTest::newRow("asterisk") << QByteArray("*") << QByteArray("a");
        QTest::newRow("tilde") << QByteArray("~") << QByteArray("a");
        QTest::newRow("minus") << QByteArray("-n") << QByteArray("n");
        QTest::newRow("minuses") << QByteArray("--yes") << QByteArray("yes");
        QTest::newRow("one minus") << QByteArray("-") << QByteArray("a");
        QTest::newRow("three dots") << QByteArray("...") << QByteArray("a");
        QTest::newRow("as long as it gets") << QByteArray(255, 'x') << QByteArray(254, 'x');
    }
    void aNameIsAnyBytes()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, alike);
        const Scratch scratch;
        const QByteArray file = scratch.file(name, 5);
        const QByteArray kept = scratch.file(alike, "content");
        QVERIFY(!file.isEmpty() && !kept.isEmpty());

        const Outcome outcome = run(scratch, {"-yq", "--", name});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(file));
        QCOMPARE(Scratch::content(kept), QByteArray("content"));
    }

    void aFailureIsOneLineWhateverTheNameHolds_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("shown");
        QTest::newRow("plain") << QByteArray("a b;c") << QByteArray("a b;c");
        QTest::newRow("newline") << QByteArray("a\nb") << QByteArray("a\\nb");
        QTest::newRow("return and tab") << QByteArray("a\r\tb") << QByteArray("a\\r\\tb");
        QTest::newRow("escape") << QByteArray("\033[31m") << QByteArray("\\x1b[31m");
        QTest::newRow("delete") << QByteArray("a\177") << QByteArray("a\\x7f");
        QTest::newRow("8-bit control character") << QByteArray("a\xc2\x9b"
                                                               "2J")
                                                 << QByteArray("a\\xc2\\x9b2J");
        QTest::newRow("right to left")
            << QByteArray("a\xe2\x80\xae") << QByteArray("a\\xe2\\x80\\xae");
        QTest::newRow("line separator")
            << QByteArray("a\xe2\x80\xa8") << QByteArray("a\\xe2\\x80\\xa8");
        QTest::newRow("not UTF-8") << QByteArray("a\xff") << QByteArray("a\\xff");
        QTest::newRow("backslash") << QByteArray("a\\n") << QByteArray("a\\\\n");
        QTest::newRow("letters of an alphabet")
            << QByteArray("\xc3\xa4\xe6\xbc\xa2") << QByteArray("\xc3\xa4\xe6\xbc\xa2");
    }
    void aFailureIsOneLineWhateverTheNameHolds()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, shown);
        const Scratch scratch;
        const QByteArray socket = makeSocket(scratch, name);
        QVERIFY(!socket.isEmpty());

        const Outcome outcome = run(scratch, {"-y", name});

        QCOMPARE(outcome.errors, scratch.path(shown) + ": No such device or address\n");
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(::unlink(socket.constData()), 0);
    }

    // Links

    void theTargetOfALinkIsOverwrittenAndStays()
    {
        const Scratch scratch;
        const QByteArray target = scratch.file("target", "secret");
        const QByteArray link = scratch.link("link", "target");

        const Outcome outcome = run(scratch, {"-y", "-m1", link});

        QCOMPARE(outcome.errors, QByteArray());
        QVERIFY(outcome.output.contains(
            "Caution: 1 symbolic link; the files they point to will be overwritten\n"));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(link));
        QCOMPARE(Scratch::content(target), QByteArray(6, '\0'));
    }

    void theTargetOfALinkCanBeLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("preference");
        QTest::addColumn<Arguments>("options");
        QTest::newRow("by option") << QByteArray() << Arguments{"--leave-link-targets"};
        QTest::newRow("by preference, true") << QByteArray("skipLinkTargets=true\n") << Arguments{};
        QTest::newRow("by preference, 1") << QByteArray("skipLinkTargets=1\n") << Arguments{};
    }
    void theTargetOfALinkCanBeLeftAlone()
    {
        QFETCH(QByteArray, preference);
        QFETCH(Arguments, options);
        const Scratch scratch;
        Program::prefer(scratch, preference);
        const QByteArray target = scratch.file("target", "secret");
        const QByteArray link = scratch.link("link", "target");
        options.insert(options.end(), {"-y", link});

        const Outcome outcome = run(scratch, options);

        QCOMPARE(outcome.errors, QByteArray());
        QVERIFY(outcome.output.contains("Found:   1 file (0 Bytes) and 0 folders\n"));
        QVERIFY(outcome.output.contains(
            "Caution: 1 symbolic link; the files they point to will be left alone\n"));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(link));
        QCOMPARE(Scratch::content(target), QByteArray("secret"));
    }

    void aLinkThatLeadsNowhereFailsAndStays()
    {
        const Scratch scratch;
        const QByteArray link = scratch.link("link", "missing");

        const Outcome outcome = run(scratch, {"-yq", link});

        QCOMPARE(outcome.errors, link + ": No such file or directory\n");
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(Scratch::exists(link));
    }

    void ofALinkToAFolderOnlyTheLinkGoes()
    {
        const Scratch scratch;
        scratch.folder("folder");
        const QByteArray inside = scratch.file("folder/.inside", "content");
        const QByteArray link = scratch.link("link", "folder");

        const Outcome outcome = run(scratch, {"-y", "--json", link + "/"});

        const QJsonObject report = jsonOf(outcome.output);
        QCOMPARE(figure(report, "files", "found"), 0);
        QCOMPARE(figure(report, "folders", "removed"), 1);
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(link));
        QCOMPARE(Scratch::content(inside), QByteArray("content"));
    }

    void otherNamesOfAFileAreSaidAndLoseTheirContent()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", "secret");
        const QByteArray other = scratch.path("other");
        QCOMPARE(::link(file.constData(), other.constData()), 0);

        const Outcome outcome = run(scratch, {"-y", "-m1", file});

        QVERIFY(outcome.output.contains("Caution: 1 file has other names (hard links)"));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(file));
        QCOMPARE(Scratch::content(other), QByteArray(6, '\0'));
    }

    // Preferences

    void theStoredMethodIsUsedUnlessAnotherIsNamed_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<Arguments>("options");
        QTest::addColumn<QByteArray>("left");
        QTest::newRow("stored") << QByteArray("WipeMethod=1\n") << Arguments{}
                                << QByteArray(6, '\0');
        QTest::newRow("named") << QByteArray("WipeMethod=2\n") << Arguments{"--method=1"}
                               << QByteArray(6, '\0');
        QTest::newRow("stored out of range, but named")
            << QByteArray("WipeMethod=99\n") << Arguments{"-m", "1"} << QByteArray(6, '\0');
    }
    void theStoredMethodIsUsedUnlessAnotherIsNamed()
    {
        QFETCH(QByteArray, stored);
        QFETCH(Arguments, options);
        QFETCH(QByteArray, left);
        const Scratch scratch;
        Program::prefer(scratch, stored);
        const QByteArray target = scratch.file("target", "secret");
        options.insert(options.end(), {"-y", scratch.link("link", "target")});

        const Outcome outcome = run(scratch, options);

        QVERIFY2(outcome.output.contains("Method:  1-Pass Zero\n"), outcome.output.constData());
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(Scratch::content(target), left);
    }

    void aStoredMethodThatDoesNotExistErasesNothing_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QByteArray>("read");
        QTest::newRow("99") << QByteArray("WipeMethod=99\n") << QByteArray("99");
        QTest::newRow("0") << QByteArray("WipeMethod=0\n") << QByteArray("0");
        QTest::newRow("a word") << QByteArray("WipeMethod=zero\n") << QByteArray("0");
        QTest::newRow("nothing") << QByteArray("WipeMethod=\n") << QByteArray("0");
    }
    void aStoredMethodThatDoesNotExistErasesNothing()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QByteArray, read);
        const Scratch scratch;
        Program::prefer(scratch, stored);
        const QByteArray file = scratch.file("a", "content");

        const Outcome outcome = run(scratch, {"-y", file});

        QCOMPARE(outcome.errors, "vantorel-cli: the preferred method is " + read +
                                     ", which does not exist: choose one of 1 to 10 with "
                                     "--method\nTry \"vantorel-cli --help\".\n");
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    // Reports

    void theReportHoldsWhatTheJsonHolds()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        scratch.file("folder/a", 5000);
        const QByteArray file = scratch.file("b", 7);
        const QByteArray other = scratch.path("other");
        QCOMPARE(::link(file.constData(), other.constData()), 0);
        scratch.file("target", "secret");
        const QByteArray link = scratch.link("link", "target");
        const QByteArray socket = makeSocket(scratch, "socket\xff");

        const Outcome outcome = run(scratch, {"--yes", "--json", "--method", "5", "--report",
                                              scratch.path("report"), folder, file, link, socket});

        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(Scratch::content(scratch.path("report")), outcome.output);
        QJsonObject report = jsonOf(outcome.output);
        QVERIFY(report.take(QStringLiteral("elapsed_seconds")).toDouble(-1) >= 0);
        QVERIFY(!report.take(QStringLiteral("version")).toString().isEmpty());
        QJsonObject expected = jsonOf(R"({
            "method": {"number": 5, "name": "4-Pass RAZER", "passes": 4},
            "files": {"found": 4, "wiped": 3, "failed": 1, "remaining": 0},
            "bytes": {"found": 5013, "wiped": 5013},
            "folders": {"found": 1, "removed": 1},
            "links": 1,
            "hard_links": 1
        })");
        expected.insert(
            QStringLiteral("failed"),
            QJsonArray{QJsonObject{
                {QStringLiteral("path"), QString::fromUtf8(socket)},
                {QStringLiteral("path_base64"), QString::fromLatin1(socket.toBase64())},
                {QStringLiteral("errno"), ENXIO},
                {QStringLiteral("message"), QStringLiteral("No such device or address")}}});
        QCOMPARE(report, expected);
        QCOMPARE(::unlink(socket.constData()), 0);
    }

    void withJsonTheTextsGoToStandardError()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("a", 5);

        const Outcome outcome = run(scratch, {"-y", "--json", file});

        QVERIFY(outcome.output.startsWith("{") && outcome.output.endsWith("}\n"));
        QVERIFY(!jsonOf(outcome.output).isEmpty());
        QCOMPARE(withoutElapsed(outcome.errors),
                 QByteArray("Found:   1 file (5 Bytes) and 0 folders\n"
                            "Method:  3-Pass DoD 5220.22-M (E)\n"
                            "Erased:  5 Bytes in 1 files\n"
                            "Failed:  0\n"));
    }

    void withJsonAndQuietThereIsOnlyTheJson()
    {
        const Scratch scratch;

        const Outcome outcome = run(scratch, {"-yq", "--json", scratch.file("a", 5)});

        QVERIFY(!jsonOf(outcome.output).isEmpty());
        QCOMPARE(outcome.errors, QByteArray());
    }

    void aReportThatCannotBeWrittenErasesNothing_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("problem");
        QTest::newRow("in a missing folder") << QByteArray("missing/report")
                                             << QByteArray("missing/report: No such file or "
                                                           "directory\n");
        QTest::newRow("a folder") << QByteArray("folder") << QByteArray("folder: Is a directory\n");
        QTest::newRow("below a file")
            << QByteArray("a/report") << QByteArray("a/report: Not a directory\n");
        QTest::newRow("not UTF-8")
            << QByteArray("\xff") << QByteArray("\\xff: the name of a report has to be UTF-8\n");
    }
    void aReportThatCannotBeWrittenErasesNothing()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, problem);
        const Scratch scratch;
        scratch.folder("folder");
        const QByteArray file = scratch.file("a", "content");

        const Outcome outcome = run(scratch, {"-y", "--report", name, file});

        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.errors, problem);
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aReportMayTakeTheNameOfWhatIsErased()
    {
        const Scratch scratch;
        const QByteArray file = scratch.file("report", "secret");
        const QByteArray other = scratch.path("other");
        QCOMPARE(::link(file.constData(), other.constData()), 0);

        const Outcome outcome = run(scratch, {"-y", "-m1", "--report", file, file});

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(Scratch::content(other), QByteArray(6, '\0'));
        QCOMPARE(figure(jsonOf(Scratch::content(file)), "files", "wiped"), 1);
    }

    /// Which of the two comes of it depends on the file system.
    void aReportInsideOfWhatIsErasedIsRefusedAndNothingErased()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/a", 5);
        const QByteArray report = scratch.path("folder/report");

        const Outcome outcome = run(scratch, {"-yq", "--report", report, folder});

        QVERIFY(Scratch::exists(file));
        QVERIFY(!Scratch::exists(report));
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(outcome.errors, report + ": The report would stand in a folder to be erased\n");
    }

    void aReportIntoAPipeLeavesThePipe()
    {
        const Scratch scratch;
        const QByteArray pipe = scratch.path("pipe");
        QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
        const int reader = ::open(pipe.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);

        const Outcome outcome =
            run(scratch, {"-y", "--json", "--report", pipe, scratch.file("a", 5)});

        QByteArray read(8192, '\0');
        read.truncate(qMax<ssize_t>(::read(reader, read.data(), size_t(read.size())), 0));
        ::close(reader);
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!read.isEmpty());
        QCOMPARE(read, outcome.output);
    }

    // Folders

    void aHiddenFileThatFailedGoesWithItsFolderAndThatIsSaid()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        scratch.file("folder/.wiped", 5);
        const QByteArray socket = makeSocket(scratch, "folder/.socket");

        const Outcome outcome = run(scratch, {"-y", "--report", scratch.path("report"), folder});

        QCOMPARE(outcome.errors,
                 socket + ": No such device or address\n" + socket +
                     ": No such device or address (removed with its folder, not overwritten)\n");
        QCOMPARE(withoutElapsed(outcome.output),
                 QByteArray("Found:   2 files (5 Bytes) and 1 folder\n"
                            "Method:  3-Pass DoD 5220.22-M (E)\n"
                            "Erased:  5 Bytes in 1 files\n"
                            "Failed:  1\n"
                            "Folders: 1 of 1 removed\n"));
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(!Scratch::exists(folder));
        const QJsonObject report = jsonOf(Scratch::content(scratch.path("report")));
        QCOMPARE(
            report.value(QStringLiteral("failed"))
                .toArray()
                .at(0)
                .toObject()
                .value(QStringLiteral("message"))
                .toString(),
            QStringLiteral("No such device or address (removed with its folder, not overwritten)"));
    }

    void aFolderOfWhatFailedStays()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        scratch.folder("folder/inner");
        const QByteArray socket = makeSocket(scratch, "folder/socket");

        const Outcome outcome = run(scratch, {"-y", folder});

        QCOMPARE(outcome.errors, socket + ": No such device or address\n");
        QVERIFY(outcome.output.contains("Folders: 1 of 2 removed\n"));
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(Scratch::exists(socket));
        QVERIFY(!Scratch::exists(scratch.path("folder/inner")));
    }

    // Without root's rights

    void aFolderThatCannotBeReadIsSaidAndTheOthersGoOn()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray locked = scratch.folder("folder/locked");
        const QByteArray inside = scratch.file("folder/locked/inside", "content");
        const QByteArray file = scratch.file("folder/file", 5);
        giveAway({folder, locked, inside, file});
        QCOMPARE(::chmod(locked.constData(), 0), 0);

        const Outcome outcome =
            Program(scratch, {"erase", "-y", "--json", folder}).unprivileged(scratch).run();

        QCOMPARE(::chmod(locked.constData(), 0700), 0);
        QVERIFY2(outcome.errors.startsWith(locked + ": Permission denied\n"),
                 outcome.errors.constData());
        const QJsonObject report = jsonOf(outcome.output);
        QCOMPARE(figure(report, "files", "wiped"), 1);
        QCOMPARE(figure(report, "folders", "found"), 2);
        QCOMPARE(figure(report, "folders", "removed"), 0);
        QCOMPARE(report.value(QStringLiteral("failed"))
                     .toArray()
                     .at(0)
                     .toObject()
                     .value(QStringLiteral("errno"))
                     .toInt(),
                 EACCES);
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(Scratch::content(inside), QByteArray("content"));
        QVERIFY(!Scratch::exists(file));
    }

    void anEmptyFolderThatCannotBeReadIsRemoved()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray locked = scratch.folder("folder/locked");
        giveAway({folder, locked});
        QCOMPARE(::chmod(locked.constData(), 0), 0);

        const Outcome outcome =
            Program(scratch, {"erase", "-yq", "--json", locked}).unprivileged(scratch).run();

        QCOMPARE(outcome.errors, locked + ": Permission denied\n");
        QCOMPARE(jsonOf(outcome.output).value(QStringLiteral("failed")), QJsonValue(QJsonArray()));
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(locked));
    }

    void aFolderThatCannotBeRemovedIsAFailure()
    {
        const Scratch scratch;
        const QByteArray outer = scratch.folder("outer");
        const QByteArray folder = scratch.folder("outer/folder");
        const QByteArray file = scratch.file("outer/folder/file", 5);
        giveAway({outer, folder, file});
        QCOMPARE(::chmod(outer.constData(), 0555), 0);

        const Outcome outcome =
            Program(scratch, {"erase", "-y", folder}).unprivileged(scratch).run();

        QCOMPARE(::chmod(outer.constData(), 0755), 0);
        QVERIFY2(outcome.output.contains("Erased:  5 Bytes in 1 files\nFailed:  0\n"
                                         "Folders: 0 of 1 removed\n"),
                 outcome.output.constData());
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY(Scratch::exists(folder));
        QVERIFY(!Scratch::exists(file));
    }

    void aReadOnlyFileIsErased()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/file", 5);
        giveAway({folder, file});
        QCOMPARE(::chmod(file.constData(), 0444), 0);

        const Outcome outcome =
            Program(scratch, {"erase", "-yq", file}).unprivileged(scratch).run();

        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!Scratch::exists(file));
    }

    void aFileThatCannotBeRemovedFailsAndStaysOverwritten()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/file", "secret");
        giveAway({folder, file});
        QCOMPARE(::chmod(folder.constData(), 0555), 0);

        const Outcome outcome =
            Program(scratch, {"erase", "-y", "-m1", folder}).unprivileged(scratch).run();

        QCOMPARE(::chmod(folder.constData(), 0755), 0);
        QCOMPARE(outcome.errors, file + ": Permission denied\n");
        QVERIFY2(outcome.output.contains("Erased:  0 Bytes in 0 files\nFailed:  1\n"
                                         "Folders: 0 of 1 removed\n"),
                 outcome.output.constData());
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(Scratch::content(file), QByteArray(6, '\0'));
    }

    void aReportWithoutANameErasesNothing_data()
    {
        QTest::addColumn<QByteArray>("item");
        QTest::newRow("a file") << QByteArray("folder/a");
        QTest::newRow("a folder") << QByteArray("folder");
    }

    void aReportWithoutANameErasesNothing()
    {
        QFETCH(QByteArray, item);
        const Scratch scratch;
        scratch.folder("folder");
        const QByteArray file = scratch.file("folder/a", "content");

        const Outcome outcome = Program(scratch, {"erase", "-yq", "--report=", item}).run();

        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aReportInAFolderThatIsGoneErasesNothing()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/a", "content");

        const Outcome outcome = Program(scratch, {"erase", "-yq", "--report=r", folder})
                                    .inRemovedFolder(scratch.folder("gone"))
                                    .run();

        QVERIFY2(outcome.errors.startsWith("r: "), outcome.errors.constData());
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
    }

    void aFolderThatStaysAlthoughAllInItIsErasedIsSaid()
    {
        const Scratch scratch;
        scratch.folder("full");
        const QByteArray file = scratch.file("full/kept", "content");
        const QByteArray link = scratch.link("link", "full");

        const Outcome outcome = run(scratch, {"-yq", "--json", link});

        QCOMPARE(outcome.errors, link + ": Directory not empty\n");
        QVERIFY(outcome.output.contains("Directory not empty"));
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(Scratch::content(file), QByteArray("content"));
        QVERIFY(Scratch::exists(link));
    }
};

QTEST_GUILESS_MAIN(EraseCommandTest)
#include "EraseCommandTest.moc"
