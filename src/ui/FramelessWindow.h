#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

class VTLView;
class WindowHeader;

/// A window that draws its own frame: the ground "DefaultWindowView", a header, the body under it,
/// rounded corners where a compositing manager allows them, and an edge line over everything. Its
/// header moves it, its outer pixels resize it.
///
/// Thread:  main
/// Owns:    header and body
/// Units:   logical pixels
class FramelessWindow : public QWidget
{
    Q_OBJECT

  public:
    explicit FramelessWindow(QWidget *parent = nullptr);
    ~FramelessWindow() override;

    [[nodiscard]] WindowHeader *windowHeader() const { return header_; }
    /// What stands under the header.
    [[nodiscard]] QWidget *body() const { return body_; }
    [[nodiscard]] VTLView *ground() const { return ground_; }
    [[nodiscard]] int cornerRadius() const { return cornerRadius_; }

    /// Whether windows may be transparent; the platform's own answer unless replaced.
    void setIsComposited(std::function<bool()> predicate);
    void setResizable(bool isResizable) { isResizable_ = isResizable; }

    /// Shows the window, also from its minimised state, in front of the others and with the
    /// keyboard.
    void makeKeyAndOrderFront();

  Q_SIGNALS:
    void becameKey();
    void resignedKey();
    void cornerRadiusChanged(int radius);

  protected:
    /// Once, from the constructor of the class that knows its header.
    void setWindowHeader(WindowHeader *header);
    virtual void layOut();
    /// All that the window shows is drawn anew, each widget for itself.
    void updateTree();
    /// Brings what lies over everything back to the top.
    void raiseEdge();
    /// Asks the window system to resize the window by these edges.
    virtual void performWindowResize(Qt::Edges edges);

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void changeEvent(QEvent *event) override;

  private:
    class Edge;

    void watchHandle();
    void lookAtCompositing();
    void updateCornerRadius();
    bool takesMouse(QEvent *event);
    void showCursor(Qt::Edges edges);

    VTLView *ground_;
    QWidget *body_;
    Edge *edge_;
    WindowHeader *header_ = nullptr;
    QPointer<QObject> watched_;
    std::function<bool()> isComposited_;
    bool isCompositedNow_ = false;
    int cornerRadius_ = 0;
    bool isResizable_ = true;
    bool hasResizeCursor_ = false;
};
