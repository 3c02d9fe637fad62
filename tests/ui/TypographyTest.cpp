#include "ui/Typography.h"

#include <QApplication>
#include <QFontInfo>
#include <QTest>

Q_DECLARE_METATYPE(TextStyle)

class TypographyTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { font_ = QApplication::font(); }
    void cleanup() { QApplication::setFont(font_); }

    void theFactorIsTheFontOverThirteenWithinBounds_data();
    void theFactorIsTheFontOverThirteenWithinBounds();
    void stylesHaveTheseSizes_data();
    void stylesHaveTheseSizes();
    void fontsAreTheSystemsInTheStylesSizeAndWeight_data();
    void fontsAreTheSystemsInTheStylesSizeAndWeight();
    void lengthsGrowWithTheFont_data();
    void lengthsGrowWithTheFont();
    void aFontInPointsCountsByItsPixels();
    void familyAndSlantAreTheSystems();

  private:
    static void setFontPixels(int pixels)
    {
        QFont font = QApplication::font();
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }

    QFont font_;
};

void TypographyTest::theFactorIsTheFontOverThirteenWithinBounds_data()
{
    QTest::addColumn<double>("pixels");
    QTest::addColumn<double>("factor");
    QTest::newRow("none") << 0.0 << 1.0;
    QTest::newRow("small") << 10.0 << 1.0;
    QTest::newRow("usual") << 13.0 << 1.0;
    QTest::newRow("larger by a quarter") << 16.25 << 1.25;
    QTest::newRow("larger by half") << 19.5 << 1.5;
    QTest::newRow("the largest that counts") << 20.8 << 1.6;
    QTest::newRow("larger still") << 40.0 << 1.6;
}

void TypographyTest::theFactorIsTheFontOverThirteenWithinBounds()
{
    QFETCH(double, pixels);
    QFETCH(double, factor);
    QCOMPARE(Typography::factorFor(pixels), factor);
}

void TypographyTest::stylesHaveTheseSizes_data()
{
    QTest::addColumn<TextStyle>("style");
    QTest::addColumn<QList<int>>("sizes");
    QTest::addColumn<QList<int>>("lines");
    using Sizes = QList<int>; // at 1, 1.25, 1.5 and 1.6 times
    const Sizes body{13, 16, 20, 21};
    const Sizes small{12, 15, 18, 19};
    const Sizes twenty{20, 25, 30, 32};
    const Sizes sixteen{16, 20, 24, 26};
    QTest::newRow("result") << TextStyle::Result << Sizes{28, 35, 42, 45} << Sizes{36, 45, 54, 58};
    QTest::newRow("headline") << TextStyle::Headline << Sizes{24, 30, 36, 38}
                              << Sizes{32, 40, 48, 51};
    QTest::newRow("heading") << TextStyle::Heading << twenty << Sizes{28, 35, 42, 45};
    QTest::newRow("dialog title") << TextStyle::DialogTitle << Sizes{15, 19, 23, 24} << twenty;
    QTest::newRow("value") << TextStyle::Value << Sizes{14, 18, 21, 22} << twenty;
    QTest::newRow("body") << TextStyle::Body << body << twenty;
    QTest::newRow("medium body") << TextStyle::BodyMedium << body << twenty;
    QTest::newRow("strong body") << TextStyle::BodyStrong << body << twenty;
    QTest::newRow("small") << TextStyle::Small << small << sixteen;
    QTest::newRow("medium small") << TextStyle::SmallMedium << small << sixteen;
    QTest::newRow("strong small") << TextStyle::SmallStrong << small << twenty;
    QTest::newRow("description") << TextStyle::Description << small << Sizes{18, 23, 27, 29};
}

void TypographyTest::stylesHaveTheseSizes()
{
    QFETCH(TextStyle, style);
    QFETCH(QList<int>, sizes);
    QFETCH(QList<int>, lines);
    const QList<double> factors{1, 1.25, 1.5, 1.6};
    for (int index = 0; index < factors.size(); ++index) {
        QCOMPARE(Typography::pixelSizeFor(style, factors.at(index)), sizes.at(index));
        QCOMPARE(Typography::lineHeightFor(style, factors.at(index)), lines.at(index));
    }
}

void TypographyTest::fontsAreTheSystemsInTheStylesSizeAndWeight_data()
{
    QTest::addColumn<TextStyle>("style");
    QTest::addColumn<int>("weight");
    QTest::newRow("result") << TextStyle::Result << 600;
    QTest::newRow("headline") << TextStyle::Headline << 600;
    QTest::newRow("heading") << TextStyle::Heading << 600;
    QTest::newRow("dialog title") << TextStyle::DialogTitle << 600;
    QTest::newRow("value") << TextStyle::Value << 600;
    QTest::newRow("body") << TextStyle::Body << 400;
    QTest::newRow("medium body") << TextStyle::BodyMedium << 500;
    QTest::newRow("strong body") << TextStyle::BodyStrong << 600;
    QTest::newRow("small") << TextStyle::Small << 400;
    QTest::newRow("medium small") << TextStyle::SmallMedium << 500;
    QTest::newRow("strong small") << TextStyle::SmallStrong << 600;
    QTest::newRow("description") << TextStyle::Description << 400;
}

void TypographyTest::fontsAreTheSystemsInTheStylesSizeAndWeight()
{
    QFETCH(TextStyle, style);
    QFETCH(int, weight);
    for (const int pixels : {10, 13, 16, 30}) {
        setFontPixels(pixels);
        const double factor = Typography::factorFor(pixels);
        QCOMPARE(Typography::font(style).pixelSize(), Typography::pixelSizeFor(style, factor));
        QCOMPARE(Typography::lineHeight(style), Typography::lineHeightFor(style, factor));
        QCOMPARE(int(Typography::font(style).weight()), weight);
    }
}

void TypographyTest::lengthsGrowWithTheFont_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("scaled");
    QTest::newRow("usual") << 13 << 100;
    QTest::newRow("small") << 9 << 100;
    QTest::newRow("larger") << 16 << 123;
    QTest::newRow("by half") << 20 << 154;
    QTest::newRow("too large") << 40 << 160;
}

void TypographyTest::lengthsGrowWithTheFont()
{
    QFETCH(int, pixels);
    QFETCH(int, scaled);
    setFontPixels(pixels);
    QCOMPARE(Typography::scaled(100), scaled);
}

void TypographyTest::aFontInPointsCountsByItsPixels()
{
    QFont font = QApplication::font();
    font.setPointSizeF(12);
    QApplication::setFont(font);
    const double factor = Typography::factorFor(QFontInfo(font).pixelSize());
    QVERIFY(factor > 1 && factor < 1.6);
    QCOMPARE(Typography::factor(), factor);
}

void TypographyTest::familyAndSlantAreTheSystems()
{
    QFont font(QStringLiteral("Some family"));
    font.setPixelSize(13);
    font.setItalic(true);
    QApplication::setFont(font);
    QCOMPARE(Typography::font(TextStyle::Value).family(), QStringLiteral("Some family"));
    QVERIFY(Typography::font(TextStyle::Value).italic());
}

QTEST_MAIN(TypographyTest)
#include "TypographyTest.moc"
