#include "ui/DialogParts.h"

#include "Pixels.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QTest>

namespace {

constexpr QColor white(255, 255, 255);

const QString groundInTheLight = QStringLiteral("DefaultAlertView_bg_light");

} // namespace

class DialogPartsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { preferences_.emplace(); }
    void cleanup() { preferences_.reset(); }

    void aTranslucentGroundIsLaidOnce();
    void withoutItsColourTheGroundIsTheDefaultOne_data();
    void withoutItsColourTheGroundIsTheDefaultOne();
    void theGroundIsLookedUpOnceForAllDrawings();
    void withoutItsColourTheStripsLineIsTheDefaultOne();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void DialogPartsTest::aTranslucentGroundIsLaidOnce()
{
    preferences_->setColors({{groundInTheLight, ColorProperties::archived({1, 0, 0, 0.5})}});
    DialogGround ground(nullptr);
    ground.resize(20, 10);
    COMPARE_PIXEL(Pixels::painted(ground, white), 10, 5, QColor(255, 127, 127));
}

void DialogPartsTest::withoutItsColourTheGroundIsTheDefaultOne_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("color");
    QTest::newRow("light") << false << QColor(0xE7E7E7);
    QTest::newRow("dark") << true << QColor(0x272C31);
}

void DialogPartsTest::withoutItsColourTheGroundIsTheDefaultOne()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, color);
    preferences_->setDark(isDark);
    preferences_->setColors({});
    DialogGround ground(nullptr);
    ground.resize(20, 10);
    COMPARE_PIXEL(Pixels::painted(ground, white), 0, 0, color);
    COMPARE_PIXEL(Pixels::painted(ground, white), 19, 9, color);
}

void DialogPartsTest::theGroundIsLookedUpOnceForAllDrawings()
{
    preferences_->setColors({{groundInTheLight, ColorProperties::archived({1, 0, 0, 0.5})}});
    DialogGround ground(nullptr);
    ground.resize(20, 10);
    COMPARE_PIXEL(Pixels::painted(ground, white), 10, 5, QColor(255, 127, 127));
    preferences_->setColors({{groundInTheLight, ColorProperties::archived({0, 0, 1, 0.5})}});
    COMPARE_PIXEL(Pixels::painted(ground, white), 10, 5, QColor(255, 127, 127));
}

void DialogPartsTest::withoutItsColourTheStripsLineIsTheDefaultOne()
{
    preferences_->setColors({});
    DialogStrip strip(nullptr);
    strip.resize(20, DialogStrip::designHeight);
    const QImage image = Pixels::painted(strip, white);
    const QColor ground = Pixels::over(DesignColors::color(ColorRole::DialogStrip), white);
    COMPARE_PIXEL(image, 10, 20, ground);
    COMPARE_PIXEL(image, 10, 0, Pixels::over(QColor(0, 0, 0, 26), ground));
}

QTEST_MAIN(DialogPartsTest)
#include "DialogPartsTest.moc"
