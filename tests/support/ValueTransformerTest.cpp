#include "support/ValueTransformer.h"
#include "support/BytesToString.h"
#include "support/ExtensionImage.h"
#include "support/IntegerToString.h"
#include "support/MainStatusToImage.h"
#include "support/PercentageToString.h"
#include "support/SecondsToString.h"
#include "support/StatusToImage.h"

#include <QByteArray>
#include <QTest>

class ValueTransformerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyTransformerDeclaresRawData_data();
    void everyTransformerDeclaresRawData();
    void noTransformerGoesBack_data();
    void noTransformerGoesBack();
    void theBaseHandsValuesOn();
    void theWayBackFindsNothing();
};

void ValueTransformerTest::everyTransformerDeclaresRawData_data()
{
    QTest::addColumn<QMetaType>("declared");
    QTest::newRow("the base") << ValueTransformer::transformedValueClass();
    QTest::newRow("byte counts") << BytesToString::transformedValueClass();
    QTest::newRow("percentages") << PercentageToString::transformedValueClass();
    QTest::newRow("durations") << SecondsToString::transformedValueClass();
    QTest::newRow("file status icons") << StatusToImage::transformedValueClass();
    QTest::newRow("run status icons") << MainStatusToImage::transformedValueClass();
    QTest::newRow("file type icons") << ExtensionImage::transformedValueClass();
    QTest::newRow("integers") << IntegerToString::transformedValueClass();
}

void ValueTransformerTest::everyTransformerDeclaresRawData()
{
    QFETCH(QMetaType, declared);
    QCOMPARE(declared, QMetaType::fromType<QByteArray>());
}

void ValueTransformerTest::noTransformerGoesBack_data()
{
    QTest::addColumn<bool>("allowed");
    QTest::newRow("the base") << ValueTransformer::allowsReverseTransformation();
    QTest::newRow("byte counts") << BytesToString::allowsReverseTransformation();
    QTest::newRow("percentages") << PercentageToString::allowsReverseTransformation();
    QTest::newRow("durations") << SecondsToString::allowsReverseTransformation();
    QTest::newRow("file status icons") << StatusToImage::allowsReverseTransformation();
    QTest::newRow("run status icons") << MainStatusToImage::allowsReverseTransformation();
    QTest::newRow("file type icons") << ExtensionImage::allowsReverseTransformation();
    QTest::newRow("integers") << IntegerToString::allowsReverseTransformation();
}

void ValueTransformerTest::noTransformerGoesBack()
{
    QFETCH(bool, allowed);
    QVERIFY(!allowed);
}

void ValueTransformerTest::theBaseHandsValuesOn()
{
    QCOMPARE(ValueTransformer().transformedValue(7), QVariant(7));
    QVERIFY(!ValueTransformer().transformedValue(QVariant()).isValid());
}

void ValueTransformerTest::theWayBackFindsNothing()
{
    QVERIFY(!ValueTransformer().reverseTransformedValue(7).isValid());
    QVERIFY(!BytesToString().reverseTransformedValue(QStringLiteral("7 Bytes")).isValid());
}

QTEST_APPLESS_MAIN(ValueTransformerTest)
#include "ValueTransformerTest.moc"
