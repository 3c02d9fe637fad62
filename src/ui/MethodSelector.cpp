#include "ui/MethodSelector.h"

#include "ui/ControlPaint.h"
#include "ui/HeardAs.h"
#include "ui/MethodList.h"
#include "ui/Typography.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int textInset = 12;
constexpr int arrowFromRight = 18;
constexpr double arrowTip = 1.75;

/// The selector as screen readers hear it: a selector with its method as the value, and not a
/// button.
class HeardSelector : public QAccessibleWidget
{
  public:
    explicit HeardSelector(MethodSelector *selector)
        : QAccessibleWidget(selector, QAccessible::ComboBox), selector_(selector)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? selector_->currentName()
                                          : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = true;
        state.expandable = true;
        state.expanded = selector_->isListOpen();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override
    {
        return QAccessibleWidget::actionNames() << showMenuAction() << pressAction();
    }
    void doAction(const QString &action) override
    {
        if (action == showMenuAction() || action == pressAction())
            selector_->click();
        else
            QAccessibleWidget::doAction(action);
    }

  private:
    MethodSelector *selector_;
};

} // namespace

MethodSelector::MethodSelector(QWidget *parent) : ControlButton(parent)
{
    letItBeHeardAs<MethodSelector, HeardSelector>();
    setAccessibleName(tr("Wipe method"));
    connect(this, &QAbstractButton::clicked, this, &MethodSelector::openList);
}

void MethodSelector::setMethods(const std::vector<WipeDescriptionObject> &methods)
{
    methods_ = methods;
    if (list_)
        list_->setMethods(methods_);
    setCurrentMethod(current_);
    updateGeometry();
}

const WipeDescriptionObject *MethodSelector::current() const
{
    const bool isKnown = current_ >= 1 && current_ < std::int64_t(methods_.size());
    return isKnown ? &methods_[std::size_t(current_)] : nullptr;
}

QString MethodSelector::currentName() const
{
    return current() ? current()->name : QString();
}

void MethodSelector::setCurrentMethod(std::int64_t method)
{
    current_ = method;
    setText(currentName());
    setAccessibleDescription(current() ? current()->info : QString());
    if (list_)
        list_->setCurrentMethod(method);
    QAccessibleValueChangeEvent change(this, currentName());
    QAccessible::updateAccessibility(&change);
    update();
}

MethodList *MethodSelector::list()
{
    if (!list_) {
        list_ = new MethodList(this);
        list_->setMethods(methods_);
        list_->setCurrentMethod(current_);
        connect(list_, &MethodList::methodChosen, this, &MethodSelector::takeChoice);
        connect(list_, &QObject::destroyed, this, [this] { list_ = nullptr; });
    }
    return list_;
}

bool MethodSelector::isListOpen() const
{
    return list_ && list_->isOpen();
}

void MethodSelector::openList()
{
    list()->open();
}

void MethodSelector::takeChoice(std::int64_t method)
{
    setCurrentMethod(method);
    Q_EMIT methodChosen(method);
}

void MethodSelector::keyPressEvent(QKeyEvent *event)
{
    const bool isArrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (isArrow)
        openList();
    else
        ControlButton::keyPressEvent(event);
}

QSize MethodSelector::sizeHint() const
{
    return {Typography::scaled(296), Typography::scaled(32)};
}

QSize MethodSelector::minimumSizeHint() const
{
    return {Typography::scaled(96), Typography::scaled(28)};
}

void MethodSelector::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintControl(painter);
    const int arrow = Typography::scaled(arrowFromRight);
    ControlPaint::text(painter, rect().adjusted(textInset, 0, -2 * arrow + 8, 0), text(),
                       Qt::AlignLeft);
    ControlPaint::arrowHead(painter, QPointF(width() - arrow, height() / 2.0 + arrowTip),
                            DesignColors::color(ColorRole::TextSecondary));
}
