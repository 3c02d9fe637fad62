#include "ui/Pictures.h"

#include "ui/ThemedPreferences.h"

#include <QDir>
#include <QPainter>
#include <QTest>

namespace {

const QStringList allNames =
    QStringLiteral("img_status_ok img_status_nok icon_status_inactive "
                   "icon_status_busy icon_status_done btn_blue btn_blue_hi "
                   "btn_blue_in btn_red btn_red_hi btn_red_in symbol_add "
                   "symbol_preferences symbol_menu symbol_error_log "
                   "symbol_minimise symbol_close symbol_arrow symbol_check "
                   "symbol_caution row_in_work document folder attention_badge drop_folder "
                   "drop_picture drop_page application_icon application_icon_small")
        .split(QLatin1Char(' '));

QImage canvas(const QSize &size, double ratio = 1)
{
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

int paintedPixels(const QImage &image)
{
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            painted += image.pixelColor(x, y).alpha() > 0;
    }
    return painted;
}

QRect paintedBounds(const QImage &image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 0)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

} // namespace

class PicturesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyNameHasItsPicture_data();
    void everyNameHasItsPicture();
    void sizesAreTheDrawings_data();
    void sizesAreTheDrawings();
    void aNameWithoutPictureDrawsNothing();
    void aPixmapHasTheDevicesPixels();
    void aTintFillsTheShapeAlone();
    void twoTintsAreTwoPictures();
    void theDarkThemeShowsTheDarkForm();
    void picturesOfARunAreTheSameInBothThemes();
    void paintingFillsTheRectangleAndNotMore();
    void aPlaceBetweenPixelsIsMovedToWholeOnes_data();
    void aPlaceBetweenPixelsIsMovedToWholeOnes();
    void paintingHonoursTheDevicesRatio();
    void aTurnedPainterTurnsThePicture();
    void thePaintersStateIsLeftAsItWas();
    void aPartFillsItsTarget();

  private:
    ThemedPreferences preferences_;
};

void PicturesTest::everyNameHasItsPicture_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : allNames)
        QTest::newRow(qPrintable(name)) << name;
}

void PicturesTest::everyNameHasItsPicture()
{
    QFETCH(const QString, name);

    for (const bool isDark : {false, true}) {
        preferences_.setDark(isDark);
        QVERIFY(Pictures::exists(name));
        const QSize size = Pictures::sizeOf(name).toSize();
        QVERIFY(!size.isEmpty());
        QVERIFY(paintedPixels(Pictures::pixmap(name, size, 1).toImage()) > 10);
    }
    preferences_.setDark(false);
}

void PicturesTest::sizesAreTheDrawings_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("blue button") << QStringLiteral("btn_blue_in") << QSizeF(65, 32);
    QTest::newRow("red button") << QStringLiteral("btn_red_hi") << QSizeF(50, 40);
    QTest::newRow("row icon") << QStringLiteral("img_status_ok") << QSizeF(16, 16);
    QTest::newRow("status") << QStringLiteral("icon_status_busy") << QSizeF(48, 48);
    QTest::newRow("drop drawing") << QStringLiteral("drop_page") << QSizeF(240, 176);
    QTest::newRow("none") << QStringLiteral("no_such_picture") << QSizeF();
}

void PicturesTest::sizesAreTheDrawings()
{
    QFETCH(const QString, name);
    QFETCH(const QSizeF, size);

    QCOMPARE(Pictures::sizeOf(name), size);
}

void PicturesTest::aNameWithoutPictureDrawsNothing()
{
    const QString name = QStringLiteral("no_such_picture");
    QImage image = canvas({20, 20});
    QPainter painter(&image);

    Pictures::paint(painter, name, QRectF(0, 0, 20, 20));
    Pictures::paint(painter, name, QRectF(0, 0, 20, 20), QColor(Qt::red));
    Pictures::paintPart(painter, name, QRectF(0, 0, 4, 4), QRectF(0, 0, 20, 20));

    QVERIFY(!Pictures::exists(name));
    QVERIFY(Pictures::pixmap(name, QSize(20, 20), 1).isNull());
    QCOMPARE(paintedPixels(image), 0);
}

void PicturesTest::aPixmapHasTheDevicesPixels()
{
    const QPixmap pixmap = Pictures::pixmap(QStringLiteral("img_status_nok"), QSize(16, 16), 2);

    QCOMPARE(pixmap.size(), QSize(32, 32));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    // 14 points wide, drawn from the vectors: whole pixels up to the edge.
    const QImage image = pixmap.toImage();
    QCOMPARE(image.pixelColor(1, 16).alpha(), 0);
    QCOMPARE(image.pixelColor(2, 16), QColor(0xD0, 0x45, 0x3B));
    QCOMPARE(image.pixelColor(29, 16), QColor(0xD0, 0x45, 0x3B));
    QCOMPARE(image.pixelColor(30, 16).alpha(), 0);
}

void PicturesTest::aTintFillsTheShapeAlone()
{
    const QColor tint(10, 200, 30);
    const QImage image =
        Pictures::pixmap(QStringLiteral("symbol_caution"), QSize(32, 32), 1, tint).toImage();

    QCOMPARE(image.pixelColor(16, 5), tint);
    QCOMPARE(image.pixelColor(8, 26), tint);
    QCOMPARE(image.pixelColor(16, 14).alpha(), 0); // the mark is cut out
    QCOMPARE(image.pixelColor(2, 2).alpha(), 0);
}

