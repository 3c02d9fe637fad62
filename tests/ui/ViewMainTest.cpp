#include "ui/ViewMain.h"

#include "Pixels.h"
#include "ThemedPreferences.h"

#include <QTest>

class ViewMainTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theGroundIsTheSameGradientInBothThemes();
};

void ViewMainTest::theGroundIsTheSameGradientInBothThemes()
{
    ThemedPreferences preferences;
    ViewMain view;
    view.resize(20, 400);
    for (const bool isDark : {false, true}) {
        preferences.setDark(isDark);
        const QImage image = Pixels::painted(view);
        COMPARE_PIXEL(image, 0, 0, QColor(246, 247, 248));
        COMPARE_PIXEL(image, 19, 200, QColor(240, 241, 242));
        COMPARE_PIXEL(image, 10, 399, QColor(234, 235, 236));
    }
}

QTEST_MAIN(ViewMainTest)
#include "ViewMainTest.moc"
