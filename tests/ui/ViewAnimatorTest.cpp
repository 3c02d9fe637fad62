#include "ui/ViewAnimator.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

namespace {

/// In seconds, so that a machine that stalls does not pass the middle over.
constexpr double enoughToLookInBetween = 20;

/// Writes down what it hears; answers only what it is told to.
class RecordingDelegate : public ViewAnimatorDelegate
{
  public:
    explicit RecordingDelegate(bool answersAll = true) : answersAll_(answersAll) {}
    bool answers(Call) const override { return answersAll_; }
    void animationStarted() override { heard.append(QStringLiteral("started")); }
    void animationFinished() override { heard.append(QStringLiteral("finished")); }

    QStringList heard;

  private:
    bool answersAll_;
};

/// A window with a holder, and three views outside of it.
struct Scene
{
    Scene()
    {
        window.setGeometry(60, 800, 500, 300);
        holder = new QWidget(&window);
        holder->setGeometry(0, 37, 500, 263);
        animator = std::make_unique<ViewAnimator>(holder);
        animator->setDelegate(delegate);
        for (QWidget *view : {&first, &second, &third})
            view->resize(500, 263);
    }
    void setReducedMotion(bool isReduced)
    {
        animator->transition()->setPrefersReducedMotion([isReduced] { return isReduced; });
    }
    [[nodiscard]] bool isStill() const { return !animator->transition()->isRunning(); }

    QWidget first;
    QWidget second;
    QWidget third;
    QWidget window;
    QWidget *holder;
    std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
    std::unique_ptr<ViewAnimator> animator;

    ~Scene()
    {
        // The views are not the window's.
        for (QWidget *view : {&first, &second, &third})
            view->setParent(nullptr);
    }
};

} // namespace

class ViewAnimatorTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theTransitionIsAPushFromTheRightOfAFifthOfASecond();
    void withoutViewsNothingIsCurrent();
    void theNewViewIsCurrentAtOnce();
    void theNewViewKeepsItsSizeAndStandsAtTheOrigin();
    void theHolderTakesTheNewViewsFrame();
    void theOldViewLeavesAsAPicture();
    void theLeavingPictureIsNoView();
    void theFirstViewNeedsNoPicture();
    void theWindowKeepsItsTopLeftCorner_data();
    void theWindowKeepsItsTopLeftCorner();
    void theWindowGrowsSoftly();
    void aHolderInNoWindowResizesNothing();
    void withoutAHolderOnlyTheViewMoves();
    void theNewViewComesFromTheNamedSide_data();
    void theNewViewComesFromTheNamedSide();
    void bothSlideTogether();
    void theSideStaysForPlainSwaps();
    void theDelegateHearsStartThenEnd();
    void anInterruptedSwapTellsTwoStartsAndOneEnd();
    void withReducedMotionTheViewStandsAtOnceAndTheNoticesComeLater();
    void withReducedMotionTwoSwapsAtOnceTellOneEnd();
    void aDelegateThatAnswersNothingIsNotCalled();
    void aDelegateThatIsGoneIsNotCalled();
    void aStopBeforeTheEndTellsNothing();
    void theHiddenOldViewLosesTheFocus();
};

void ViewAnimatorTest::theTransitionIsAPushFromTheRightOfAFifthOfASecond()
{
    Scene scene;
    QCOMPARE(scene.animator->transition()->type(), PushTransition::Type::Push);
    QCOMPARE(scene.animator->transition()->subtype(), PushTransition::Subtype::FromRight);
    QCOMPARE(scene.animator->transition()->duration(), 0.2);
    QCOMPARE(scene.animator->viewHolder(), scene.holder);
}

void ViewAnimatorTest::withoutViewsNothingIsCurrent()
{
    QCOMPARE(Scene().animator->getCurrentView(), nullptr);
}

void ViewAnimatorTest::theNewViewIsCurrentAtOnce()
{
    Scene scene;
    scene.window.show();
    scene.animator->animate(&scene.first);
    QCOMPARE(scene.animator->getCurrentView(), &scene.first);
    scene.animator->animate(&scene.second);
    QCOMPARE(scene.animator->getCurrentView(), &scene.second);
    QVERIFY(scene.first.isHidden());
    QVERIFY(!scene.second.isHidden());
    QTRY_VERIFY(scene.isStill());
    QCOMPARE(scene.animator->getCurrentView(), &scene.second);
    QCOMPARE(scene.holder->findChildren<QWidget *>().size(), 1);
}

void ViewAnimatorTest::theNewViewKeepsItsSizeAndStandsAtTheOrigin()
{
    Scene scene;
    scene.first.setGeometry(11, 12, 420, 263);
    scene.animator->animate(&scene.first);
    QTRY_VERIFY(scene.isStill());
    QCOMPARE(scene.first.geometry(), QRect(0, 0, 420, 263));
}

