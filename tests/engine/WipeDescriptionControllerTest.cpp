#include "engine/WipeDescriptionController.h"

#include <QTest>

class WipeDescriptionControllerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theCatalogueHasElevenEntries();
    void entryZeroIsEmpty();
    void everyMethodHasItsNameAndDescription_data();
    void everyMethodHasItsNameAndDescription();
};

void WipeDescriptionControllerTest::theCatalogueHasElevenEntries()
{
    QCOMPARE(WipeDescriptionController().wipeDescriptions().size(), std::size_t(11));
}

void WipeDescriptionControllerTest::entryZeroIsEmpty()
{
    const WipeDescriptionController controller;
    const WipeDescriptionObject &entry = controller.wipeDescriptions().at(0);
    QCOMPARE(entry.name, QString());
    QCOMPARE(entry.info, QString());
}

void WipeDescriptionControllerTest::everyMethodHasItsNameAndDescription_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("info");
    QTest::newRow("1") << 1 << QStringLiteral("1-Pass Zero")
                       << QStringLiteral(
                              "pass 1: overwrite the entire file data with binary zeros (0x00).");
    QTest::newRow("2")
        << 2 << QStringLiteral("1-Pass Random")
        << QStringLiteral("pass 1: overwrite the entire file data once with pseudo-random bytes.");
    QTest::newRow("3")
        << 3 << QStringLiteral("2-Pass GOST R 50739-95")
        << QStringLiteral("pass 1: overwrite the entire file data with binary zeros (0x00).\n"
                          "pass 2: overwrite the entire file data once with pseudo-random bytes.");
    QTest::newRow("4") << 4 << QStringLiteral("3-Pass DoD 5220.22-M (E)")
                       << QStringLiteral(
                              "pass 1: overwrite the entire file data with binary zeros (0x00).\n"
                              "pass 2: overwrite the entire file data with high bytes (0xFF).\n"
                              "pass 3: overwrite the entire file data with pseudo-random bytes.");
    QTest::newRow("5") << 5 << QStringLiteral("4-Pass RAZER")
                       << QStringLiteral(
                              "pass 1-3: overwrite the entire file data with pseudo-random bytes.\n"
                              "pass 4: overwrite the entire file data with binary zeros (0x00).");
    QTest::newRow("6") << 6 << QStringLiteral("7-Pass Schneier")
                       << QStringLiteral(
                              "pass 1: overwrite the entire file data with high bytes (0xFF).\n"
                              "pass 2: overwrite the entire file data with binary zeros (0x00).\n"
                              "pass 3-7: overwrite the entire file data with pseudo-random bytes.");
    QTest::newRow("7")
        << 7 << QStringLiteral("7-Pass BSI/VSITR")
        << QStringLiteral("pass 1,3,5: overwrite the entire file data with binary zeros (0x00).\n"
                          "pass 2,4,6: overwrite the entire file data with high bytes (0xFF).\n"
                          "pass 7: overwrite the entire file data with pseudo-random bytes.");
    QTest::newRow("8") << 8 << QStringLiteral("7-Pass DoD 5220.22-M (ECE)")
                       << QStringLiteral(
                              "pass 1-3: overwrite the entire file data with DoD 5220.22-M (E).\n"
                              "pass 4: overwrite the entire file data with pseudo-random bytes.\n"
                              "pass 5-7: overwrite the entire file data with DoD 5220.22-M (E).");
    QTest::newRow("9")
        << 9 << QStringLiteral("33-Pass Pfitzner Method")
        << QStringLiteral("pass 1-33: overwrite the entire file data with pseudo-random bytes.");
    QTest::newRow("10")
        << 10 << QStringLiteral("35-Pass Gutmann Method")
        << QStringLiteral("pass 1-4: overwrite the entire file data with pseudo-random bytes.\n"
                          "pass 5-31: overwrite the entire file data with predefined patterns.\n"
                          "pass 32-35: overwrite the entire file data with pseudo-random bytes.");
}

void WipeDescriptionControllerTest::everyMethodHasItsNameAndDescription()
{
    QFETCH(int, method);
    QFETCH(QString, name);
    QFETCH(QString, info);
    const WipeDescriptionController controller;
    const WipeDescriptionObject &entry = controller.wipeDescriptions().at(std::size_t(method));
    QCOMPARE(entry.name, name);
    QCOMPARE(entry.info, info);
}

QTEST_APPLESS_MAIN(WipeDescriptionControllerTest)
#include "WipeDescriptionControllerTest.moc"
