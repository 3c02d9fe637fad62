#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// A folder of the test's own, with helpers that take names as bytes, and removed with all it holds
/// when it goes. Below TMPDIR, and there only.
class Scratch
{
  public:
    Scratch() { Q_ASSERT(folder_.isValid()); }
    /// QTemporaryDir leaves behind what has a name that is not UTF-8.
    ~Scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path().toStdString(), ignored);
    }
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;

    [[nodiscard]] QByteArray path() const { return folder_.path().toUtf8(); }
    [[nodiscard]] QByteArray path(const QByteArray &name) const { return path() + '/' + name; }

    /// Makes the file and answers its path; empty if that failed.
    QByteArray file(const QByteArray &name, const QByteArray &content) const
    {
        const QByteArray whole = path(name);
        const int fd = ::open(whole.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        const bool isWritten =
            fd >= 0 && ::write(fd, content.constData(), size_t(content.size())) == content.size();
        if (fd >= 0)
            ::close(fd);
        return isWritten ? whole : QByteArray();
    }
    QByteArray file(const QByteArray &name, qsizetype size) const
    {
        return file(name, QByteArray(size, 'x'));
    }
    QByteArray folder(const QByteArray &name) const
    {
        const QByteArray whole = path(name);
        return ::mkdir(whole.constData(), 0755) == 0 ? whole : QByteArray();
    }
    QByteArray link(const QByteArray &name, const QByteArray &target) const
    {
        const QByteArray whole = path(name);
        return ::symlink(target.constData(), whole.constData()) == 0 ? whole : QByteArray();
    }

    /// Whether the name itself is there, be it a dangling link.
    static bool exists(const QByteArray &path)
    {
        struct stat status = {};
        return ::lstat(path.constData(), &status) == 0;
    }
    static mode_t permissions(const QByteArray &path)
    {
        struct stat status = {};
        return ::lstat(path.constData(), &status) == 0 ? status.st_mode & 07777U : mode_t(-1);
    }
    static QByteArray content(const QByteArray &path)
    {
        QByteArray bytes;
        char buffer[4096];
        const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        for (ssize_t count = 0; fd >= 0 && (count = ::read(fd, buffer, sizeof buffer)) > 0;)
            bytes.append(buffer, count);
        if (fd >= 0)
            ::close(fd);
        return bytes;
    }

  private:
    QTemporaryDir folder_;
};
