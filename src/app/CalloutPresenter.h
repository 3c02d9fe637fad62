#pragma once

#include <QPointer>

class DropView;
class QPropertyAnimation;

/// Lets the callout under the add button slide out from behind the header, once a showing.
///
/// Thread:       main
/// Holds weakly: the view with its callout, which outlives it
class CalloutPresenter
{
  public:
    explicit CalloutPresenter(DropView *view) : view_(view) {}

    /// One that is there already stays where it is.
    void slideOut();
    /// Hidden, behind the header.
    void putBack();

  private:
    DropView *view_;
    QPointer<QPropertyAnimation> slide_;
};
