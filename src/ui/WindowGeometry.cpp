#include "ui/WindowGeometry.h"

#include <QStringList>

#include <algorithm>
#include <limits>

namespace {

/// As much of the header has to lie on a screen for a window to be moved by it.
constexpr int graspWidth = 64;

bool canBeGrasped(const QRect &frame, const QRect &screen)
{
    const QRect header(frame.topLeft(), QSize(frame.width(), WindowGeometry::headerHeight));
    const QRect seen = header.intersected(screen);
    return frame.top() >= screen.top() && seen.height() == header.height() &&
           seen.width() >= std::min(graspWidth, frame.width());
}

int distance(const QRect &screen, const QPoint &point)
{
    const int across = std::max({screen.left() - point.x(), point.x() - screen.right(), 0});
    const int down = std::max({screen.top() - point.y(), point.y() - screen.bottom(), 0});
    return across + down;
}

/// The screen that the frame lies on most, or is nearest to.
std::vector<QRect>::const_iterator screenOf(const QRect &frame, const std::vector<QRect> &screens)
{
    const auto overlap = [&frame](const QRect &screen) {
        const QSize shared = screen.intersected(frame).size();
        return shared.isValid() ? qint64(shared.width()) * shared.height() : 0;
    };
    return std::max_element(
        screens.begin(), screens.end(), [&](const QRect &one, const QRect &other) {
            if (overlap(one) != overlap(other))
                return overlap(one) < overlap(other);
            return distance(one, frame.center()) > distance(other, frame.center());
        });
}

QSize cut(const QSize &size, const QRect &screen, const QSize &least)
{
    return size.boundedTo(screen.size()).expandedTo(least);
}

QRect movedInto(QRect frame, const QRect &screen)
{
    frame.moveLeft(
        std::max(std::min(frame.left(), screen.right() - frame.width() + 1), screen.left()));
    frame.moveTop(
        std::max(std::min(frame.top(), screen.bottom() - frame.height() + 1), screen.top()));
    return frame;
}

/// -1 at the low edge, 1 at the high one, 0 between.
int side(int at, int length, int reach)
{
    return at < reach ? -1 : at >= length - reach ? 1 : 0;
}

} // namespace

QRect WindowGeometry::contentRect(const QRect &content, const QSize &view)
{
    return {content.topLeft(), QSize(view.width(), view.height() + headerHeight)};
}

QSize WindowGeometry::firstContentSize(const QSize &natural, const QSize &available)
{
    return natural.boundedTo(available).expandedTo({leastFirstWidth, leastFirstHeight});
}

QRect WindowGeometry::restoredFrame(const QRect &saved, const std::vector<QRect> &screens,
                                    const QSize &least)
{
    const auto nearest = screenOf(saved, screens);
    if (nearest == screens.end())
        return {saved.topLeft(), saved.size().expandedTo(least)};
    const QRect frame(saved.topLeft(), cut(saved.size(), *nearest, least));
    const bool isInReach = std::any_of(screens.begin(), screens.end(), [&](const QRect &screen) {
        return canBeGrasped(frame, screen);
    });
    return isInReach ? frame : movedInto(frame, *nearest);
}

Qt::Edges WindowGeometry::edgesAt(const QPoint &point, const QSize &window)
{
    if (!QRect(QPoint(), window).contains(point))
        return {};
    int across = side(point.x(), window.width(), resizeMargin);
    int down = side(point.y(), window.height(), resizeMargin);
    if (down != 0 && across == 0)
        across = side(point.x(), window.width(), cornerReach);
    else if (across != 0 && down == 0)
        down = side(point.y(), window.height(), cornerReach);
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, across < 0);
    edges.setFlag(Qt::RightEdge, across > 0);
    edges.setFlag(Qt::TopEdge, down < 0);
    edges.setFlag(Qt::BottomEdge, down > 0);
    return edges;
}

Qt::CursorShape WindowGeometry::cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    if (edges & (Qt::LeftEdge | Qt::RightEdge))
        return Qt::SizeHorCursor;
    return edges ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

bool WindowGeometry::isTiled(const QRect &frame, const QRect &available)
{
    const int touched =
        int(frame.left() <= available.left()) + int(frame.top() <= available.top()) +
        int(frame.right() >= available.right()) + int(frame.bottom() >= available.bottom());
    return touched >= 3;
}

int WindowGeometry::cornerRadius(bool isComposited, bool isTiled, bool isMaximised)
{
    return isComposited && !isTiled && !isMaximised ? roundRadius : 0;
}

QString WindowGeometry::textFromFrame(const QRect &frame)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(QString::number(frame.x()), QString::number(frame.y()), QString::number(frame.width()),
             QString::number(frame.height()));
}

std::optional<QRect> WindowGeometry::frameFromText(const QString &text)
{
    const QStringList words = text.split(QLatin1Char(' '));
    constexpr int farthest = std::numeric_limits<short>::max();
    int numbers[4] = {};
    bool isFrame = words.size() == 4;
    for (qsizetype i = 0; isFrame && i < 4; ++i) {
        numbers[i] = words.at(i).toInt(&isFrame);
        isFrame = isFrame && numbers[i] >= -farthest && numbers[i] <= farthest;
    }
    if (!isFrame || numbers[2] <= 0 || numbers[3] <= 0)
        return std::nullopt;
    return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
}
