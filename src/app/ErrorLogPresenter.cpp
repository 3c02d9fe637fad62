#include "app/ErrorLogPresenter.h"

#include "app/run/RunTexts.h"
#include "platform/PathBytes.h"
#include "support/view/ErrorLogModel.h"

void ErrorLogPresenter::add(const FailedFile &failed)
{
    add(failed.path, RunTexts::failure(failed), failed.item != nullptr);
}

void ErrorLogPresenter::add(const ScanFailure &failure)
{
    add(failure.path, failure.errormsg, false);
}

void ErrorLogPresenter::add(const QByteArray &path, const QString &error, bool isFile)
{
    rows_->add(
        {PathBytes::lastComponent(path), PathBytes::withoutLastComponent(path), error, isFile});
}

void ErrorLogPresenter::show(const ScanFailures &scanFailures,
                             const std::vector<FailedFile> &failedFiles)
{
    rows_->removeAll();
    for (const ScanFailure &failure : scanFailures)
        add(failure);
    for (const FailedFile &failed : failedFiles)
        add(failed);
}
