#include "platform/WorkingFolder.h"

#include <filesystem>
#include <system_error>

QByteArray WorkingFolder::path()
{
    std::error_code error;
    return QByteArray::fromStdString(std::filesystem::current_path(error).native());
}
