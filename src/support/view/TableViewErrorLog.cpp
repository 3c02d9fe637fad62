#include "support/view/TableViewErrorLog.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

TableViewErrorLog::TableViewErrorLog(QWidget *parent) : QueueTable(Kind::ErrorLog, parent)
{
    themeChanged_ = NotificationHub::shared().observe(
        NotificationName::colorThemeChanged,
        [this](const auto &) { colorThemeChangedNotification(); });
    QPalette clear = palette();
    clear.setColor(QPalette::Base, Qt::transparent);
    setPalette(clear);
}

void TableViewErrorLog::colorThemeChangedNotification()
{
    if (!model() || model()->rowCount() == 0)
        return;
    dataChanged(model()->index(0, 0),
                model()->index(model()->rowCount() - 1, model()->columnCount() - 1));
    Q_EMIT reloaded();
}

/// Asked for anew, since rows may have gone while a menu was open.
void TableViewErrorLog::showSelected()
{
    const QList<int> rows = selectedOrClickedRows();
    if (!rows.isEmpty())
        Q_EMIT showInFolder(rows.first());
}

void TableViewErrorLog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        showSelected();
    else
        QueueTable::keyPressEvent(event);
}

void TableViewErrorLog::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && event->button() == Qt::LeftButton)
        Q_EMIT showInFolder(index.row());
    else
        QueueTable::mouseDoubleClickEvent(event);
}

/// A menu by the keyboard opens at the row that it is for.
QPoint TableViewErrorLog::menuPlace(const QContextMenuEvent &event) const
{
    const QRect row = rowRect(currentIndex().row()) & viewport()->rect();
    if (event.reason() == QContextMenuEvent::Mouse || row.isEmpty())
        return event.globalPos();
    return viewport()->mapToGlobal(QPoint(row.height(), row.bottom()));
}

void TableViewErrorLog::contextMenuEvent(QContextMenuEvent *event)
{
    if (selectedOrClickedRows().isEmpty())
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Show in Folder"), this, &TableViewErrorLog::showSelected);
    menu->addAction(tr("Copy"), this, &TableViewErrorLog::copy);
    menu->popup(menuPlace(*event));
}
