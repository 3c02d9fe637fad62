#include "app/update/Appcast.h"

#include "app/update/AppcastReader.h"

std::optional<Appcast> Appcast::read(const QByteArray &bytes)
{
    return AppcastReader(bytes).read();
}
