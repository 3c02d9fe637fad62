#pragma once

#include "ui/DialogBox.h"
#include "ui/DialogButton.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <functional>

/// Uses dialogs while they run, as someone before the screen would.
namespace RunningDialog {

/// Does this in the next dialog once it is active. A dialog that it does not end is a failure.
inline void whenActive(std::function<void(DialogBox &)> act)
{
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto *dialog = qobject_cast<DialogBox *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        if (QTest::qWaitForWindowActive(dialog))
            act(*dialog);
        else
            QTest::qFail("the dialog has not become active", __FILE__, __LINE__);
        if (!dialog->isVisible())
            return;
        dialog->closeWindow();
        QTest::qFail("the dialog was not ended", __FILE__, __LINE__);
    });
}

/// The dialog that is shown.
inline DialogBox *current()
{
    return qobject_cast<DialogBox *>(QApplication::activeModalWidget());
}

/// Does this once some dialog is shown, whenever that is.
inline void whenShown(const std::function<void(DialogBox &)> &act)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        if (DialogBox *dialog = current()) {
            timer->deleteLater();
            timer->stop();
            act(*dialog);
        }
    });
    timer->start(5);
}

/// By the window system's way, so that the dialog itself finds out what it is for.
inline void press(DialogBox &dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(dialog.windowHandle(), key, modifiers);
}

inline void hold(Qt::Key key)
{
    QWidget *focused = QApplication::focusWidget();
    QVERIFY(focused);
    QKeyEvent again(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(focused, &again);
}

inline void click(const DialogBox &dialog, qsizetype number)
{
    QTest::mouseClick(dialog.buttonsArray().at(number - 1), Qt::LeftButton);
}

inline QList<bool> defaults(const DialogBox &dialog)
{
    QList<bool> defaults;
    for (const DialogButton *button : dialog.buttonsArray())
        defaults.append(button->isDefault());
    return defaults;
}

} // namespace RunningDialog
