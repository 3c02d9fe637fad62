#include "support/MainStatusToImage.h"
#include "FakeImageSource.h"

#include <QTest>

class MainStatusToImageTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyRunStatusHasItsIcon_data();
    void everyRunStatusHasItsIcon();
    void noRunStatusIsInactive();
};

void MainStatusToImageTest::everyRunStatusHasItsIcon_data()
{
    QTest::addColumn<qint64>("status");
    QTest::addColumn<QString>("name");
    QTest::newRow("initial") << qint64(0) << QStringLiteral("icon_status_inactive");
    QTest::newRow("below done") << qint64(3) << QStringLiteral("icon_status_inactive");
    QTest::newRow("done") << qint64(4) << QStringLiteral("icon_status_done");
    QTest::newRow("between done and busy") << qint64(5) << QStringLiteral("icon_status_inactive");
    QTest::newRow("busy") << qint64(6) << QStringLiteral("icon_status_busy");
    QTest::newRow("above busy") << qint64(7) << QStringLiteral("icon_status_inactive");
    QTest::newRow("negative") << qint64(-4) << QStringLiteral("icon_status_inactive");
    QTest::newRow("done in its lower half only")
        << (qint64(1) << 32) + 4 << QStringLiteral("icon_status_inactive");
}

void MainStatusToImageTest::everyRunStatusHasItsIcon()
{
    QFETCH(qint64, status);
    QFETCH(QString, name);
    const FakeImageSource images;
    QCOMPARE(MainStatusToImage::imageName(status), name);
    QCOMPARE(MainStatusToImage(images).transformedValue(status), images.imageNamed(name));
}

void MainStatusToImageTest::noRunStatusIsInactive()
{
    const FakeImageSource images;
    QCOMPARE(MainStatusToImage(images).transformedValue(QVariant()),
             images.imageNamed(QStringLiteral("icon_status_inactive")));
}

QTEST_APPLESS_MAIN(MainStatusToImageTest)
#include "MainStatusToImageTest.moc"
