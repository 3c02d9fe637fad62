#include "support/ExtensionImage.h"
#include "FakeImageSource.h"

#include <QTest>

class ExtensionImageTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theExtensionFollowsTheLastFullStopOfTheLastComponent_data();
    void theExtensionFollowsTheLastFullStopOfTheLastComponent();
    void aNameInCapitalsAsksForTheLowerCaseExtension();
    void aNameWithoutExtensionAsksForTheEmptyOne();
    void aNameInBytesIsReadAsText();
    void noValueHasNoIcon_data();
    void noValueHasNoIcon();
    void theEmptyNameAsksForTheEmptyExtension();
    void theIconForAnExtensionIsTheSourcesOwn();
};

void ExtensionImageTest::theExtensionFollowsTheLastFullStopOfTheLastComponent_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("extension");
    QTest::newRow("a name") << QStringLiteral("letter.txt") << QStringLiteral("txt");
    QTest::newRow("a path") << QStringLiteral("/home/me/letter.txt") << QStringLiteral("txt");
    QTest::newRow("capitals") << QStringLiteral("LETTER.TXT") << QStringLiteral("txt");
    QTest::newRow("two full stops") << QStringLiteral("archive.tar.gz") << QStringLiteral("gz");
    QTest::newRow("two full stops together") << QStringLiteral("a..txt") << QStringLiteral("txt");
    QTest::newRow("a single letter before") << QStringLiteral("a.c") << QStringLiteral("c");
    QTest::newRow("none") << QStringLiteral("README") << QString();
    QTest::newRow("nothing at all") << QString() << QString();
    QTest::newRow("a full stop in the folder only")
        << QStringLiteral("/etc/init.d/README") << QString();
    QTest::newRow("a hidden name") << QStringLiteral(".bashrc") << QString();
    QTest::newRow("a hidden name in a folder") << QStringLiteral("/home/me/.bashrc") << QString();
    QTest::newRow("a hidden name with an extension")
        << QStringLiteral(".config.ini") << QStringLiteral("ini");
    QTest::newRow("a full stop at the end") << QStringLiteral("name.") << QString();
    QTest::newRow("a full stop at the end after an extension")
        << QStringLiteral("name.txt.") << QString();
    QTest::newRow("a slash at the end")
        << QStringLiteral("/home/me/photos.d/") << QStringLiteral("d");
    QTest::newRow("slashes at the end") << QStringLiteral("photos.d//") << QStringLiteral("d");
    QTest::newRow("a slash at the end of a hidden name")
        << QStringLiteral("/home/me/.cache/") << QString();
    QTest::newRow("the root") << QStringLiteral("/") << QString();
    QTest::newRow("the folder itself") << QStringLiteral(".") << QString();
    QTest::newRow("the folder above") << QStringLiteral("..") << QString();
    QTest::newRow("a blank in the extension")
        << QStringLiteral("draft.No 2") << QStringLiteral("no 2");
    QTest::newRow("letters beyond the first 128")
        << QStringLiteral("name.\u00c4\u00d6") << QStringLiteral("\u00e4\u00f6");
}

void ExtensionImageTest::theExtensionFollowsTheLastFullStopOfTheLastComponent()
{
    QFETCH(QString, path);
    QTEST(ExtensionImage::lowerCaseExtension(path), "extension");
}

void ExtensionImageTest::aNameInCapitalsAsksForTheLowerCaseExtension()
{
    const FakeImageSource images;
    QCOMPARE(ExtensionImage(images).transformedValue(QStringLiteral("/home/me/PHOTO.JPEG")),
             QVariant(QStringLiteral("icon for [jpeg]")));
}

void ExtensionImageTest::aNameWithoutExtensionAsksForTheEmptyOne()
{
    const FakeImageSource images;
    QCOMPARE(ExtensionImage(images).transformedValue(QStringLiteral("README")),
             QVariant(QStringLiteral("icon for []")));
}

void ExtensionImageTest::aNameInBytesIsReadAsText()
{
    const FakeImageSource images;
    QCOMPARE(ExtensionImage(images).transformedValue(QByteArray("/home/me/\xff.Pdf")),
             QVariant(QStringLiteral("icon for [pdf]")));
}

void ExtensionImageTest::noValueHasNoIcon_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("invalid") << QVariant();
    QTest::newRow("a null text") << QVariant(QMetaType::fromType<QString>());
}

void ExtensionImageTest::noValueHasNoIcon()
{
    QFETCH(QVariant, value);
    const FakeImageSource images;
    QVERIFY(!ExtensionImage(images).transformedValue(value).isValid());
}

void ExtensionImageTest::theEmptyNameAsksForTheEmptyExtension()
{
    const FakeImageSource images;
    QCOMPARE(ExtensionImage(images).transformedValue(QString()),
             QVariant(QStringLiteral("icon for []")));
}

void ExtensionImageTest::theIconForAnExtensionIsTheSourcesOwn()
{
    const FakeImageSource images;
    QCOMPARE(ExtensionImage(images).getIconForFileExtension(QStringLiteral("png")),
             QVariant(QStringLiteral("icon for [png]")));
}

QTEST_APPLESS_MAIN(ExtensionImageTest)
#include "ExtensionImageTest.moc"
