#include "ui/Appearance.h"

#include "ui/ColorProperties.h"

#include <QTest>

class AppearanceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void anIdentifierComesBack_data();
    void anIdentifierComesBack();
    void otherBytesAreNoAppearance_data();
    void otherBytesAreNoAppearance();
    void anAppearanceIsNoColour();
};

void AppearanceTest::anIdentifierComesBack_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::newRow("light") << QString::fromUtf16(Appearance::light);
    QTest::newRow("dark") << QString::fromUtf16(Appearance::dark);
    QTest::newRow("with signs") << QStringLiteral(u"\"a\" \u00e4\u6f22\\");
}

void AppearanceTest::anIdentifierComesBack()
{
    QFETCH(QString, identifier);
    QCOMPARE(Appearance::unarchived(Appearance::archived(identifier)), identifier);
}

void AppearanceTest::otherBytesAreNoAppearance_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("a word") << QByteArray("dark");
    QTest::newRow("another table") << QByteArray("{\"a\":\"dark\"}");
    QTest::newRow("a number") << QByteArray("{\"appearance\":1}");
    QTest::newRow("a colour") << ColorProperties::archived({0.1, 0.2, 0.3, 1});
}

void AppearanceTest::otherBytesAreNoAppearance()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(Appearance::unarchived(bytes).isNull());
}

void AppearanceTest::anAppearanceIsNoColour()
{
    const QByteArray bytes = Appearance::archived(QString::fromUtf16(Appearance::dark));
    QVERIFY(!ColorProperties::unarchived(bytes));
}

QTEST_APPLESS_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
