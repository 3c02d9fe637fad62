#include "ui/Pictures.h"

#include "ui/InterfaceColorStyle.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>
#include <map>
#include <memory>

/// A static library's resources are there once they have been asked for by name.
static bool loadResources()
{
    Q_INIT_RESOURCE(pictures);
    return true;
}

namespace {

QString resource(const QString &name)
{
    static const bool loaded = loadResources();
    Q_UNUSED(loaded)
    return QStringLiteral(":/pictures/%1.svg").arg(name);
}

QString inTheTheme(const QString &name)
{
    const QString darkForm = name + QStringLiteral("_dark");
    const bool isDark = InterfaceColorStyle::isDarkMode() && QFile::exists(resource(darkForm));
    return isDark ? darkForm : name;
}

/// Null where there is no such picture.
QSvgRenderer *rendererOf(const QString &name)
{
    static std::map<QString, std::unique_ptr<QSvgRenderer>> renderers;
    auto &renderer = renderers[name];
    if (!renderer && QFile::exists(resource(name)))
        renderer = std::make_unique<QSvgRenderer>(resource(name));
    return renderer.get();
}

QPixmap drawn(QSvgRenderer &renderer, const QSize &deviceSize, std::optional<QColor> tint)
{
    QPixmap pixmap(deviceSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(deviceSize)));
    if (tint) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), *tint);
    }
    return pixmap;
}

QString cacheKey(const QString &name, const QSize &deviceSize, std::optional<QColor> tint)
{
    return QStringLiteral("vantorel/%1/%2x%3/%4")
        .arg(name)
        .arg(deviceSize.width())
        .arg(deviceSize.height())
        .arg(tint ? tint->name(QColor::HexArgb) : QString());
}

QPixmap cached(const QString &name, const QSize &deviceSize, std::optional<QColor> tint)
{
    const QString form = inTheTheme(name);
    QSvgRenderer *renderer = rendererOf(form);
    if (!renderer || deviceSize.isEmpty())
        return QPixmap();
    const QString key = cacheKey(form, deviceSize, tint);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = drawn(*renderer, deviceSize, tint);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

/// Device pixels per point of this painter; a turn counts as its scale.
double scaleOf(const QTransform &transform)
{
    return std::sqrt(std::abs(transform.determinant()));
}

QSize deviceSize(const QSizeF &size, double scale)
{
    return QSize(int(std::lround(size.width() * scale)), int(std::lround(size.height() * scale)));
}

/// As many device pixels as the pixmap has; the painter moves them to whole ones, so that lines
/// stay as sharp as they were drawn.
void drawUpright(QPainter &painter, const QPointF &origin, const QPixmap &pixmap)
{
    const QTransform device = painter.deviceTransform();
    const QRectF covered(device.map(origin), QSizeF(pixmap.size()));
    painter.drawPixmap(device.inverted().mapRect(covered), pixmap, QRectF(pixmap.rect()));
}

} // namespace

bool Pictures::exists(const QString &name)
{
    return QFile::exists(resource(name));
}

QSizeF Pictures::sizeOf(const QString &name)
{
    QSvgRenderer *renderer = rendererOf(name);
    return renderer ? renderer->viewBoxF().size() : QSizeF();
}

QPixmap Pictures::pixmap(const QString &name, const QSize &size, double devicePixelRatio,
                         std::optional<QColor> tint)
{
    QPixmap pixmap = cached(name, deviceSize(size, devicePixelRatio), tint);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

void Pictures::paint(QPainter &painter, const QString &name, const QRectF &rect,
                     std::optional<QColor> tint)
{
    const QTransform transform = painter.deviceTransform();
    const QPixmap pixmap = cached(name, deviceSize(rect.size(), scaleOf(transform)), tint);
    if (pixmap.isNull())
        return;
    if (transform.type() <= QTransform::TxScale) {
        drawUpright(painter, rect.topLeft(), pixmap);
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect, pixmap, QRectF(pixmap.rect()));
    painter.restore();
}

void Pictures::paintPart(QPainter &painter, const QString &name, const QRectF &source,
                         const QRectF &target)
{
    QSvgRenderer *renderer = rendererOf(inTheTheme(name));
    if (!renderer || source.isEmpty() || target.isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(target, Qt::IntersectClip);
    painter.translate(target.topLeft());
    painter.scale(target.width() / source.width(), target.height() / source.height());
    painter.translate(-source.topLeft());
    renderer->render(&painter, renderer->viewBoxF());
    painter.restore();
}
