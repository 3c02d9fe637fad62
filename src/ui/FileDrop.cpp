#include "ui/FileDrop.h"

#include "platform/OptionalDelegate.h"
#include "platform/UriList.h"
#include "ui/DropReceiver.h"

#include <QDropEvent>
#include <QMimeData>

std::vector<QByteArray> FileDrop::paths(const QMimeData *dragged)
{
    const QString type = QStringLiteral("text/uri-list");
    if (!dragged || !dragged->hasFormat(type))
        return {};
    return UriList::paths(dragged->data(type));
}

int FileDrop::count(const QMimeData *dragged)
{
    return int(paths(dragged).size());
}

void FileDrop::accept(QDropEvent *event, Qt::DropAction operation)
{
    event->setDropAction(operation);
    event->setAccepted(event->dropAction() == operation);
}

bool FileDrop::perform(const QMimeData *dragged)
{
    const std::vector<QByteArray> dropped = paths(dragged);
    if (!dropped.empty())
        OptionalDelegate::call(DropReceiver::shared(), DropReceiver::Call::openFiles,
                               &DropReceiver::openFiles, dropped);
    return true;
}
