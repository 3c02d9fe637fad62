#pragma once

#include <QByteArray>
#include <QFile>
#include <QFileDevice>
#include <QString>

#include <memory>

/// The file that takes the report of a run. It is made before anything is erased, so that a report
/// which cannot be written is known in time; a file that already has the name is replaced only when
/// the report is complete, so that it can itself be among what is erased.
///
/// Thread:  main
/// Blocks:  on disk I/O
/// Failure: a text; nothing of the old report is lost
class ReportFile
{
  public:
    explicit ReportFile(const QByteArray &path);

    /// An empty text, or why the report cannot be written.
    QString open();
    [[nodiscard]] bool isOpen() const { return file_ != nullptr && file_->isOpen(); }
    QString write(const QByteArray &report);

  private:
    QByteArray path_;
    std::unique_ptr<QFileDevice> file_;
};
