#include "ui/PlainButton.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"
#include "ui/Typography.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0x80, 0x90, 0xA0);

} // namespace

class PlainButtonTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static std::unique_ptr<PlainButton> button()
    {
        auto button = std::make_unique<PlainButton>(QStringLiteral("Stop"));
        button->resize(96, 32);
        return button;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void itsGroundTellsItsState_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QColor>("expected");
        for (const bool isDark : {false, true}) {
            const char *theme = isDark ? "dark" : "light";
            const auto add = [isDark, theme](const char *state, ColorRole role) {
                QTest::addRow("%s, %s", theme, state)
                    << isDark << QString::fromLatin1(state) << DesignColors::color(role, isDark);
            };
            add("normal", ColorRole::Control);
            add("hover", ColorRole::ControlHover);
            add("pressed", ColorRole::ControlPressed);
            QTest::addRow("%s, disabled: none", theme)
                << isDark << QStringLiteral("disabled") << ground;
        }
    }

    void itsGroundTellsItsState()
    {
        QFETCH(bool, isDark);
        QFETCH(QString, state);
        QFETCH(QColor, expected);
        preferences_->setDark(isDark);
        const auto shown = button();
        shown->setAttribute(Qt::WA_UnderMouse, state == QLatin1String("hover"));
        shown->setDown(state == QLatin1String("pressed"));
        shown->setEnabled(state != QLatin1String("disabled"));

        const QImage image = PaintedWidget::of(*shown, ground);

        COMPARE_COLOR(image.pixelColor(10, 16), expected);
        const QColor edge = DesignColors::color(ColorRole::EdgeControl, isDark);
        COMPARE_COLOR(image.pixelColor(48, 0), PaintedWidget::over(edge, expected));
        COMPARE_COLOR(image.pixelColor(0, 0), ground);
    }

    void itsEdgeIsOnePixelOnFineScreensToo()
    {
        preferences_->setDark(false);
        const QColor control = DesignColors::color(ColorRole::Control, false);
        const QColor edge =
            PaintedWidget::over(DesignColors::color(ColorRole::EdgeControl, false), control);

        const QImage image = PaintedWidget::of(*button(), ground, 2);

        COMPARE_COLOR(image.pixelColor(96, 0), edge);
        COMPARE_COLOR(image.pixelColor(96, 1), edge);
        COMPARE_COLOR(image.pixelColor(96, 2), control);
    }

    void spaceAndReturnPressIt_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("clicks");
        QTest::newRow("Space") << int(Qt::Key_Space) << 1;
        QTest::newRow("Return") << int(Qt::Key_Return) << 1;
        QTest::newRow("Enter") << int(Qt::Key_Enter) << 1;
        QTest::newRow("a letter") << int(Qt::Key_S) << 0;
    }

    void spaceAndReturnPressIt()
    {
        QFETCH(int, key);
        QFETCH(int, clicks);
        const auto shown = button();
        QSignalSpy clicked(shown.get(), &PlainButton::clicked);

        QTest::keyClick(shown.get(), Qt::Key(key));

        QCOMPARE(clicked.count(), clicks);
    }

    void aHeldReturnPressesOnce()
    {
        const auto shown = button();
        QSignalSpy clicked(shown.get(), &PlainButton::clicked);

        for (const bool isRepeat : {false, true, true}) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), isRepeat);
            QApplication::sendEvent(shown.get(), &press);
        }

        QCOMPARE(clicked.count(), 1);
    }

    void ctrlReturnIsNotForIt()
    {
        const auto shown = button();
        QSignalSpy clicked(shown.get(), &PlainButton::clicked);

        QTest::keyClick(shown.get(), Qt::Key_Return, Qt::ControlModifier);

        QCOMPARE(clicked.count(), 0);
    }

    void aLongTitleIsElidedInside()
    {
        preferences_->setDark(false);
        PlainButton narrow(QString(60, QLatin1Char('W')));
        narrow.resize(96, 32);

        const QImage image = PaintedWidget::of(narrow, ground);

        const QColor control = DesignColors::color(ColorRole::Control, false);
        for (int y = 4; y < 28; ++y) {
            COMPARE_COLOR(image.pixelColor(2, y), control);
            COMPARE_COLOR(image.pixelColor(93, y), control);
        }
    }

    void aLongTitleIsCutAtItsTail()
    {
        preferences_->setDark(false);
        const QString title = QStringLiteral("Client database export with correspondence");
        const auto painted = [](const QString &text) {
            PlainButton narrow(text);
            narrow.resize(120, 32);
            return PaintedWidget::of(narrow, ground);
        };
        const auto cut = [&title](Qt::TextElideMode mode) {
            return QFontMetricsF(Typography::font(TextStyle::BodyMedium))
                .elidedText(title, mode, 112);
        };
        QVERIFY(cut(Qt::ElideRight).startsWith(QStringLiteral("Client")));
        QVERIFY(cut(Qt::ElideRight) != title);

        QCOMPARE(painted(title), painted(cut(Qt::ElideRight)));
        QVERIFY(painted(title) != painted(cut(Qt::ElideMiddle)));
    }

    void itGrowsWithTheFont()
    {
        QCOMPARE(button()->sizeHint().height(), 32);
        PaintedWidget::useFontOf(20);
        const int height = button()->sizeHint().height();
        PaintedWidget::useFontOf(13);
        QCOMPARE(height, 49);
    }
};

QTEST_MAIN(PlainButtonTest)
#include "PlainButtonTest.moc"
