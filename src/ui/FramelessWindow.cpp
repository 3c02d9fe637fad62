#include "ui/FramelessWindow.h"

#include "platform/Compositor.h"
#include "ui/DesignColors.h"
#include "ui/Hairline.h"
#include "ui/VTLView.h"
#include "ui/VantorelStyle.h"
#include "ui/WindowGeometry.h"
#include "ui/WindowHeader.h"
#include "ui/WindowRegister.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QWindow>

/// Takes the corners away from all that lies below it and draws the window's edge.
class FramelessWindow::Edge : public QWidget
{
  public:
    explicit Edge(FramelessWindow *window) : QWidget(window)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    void setRadius(int radius)
    {
        radius_ = radius;
        update();
    }

  protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double line = hairline(painter);
        const QRectF inner = QRectF(rect()).adjusted(line, line, -line, -line);
        if (radius_ > 0) {
            painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
            painter.fillPath(between(rect(), 0, rect(), radius_), Qt::black);
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        }
        painter.fillPath(between(rect(), radius_, inner, std::max(radius_ - line, 0.0)),
                         DesignColors::color(ColorRole::WindowEdge));
    }

  private:
    static QPainterPath between(const QRectF &outer, double outerRadius, const QRectF &inner,
                                double innerRadius)
    {
        QPainterPath path;
        path.addRoundedRect(outer, outerRadius, outerRadius);
        path.addRoundedRect(inner, innerRadius, innerRadius);
        return path;
    }

    int radius_ = 0;
};

FramelessWindow::FramelessWindow(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      ground_(new VTLView(QStringLiteral("DefaultWindowView"), this)), body_(new QWidget(ground_)),
      edge_(new Edge(this)),
      isComposited_([] { return Compositor::isRunning(QGuiApplication::platformName()); })
{
    setAttribute(Qt::WA_TranslucentBackground);
    WindowRegister::shared().add(this);
}

FramelessWindow::~FramelessWindow()
{
    showCursor({});
}

void FramelessWindow::setIsComposited(std::function<bool()> predicate)
{
    isComposited_ = std::move(predicate);
    lookAtCompositing();
}

void FramelessWindow::setWindowHeader(WindowHeader *header)
{
    header_ = header;
    header_->setParent(ground_);
}

void FramelessWindow::layOut()
{
    ground_->setGeometry(rect());
    const int top = WindowGeometry::headerHeight;
    if (header_)
        header_->setGeometry(0, 0, width(), top);
    body_->setGeometry(0, top, width(), std::max(height() - top, 0));
    edge_->setGeometry(rect());
    raiseEdge();
}

void FramelessWindow::makeKeyAndOrderFront()
{
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void FramelessWindow::updateTree()
{
    update();
    for (QWidget *part : findChildren<QWidget *>())
        part->update();
}

void FramelessWindow::raiseEdge()
{
    edge_->raise();
}

void FramelessWindow::performWindowResize(Qt::Edges edges)
{
    windowHandle()->startSystemResize(edges);
}

/// A compositing manager comes and goes without a word to the windows, so they look again at times,
/// for menus and tool tips as well.
void FramelessWindow::lookAtCompositing()
{
    isCompositedNow_ = isComposited_();
    VantorelStyle::setTransparentWindows(isCompositedNow_);
    updateCornerRadius();
}

void FramelessWindow::updateCornerRadius()
{
    const bool isTiled = WindowGeometry::isTiled(geometry(), screen()->availableGeometry());
    const bool isMaximised = isMaximized() || isFullScreen();
    const int radius = WindowGeometry::cornerRadius(isCompositedNow_, isTiled, isMaximised);
    if (radius == cornerRadius_)
        return;
    cornerRadius_ = radius;
    edge_->setRadius(radius);
    Q_EMIT cornerRadiusChanged(radius);
}

bool FramelessWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WinIdChange)
        watchHandle();
    return QWidget::event(event);
}

/// The events of the whole window come past here before a child of it can take them.
void FramelessWindow::watchHandle()
{
    if (watched_)
        watched_->removeEventFilter(this);
    watched_ = windowHandle();
    if (watched_)
        watched_->installEventFilter(this);
}

bool FramelessWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == watched_ && isResizable_ && takesMouse(event))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool FramelessWindow::takesMouse(QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    if (event->type() == QEvent::Leave || event->type() == QEvent::FocusOut)
        showCursor({});
    if (!isPress && event->type() != QEvent::MouseMove)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    const bool isFixed = isMaximized() || isFullScreen() || QApplication::activePopupWidget();
    const bool isElsewhere = isFixed || (!isPress && mouse->buttons() != Qt::NoButton);
    const Qt::Edges edges =
        isElsewhere ? Qt::Edges() : WindowGeometry::edgesAt(mouse->position().toPoint(), size());
    showCursor(edges);
    if (!isPress || !edges || mouse->button() != Qt::LeftButton)
        return false;
    performWindowResize(edges);
    return true;
}

void FramelessWindow::showCursor(Qt::Edges edges)
{
    if (hasResizeCursor_)
        QGuiApplication::restoreOverrideCursor();
    hasResizeCursor_ = edges != Qt::Edges();
    if (hasResizeCursor_)
        QGuiApplication::setOverrideCursor(WindowGeometry::cursorFor(edges));
}

void FramelessWindow::showEvent(QShowEvent *event)
{
    watchHandle();
    lookAtCompositing();
    QWidget::showEvent(event);
}

void FramelessWindow::resizeEvent(QResizeEvent *)
{
    layOut();
    updateCornerRadius();
}

void FramelessWindow::moveEvent(QMoveEvent *)
{
    updateCornerRadius();
}

void FramelessWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::WindowStateChange)
        updateCornerRadius();
    if (event->type() == QEvent::ActivationChange) {
        lookAtCompositing();
        if (isActiveWindow())
            Q_EMIT becameKey();
        else
            Q_EMIT resignedKey();
    }
    QWidget::changeEvent(event);
}
