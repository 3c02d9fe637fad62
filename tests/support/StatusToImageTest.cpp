#include "support/StatusToImage.h"
#include "FakeImageSource.h"

#include <QTest>

#include <limits>

class StatusToImageTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aPendingFileHasNoIcon_data();
    void aPendingFileHasNoIcon();
    void everyOtherStatusHasItsIcon_data();
    void everyOtherStatusHasItsIcon();
    void theNameOfNoIconIsNull();
};

void StatusToImageTest::aPendingFileHasNoIcon_data()
{
    QTest::addColumn<QVariant>("status");
    QTest::newRow("pending") << QVariant(0);
    QTest::newRow("pending in 64 bits") << QVariant(qint64(0));
    QTest::newRow("no status") << QVariant();
}

void StatusToImageTest::aPendingFileHasNoIcon()
{
    QFETCH(QVariant, status);
    const FakeImageSource images;
    QVERIFY(!StatusToImage(images).transformedValue(status).isValid());
}

void StatusToImageTest::everyOtherStatusHasItsIcon_data()
{
    QTest::addColumn<qint64>("status");
    QTest::addColumn<QString>("name");
    QTest::newRow("wiped") << qint64(1) << QStringLiteral("img_status_ok");
    QTest::newRow("failed") << qint64(2) << QStringLiteral("img_status_nok");
    QTest::newRow("unknown") << qint64(3) << QStringLiteral("img_status_nok");
    QTest::newRow("negative") << qint64(-1) << QStringLiteral("img_status_nok");
    QTest::newRow("zero in its lower half")
        << (qint64(1) << 32) << QStringLiteral("img_status_nok");
    QTest::newRow("largest") << std::numeric_limits<qint64>::max()
                             << QStringLiteral("img_status_nok");
}

void StatusToImageTest::everyOtherStatusHasItsIcon()
{
    QFETCH(qint64, status);
    QFETCH(QString, name);
    const FakeImageSource images;
    QCOMPARE(StatusToImage::imageName(status), name);
    QCOMPARE(StatusToImage(images).transformedValue(status), images.imageNamed(name));
}

void StatusToImageTest::theNameOfNoIconIsNull()
{
    QVERIFY(StatusToImage::imageName(0).isNull());
}

QTEST_APPLESS_MAIN(StatusToImageTest)
#include "StatusToImageTest.moc"
