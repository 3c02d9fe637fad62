#include "ui/ApplicationIcon.h"

#include <QImage>
#include <QTest>

class IconFilesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everySizeOfTheApplicationIconIsAFile_data();
    void everySizeOfTheApplicationIconIsAFile();
};

namespace {

/// The widest difference of a colour or of the opacity, of 255, at any point.
int difference(const QImage &one, const QImage &other)
{
    int widest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            for (const int part : {qRed(a) - qRed(b), qGreen(a) - qGreen(b), qBlue(a) - qBlue(b),
                                   qAlpha(a) - qAlpha(b)})
                widest = std::max(widest, std::abs(part));
        }
    }
    return widest;
}

} // namespace

void IconFilesTest::everySizeOfTheApplicationIconIsAFile_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize &size : ApplicationIcon::icon().availableSizes())
        QTest::addRow("%d", size.width()) << size;
}

void IconFilesTest::everySizeOfTheApplicationIconIsAFile()
{
    QFETCH(QSize, size);
    const auto premultiplied = QImage::Format_ARGB32_Premultiplied;
    const QImage shown =
        ApplicationIcon::icon().pixmap(size, 1.0).toImage().convertToFormat(premultiplied);
    const QImage file = QImage(QStringLiteral(VANTOREL_ICONS "/icon-%1.png").arg(size.width()))
                            .convertToFormat(premultiplied);
    QCOMPARE(shown.size(), size);
    QCOMPARE(file.size(), size);
    QCOMPARE(qAlpha(file.pixel(size.width() / 2, size.height() / 2)), 255);
    QVERIFY2(difference(file, shown) <= 1, "the file is another drawing than the window's");
}

QTEST_MAIN(IconFilesTest)
#include "IconFilesTest.moc"
