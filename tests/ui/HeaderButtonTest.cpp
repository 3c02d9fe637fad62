#include "ui/HeaderButton.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xEC, 0xEE, 0xEF);

} // namespace

class HeaderButtonTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static std::unique_ptr<HeaderButton> button(const QString &symbol)
    {
        return std::make_unique<HeaderButton>(symbol, QStringLiteral("Preferences"));
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
            const auto over = [isDark](ColorRole role) {
                return PaintedWidget::over(DesignColors::color(role, isDark), ground);
            };
            const auto add = [isDark, theme](const char *state, const QColor &color) {
                QTest::addRow("%s, %s", theme, state)
                    << isDark << QString::fromLatin1(state) << color;
            };
            add("normal", ground);
            add("hover", over(ColorRole::GhostHover));
            add("pressed", over(ColorRole::GhostPressed));
            add("kept pressed", over(ColorRole::GhostPressed));
            add("disabled", ground);
        }
    }

    void itsGroundTellsItsState()
    {
        QFETCH(bool, isDark);
        QFETCH(QString, state);
        QFETCH(QColor, expected);
        preferences_->setDark(isDark);
        const auto shown = button(QStringLiteral("symbol_menu"));
        shown->setAttribute(Qt::WA_UnderMouse, state == QLatin1String("hover"));
        shown->setDown(state == QLatin1String("pressed"));
        shown->setKeptPressed(state == QLatin1String("kept pressed"));
        shown->setEnabled(state != QLatin1String("disabled"));

        COMPARE_COLOR(PaintedWidget::of(*shown, ground).pixelColor(14, 2), expected);
    }

    void itsSymbolTellsItsState_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void itsSymbolTellsItsState()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const auto shown = button(QStringLiteral("symbol_menu"));
        // The menu symbol's middle line, 8 in the symbol and 14 in the button; 2 wide at this
        // ratio.
        const auto line = [&shown] {
            return PaintedWidget::of(*shown, ground, 4).pixelColor(14 * 4, 14 * 4);
        };
        const auto color = [isDark](ColorRole role) { return DesignColors::color(role, isDark); };

        COMPARE_COLOR(line(), color(ColorRole::TextSecondary));
        shown->setAttribute(Qt::WA_UnderMouse);
        COMPARE_COLOR(line(), color(ColorRole::Text));
        shown->setEnabled(false);
        QColor faint = color(ColorRole::TextDisabled);
        faint.setAlphaF(0.6F);
        COMPARE_COLOR(line(), PaintedWidget::over(faint, ground));
    }

    void aBadgeMakesItWider_data()
    {
        QTest::addColumn<QString>("badge");
        QTest::addColumn<int>("width");
        QTest::newRow("none") << QString() << 28;
        QTest::newRow("one digit") << QStringLiteral("2") << 44;
        QTest::newRow("two digits") << QStringLiteral("99") << 44;
        QTest::newRow("more") << QStringLiteral("99+") << 52;
    }

    void aBadgeMakesItWider()
    {
        QFETCH(QString, badge);
        QFETCH(int, width);
        const auto shown = button(QStringLiteral("symbol_error_log"));

        shown->setBadgeText(badge);

        QCOMPARE(shown->size(), QSize(width, 28));
        QCOMPARE(shown->sizeHint(), QSize(width, 28));
    }

    void aBadgeIsInTheColourOfWhatWentWrong()
    {
        preferences_->setDark(false);
        const auto shown = button(QStringLiteral("symbol_error_log"));
        shown->setBadgeText(QStringLiteral("\u2588"));

        const QImage image = PaintedWidget::of(*shown, ground);

        int bad = 0;
        for (int x = 26; x < 44; ++x)
            bad += PaintedWidget::isAbout(image.pixelColor(x, 14),
                                          DesignColors::color(ColorRole::Bad, false));
        QVERIFY(bad > 2);
    }

    void theHeaderDoesNotGrowWithTheFont()
    {
        PaintedWidget::useFontOf(20);
        const QSize size = button(QStringLiteral("symbol_menu"))->sizeHint();
        PaintedWidget::useFontOf(13);
        QCOMPARE(size, QSize(28, 28));
    }

    void itHasItsNameForScreenReaders()
    {
        QCOMPARE(button(QStringLiteral("symbol_menu"))->accessibleName(),
                 QStringLiteral("Preferences"));
    }
};

QTEST_MAIN(HeaderButtonTest)
#include "HeaderButtonTest.moc"
