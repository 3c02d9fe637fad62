#include "platform/PathBytes.h"

#include <QTest>

class PathBytesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aPathSplitsAtItsLastSlash_data();
    void aPathSplitsAtItsLastSlash();
    void theRootFolderIsItsOwnNameAndHolder();
    void aNameAloneHasNoHolder();
    void trailingSlashesGoButForTheRootFolders();
    void joiningUndoesTheSplit_data() { aPathSplitsAtItsLastSlash_data(); }
    void joiningUndoesTheSplit();
    void joiningSetsOneSlash();
    void aHandedOverPathBecomesAbsoluteAndPlain_data();
    void aHandedOverPathBecomesAbsoluteAndPlain();
    void nothingIsResolved_data();
    void nothingIsResolved();
    void anEmptyPathStaysEmptyAndANullOneNull();
    void withoutStartFolderARelativePathStaysAsItIs();
    void printableTextIsOneLineOfSafeCharacters_data();
    void printableTextIsOneLineOfSafeCharacters();
    void differentPathsArePrintedDifferently();
    void theSystemTakesPathsShorterThanItsLimit();
};

void PathBytesTest::aPathSplitsAtItsLastSlash_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a file in a folder")
        << QByteArray("/a/b") << QByteArray("/a") << QByteArray("b");
    QTest::newRow("a file in the root folder")
        << QByteArray("/a") << QByteArray("/") << QByteArray("a");
    QTest::newRow("deeper") << QByteArray("/a/b/c d") << QByteArray("/a/b") << QByteArray("c d");
    QTest::newRow("a hidden name") << QByteArray("/a/.b") << QByteArray("/a") << QByteArray(".b");
    QTest::newRow("not UTF-8") << QByteArray("/\xff/\xfe\xfd") << QByteArray("/\xff")
                               << QByteArray("\xfe\xfd");
    QTest::newRow("a newline") << QByteArray("/a\n/\nb") << QByteArray("/a\n") << QByteArray("\nb");
    QTest::newRow("semicolon and percent")
        << QByteArray("/a;/%2F;") << QByteArray("/a;") << QByteArray("%2F;");
}

void PathBytesTest::aPathSplitsAtItsLastSlash()
{
    QFETCH(QByteArray, path);
    QTEST(PathBytes::withoutLastComponent(path), "folder");
    QTEST(PathBytes::lastComponent(path), "name");
    QTEST(PathBytes::withoutLastComponent(path + "//"), "folder");
    QTEST(PathBytes::lastComponent(path + '/'), "name");
}

void PathBytesTest::theRootFolderIsItsOwnNameAndHolder()
{
    for (const char *root : {"/", "//", "///"}) {
        QCOMPARE(PathBytes::lastComponent(root), "/");
        QCOMPARE(PathBytes::withoutLastComponent(root), "/");
    }
}

void PathBytesTest::aNameAloneHasNoHolder()
{
    QCOMPARE(PathBytes::lastComponent("name"), "name");
    QCOMPARE(PathBytes::withoutLastComponent("name"), "");
    QCOMPARE(PathBytes::lastComponent(""), "");
    QCOMPARE(PathBytes::withoutLastComponent(""), "");
}

void PathBytesTest::trailingSlashesGoButForTheRootFolders()
{
    QCOMPARE(PathBytes::withoutTrailingSlashes("/a/b"), "/a/b");
    QCOMPARE(PathBytes::withoutTrailingSlashes("/a//b//"), "/a//b");
    QCOMPARE(PathBytes::withoutTrailingSlashes("///"), "/");
    QCOMPARE(PathBytes::withoutTrailingSlashes("a/"), "a");
    QCOMPARE(PathBytes::withoutTrailingSlashes(""), "");
}

void PathBytesTest::joiningUndoesTheSplit()
{
    QFETCH(QByteArray, path);
    QCOMPARE(PathBytes::join(PathBytes::withoutLastComponent(path), PathBytes::lastComponent(path)),
             path);
}

void PathBytesTest::joiningSetsOneSlash()
{
    QCOMPARE(PathBytes::join("/", "a"), "/a");
    QCOMPARE(PathBytes::join("/a", "b"), "/a/b");
    QCOMPARE(PathBytes::join("/a/", "b"), "/a/b");
}

void PathBytesTest::aHandedOverPathBecomesAbsoluteAndPlain_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("absolute") << QByteArray("/a/b") << QByteArray("/a/b");
    QTest::newRow("relative") << QByteArray("a/b") << QByteArray("/start/a/b");
    QTest::newRow("a dot first") << QByteArray("./a") << QByteArray("/start/a");
    QTest::newRow("a dot between") << QByteArray("/a/./b") << QByteArray("/a/b");
    QTest::newRow("a dot last") << QByteArray("/a/.") << QByteArray("/a");
    QTest::newRow("only a dot") << QByteArray(".") << QByteArray("/start");
    QTest::newRow("doubled slashes") << QByteArray("//a///b") << QByteArray("/a/b");
    QTest::newRow("a trailing slash") << QByteArray("/a/b/") << QByteArray("/a/b");
    QTest::newRow("trailing slashes") << QByteArray("a///") << QByteArray("/start/a");
    QTest::newRow("the root folder") << QByteArray("/") << QByteArray("/");
    QTest::newRow("slashes only") << QByteArray("///") << QByteArray("/");
    QTest::newRow("the root folder and a dot") << QByteArray("/.") << QByteArray("/");
    QTest::newRow("bytes that are not UTF-8")
        << QByteArray("\xff/./\xfe") << QByteArray("/start/\xff/\xfe");
    QTest::newRow("blanks and newlines") << QByteArray(" /\n") << QByteArray("/start/ /\n");
}

