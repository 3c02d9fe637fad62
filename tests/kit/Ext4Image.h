#pragma once

#include "kit/Scratch.h"

#include <QProcess>
#include <QString>
#include <QStringList>

#include <sys/mount.h>

/// An ext4 file system of the test's own, in a file of its scratch folder, mounted through a loop
/// device. Needs root. Unmounted when it goes.
class Ext4Image
{
  public:
    explicit Ext4Image(const Scratch &scratch)
        : folder_(scratch.folder("ext4")), image_(scratch.file("image", QByteArray()))
    {
        isMounted_ = ::truncate(image_.constData(), 16 << 20) == 0 &&
                     run({QStringLiteral("mkfs.ext4"), QStringLiteral("-q"), QStringLiteral("-F"),
                          text(image_)}) &&
                     run({QStringLiteral("mount"), QStringLiteral("-o"), QStringLiteral("loop"),
                          text(image_), text(folder_)});
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

    static bool run(QStringList command)
    {
        const QString program = command.takeFirst();
        return QProcess::execute(program, command) == 0;
    }

  private:
    static QString text(const QByteArray &path) { return QString::fromUtf8(path); }

    QByteArray folder_;
    QByteArray image_;
    bool isMounted_ = false;
};
