#pragma once

#include "platform/Descriptor.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <memory>
#include <optional>

/// A file that is written and looked at before it stands in its folder: keep() gives it its name.
/// Until then nobody but its owner may read it, and it goes with this object.
///
/// It has no name at all before that (open(2), O_TMPFILE), so nothing of it is left however the
/// process ends. Where the file system has no such files, it stands as "<name>.part"; then a
/// process that is killed leaves that behind. A name counts as the file's only while it leads to
/// the file that was written: what has taken its place is neither kept nor removed.
///
/// Thread:  one at a time; sync() and content() on another one beside discard(), too
/// Owns:    the file until it is kept
/// Blocks:  on disk I/O
/// Failure: an error number; a name that is there already is never touched
class UnfinishedFile
{
  public:
    /// How it stands until it is kept. Each stands in for the next where the file system has it
    /// not.
    enum class Kind {
        Nameless,
        Named,  ///< as "<stem>.part"
        OneName ///< so, and a file cannot have a second name even for a moment
    };

    /// Nothing where it cannot be made, and why. `stem` names the ".part".
    static std::unique_ptr<UnfinishedFile> make(const QByteArray &folder, const QByteArray &stem,
                                                int &error, Kind kind = Kind::Nameless);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile &) = delete;
    UnfinishedFile &operator=(const UnfinishedFile &) = delete;

    /// Appends all of it; 0 or the error number.
    int write(QByteArrayView bytes);
    /// Onto the disk, which shows what writing has not shown; to be called before keep(). 0 or the
    /// error number.
    int sync();
    /// All that the file holds by now, read back; nothing where it is not `size` bytes, where
    /// reading fails, or where there is not memory enough.
    [[nodiscard]] std::optional<QByteArray> content(std::int64_t size) const;

    /// Gives it its name, "<stem><extension>" or, where that is taken, "<stem> (2)<extension>" and
    /// so on, and the permissions of an ordinary new file, where they can be set. 0 or the error
    /// number.
    int keep(const QByteArray &stem, const QByteArray &extension, QByteArray &name);
    /// Nothing of it stands in the folder any more, unless it is kept already; who reads it still
    /// may go on.
    void discard();

  private:
    UnfinishedFile(Kind kind, Descriptor folder, Descriptor file, QByteArray partName);
    int giveName(const QByteArray &name);
    int addName(const QByteArray &name);
    int movePart(const QByteArray &name);
    [[nodiscard]] bool isNamed(const QByteArray &name) const;

    const Kind kind_; ///< the best that is tried
    Descriptor folder_;
    Descriptor file_;
    QByteArray partName_; ///< empty: it has none
};
