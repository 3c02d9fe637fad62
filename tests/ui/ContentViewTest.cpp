#include "ui/ContentView.h"

#include "ui/ViewScene.h"

#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

/// Three buttons at the design's upper edge, middle and lower edge.
class TestView : public ContentView
{
  public:
    TestView()
    {
        for (QPushButton *&button : buttons) {
            button = new QPushButton(canvas());
            button->setAutoDefault(false);
        }
        chainTabStops();
    }

    std::array<QPushButton *, 3> buttons{};
    QPushButton *byReturn = nullptr;
    QSize laidOut;
    int layOuts = 0;

    [[nodiscard]] QWidget *firstFocus() const override { return buttons[0]; }
    [[nodiscard]] std::vector<QWidget *> tabStops() const override
    {
        return {buttons[2], buttons[1], buttons[0]};
    }

  protected:
    void layOut(const ViewRuler &ruler) override
    {
        laidOut = ruler.size();
        ++layOuts;
        buttons[0]->setGeometry(ruler.left(32), ruler.top(8), 100, 24);
        buttons[1]->setGeometry(ruler.left(32), ruler.down(248), 100, 24);
        buttons[2]->setGeometry(ruler.left(32), ruler.bottom(488), 100, 24);
    }
    [[nodiscard]] QAbstractButton *defaultButton() const override { return byReturn; }
};

constexpr QSize low(640, 300);

} // namespace

class ContentViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void itsNaturalSizeGrowsWithTheFont();
    void theCanvasIsAsLargeAsTheView();
    void aLowViewScrollsDownAndNeverSideways();
    void theScrollBarLiesInTheMargin();
    void whatGetsTheKeyboardScrollsIntoView();
    void ofAHighElementTheBeginningIsEnough();
    void theWheelScrollsALowView();
    void aHighViewLeavesTheWheelToOthers();
    void anotherFontLaysOutAnew();
    void tabFollowsTheStops();
    void returnPressesTheViewsButton();
    void returnDoesNothingToADisabledButton();
    void aHeldReturnPressesOnce();

  private:
    /// One step downwards; whether the view took it.
    bool turnWheel();

    std::optional<ViewScene> scene_;
    std::optional<TestView> view_;
};

void ContentViewTest::init()
{
    ViewScene::setFontPixels(13);
    view_.reset();
    scene_.emplace();
    view_.emplace();
}

bool ContentViewTest::turnWheel()
{
    const QPointF at(20, 20);
    QWheelEvent down(at, view_->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&*view_, &down);
    return down.isAccepted();
}

void ContentViewTest::itsNaturalSizeGrowsWithTheFont()
{
    QCOMPARE(ContentView::naturalSize(), QSize(720, 520));
    QCOMPARE(view_->sizeHint(), QSize(720, 520));
    QCOMPARE(ContentView::smallestSize(), QSize(640, 464));
    ViewScene::setFontPixels(26);
    QCOMPARE(ContentView::naturalSize(), QSize(1152, 832));
    QCOMPARE(ContentView::smallestSize(), QSize(1024, 742));
}

void ContentViewTest::theCanvasIsAsLargeAsTheView()
{
    for (const QSize &size : {QSize(720, 520), QSize(640, 464), QSize(1000, 800)}) {
        scene_->place(*view_, size);
        QCOMPARE(view_->canvas()->geometry(), QRect(QPoint(), size));
        QCOMPARE(view_->laidOut, size);
        QVERIFY(!view_->scrollBar()->isVisible());
    }
}

void ContentViewTest::aLowViewScrollsDownAndNeverSideways()
{
    scene_->place(*view_, low);
    QCOMPARE(view_->canvas()->size(), QSize(640, 464));
    QVERIFY(view_->scrollBar()->isVisible());
    QCOMPARE(view_->scrollBar()->maximum(), 164);
    view_->scrollBar()->setValue(164);
    QCOMPARE(view_->canvas()->pos(), QPoint(0, -164));

    view_->resize(500, 464);
    QCOMPARE(view_->canvas()->geometry(), QRect(0, 0, 500, 464));
    QVERIFY(!view_->scrollBar()->isVisible());
}

void ContentViewTest::theScrollBarLiesInTheMargin()
{
    scene_->place(*view_, low);
    const QRect bar = view_->scrollBar()->geometry();
    QCOMPARE(bar.x() + bar.width(), low.width());
    QCOMPARE(bar.height(), low.height());
    QVERIFY(bar.width() <= ViewRuler::margin);
}

void ContentViewTest::whatGetsTheKeyboardScrollsIntoView()
{
    scene_->place(*view_, low);
    view_->buttons[2]->setFocus();
    // Its lower edge is at 456, and 8 below it are seen as well.
    QCOMPARE(view_->scrollBar()->value(), 456 + 8 - 300);
    view_->buttons[1]->setFocus();
    QCOMPARE(view_->scrollBar()->value(), 164);
    view_->buttons[0]->setFocus();
    QCOMPARE(view_->scrollBar()->value(), 0);
}

void ContentViewTest::ofAHighElementTheBeginningIsEnough()
{
    scene_->place(*view_, low);
    view_->buttons[1]->setGeometry(32, 152, 400, 300);
    view_->buttons[1]->setFocus();
    QCOMPARE(view_->scrollBar()->value(), 0);
}

void ContentViewTest::theWheelScrollsALowView()
{
    scene_->place(*view_, low);
    turnWheel();
    QCOMPARE(view_->scrollBar()->value(), 3 * 20);
    // At the end it goes no further.
    for (int turn = 0; turn < 3; ++turn)
        turnWheel();
    QCOMPARE(view_->scrollBar()->value(), 164);
}

void ContentViewTest::aHighViewLeavesTheWheelToOthers()
{
    scene_->place(*view_, {720, 520});
    QVERIFY(!turnWheel());
}

void ContentViewTest::anotherFontLaysOutAnew()
{
    scene_->place(*view_, {1152, 832});
    QCOMPARE(view_->buttons[2]->y(), 832 - 32);
    ViewScene::setFontPixels(26);
    QTRY_COMPARE(view_->buttons[2]->y(), 832 - 51);
}

void ContentViewTest::tabFollowsTheStops()
{
    scene_->place(*view_, {720, 520});
    QCOMPARE(ViewScene::tabbedThrough(*view_), view_->tabStops());
}

void ContentViewTest::returnPressesTheViewsButton()
{
    scene_->place(*view_, {720, 520});
    int pressed = 0;
    connect(view_->buttons[1], &QPushButton::clicked, this, [&pressed] { ++pressed; });
    view_->setFocus();
    QVERIFY(!view_->pressDefault());
    view_->byReturn = view_->buttons[1];
    QTest::keyClick(&*view_, Qt::Key_Return);
    QTest::keyClick(&*view_, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(pressed, 2);
    QTest::keyClick(&*view_, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(pressed, 2);
}

void ContentViewTest::returnDoesNothingToADisabledButton()
{
    scene_->place(*view_, {720, 520});
    view_->byReturn = view_->buttons[1];
    view_->byReturn->setEnabled(false);
    QVERIFY(!view_->pressDefault());
}

void ContentViewTest::aHeldReturnPressesOnce()
{
    scene_->place(*view_, {720, 520});
    int pressed = 0;
    connect(view_->buttons[1], &QPushButton::clicked, this, [&pressed] { ++pressed; });
    view_->byReturn = view_->buttons[1];
    QKeyEvent first(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&*view_, &first);
    QApplication::sendEvent(&*view_, &repeated);
    QCOMPARE(pressed, 1);
}

QTEST_MAIN(ContentViewTest)
#include "ContentViewTest.moc"
