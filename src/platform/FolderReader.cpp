#include "platform/FolderReader.h"

#include <cstddef>
#include <string_view>

#include <dirent.h>

namespace {

FileKind kindOf(unsigned char type)
{
    switch (type) {
    case DT_REG:
        return FileKind::Regular;
    case DT_DIR:
        return FileKind::Folder;
    case DT_LNK:
        return FileKind::Link;
    case DT_FIFO:
        return FileKind::Fifo;
    case DT_SOCK:
        return FileKind::Socket;
    case DT_BLK:
        return FileKind::BlockDevice;
    case DT_CHR:
        return FileKind::CharacterDevice;
    default:
        return FileKind::Unknown;
    }
}

bool isSelfOrParent(std::string_view name)
{
    return name == "." || name == "..";
}

} // namespace

bool FolderReader::next(Entry &entry)
{
    while (at_ < filled_ || fill()) {
        const auto *raw = reinterpret_cast<const dirent64 *>(buffer_.data() + at_);
        at_ += raw->d_reclen;
        if (isSelfOrParent(raw->d_name))
            continue;
        entry = {raw->d_name, kindOf(raw->d_type)};
        return true;
    }
    return false;
}

bool FolderReader::fill()
{
    const std::int64_t count =
        SystemCalls::current().readFolder(folder_, buffer_.data(), buffer_.size());
    at_ = 0;
    filled_ = count > 0 ? static_cast<std::size_t>(count) : 0;
    error_ = count < 0 ? static_cast<int>(-count) : 0;
    return filled_ > 0;
}
