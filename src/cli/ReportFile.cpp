#include "cli/ReportFile.h"

#include "platform/PathBytes.h"

#include <QFileInfo>
#include <QSaveFile>

namespace {

bool commit(QFileDevice &file)
{
    if (auto *saved = qobject_cast<QSaveFile *>(&file))
        return saved->commit();
    file.close();
    return file.error() == QFileDevice::NoError;
}

} // namespace

ReportFile::ReportFile(const QByteArray &path) : path_(path)
{
}

QString ReportFile::open()
{
    if (path_.isEmpty())
        return QStringLiteral("\"\": an empty name names no report");
    if (!path_.isValidUtf8())
        return QStringLiteral("%1: the name of a report has to be UTF-8")
            .arg(PathBytes::printable(path_));
    const QString name = QString::fromUtf8(path_);
    const QFileInfo existing(name);
    if (existing.exists() && !existing.isFile()) // a pipe, a terminal, /dev/null
        file_ = std::make_unique<QFile>(name);
    else
        file_ = std::make_unique<QSaveFile>(name);
    if (file_->open(QIODevice::WriteOnly))
        return {};
    return PathBytes::printable(path_) + QStringLiteral(": ") + file_->errorString();
}

QString ReportFile::write(const QByteArray &report)
{
    if (file_->write(report) == report.size() && commit(*file_))
        return {};
    return PathBytes::printable(path_) + QStringLiteral(": ") + file_->errorString();
}
