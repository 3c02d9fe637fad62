#pragma once

#include "app/run/EraseRun.h"
#include "engine/ScanReport.h"

class ErrorLogModel;

/// Puts what was not erased into the rows of the error log.
///
/// Thread:       main
/// Holds weakly: the rows, which outlive it
class ErrorLogPresenter
{
  public:
    explicit ErrorLogPresenter(ErrorLogModel *rows) : rows_(rows) {}

    void add(const FailedFile &failed);
    void add(const ScanFailure &failure);
    /// These and no others.
    void show(const ScanFailures &scanFailures, const std::vector<FailedFile> &failedFiles);

  private:
    void add(const QByteArray &path, const QString &error, bool isFile);

    ErrorLogModel *rows_;
};
