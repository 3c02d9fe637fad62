#include "ui/LineThin.h"

#include "ui/ColorProperties.h"

#include <QPainter>

namespace {

constexpr ColorComponents grey{0.875, 0.875, 0.875, 1};

} // namespace

void LineThin::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), grey.color());
}