void PathBytesTest::aHandedOverPathBecomesAbsoluteAndPlain()
{
    QFETCH(QByteArray, path);
    QTEST(PathBytes::absolute(path, "/start"), "expected");
}

void PathBytesTest::nothingIsResolved_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("the folder above") << QByteArray("/a/../b") << QByteArray("/a/../b");
    QTest::newRow("above the start") << QByteArray("..") << QByteArray("/start/..");
    QTest::newRow("three dots") << QByteArray("/a/...") << QByteArray("/a/...");
    QTest::newRow("a tilde") << QByteArray("~/a") << QByteArray("/start/~/a");
    QTest::newRow("a hidden name") << QByteArray(".a") << QByteArray("/start/.a");
}

void PathBytesTest::nothingIsResolved()
{
    QFETCH(QByteArray, path);
    QTEST(PathBytes::absolute(path, "/start"), "expected");
}

void PathBytesTest::anEmptyPathStaysEmptyAndANullOneNull()
{
    QVERIFY(PathBytes::absolute("", "/start").isEmpty());
    QVERIFY(!PathBytes::absolute("", "/start").isNull());
    QVERIFY(PathBytes::absolute(QByteArray(), "/start").isNull());
}

void PathBytesTest::withoutStartFolderARelativePathStaysAsItIs()
{
    QCOMPARE(PathBytes::absolute("a/./b/", QByteArray()), "a/./b/");
    QCOMPARE(PathBytes::absolute("/a/./b/", QByteArray()), "/a/b");
}

void PathBytesTest::printableTextIsOneLineOfSafeCharacters_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QByteArray("/a b;c") << QStringLiteral("/a b;c");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("letters beyond the first 128") << QByteArray("/Gr\xc3\xbc\xc3\x9f"
                                                                "e \xf0\x9f\x98\x80")
                                                  << QStringLiteral(u"/Gr\u00fc\u00dfe \U0001F600");
    QTest::newRow("newline, return and tab")
        << QByteArray("a\nb\rc\td") << QStringLiteral("a\\nb\\rc\\td");
    QTest::newRow("other control characters")
        << QByteArray("\x01\x1b[31m\x7f") << QStringLiteral("\\x01\\x1b[31m\\x7f");
    QTest::newRow("a backslash") << QByteArray("a\\n") << QStringLiteral("a\\\\n");
    QTest::newRow("a control character of the upper half") << QByteArray("a\xc2\x9b"
                                                                         "b")
                                                           << QStringLiteral("a\\xc2\\x9bb");
    QTest::newRow("the order of letters turned round") << QByteArray("a\xe2\x80\xae"
                                                                     "b")
                                                       << QStringLiteral("a\\xe2\\x80\\xaeb");
    QTest::newRow("a line separator") << QByteArray("a\xe2\x80\xa8"
                                                    "b")
                                      << QStringLiteral("a\\xe2\\x80\\xa8b");
    QTest::newRow("a paragraph separator") << QByteArray("a\xe2\x80\xa9"
                                                         "b")
                                           << QStringLiteral("a\\xe2\\x80\\xa9b");
    QTest::newRow("a single byte of the upper half") << QByteArray("a\xff"
                                                                   "b")
                                                     << QStringLiteral("a\\xffb");
    QTest::newRow("a stray continuation byte") << QByteArray("\x80") << QStringLiteral("\\x80");
    QTest::newRow("an overlong slash") << QByteArray("\xc0\xaf") << QStringLiteral("\\xc0\\xaf");
    QTest::newRow("half of a surrogate pair")
        << QByteArray("\xed\xa0\x80") << QStringLiteral("\\xed\\xa0\\x80");
    QTest::newRow("beyond the last character")
        << QByteArray("\xf4\x90\x80\x80") << QStringLiteral("\\xf4\\x90\\x80\\x80");
    QTest::newRow("a sequence cut short")
        << QByteArray("a\xe2\x82") << QStringLiteral("a\\xe2\\x82");
    QTest::newRow("a cut sequence before a letter") << QByteArray("\xe2\x82"
                                                                  "b")
                                                    << QStringLiteral("\\xe2\\x82b");
}

void PathBytesTest::printableTextIsOneLineOfSafeCharacters()
{
    QFETCH(QByteArray, path);
    QTEST(PathBytes::printable(path), "text");
}

void PathBytesTest::differentPathsArePrintedDifferently()
{
    QVERIFY(PathBytes::printable("a\nb") != PathBytes::printable("a\\nb"));
    QVERIFY(PathBytes::printable("a\xff") != PathBytes::printable("a\\xff"));
}

void PathBytesTest::theSystemTakesPathsShorterThanItsLimit()
{
    QCOMPARE(PathBytes::longestPath, qsizetype(4095));
    QVERIFY(PathBytes::fitsTheSystem(QByteArray(4095, 'a')));
    QVERIFY(!PathBytes::fitsTheSystem(QByteArray(4096, 'a')));
}

QTEST_APPLESS_MAIN(PathBytesTest)
#include "PathBytesTest.moc"
