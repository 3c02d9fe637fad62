#include "platform/SystemError.h"

#include <array>
#include <cstring>

QString SystemError::text(int number)
{
    std::array<char, 256> buffer{};
    return QString::fromLocal8Bit(::strerror_r(number, buffer.data(), buffer.size()));
}
