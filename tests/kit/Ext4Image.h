#pragma once

#include "kit/Scratch.h"

#include <vector>

#include <spawn.h>
#include <sys/mount.h>
#include <sys/wait.h>

/// An ext4 file system of the test's own, in a file of its scratch folder, mounted through a loop
/// device. Needs root. Unmounted when it goes.
class Ext4Image
{
  public:
    explicit Ext4Image(const Scratch &scratch)
        : folder_(scratch.folder("ext4")), image_(scratch.file("image", QByteArray()))
    {
        isMounted_ = ::truncate(image_.constData(), 16 << 20) == 0 &&
                     run({"mkfs.ext4", "-q", "-F", image_}) &&
                     run({"mount", "-o", "loop", image_, folder_});
    }
    ~Ext4Image()
    {
        if (isMounted_)
            ::umount2(folder_.constData(), MNT_DETACH);
    }
    Ext4Image(const Ext4Image &) = delete;
    Ext4Image &operator=(const Ext4Image &) = delete;

    [[nodiscard]] bool isMounted() const { return isMounted_; }
    [[nodiscard]] QByteArray path(const QByteArray &name) const { return folder_ + '/' + name; }

    /// Without a fork of this process, which the thread sanitizer does not take.
    static bool run(std::vector<QByteArray> command)
    {
        std::vector<char *> arguments;
        for (QByteArray &word : command)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        pid_t child = 0;
        int status = -1;
        return ::posix_spawnp(&child, arguments.front(), nullptr, nullptr, arguments.data(),
                              environ) == 0 &&
               ::waitpid(child, &status, 0) == child && status == 0;
    }

  private:
    QByteArray folder_;
    QByteArray image_;
    bool isMounted_ = false;
};
