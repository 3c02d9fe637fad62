#include "support/BytesToString.h"

#include <QTest>

#include <limits>

class BytesToStringTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void numbersReadAsByteCounts_data();
    void numbersReadAsByteCounts();
    void theResultIsAText();
};

void BytesToStringTest::numbersReadAsByteCounts_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("no value") << QVariant() << QStringLiteral("0 Bytes");
    QTest::newRow("a null number")
        << QVariant(QMetaType::fromType<double>()) << QStringLiteral("0 Bytes");
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN())
                                  << QStringLiteral("0 Bytes");
    QTest::newRow("a double") << QVariant(1536000.0) << QStringLiteral("1.54 MB");
    QTest::newRow("a single") << QVariant(1500.0F) << QStringLiteral("1.50 KB");
    QTest::newRow("an integer") << QVariant(999) << QStringLiteral("999 Bytes");
    QTest::newRow("a long integer") << QVariant(qint64(12350000000)) << QStringLiteral("12.35 GB");
    QTest::newRow("a negative integer") << QVariant(-5) << QStringLiteral("-5 Bytes");
}

void BytesToStringTest::numbersReadAsByteCounts()
{
    QFETCH(QVariant, value);
    QTEST(BytesToString().transformedValue(value).toString(), "text");
}

void BytesToStringTest::theResultIsAText()
{
    const QVariant result = BytesToString().transformedValue(1);
    QCOMPARE(result.metaType(), QMetaType::fromType<QString>());
}

QTEST_APPLESS_MAIN(BytesToStringTest)
#include "BytesToStringTest.moc"
