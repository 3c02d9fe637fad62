#include "ui/VTLLine.h"

#include "Pixels.h"
#include "ThemedPreferences.h"

#include <QTest>

namespace {

const QString style = QStringLiteral("Mine");
const QColor white(255, 255, 255);
const QColor black(0, 0, 0);

QByteArray bytes(const QColor &color)
{
    return ColorProperties::archived({color.redF(), color.greenF(), color.blueF(), color.alphaF()});
}

void post(QLatin1String name)
{
    NotificationHub::shared().post(name);
}

} // namespace

class VTLLineTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { preferences_.emplace(); }
    void cleanup() { preferences_.reset(); }

    void aLineHasTheColourOfItsStyle_data();
    void aLineHasTheColourOfItsStyle();
    void aLineWithoutNameDrawsNothing();
    void aLineFollowsTheThemeAtTheNextDrawing();
    void aDrawingReadsNothingButTheCache();
    void aForcedSidebarLeavesALineLight();
    void anInactiveColourIsKeptAndNeverDrawn();
    void aStyleWithoutInactiveColourIgnoresTheMainWindow();

  private:
    void setColors(const QVariantMap &table) { preferences_->setColors(table); }
    [[nodiscard]] static QColor middle(VTLLine &line, const QColor &ground)
    {
        line.resize(20, 1);
        return Pixels::painted(line, ground).pixelColor(10, 0);
    }

    std::optional<ThemedPreferences> preferences_;
};

void VTLLineTest::aLineHasTheColourOfItsStyle_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("shown");
    QTest::newRow("a light separator")
        << QStringLiteral("DefaultLine") << false << QColor(229, 229, 229);
    QTest::newRow("a dark separator")
        << QStringLiteral("DefaultLine") << true << QColor(13, 13, 13);
    QTest::newRow("a light button line")
        << QStringLiteral("BtnInfoLine") << false << QColor(204, 204, 204);
    QTest::newRow("a dark button line")
        << QStringLiteral("BtnInfoLine") << true << QColor(51, 51, 51);
}

void VTLLineTest::aLineHasTheColourOfItsStyle()
{
    QFETCH(QString, name);
    QFETCH(bool, isDark);
    QFETCH(QColor, shown);
    preferences_->setDark(isDark);
    VTLLine line(name);
    const QColor color = middle(line, isDark ? black : white);
    QVERIFY2(Pixels::areNear(color, shown), qPrintable(color.name()));
    QCOMPARE(line.name(), name);
}

void VTLLineTest::aLineWithoutNameDrawsNothing()
{
    setColors({{QStringLiteral("_bg_light"), bytes(black)}});
    VTLLine line;
    QCOMPARE(middle(line, white), white);
}

void VTLLineTest::aLineFollowsTheThemeAtTheNextDrawing()
{
    setColors({{QStringLiteral("Mine_bg_light"), bytes(black)},
               {QStringLiteral("Mine_bg_dark"), bytes(Qt::red)}});
    VTLLine line(style);
    QVERIFY(!line.colorCache().isBuilt() && !line.lastMode());
    QCOMPARE(middle(line, white), black);
    preferences_->setDark(true);
    QCOMPARE(middle(line, white), QColor(Qt::red));
    QVERIFY(line.lastMode());
}

void VTLLineTest::aDrawingReadsNothingButTheCache()
{
    setColors({{QStringLiteral("Mine_bg_light"), bytes(black)}});
    VTLLine line(style);
    QCOMPARE(middle(line, white), black);
    setColors({{QStringLiteral("Mine_bg_light"), bytes(Qt::red)}});
    preferences_->setDark(true);
    preferences_->setDark(false);
    QCOMPARE(middle(line, white), black);
}

void VTLLineTest::aForcedSidebarLeavesALineLight()
{
    setColors({{QStringLiteral("Mine_bg_light"), bytes(black)},
               {QStringLiteral("Mine_bg_dark"), bytes(Qt::red)}});
    UserDefaults::standard().setValue(ThemeKeys::forceDarkSidebar, true);
    VTLLine line(style);
    QCOMPARE(middle(line, white), black);
}

void VTLLineTest::anInactiveColourIsKeptAndNeverDrawn()
{
    setColors({{QStringLiteral("Mine_bg_light"), bytes(black)},
               {QStringLiteral("Mine_bg_light_inactive"), bytes(Qt::red)}});
    VTLLine line(style);
    QCOMPARE(middle(line, white), black);
    QVERIFY(line.hasKeyColor() && line.isMainWindow());
    QVERIFY(!line.colorCache().color(QLatin1String("tint")));
    post(NotificationName::windowDidResignMain);
    QVERIFY(!line.isMainWindow() && !line.colorCache().isBuilt());
    QCOMPARE(middle(line, white), black);
    QCOMPARE(line.colorCache().color(QLatin1String("tint")), std::optional(QColor(Qt::red)));
    post(NotificationName::windowDidBecomeMain);
    QVERIFY(line.isMainWindow());
    QCOMPARE(middle(line, white), black);
    QVERIFY(!line.colorCache().color(QLatin1String("tint")));
}

void VTLLineTest::aStyleWithoutInactiveColourIgnoresTheMainWindow()
{
    VTLLine line(QStringLiteral("DefaultLine"));
    (void)middle(line, white);
    QVERIFY(!line.hasKeyColor());
    post(NotificationName::windowDidResignMain);
    QVERIFY(line.isMainWindow() && line.colorCache().isBuilt());
}

QTEST_MAIN(VTLLineTest)
#include "VTLLineTest.moc"