void PicturesTest::twoTintsAreTwoPictures()
{
    const auto centre = [](const QColor &tint) {
        return Pictures::pixmap(QStringLiteral("symbol_add"), QSize(16, 16), 1, tint)
            .toImage()
            .pixelColor(8, 8);
    };

    QCOMPARE(centre(Qt::red), QColor(Qt::red));
    QCOMPARE(centre(Qt::blue), QColor(Qt::blue));
    QCOMPARE(centre(Qt::red), QColor(Qt::red));
}

void PicturesTest::theDarkThemeShowsTheDarkForm()
{
    const auto paper = [] {
        return Pictures::pixmap(QStringLiteral("document"), QSize(16, 16), 2)
            .toImage()
            .pixelColor(10, 24);
    };

    QCOMPARE(paper(), QColor(Qt::white));
    preferences_.setDark(true);
    QVERIFY(paper() != QColor(Qt::white));
    preferences_.setDark(false);
    QCOMPARE(paper(), QColor(Qt::white));
}

void PicturesTest::picturesOfARunAreTheSameInBothThemes()
{
    for (const QString &name : allNames) {
        if (name.startsWith(QLatin1String("img_")) || name.startsWith(QLatin1String("icon_")) ||
            name.startsWith(QLatin1String("btn_")))
            QVERIFY2(!Pictures::exists(name + QStringLiteral("_dark")), qPrintable(name));
    }
}

void PicturesTest::paintingFillsTheRectangleAndNotMore()
{
    QImage image = canvas({80, 60});
    QPainter painter(&image);

    Pictures::paint(painter, QStringLiteral("img_status_nok"), QRectF(10, 20, 32, 32));

    QCOMPARE(paintedBounds(image), QRect(12, 22, 28, 28));
}

void PicturesTest::aPlaceBetweenPixelsIsMovedToWholeOnes_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<double>("place");
    QTest::addColumn<int>("pixel");
    QTest::newRow("100 %") << 1.0 << 8.3 << 8;
    QTest::newRow("100 %, half a pixel") << 1.0 << 8.5 << 9;
    QTest::newRow("125 %, nearly half a pixel") << 1.25 << 8.35 << 10;
    QTest::newRow("125 %, more than half a pixel") << 1.25 << 8.5 << 11;
    QTest::newRow("150 %") << 1.5 << 9.0 << 14;
    QTest::newRow("200 %") << 2.0 << 8.3 << 17;
}

void PicturesTest::aPlaceBetweenPixelsIsMovedToWholeOnes()
{
    QFETCH(const double, ratio);
    QFETCH(const double, place);
    QFETCH(const int, pixel);
    const QString name = QStringLiteral("img_status_nok");
    const int edge = int(16 * ratio);
    QImage image = canvas({40, 40}, ratio);
    {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
        Pictures::paint(painter, name, QRectF(place, place, 16, 16));
    }

    image.setDevicePixelRatio(1);
    const QImage drawing = Pictures::pixmap(name, QSize(edge, edge), 1).toImage();
    QCOMPARE(image.copy(pixel, pixel, edge, edge), drawing.convertToFormat(image.format()));
}

void PicturesTest::paintingHonoursTheDevicesRatio()
{
    QImage image = canvas({40, 40}, 2);
    QPainter painter(&image);
    painter.translate(4, 6);

    Pictures::paint(painter, QStringLiteral("img_status_nok"), QRectF(8, 8, 16, 16));

    QCOMPARE(paintedBounds(image), QRect(26, 30, 28, 28));
}

void PicturesTest::aTurnedPainterTurnsThePicture()
{
    QImage image = canvas({60, 60});
    QPainter painter(&image);
    painter.translate(30, 30);
    painter.rotate(45);

    Pictures::paint(painter, QStringLiteral("btn_red"), QRectF(-20, -20, 40, 40));

    QVERIFY(image.pixelColor(30, 6).alpha() == 255); // a corner, above the middle
    QVERIFY(image.pixelColor(6, 30).alpha() == 255); // and one left of it
    QCOMPARE(image.pixelColor(14, 14).alpha(), 0);   // where a corner of the upright one is
}

void PicturesTest::thePaintersStateIsLeftAsItWas()
{
    QImage image = canvas({40, 40});
    QPainter painter(&image);
    painter.translate(3, 4);
    const QTransform before = painter.transform();

    Pictures::paint(painter, QStringLiteral("img_status_ok"), QRectF(0, 0, 16, 16));
    Pictures::paintPart(painter, QStringLiteral("btn_blue"), QRectF(0, 0, 4, 32),
                        QRectF(0, 0, 4, 32));

    QCOMPARE(painter.transform(), before);
    QVERIFY(!painter.hasClipping());
}

void PicturesTest::aPartFillsItsTarget()
{
    QImage image = canvas({40, 40});
    {
        QPainter painter(&image);
        Pictures::paintPart(painter, QStringLiteral("btn_blue_in"), QRectF(10, 10, 5, 5),
                            QRectF(8, 6, 20, 10));
    }

    QCOMPARE(paintedBounds(image), QRect(8, 6, 20, 10));
}

QTEST_MAIN(PicturesTest)
#include "PicturesTest.moc"
