#include "ui/CautionBand.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/CautionList.h"
#include "ui/DesignColors.h"
#include "ui/LinkButton.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QListView>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <memory>

namespace {

constexpr QColor ground(0xE8, 0xE9, 0xEA);
const QString links =
    QStringLiteral("2 symbolic links: the files they point to will be overwritten");
const QString names =
    QStringLiteral("3 files have other names (hard links), which will show the overwritten data");
const QString btrfs = QStringLiteral("btrfs: overwriting in place may leave old copies");

CautionTexts texts(const QStringList &cautions)
{
    CautionTexts list;
    for (const QString &caution : cautions)
        list.push_back({caution});
    return list;
}

/// The band in a window, where the ready view has it.
struct Scene
{
    Scene()
    {
        window.resize(720, 557);
        band = new CautionBand(&window);
        band->setGeometry(32, 429, 656, 32);
        window.show();
        window.activateWindow();
    }
    [[nodiscard]] bool isActive() { return QTest::qWaitForWindowActive(&window); }
    [[nodiscard]] QStringList listed() const
    {
        QStringList texts;
        const QAbstractItemModel *model = band->list()->view()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts.append(model->index(row, 0).data().toString());
        return texts;
    }

    QWidget window;
    CautionBand *band;
};

} // namespace

class CautionBandTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static std::unique_ptr<CautionBand> band(const QStringList &cautions)
    {
        auto band = std::make_unique<CautionBand>();
        band->resize(656, 32);
        band->setCautions(texts(cautions));
        return band;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void withoutCautionThePlaceStaysEmpty()
    {
        const auto shown = band({});

        const QImage image = PaintedWidget::of(*shown, ground);

        for (int x = 0; x < 656; x += 4)
            for (int y = 0; y < 32; ++y)
                QCOMPARE(image.pixelColor(x, y), ground);
        QVERIFY(shown->moreLink()->isHidden());
    }

    void aCautionHasItsGroundAndIcon_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void aCautionHasItsGroundAndIcon()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const QColor warn = DesignColors::color(ColorRole::WarnBackground, isDark);

        const QImage image = PaintedWidget::of(*band({links}), ground);

        COMPARE_COLOR(image.pixelColor(6, 16), warn);
        COMPARE_COLOR(image.pixelColor(300, 0),
                      PaintedWidget::over(DesignColors::color(ColorRole::WarnEdge, isDark), warn));
        // Left of the sign in the triangle, which is 12 from the left.
        COMPARE_COLOR(image.pixelColor(16, 20), DesignColors::color(ColorRole::WarnIcon, isDark));
        // The text begins 40 from the left.
        COMPARE_COLOR(image.pixelColor(36, 16), warn);
    }

    void theLinkSaysHowManyMore_data()
    {
        QTest::addColumn<QStringList>("cautions");
        QTest::addColumn<QString>("text");
        QTest::newRow("one") << QStringList{links} << QString();
        QTest::newRow("two") << QStringList{links, names} << QStringLiteral("1 more");
        QTest::newRow("three") << QStringList{links, names, btrfs} << QStringLiteral("2 more");
    }

    void theLinkSaysHowManyMore()
    {
        QFETCH(QStringList, cautions);
        QFETCH(QString, text);

        const auto shown = band(cautions);

        QCOMPARE(shown->moreLink()->text(), text);
        QCOMPARE(shown->moreLink()->isHidden(), text.isEmpty());
        if (!text.isEmpty())
            QCOMPARE(shown->moreLink()->geometry().right(), 656 - 12);
    }

    void aLongCautionIsElidedBeforeTheLink()
    {
        preferences_->setDark(false);
        const auto shown = band({QString(300, QLatin1Char('W')), names});

        const QImage image = PaintedWidget::of(*shown, ground);

        const int left = shown->moreLink()->x() - 12;
        for (int y = 1; y < 31; ++y)
            for (int x = left; x < shown->moreLink()->x(); ++x)
                COMPARE_COLOR(image.pixelColor(x, y),
                              DesignColors::color(ColorRole::WarnBackground, false));
    }

    void onlyAnElidedCautionIsItsToolTip()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        const auto toolTip = [&scene] {
            QHelpEvent asked(QEvent::ToolTip, QPoint(60, 10),
                             scene.band->mapToGlobal(QPoint(60, 10)));
            QApplication::sendEvent(scene.band, &asked);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };

        scene.band->setCautions(texts({links}));
        QCOMPARE(toolTip(), QString());
        scene.band->setCautions(texts({QString(200, QLatin1Char('W'))}));
        QVERIFY(toolTip().contains(QLatin1String("WWW")));
    }

    void theLinkOpensTheListOfAll_data()
    {
        QTest::addColumn<bool>("byKeyboard");
        QTest::newRow("by a click") << false;
        QTest::newRow("by Return") << true;
    }

    void theLinkOpensTheListOfAll()
    {
        QFETCH(bool, byKeyboard);
        Scene scene;
        scene.band->setCautions(texts({links, names, btrfs}));
        QVERIFY(scene.isActive());

        if (byKeyboard)
            QTest::keyClick(scene.band->moreLink(), Qt::Key_Return);
        else
            QTest::mouseClick(scene.band->moreLink(), Qt::LeftButton);

        QVERIFY(scene.band->list() && scene.band->list()->isOpen());
        QCOMPARE(scene.listed(), QStringList({links, names, btrfs}));
        QCOMPARE(scene.band->list()->cardRect(), QRect(32, 425, 656, 96));
        QVERIFY(scene.band->list()->view()->hasFocus());
    }

    void keysCloseTheListAndTheKeyboardGoesBack_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Escape") << int(Qt::Key_Escape);
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Space") << int(Qt::Key_Space);
    }

    void keysCloseTheListAndTheKeyboardGoesBack()
    {
        QFETCH(int, key);
        Scene scene;
        scene.band->setCautions(texts({links, names}));
        QVERIFY(scene.isActive());
        scene.band->moreLink()->click();
        QTest::keyClick(scene.band->list()->view(), Qt::Key_Down);
        QCOMPARE(scene.band->list()->view()->currentIndex().row(), 1);

        QTest::keyClick(scene.band->list()->view(), Qt::Key(key));

        QVERIFY(!scene.band->list()->isOpen());
        QVERIFY(scene.band->moreLink()->hasFocus());
    }

    void otherCautionsCloseTheList()
    {
        Scene scene;
        scene.band->setCautions(texts({links, names}));
        QVERIFY(scene.isActive());
        scene.band->moreLink()->click();

        scene.band->setCautions(texts({links, btrfs}));

        QVERIFY(!scene.band->list()->isOpen());
        scene.band->moreLink()->click();
        QCOMPARE(scene.listed(), QStringList({links, btrfs}));
    }

    void aNewCautionIsToldOnce()
    {
        const auto shown = band({});
        QSignalSpy told(shown.get(), &CautionBand::cautionAppeared);

        shown->setCautions(texts({btrfs}));
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.first().first().toString(), btrfs);
        shown->setCautions(texts({btrfs}));
        QCOMPARE(told.count(), 1);
        shown->setCautions(texts({links, btrfs}));
        QCOMPARE(told.count(), 2);
        QCOMPARE(told.last().first().toString(), links);
        // What was below is the gravest now: nothing new.
        shown->setCautions(texts({btrfs}));
        shown->setCautions({});
        QCOMPARE(told.count(), 2);
    }

    void anotherCountOfTheSameKindIsNoNews()
    {
        const auto band = this->band({});
        QSignalSpy told(band.get(), &CautionBand::cautionAppeared);
        const auto counted = [](const char *text) {
            return Caution{QString::fromLatin1(text), QStringLiteral("links")};
        };

        band->setCautions({counted("1 link")});
        band->setCautions({counted("512 links")});

        QCOMPARE(told.count(), 1);
        QCOMPARE(band->cautions(), QStringList(QStringLiteral("512 links")));
        QCOMPARE(band->accessibleName(), QStringLiteral("512 links"));
        // Once it was gone it is new again.
        band->setCautions({});
        band->setCautions({counted("2 links")});
        QCOMPARE(told.count(), 2);
    }

    void aCautionThatAppearsBelowTheGravestIsToldAsWell()
    {
        const auto band = this->band({links});
        QSignalSpy told(band.get(), &CautionBand::cautionAppeared);

        band->setCautions(texts({links, names, btrfs}));

        QCOMPARE(told.count(), 2);
        QCOMPARE(told.first().first().toString(), names);
        QCOMPARE(told.last().first().toString(), btrfs);
        const QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(band.get());
        QCOMPARE(heard->text(QAccessible::Name), links);
        QCOMPARE(heard->text(QAccessible::Description), names + QLatin1Char('\n') + btrfs);
    }

    void screenReadersHearTheCautionAsItsName()
    {
        const auto shown = band({links, names});
        QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(shown.get());
        QVERIFY(heard);
        QCOMPARE(heard->text(QAccessible::Name), links);
    }

    void anotherMarginMovesIconAndLink()
    {
        preferences_->setDark(false);
        const auto shown = band({links, names});
        shown->setMargin(16);
        shown->setReservedWidth(100);

        QCOMPARE(shown->moreLink()->geometry().right(), 656 - 116);
        const QImage image = PaintedWidget::of(*shown, ground);
        COMPARE_COLOR(image.pixelColor(20, 20), DesignColors::color(ColorRole::WarnIcon, false));
    }
};

QTEST_MAIN(CautionBandTest)
#include "CautionBandTest.moc"
