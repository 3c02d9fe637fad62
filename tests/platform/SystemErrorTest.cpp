#include "platform/SystemError.h"

#include <QTest>

class SystemErrorTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void errorsReadAsTheSystemWordsThem_data();
    void errorsReadAsTheSystemWordsThem();
    void anUnknownNumberIsNamed();
};

void SystemErrorTest::errorsReadAsTheSystemWordsThem_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("1") << 1 << QStringLiteral("Operation not permitted");
    QTest::newRow("2") << 2 << QStringLiteral("No such file or directory");
    QTest::newRow("5") << 5 << QStringLiteral("Input/output error");
    QTest::newRow("6") << 6 << QStringLiteral("No such device or address");
    QTest::newRow("13") << 13 << QStringLiteral("Permission denied");
    QTest::newRow("36") << 36 << QStringLiteral("File name too long");
    QTest::newRow("40") << 40 << QStringLiteral("Too many levels of symbolic links");
}

void SystemErrorTest::errorsReadAsTheSystemWordsThem()
{
    QFETCH(int, number);
    QTEST(SystemError::text(number), "text");
}

void SystemErrorTest::anUnknownNumberIsNamed()
{
    QCOMPARE(SystemError::text(99'999), QStringLiteral("Unknown error 99999"));
}

QTEST_APPLESS_MAIN(SystemErrorTest)
#include "SystemErrorTest.moc"
