#include "platform/FileEntries.h"

#include <QTest>

namespace {

using Paths = std::vector<QByteArray>;

} // namespace

class FileEntriesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void anEntryIsAPathOrALocation_data();
    void anEntryIsAPathOrALocation();
    void locationsOnlyWhereOnlyLocationsMayStand();
    void theOrderStaysAndWhatNamesNoFileIsLeftOut();
    void everyByteOfANameComesThrough();
};

void FileEntriesTest::anEntryIsAPathOrALocation_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("path"); // null: left out
    const auto row = [](const char *name, const char *entry, const char *path) {
        QTest::newRow(name) << QString::fromUtf8(entry) << QByteArray(path);
    };
    row("a plain path", "/folder/a b", "/folder/a b");
    row("a plain path with a letter of another script", "/ordner/\xC3\xA4", "/ordner/\xC3\xA4");
    row("a plain path is not decoded", "/a%20b?c#d", "/a%20b?c#d");
    row("a plain path with a line break", "/a\nb", "/a\nb");
    row("a plain path with slashes to spare", "//a/./b/", "/a/b");
    row("a location", "file:///folder/a%20b", "/folder/a b");
    row("a location of this machine by name", "file://localhost/a", "/a");
    row("a location without slashes for the host", "file:/a", "/a");
    row("bytes that are not UTF-8", "file:///%FF%fe", "/\xFF\xFE");
    row("an encoded line break", "file:///a%0Ab", "/a\nb");
    row("an encoded percent sign is decoded once", "file:///%2541", "/%41");
    row("a letter of another script in a location", "file:///\xC3\xA4", "/\xC3\xA4");
    row("nothing", "", nullptr);
    row("a relative path", "folder/a", nullptr);
    row("a path from the home folder", "~/a", nullptr);
    row("a relative location", "file:a", nullptr);
    row("another machine's file", "file://elsewhere/a", nullptr);
    row("another scheme", "https://example.org/a", nullptr);
    row("an encoded NUL", "file:///a%00b", nullptr);
    row("an encoded slash", "file:///a%2Fb", nullptr);
    row("a broken code", "file:///a%4", nullptr);
    row("a query", "file:///a?b", nullptr);
    row("a fragment", "file:///a#b", nullptr);
    row("two locations in one", "file:///a\nfile:///b", nullptr);
    row("a line end behind a location", "file:///a\r\n", nullptr);
    row("space before a path", " /a", nullptr);
}

void FileEntriesTest::anEntryIsAPathOrALocation()
{
    QFETCH(QString, entry);
    QFETCH(QByteArray, path);
    QCOMPARE(FileEntries::paths({entry}), path.isNull() ? Paths() : Paths({path}));
}

void FileEntriesTest::locationsOnlyWhereOnlyLocationsMayStand()
{
    QCOMPARE(FileEntries::pathsOfUris({QStringLiteral("/a"), QStringLiteral("file:///b")}),
             Paths({"/b"}));
}

void FileEntriesTest::theOrderStaysAndWhatNamesNoFileIsLeftOut()
{
    QCOMPARE(FileEntries::paths({QStringLiteral("/b"), QStringLiteral("c"),
                                 QStringLiteral("file:///a"), QStringLiteral("/b")}),
             Paths({"/b", "/a", "/b"}));
    QCOMPARE(FileEntries::paths({}), Paths());
}

void FileEntriesTest::everyByteOfANameComesThrough()
{
    Paths paths;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/')
            paths.push_back(QByteArray("/folder/a") + char(byte) + 'z');
    }
    const QStringList uris = FileEntries::uris(paths);
    for (const QString &uri : uris)
        QCOMPARE(QString::fromLatin1(uri.toLatin1()), uri);
    QCOMPARE(FileEntries::pathsOfUris(uris), paths);
}

QTEST_GUILESS_MAIN(FileEntriesTest)
#include "FileEntriesTest.moc"
