#include "ui/LineThin.h"

#include "Pixels.h"
#include "ThemedPreferences.h"

#include <QTest>

class LineThinTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLineIsTheSameGreyInBothThemes();
};

void LineThinTest::aLineIsTheSameGreyInBothThemes()
{
    ThemedPreferences preferences;
    LineThin line;
    line.resize(20, 2);
    for (const bool isDark : {false, true}) {
        preferences.setDark(isDark);
        const QImage image = Pixels::painted(line);
        COMPARE_PIXEL(image, 0, 0, QColor(223, 223, 223));
        COMPARE_PIXEL(image, 19, 1, QColor(223, 223, 223));
    }
}

QTEST_MAIN(LineThinTest)
#include "LineThinTest.moc"
