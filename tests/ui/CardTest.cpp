#include "ui/Card.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"
#include "ui/PathField.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include <memory>

namespace {

constexpr QColor ground(0x80, 0x90, 0xA0);

} // namespace

/// The card and the field that stands on it.
class CardTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static void addThemes()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void aCardHasSurfaceEdgeAndRoundCorners_data() { addThemes(); }
    void aCardHasSurfaceEdgeAndRoundCorners()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        Card card;
        card.resize(100, 60);

        const QImage image = PaintedWidget::of(card, ground);

        const QColor surface = DesignColors::color(ColorRole::Surface, isDark);
        const QColor edge =
            PaintedWidget::over(DesignColors::color(ColorRole::Edge, isDark), surface);
        COMPARE_COLOR(image.pixelColor(50, 30), surface);
        COMPARE_COLOR(image.pixelColor(50, 0), edge);
        COMPARE_COLOR(image.pixelColor(99, 30), edge);
        COMPARE_COLOR(image.pixelColor(0, 0), ground);
        COMPARE_COLOR(image.pixelColor(1, 0), ground);
        COMPARE_COLOR(image.pixelColor(0, 1), ground);
    }

    void highContrastMakesItsEdgeStrong()
    {
        preferences_->setDark(false);
        Card card;
        card.resize(100, 60);
        DesignColors::setHighContrast(true);
        const QImage image = PaintedWidget::of(card, ground);
        DesignColors::setHighContrast(false);

        COMPARE_COLOR(image.pixelColor(50, 0),
                      DesignColors::color(ColorRole::TextSecondary, false));
    }

    void aFieldHasItsOwnEdgeAndTheCardsGround_data() { addThemes(); }
    void aFieldHasItsOwnEdgeAndTheCardsGround()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        PathField field;
        field.resize(368, 28);

        const QImage image = PaintedWidget::of(field, ground);

        const QColor surface = DesignColors::color(ColorRole::Surface, isDark);
        COMPARE_COLOR(image.pixelColor(200, 14), surface);
        COMPARE_COLOR(
            image.pixelColor(200, 0),
            PaintedWidget::over(DesignColors::color(ColorRole::EdgeField, isDark), surface));
        COMPARE_COLOR(image.pixelColor(0, 0), ground);
    }

    void aFieldsTextGrowsWithTheFontWhileItStands()
    {
        const QFont usual = QApplication::font();
        PaintedWidget::useFontOf(13);
        PathField field;
        field.show();
        QCOMPARE(field.font().pixelSize(), 13);
        PaintedWidget::useFontOf(20);
        field.resize(field.sizeHint());
        QCOMPARE(field.font().pixelSize(), 20);
        QApplication::setFont(usual);
    }

    /// The window takes them, wherever they are let go.
    void filesAreNotDroppedIntoAFieldAsText()
    {
        QWidget window;
        window.setAcceptDrops(true);
        PathField field(&window);
        field.setGeometry(10, 10, 368, 28);
        window.resize(400, 60);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QMimeData files;
        files.setUrls({QUrl(QStringLiteral("file:///tmp/a"))});
        files.setText(QStringLiteral("/tmp/a"));
        QDropEvent drop(QPointF(100, 20), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QDragEnterEvent enter(QPoint(100, 20), Qt::CopyAction, &files, Qt::LeftButton,
                              Qt::NoModifier);

        QCoreApplication::sendEvent(window.windowHandle(), &enter);
        QCoreApplication::sendEvent(window.windowHandle(), &drop);

        QCOMPARE(field.text(), QString());
    }

    void aDisabledFieldHasNoGround()
    {
        PathField field;
        field.resize(368, 28);
        field.setEnabled(false);

        COMPARE_COLOR(PaintedWidget::of(field, ground).pixelColor(200, 14), ground);
    }
};

QTEST_MAIN(CardTest)
#include "CardTest.moc"
