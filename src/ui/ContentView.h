#pragma once

#include "ui/TextLabel.h"
#include "ui/ViewRuler.h"

#include <QWidget>

#include <vector>

class QAbstractButton;
class QScrollBar;

/// One of the five views of the main window: its elements stand on a canvas that is as large as the
/// view, and scrolls in it where the view is lower than the design's smallest one. A view is
/// layout: it shows what it is given and says what was clicked.
///
/// Thread: main
class ContentView : public QWidget
{
    Q_OBJECT

  public:
    explicit ContentView(QWidget *parent = nullptr);

    static QSize naturalSize();
    static QSize smallestSize();
    [[nodiscard]] QSize sizeHint() const override { return naturalSize(); }

    [[nodiscard]] QWidget *canvas() const { return canvas_; }
    [[nodiscard]] QScrollBar *scrollBar() const { return scrollBar_; }

    /// Where the keyboard is when the view has come.
    [[nodiscard]] virtual QWidget *firstFocus() const = 0;
    /// What Tab goes through, in its order.
    [[nodiscard]] virtual std::vector<QWidget *> tabStops() const = 0;
    /// The view has come to rest in the window.
    virtual void viewDidAppear() {}

    /// What the Return key does where no button has the focus. Whether there is such a thing.
    bool pressDefault();

  protected:
    /// Places the elements. Called whenever size or font changes.
    virtual void layOut(const ViewRuler &ruler) = 0;
    /// What Return presses; a button that has the focus takes the key itself.
    [[nodiscard]] virtual QAbstractButton *defaultButton() const { return nullptr; }

    /// A text on the canvas.
    TextLabel *addText(TextStyle style, ColorRole role, Qt::Alignment alignment = Qt::AlignLeft);

    /// To be called when something that layOut() looks at has changed.
    void layOutAgain();
    /// To be called at the end of the constructor.
    void chainTabStops() const;

    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

  private:
    void reveal(const QWidget *widget);
    void placeCanvas();

    QWidget *canvas_;
    QScrollBar *scrollBar_;
};