void ViewAnimatorTest::theHolderTakesTheNewViewsFrame()
{
    // Kept on purpose: its place becomes its own origin, too.
    Scene scene;
    scene.first.resize(420, 263);
    scene.animator->animate(&scene.first);
    QCOMPARE(scene.holder->geometry(), QRect(0, 0, 420, 263));
}

void ViewAnimatorTest::theOldViewLeavesAsAPicture()
{
    Scene scene;
    scene.first.setAutoFillBackground(true);
    scene.first.setPalette(QPalette(Qt::red));
    scene.window.show();
    scene.setReducedMotion(true);
    scene.animator->animate(&scene.first);
    scene.setReducedMotion(false);
    scene.animator->animate(&scene.second);
    QWidget *picture = scene.animator->transition()->leavingPicture();
    QVERIFY(picture);
    scene.first.setPalette(QPalette(Qt::green));
    QCOMPARE(picture->grab().toImage().pixelColor(100, 100), QColor(Qt::red));
    QTRY_VERIFY(!scene.animator->transition()->leavingPicture());
}

void ViewAnimatorTest::theLeavingPictureIsNoView()
{
    Scene scene;
    scene.window.show();
    scene.animator->animate(&scene.first);
    scene.animator->animate(&scene.second);
    QVERIFY(scene.animator->transition()->leavingPicture());
    scene.second.setParent(nullptr);
    QCOMPARE(scene.animator->getCurrentView(), nullptr);
}

void ViewAnimatorTest::theFirstViewNeedsNoPicture()
{
    Scene scene;
    scene.animator->animate(&scene.first);
    QVERIFY(!scene.animator->transition()->leavingPicture());
}

void ViewAnimatorTest::theWindowKeepsItsTopLeftCorner_data()
{
    QTest::addColumn<QSize>("view");
    QTest::addColumn<QRect>("window");
    QTest::newRow("narrower") << QSize(420, 263) << QRect(60, 800, 420, 300);
    QTest::newRow("100 higher") << QSize(500, 363) << QRect(60, 800, 500, 400);
}

void ViewAnimatorTest::theWindowKeepsItsTopLeftCorner()
{
    QFETCH(QSize, view);
    QFETCH(QRect, window);
    Scene scene;
    scene.first.resize(view);
    scene.animator->animate(&scene.first);
    QTRY_COMPARE(scene.window.geometry(), window);
}

void ViewAnimatorTest::theWindowGrowsSoftly()
{
    Scene scene;
    scene.first.resize(500, 463);
    scene.animator->animate(&scene.first);
    QVERIFY(scene.window.height() < 500);
    QTRY_COMPARE(scene.window.height(), 500);

    scene.setReducedMotion(true);
    scene.second.resize(500, 263);
    scene.animator->animate(&scene.second);
    QCOMPARE(scene.window.height(), 300);
}

void ViewAnimatorTest::aHolderInNoWindowResizesNothing()
{
    QWidget holder;
    holder.setGeometry(5, 6, 100, 100);
    QWidget view;
    view.resize(300, 200);
    ViewAnimator animator(&holder);
    animator.resizeWindowToFitView(&view);
    QCOMPARE(holder.geometry(), QRect(5, 6, 100, 100));
}

void ViewAnimatorTest::withoutAHolderOnlyTheViewMoves()
{
    QWidget view;
    view.setGeometry(9, 9, 300, 200);
    ViewAnimator animator(nullptr);
    animator.animate(&view);
    QCOMPARE(animator.getCurrentView(), nullptr);
    QCOMPARE(view.geometry(), QRect(0, 0, 300, 200));
}

void ViewAnimatorTest::theNewViewComesFromTheNamedSide_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<QPoint>("start");
    QTest::newRow("top") << 0 << QPoint(0, -263);
    QTest::newRow("bottom") << 1 << QPoint(0, 263);
    QTest::newRow("right") << 2 << QPoint(500, 0);
    QTest::newRow("left") << 3 << QPoint(-500, 0);
}

void ViewAnimatorTest::theNewViewComesFromTheNamedSide()
{
    QFETCH(int, side);
    QFETCH(QPoint, start);
    Scene scene;
    constexpr std::array operations{
        &ViewAnimator::animateFromTopForView, &ViewAnimator::animateFromBottomForView,
        &ViewAnimator::animateFromRightForView, &ViewAnimator::animateFromLeftForView};
    (*scene.animator.*operations.at(std::size_t(side)))(&scene.first);
    QCOMPARE(scene.first.pos(), start);
    QTRY_COMPARE(scene.first.pos(), QPoint(0, 0));
}

