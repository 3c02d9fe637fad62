#include "platform/FileUrl.h"

QByteArray FileUrl::toUri() const
{
    return "file://" + path_.toPercentEncoding("/");
}
