#include "ui/DropReceiver.h"

namespace {

std::weak_ptr<DropReceiver> &theReceiver()
{
    static std::weak_ptr<DropReceiver> receiver;
    return receiver;
}

} // namespace

DropReceiver::~DropReceiver() = default;

void DropReceiver::openFiles(const std::vector<QByteArray> &)
{
}

void DropReceiver::setShared(std::weak_ptr<DropReceiver> receiver)
{
    theReceiver() = std::move(receiver);
}

std::weak_ptr<DropReceiver> DropReceiver::shared()
{
    return theReceiver();
}
