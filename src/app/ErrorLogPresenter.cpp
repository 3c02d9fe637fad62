#include "app/ErrorLogPresenter.h"

#include "app/run/RunTexts.h"
#include "platform/PathBytes.h"
#include "support/view/ErrorLogModel.h"

void ErrorLogPresenter::add(const FailedFile &failed)
{
    add(failed.path, RunTexts::failure(failed));
}

void ErrorLogPresenter::add(const ScanFailure &failure)
{
    add(failure.path, failure.errormsg);
}

void ErrorLogPresenter::add(const QByteArray &path, const QString &error)
{
    rows_->add({PathBytes::lastComponent(path), PathBytes::withoutLastComponent(path), error});
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
