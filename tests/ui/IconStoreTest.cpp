#include "ui/IconStore.h"

#include "kit/Scratch.h"
#include "ui/ApplicationIcon.h"
#include "ui/Pictures.h"
#include "ui/ThemedPreferences.h"

#include <QImage>
#include <QTest>

namespace {

constexpr QSize size(16, 16);

QIcon iconFrom(const QVariant &value)
{
    return value.value<QIcon>();
}

QImage image(const QIcon &icon)
{
    return icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// An icon theme with one icon, for plain text: a red square.
class RedTextTheme
{
  public:
    RedTextTheme()
    {
        QVERIFY(!folder_.folder("red").isEmpty() && !folder_.folder("red/16").isEmpty());
        QVERIFY(!folder_
                     .file("red/index.theme", "[Icon Theme]\nName=red\nDirectories=16\n\n"
                                              "[16]\nSize=16\nType=Scalable\nMinSize=8\n")
                     .isEmpty());
        QImage red(size, QImage::Format_ARGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(QString::fromUtf8(folder_.path("red/16/text-plain.png"))));
        QIcon::setThemeSearchPaths({QString::fromUtf8(folder_.path())});
        QIcon::setThemeName(QStringLiteral("red"));
    }
    ~RedTextTheme()
    {
        QIcon::setThemeName(QStringLiteral("none"));
        QIcon::setThemeSearchPaths({});
    }
    RedTextTheme(const RedTextTheme &) = delete;
    RedTextTheme &operator=(const RedTextTheme &) = delete;

  private:
    Scratch folder_;
};

} // namespace

class IconStoreTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void aNameGivesThePictureOfExactlyThatName();
    void aNameWithoutPictureGivesNothing();
    void anExtensionGivesTheDesktopsIcon();
    void withoutADesktopsIconTheBundledDocumentIsShown_data();
    void withoutADesktopsIconTheBundledDocumentIsShown();
    void anExtensionIsLookedUpOnce();
    void noFileIsLookedAt();
    void aPictureIsDrawnAnewAtEachSize();
    void theDocumentFollowsTheTheme();
    void theApplicationIconHasASimpleFormUpTo32Pixels_data();
    void theApplicationIconHasASimpleFormUpTo32Pixels();
    void theApplicationIconHasAllSizes();

  private:
    ThemedPreferences preferences_;
};

void IconStoreTest::initTestCase()
{
    QIcon::setThemeName(QStringLiteral("none"));
    QIcon::setThemeSearchPaths({});
    QIcon::setFallbackSearchPaths({});
}

void IconStoreTest::aNameGivesThePictureOfExactlyThatName()
{
    const QImage ok = image(iconFrom(IconStore().imageNamed(QStringLiteral("img_status_ok"))));

    QCOMPARE(ok.size(), size);
    QCOMPARE(ok.pixelColor(3, 8), QColor(0x2A, 0x8A, 0x52));
}

void IconStoreTest::aNameWithoutPictureGivesNothing()
{
    QVERIFY(IconStore().imageNamed(QStringLiteral("IMG_STATUS_OK")).isNull());
    QVERIFY(IconStore().imageNamed(QString()).isNull());
}

void IconStoreTest::anExtensionGivesTheDesktopsIcon()
{
    const RedTextTheme theme;
    const IconStore store;

    QCOMPARE(image(iconFrom(store.iconForExtension(QStringLiteral("txt")))).pixelColor(8, 8),
             QColor(Qt::red));
}

void IconStoreTest::withoutADesktopsIconTheBundledDocumentIsShown_data()
{
    QTest::addColumn<QString>("extension");
    QTest::newRow("no extension") << QString();
    QTest::newRow("the empty extension") << QStringLiteral("");
    QTest::newRow("one that the theme has no icon for") << QStringLiteral("zip");
    QTest::newRow("one that nobody knows") << QStringLiteral("qqqqzz");
    QTest::newRow("one that is a path") << QStringLiteral("../../etc/passwd");
}

