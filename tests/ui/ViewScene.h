#pragma once

#include "ui/ContentView.h"
#include "ui/ThemedPreferences.h"
#include "ui/Typography.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include <vector>

/// What a view's test needs around the view: preferences of its own, the design's font, and a
/// window with the keyboard.
class ViewScene
{
  public:
    static void setFontPixels(int pixels)
    {
        QFont font = QApplication::font();
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }

    /// A window in which the view lies under a header.
    static constexpr int headerHeight = 37;
    void place(ContentView &view, QSize size)
    {
        window_.resize(size.width(), size.height() + headerHeight);
        view.setParent(&window_);
        view.setGeometry(0, headerHeight, size.width(), size.height());
        view.show();
        window_.show();
        window_.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window_));
    }
    QWidget *window() { return &window_; }
    void setDark(bool isDark) { preferences_.setDark(isDark); }

    /// The element's place on the view's canvas.
    static QRect placeOf(const ContentView &view, const QWidget *element)
    {
        return {element->mapTo(view.canvas(), QPoint()), element->size()};
    }

    /// What Tab goes through from the first stop on, until it leaves the view or comes round.
    static std::vector<QWidget *> tabbedThrough(const ContentView &view)
    {
        std::vector<QWidget *> passed;
        view.tabStops().front()->setFocus(Qt::TabFocusReason);
        QWidget *focused = QApplication::focusWidget();
        while (focused && view.isAncestorOf(focused) && (passed.empty() || focused != passed[0])) {
            passed.push_back(focused);
            QTest::keyClick(focused, Qt::Key_Tab);
            if (QApplication::focusWidget() == focused)
                break;
            focused = QApplication::focusWidget();
        }
        return passed;
    }

    /// The focusable widgets of the view that a screen reader could not name.
    static QStringList nameless(const ContentView &view)
    {
        QStringList found;
        const QList<QWidget *> widgets = view.findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->isHidden())
                continue;
            const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
            if (!spoken || spoken->text(QAccessible::Name).isEmpty())
                found.append(QString::fromUtf8(widget->metaObject()->className()));
        }
        return found;
    }

  private:
    ThemedPreferences preferences_;
    QWidget window_;
};
