#pragma once

#include <QPointer>
#include <QWidget>

class QListView;

/// A card that lies over its window until something is chosen in it or the user turns away: a click
/// beside it, Escape, another window. It is a part of the window, with the window's own ground
/// behind its round corners, and never reaches beyond the window's edge. While it is open, no
/// shortcut acts: keys are the card's.
///
/// Thread: main
class PopupCard : public QWidget
{
    Q_OBJECT

  public:
    explicit PopupCard(QWidget *opener);

    /// Where a card that wants to be at `wanted` comes to lie inside `bounds`. Pure.
    static QRect keptInside(const QRect &wanted, const QRect &bounds);

    /// In the window's coordinates.
    [[nodiscard]] QRect cardRect() const { return cardRect_; }
    [[nodiscard]] bool isOpen() const { return isVisible(); }
    void close();

    /// From the card's edge to its rows.
    static constexpr int cardPadding = 6;

  Q_SIGNALS:
    void opened();
    void closed();

  protected:
    /// Lies there until closed; the keyboard goes to `focus`, and back when it closes.
    void openAt(const QRect &wanted, QWidget *focus);
    /// Makes the view one of rows on the card: the row under the pointer is the current one. Its
    /// keys come to eventFilter() first.
    void prepareList(QListView *view);
    [[nodiscard]] QWidget *opener() const { return opener_; }

    /// To place the contents.
    virtual void cardPlaced(const QRect &card) = 0;

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

  private:
    QPointer<QWidget> opener_;
    QRect cardRect_;
};
