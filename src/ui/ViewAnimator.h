#pragma once

#include "ui/PushTransition.h"
#include "ui/ViewAnimatorDelegate.h"

#include <QObject>
#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

#include <memory>

/// Swaps the holder's only child for another view with a short push from one side, and gives the
/// window the size that fits the new view, its top left corner staying.
///
/// While both slide, the current view is the new one; the old one leaves as a picture, so it may
/// change at once. It goes to the holder's parent, hidden.
///
/// The delegate hears of the start once per swap, and of the end only if no other swap came
/// between, both from the event loop.
///
/// Thread:       main
/// Holds weakly: the holder, the views, the delegate
/// Failure:      without a holder a swap only moves the view; a holder outside of any window leaves
///               all windows as they are
class ViewAnimator : public QObject
{
    Q_OBJECT

  public:
    explicit ViewAnimator(QWidget *viewHolder);

    [[nodiscard]] QWidget *viewHolder() const { return viewHolder_; }
    [[nodiscard]] PushTransition *transition() { return &transition_; }
    void setDelegate(std::weak_ptr<ViewAnimatorDelegate> delegate);

    /// The side stays set for later calls of animate().
    void animateFromTopForView(QWidget *view);
    void animateFromBottomForView(QWidget *view);
    void animateFromRightForView(QWidget *view);
    void animateFromLeftForView(QWidget *view);
    /// Not for the view that is current.
    void animate(QWidget *view);

    /// Null where the holder is empty.
    [[nodiscard]] QWidget *getCurrentView() const;
    void resizeWindowToFitView(const QWidget *view);

    void animationDidStart();
    void animationDidStop(bool finished);
    void animationStartedDelegate();
    void animationFinishedDelegate();

  private:
    void animateFrom(PushTransition::Subtype side, QWidget *view);
    [[nodiscard]] QPixmap pictureOfHolder() const;
    void addToHolder(QWidget *view, const QPixmap &leaving);
    void removeFromHolder(QWidget *view);
    void moveWindow(QWidget *window, const QRect &content);

    QPointer<QWidget> viewHolder_;
    PushTransition transition_;
    std::weak_ptr<ViewAnimatorDelegate> delegate_;
    QVariantAnimation windowAnimation_;
    QPointer<QWidget> window_;
};
