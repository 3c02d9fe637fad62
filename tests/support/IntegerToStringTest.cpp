#include "support/IntegerToString.h"

#include <QTest>

class IntegerToStringTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyValueComesBackUnchanged_data();
    void everyValueComesBackUnchanged();
};

void IntegerToStringTest::everyValueComesBackUnchanged_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("an integer stays an integer") << QVariant(42);
    QTest::newRow("a long integer") << QVariant(qint64(-5000000000));
    QTest::newRow("a double keeps its fraction") << QVariant(1.5);
    QTest::newRow("a text") << QVariant(QStringLiteral("seven"));
    QTest::newRow("no value") << QVariant();
}

void IntegerToStringTest::everyValueComesBackUnchanged()
{
    QFETCH(QVariant, value);
    const QVariant result = IntegerToString().transformedValue(value);
    QCOMPARE(result.metaType(), value.metaType());
    QCOMPARE(result, value);
}

QTEST_APPLESS_MAIN(IntegerToStringTest)
#include "IntegerToStringTest.moc"
