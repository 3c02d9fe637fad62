#include "ui/PopupCard.h"

#include <QTest>

class PopupCardTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aCardIsMovedInsideItsBounds_data()
    {
        QTest::addColumn<QRect>("wanted");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("inside already") << QRect(20, 30, 40, 50) << QRect(20, 30, 40, 50);
        QTest::newRow("at the left") << QRect(-5, 30, 40, 50) << QRect(10, 30, 40, 50);
        QTest::newRow("above") << QRect(20, -70, 40, 50) << QRect(20, 10, 40, 50);
        QTest::newRow("at the right") << QRect(190, 30, 40, 50) << QRect(170, 30, 40, 50);
        QTest::newRow("below") << QRect(20, 90, 40, 50) << QRect(20, 60, 40, 50);
        QTest::newRow("the whole") << QRect(10, 10, 200, 100) << QRect(10, 10, 200, 100);
        QTest::newRow("larger") << QRect(-50, -50, 900, 900) << QRect(10, 10, 200, 100);
    }

    void aCardIsMovedInsideItsBounds()
    {
        QFETCH(QRect, wanted);
        QFETCH(QRect, expected);

        QCOMPARE(PopupCard::keptInside(wanted, QRect(10, 10, 200, 100)), expected);
    }
};

QTEST_MAIN(PopupCardTest)
#include "PopupCardTest.moc"
