#include "ui/ViewMain.h"

#include "ui/ColorProperties.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

constexpr ColorComponents above{0.965, 0.969, 0.973, 1};
constexpr ColorComponents below{0.918, 0.922, 0.925, 1};

} // namespace

void ViewMain::paintEvent(QPaintEvent *)
{
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0, above.color());
    gradient.setColorAt(1, below.color());
    QPainter(this).fillRect(rect(), gradient);
}
