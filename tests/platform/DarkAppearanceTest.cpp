#include "platform/DarkAppearance.h"

#include <QTest>

class DarkAppearanceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void thePlatformOffersADarkAppearance() { QVERIFY(DarkAppearance::isSupported()); }
    void aReplacementAnswersWhileItLives();
};

void DarkAppearanceTest::aReplacementAnswersWhileItLives()
{
    {
        const DarkAppearance::Replacement none(false);
        QVERIFY(!DarkAppearance::isSupported());
        const DarkAppearance::Replacement inner(true);
        QVERIFY(DarkAppearance::isSupported());
    }
    QVERIFY(DarkAppearance::isSupported());
}

QTEST_APPLESS_MAIN(DarkAppearanceTest)
#include "DarkAppearanceTest.moc"
