#include "support/ValueTransformerRegistry.h"
#include "FakeImageSource.h"
#include "support/BytesToString.h"
#include "support/ExtensionImage.h"
#include "support/IntegerToString.h"
#include "support/MainStatusToImage.h"
#include "support/PercentageToString.h"
#include "support/SecondsToString.h"
#include "support/StatusToImage.h"

#include <QTest>

class ValueTransformerRegistryTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyClassIsKnownByItsName();
    void aFoundTransformerDoesItsWork_data();
    void aFoundTransformerDoesItsWork();
    void anUnknownNameFindsNothing_data();
    void anUnknownNameFindsNothing();
    void theSameNameFindsTheSameTransformer();
    void anAddedTransformerIsFoundByItsName();
    void aNameThatIsTakenKeepsWhatItHas();

  private:
    template <typename Transformer> bool finds(const char *name) const
    {
        const ValueTransformer *found = m_registry.transformerForName(QLatin1String(name));
        return dynamic_cast<const Transformer *>(found) != nullptr;
    }

    const FakeImageSource m_images;
    const ValueTransformerRegistry m_registry{m_images};
};

void ValueTransformerRegistryTest::everyClassIsKnownByItsName()
{
    QVERIFY(finds<BytesToString>("BytesToString"));
    QVERIFY(finds<PercentageToString>("PercentageToString"));
    QVERIFY(finds<SecondsToString>("SecondsToString"));
    QVERIFY(finds<StatusToImage>("StatusToImage"));
    QVERIFY(finds<MainStatusToImage>("MainStatusToImage"));
    QVERIFY(finds<ExtensionImage>("ExtensionImage"));
    QVERIFY(finds<IntegerToString>("IntegerToString"));
}

void ValueTransformerRegistryTest::aFoundTransformerDoesItsWork_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("BytesToString") << QVariant(1500) << QVariant(QStringLiteral("1.50 KB"));
    QTest::newRow("PercentageToString") << QVariant(42.7) << QVariant(QStringLiteral("42 %"));
    QTest::newRow("SecondsToString")
        << QVariant(30) << QVariant(QStringLiteral("Less than a minute"));
    QTest::newRow("StatusToImage")
        << QVariant(1) << QVariant(QStringLiteral("image named img_status_ok"));
    QTest::newRow("MainStatusToImage")
        << QVariant(6) << QVariant(QStringLiteral("image named icon_status_busy"));
    QTest::newRow("ExtensionImage")
        << QVariant(QStringLiteral("a.PNG")) << QVariant(QStringLiteral("icon for [png]"));
    QTest::newRow("IntegerToString") << QVariant(7) << QVariant(7);
}

void ValueTransformerRegistryTest::aFoundTransformerDoesItsWork()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, expected);
    const ValueTransformer *found =
        m_registry.transformerForName(QLatin1String(QTest::currentDataTag()));
    QVERIFY(found);
    QCOMPARE(found->transformedValue(value), expected);
}

void ValueTransformerRegistryTest::anUnknownNameFindsNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("the base is not registered") << QStringLiteral("ValueTransformer");
    QTest::newRow("a formatter is no transformer") << QStringLiteral("BytesFormatter");
    QTest::newRow("another case") << QStringLiteral("bytestostring");
    QTest::newRow("the beginning of a name") << QStringLiteral("BytesTo");
}

void ValueTransformerRegistryTest::anUnknownNameFindsNothing()
{
    QFETCH(QString, name);
    QCOMPARE(m_registry.transformerForName(name), nullptr);
}

void ValueTransformerRegistryTest::theSameNameFindsTheSameTransformer()
{
    const QString name = QStringLiteral("SecondsToString");
    const ValueTransformer *first = m_registry.transformerForName(name);
    QVERIFY(first);
    QCOMPARE(m_registry.transformerForName(name), first);
}

void ValueTransformerRegistryTest::anAddedTransformerIsFoundByItsName()
{
    ValueTransformerRegistry registry(m_images);
    auto added = std::make_unique<const ValueTransformer>();
    const ValueTransformer *expected = added.get();
    registry.add(QLatin1String("Added"), std::move(added));
    QCOMPARE(registry.transformerForName(QStringLiteral("Added")), expected);
    QCOMPARE(m_registry.transformerForName(QStringLiteral("Added")), nullptr);
}

void ValueTransformerRegistryTest::aNameThatIsTakenKeepsWhatItHas()
{
    ValueTransformerRegistry registry(m_images);
    registry.add(QLatin1String("SecondsToString"), std::make_unique<const ValueTransformer>());
    QVERIFY(dynamic_cast<const SecondsToString *>(
        registry.transformerForName(QStringLiteral("SecondsToString"))));
}

QTEST_APPLESS_MAIN(ValueTransformerRegistryTest)
#include "ValueTransformerRegistryTest.moc"