void ViewAnimatorTest::bothSlideTogether()
{
    Scene scene;
    scene.window.show();
    scene.setReducedMotion(true);
    scene.animator->animate(&scene.first);
    scene.setReducedMotion(false);
    scene.animator->transition()->setDuration(enoughToLookInBetween);
    scene.animator->animateFromTopForView(&scene.second);
    const QPointer<QWidget> picture = scene.animator->transition()->leavingPicture();
    QVERIFY(picture);
    QCOMPARE(picture->y(), 0);
    QTRY_VERIFY(scene.second.y() > -263);
    QVERIFY(picture);
    QCOMPARE(picture->y() - scene.second.y(), 263);
}

void ViewAnimatorTest::theSideStaysForPlainSwaps()
{
    Scene scene;
    scene.animator->animateFromTopForView(&scene.first);
    scene.animator->animate(&scene.second);
    QCOMPARE(scene.animator->transition()->subtype(), PushTransition::Subtype::FromTop);
    QCOMPARE(scene.second.pos(), QPoint(0, -263));
}

void ViewAnimatorTest::theDelegateHearsStartThenEnd()
{
    Scene scene;
    scene.animator->animate(&scene.first);
    QTRY_COMPARE(scene.delegate->heard.value(0), QStringLiteral("started"));
    QTRY_COMPARE(scene.delegate->heard,
                 (QStringList{QStringLiteral("started"), QStringLiteral("finished")}));
}

void ViewAnimatorTest::anInterruptedSwapTellsTwoStartsAndOneEnd()
{
    Scene scene;
    QSignalSpy stops(scene.animator->transition(), &PushTransition::didStop);
    const double duration = scene.animator->transition()->duration();
    scene.animator->transition()->setDuration(enoughToLookInBetween);
    scene.animator->animate(&scene.first);
    QTRY_COMPARE(scene.delegate->heard.size(), 1);
    scene.animator->transition()->setDuration(duration);
    scene.animator->animate(&scene.second);
    const QStringList expected{QStringLiteral("started"), QStringLiteral("started"),
                               QStringLiteral("finished")};
    QTRY_COMPARE(scene.delegate->heard, expected);
    QCOMPARE(stops.size(), 2);
    QCOMPARE(stops.first().first().toBool(), false);
    QCOMPARE(scene.animator->getCurrentView(), &scene.second);
}

void ViewAnimatorTest::withReducedMotionTheViewStandsAtOnceAndTheNoticesComeLater()
{
    Scene scene;
    scene.setReducedMotion(true);
    scene.animator->animate(&scene.first);
    QCOMPARE(scene.first.pos(), QPoint(0, 0));
    QVERIFY(scene.delegate->heard.isEmpty());
    QTRY_COMPARE(scene.delegate->heard,
                 (QStringList{QStringLiteral("started"), QStringLiteral("finished")}));
}

void ViewAnimatorTest::withReducedMotionTwoSwapsAtOnceTellOneEnd()
{
    Scene scene;
    scene.setReducedMotion(true);
    scene.animator->animate(&scene.first);
    scene.animator->animate(&scene.second);
    const QStringList expected{QStringLiteral("started"), QStringLiteral("started"),
                               QStringLiteral("finished")};
    QTRY_COMPARE(scene.delegate->heard, expected);
    QCoreApplication::processEvents();
    QCOMPARE(scene.delegate->heard, expected);
}

void ViewAnimatorTest::aDelegateThatAnswersNothingIsNotCalled()
{
    Scene scene;
    scene.delegate = std::make_shared<RecordingDelegate>(false);
    scene.animator->setDelegate(scene.delegate);
    QSignalSpy stops(scene.animator->transition(), &PushTransition::didStop);
    scene.animator->animate(&scene.first);
    QTRY_COMPARE(stops.size(), 1);
    QVERIFY(scene.delegate->heard.isEmpty());
    QCOMPARE(scene.animator->getCurrentView(), &scene.first);
}

void ViewAnimatorTest::aDelegateThatIsGoneIsNotCalled()
{
    Scene scene;
    QSignalSpy stops(scene.animator->transition(), &PushTransition::didStop);
    scene.animator->animate(&scene.first);
    scene.delegate.reset();
    QTRY_COMPARE(stops.size(), 1);
}

void ViewAnimatorTest::aStopBeforeTheEndTellsNothing()
{
    Scene scene;
    scene.animator->animationDidStop(false);
    QVERIFY(scene.delegate->heard.isEmpty());
    scene.animator->animationDidStop(true);
    QCOMPARE(scene.delegate->heard, QStringList{QStringLiteral("finished")});
}

void ViewAnimatorTest::theHiddenOldViewLosesTheFocus()
{
    Scene scene;
    auto *other = new QWidget(&scene.window);
    other->setFocusPolicy(Qt::StrongFocus);
    scene.first.setFocusPolicy(Qt::StrongFocus);
    scene.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    scene.animator->animate(&scene.first);
    scene.first.setFocus();
    scene.animator->animate(&scene.second);
    QCOMPARE(scene.window.focusWidget(), nullptr);
}

QTEST_MAIN(ViewAnimatorTest)
#include "ViewAnimatorTest.moc"
