#pragma once

#include <QByteArray>
#include <QList>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// A folder in a folder in a folder, all of one name, as deep as one likes; far deeper than a path
/// can name. Made and removed step by step through open folders, without recursion. To be destroyed
/// before the Scratch that holds it.
class FolderChain
{
  public:
    /// Below `top`, which must exist.
    FolderChain(const QByteArray &top, const QByteArray &name, int levels) : top_(top), name_(name)
    {
        int folder = openFolder(AT_FDCWD, top_);
        while (folder >= 0 && levels_ < levels && ::mkdirat(folder, name_.constData(), 0755) == 0) {
            ++levels_;
            const int below = openFolder(folder, name_);
            ::close(folder);
            folder = below;
        }
        bottom_ = folder;
        isComplete_ = bottom_ >= 0 && levels_ == levels;
    }
    ~FolderChain() { remove(); }
    FolderChain(const FolderChain &) = delete;
    FolderChain &operator=(const FolderChain &) = delete;

    [[nodiscard]] bool isComplete() const { return isComplete_; }
    /// The path of the deepest folder, be it one that the system does not take.
    [[nodiscard]] QByteArray bottomPath() const { return top_ + ('/' + name_).repeated(levels_); }

    /// An empty file in the deepest folder.
    bool addFile(const QByteArray &name)
    {
        files_.append(name);
        return ::mknodat(bottom_, name.constData(), S_IFREG | 0644, 0) == 0;
    }

  private:
    static int openFolder(int parent, const QByteArray &name)
    {
        return ::openat(parent, name.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }

    void remove()
    {
        for (const QByteArray &file : files_)
            ::unlinkat(bottom_, file.constData(), 0);
        int folder = bottom_;
        for (; folder >= 0 && levels_ > 0; --levels_) {
            const int parent = openFolder(folder, "..");
            ::close(folder);
            ::unlinkat(parent, name_.constData(), AT_REMOVEDIR);
            folder = parent;
        }
        if (folder >= 0)
            ::close(folder);
    }

    QByteArray top_;
    QByteArray name_;
    QList<QByteArray> files_;
    int levels_ = 0;
    int bottom_ = -1;
    bool isComplete_ = false;
};
