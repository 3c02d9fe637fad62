#include "ui/LinkButton.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"

#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xEC, 0xEE, 0xEF);

} // namespace

class LinkButtonTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    /// The columns of its text that one row of pixels has in this colour, of all.
    static bool hasUnderline(LinkButton &link, const QColor &color)
    {
        const QImage image = PaintedWidget::of(link, ground);
        for (int y = image.height() / 2; y < image.height(); ++y) {
            int filled = 0;
            while (filled < image.width() - 1 &&
                   PaintedWidget::isAbout(image.pixelColor(filled, y), color))
                ++filled;
            if (filled == image.width() - 1)
                return true;
        }
        return false;
    }

    static std::unique_ptr<LinkButton> link()
    {
        auto link = std::make_unique<LinkButton>(QStringLiteral("Contact the makers"));
        link->resize(link->sizeHint());
        return link;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void itIsUnderlinedUnderThePointer_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void itIsUnderlinedUnderThePointer()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const QColor accent = DesignColors::color(ColorRole::Accent, isDark);
        const auto shown = link();
        QVERIFY(!hasUnderline(*shown, accent));

        shown->setAttribute(Qt::WA_UnderMouse);

        QVERIFY(hasUnderline(*shown, accent));
    }

    void itIsUnderlinedWithTheFocus()
    {
        QWidget window;
        auto *shown = new LinkButton(QStringLiteral("Contact the makers"), &window);
        shown->setGeometry(QRect(QPoint(200, 100), shown->sizeHint()));
        window.resize(400, 200);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        shown->clearFocus();
        QVERIFY(!hasUnderline(*shown, DesignColors::color(ColorRole::Accent)));

        shown->setFocus(Qt::TabFocusReason);

        QVERIFY(hasUnderline(*shown, DesignColors::color(ColorRole::Accent)));
    }

    void itCanAlwaysBeUnderlinedAndHaveAnotherLook()
    {
        preferences_->setDark(false);
        const auto shown = link();
        shown->setLook(TextStyle::BodyStrong, ColorRole::Warn);
        shown->setAlwaysUnderlined(true);
        shown->resize(shown->sizeHint());

        QCOMPARE(shown->height(), 20);
        QVERIFY(hasUnderline(*shown, DesignColors::color(ColorRole::Warn, false)));
    }

    void aDisabledLinkIsNotUnderlined()
    {
        const auto shown = link();
        shown->setAttribute(Qt::WA_UnderMouse);
        shown->setEnabled(false);

        QVERIFY(!hasUnderline(*shown, DesignColors::color(ColorRole::TextDisabled)));
    }
};

QTEST_MAIN(LinkButtonTest)
#include "LinkButtonTest.moc"
