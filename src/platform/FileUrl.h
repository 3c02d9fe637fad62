#pragma once

#include <QByteArray>

/// The location of a file: an absolute path, kept as bytes. Not a QUrl, which would change some
/// bytes on the way through its parser.
///
/// Thread: any (a value)
class FileUrl
{
  public:
    FileUrl() = default; ///< no location
    explicit FileUrl(QByteArray path) : path_(std::move(path)) {}

    [[nodiscard]] bool isNull() const { return path_.isNull(); }
    [[nodiscard]] const QByteArray &path() const { return path_; }
    /// "file://" and the path, percent-encoded but for the unreserved characters of RFC 3986 and
    /// "/".
    [[nodiscard]] QByteArray toUri() const;

    bool operator==(const FileUrl &) const = default;

  private:
    QByteArray path_;
};
