#include "ui/CautionIcon.h"

#include "ui/DesignColors.h"
#include "ui/Pictures.h"

#include <QIconEngine>
#include <QPainter>

namespace {

/// Of a square of 48.
constexpr QRectF place(2.0 / 48, 3.0 / 48, 44.0 / 48, 44.0 / 48);

class Engine : public QIconEngine
{
  public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override
    {
        const QRectF at(rect.x() + place.x() * rect.width(), rect.y() + place.y() * rect.height(),
                        place.width() * rect.width(), place.height() * rect.height());
        Pictures::paint(*painter, QStringLiteral("symbol_caution"), at,
                        DesignColors::color(ColorRole::WarnIcon));
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new Engine; }
};

} // namespace

QIcon CautionIcon::icon()
{
    return QIcon(new Engine);
}