void IconStoreTest::withoutADesktopsIconTheBundledDocumentIsShown()
{
    QFETCH(const QString, extension);
    const RedTextTheme theme;
    const IconStore store;

    QCOMPARE(image(iconFrom(store.iconForExtension(extension))),
             image(iconFrom(store.imageNamed(QStringLiteral("document")))));
}

void IconStoreTest::anExtensionIsLookedUpOnce()
{
    const IconStore store;
    QIcon first;
    {
        const RedTextTheme theme;
        first = iconFrom(store.iconForExtension(QStringLiteral("txt")));
    }

    // The theme has gone; what was found stays.
    QCOMPARE(iconFrom(store.iconForExtension(QStringLiteral("txt"))).cacheKey(), first.cacheKey());
}

void IconStoreTest::noFileIsLookedAt()
{
    // A name with this extension here would make a program that looks at contents think of a
    // picture.
    const Scratch folder;
    const QByteArray file = folder.file("a.txt", "\x89PNG\r\n\x1a\n");
    QVERIFY(!file.isEmpty());
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QString::fromUtf8(folder.path())));
    const RedTextTheme theme;

    const QImage shown = image(iconFrom(IconStore().iconForExtension(QStringLiteral("txt"))));

    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(shown.pixelColor(8, 8), QColor(Qt::red));
}

void IconStoreTest::aPictureIsDrawnAnewAtEachSize()
{
    const QIcon icon = iconFrom(IconStore().imageNamed(QStringLiteral("icon_status_done")));

    const QImage large = icon.pixmap(QSize(240, 240)).toImage();

    QCOMPARE(large.size(), QSize(240, 240));
    // The ring, 2 points wide, is 10 pixels wide with sharp edges.
    QCOMPARE(large.pixelColor(120, 15), QColor(0x2A, 0x8A, 0x52));
    QVERIFY(large.pixelColor(120, 25).alpha() < 64);
    QCOMPARE(large,
             Pictures::pixmap(QStringLiteral("icon_status_done"), large.size(), 1).toImage());
}

void IconStoreTest::theDocumentFollowsTheTheme()
{
    const QIcon document = iconFrom(IconStore().iconForExtension(QString()));
    const QImage light = image(document);
    preferences_.setDark(true);
    const QImage dark = image(document);
    preferences_.setDark(false);

    QVERIFY(light != dark);
    QCOMPARE(image(document), light);
}

void IconStoreTest::theApplicationIconHasASimpleFormUpTo32Pixels_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<QString>("name");
    QTest::newRow("16") << 16 << QStringLiteral("application_icon_small");
    QTest::newRow("32") << 32 << QStringLiteral("application_icon_small");
    QTest::newRow("33") << 33 << QStringLiteral("application_icon");
    QTest::newRow("256") << 256 << QStringLiteral("application_icon");
}

void IconStoreTest::theApplicationIconHasASimpleFormUpTo32Pixels()
{
    QFETCH(const int, pixels);
    QFETCH(const QString, name);

    QCOMPARE(ApplicationIcon::pictureName(pixels), name);
}

void IconStoreTest::theApplicationIconHasAllSizes()
{
    const QIcon icon = ApplicationIcon::icon();

    for (const int pixels : {16, 24, 32, 48, 64, 128, 256})
        QVERIFY2(icon.availableSizes().contains(QSize(pixels, pixels)),
                 qPrintable(QString::number(pixels)));
    // A page of white paper below the bright line, in both forms.
    for (const int pixels : {32, 256}) {
        const QImage shown = icon.pixmap(QSize(pixels, pixels)).toImage();
        QCOMPARE(shown.pixelColor(pixels * 5 / 16, pixels * 25 / 32), QColor(Qt::white));
        QCOMPARE(shown.pixelColor(0, 0).alpha(), 0);
    }
}

QTEST_MAIN(IconStoreTest)
#include "IconStoreTest.moc"
