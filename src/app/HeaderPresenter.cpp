#include "app/HeaderPresenter.h"

#include "support/view/ErrorLogModel.h"
#include "ui/HeaderBar.h"
#include "ui/HeaderButton.h"

HeaderPresenter::HeaderPresenter(HeaderBar *header, const ErrorLogModel *errors)
    : header_(header), errors_(errors)
{
}

void HeaderPresenter::showErrorCount()
{
    const int errors = errors_->count();
    if (errors == shownErrors_)
        return;
    shownErrors_ = errors;
    header_->setErrorCount(errors);
}

void HeaderPresenter::showPreferencesButton(bool isEnabled, bool isOpen)
{
    header_->btnPreferences()->setEnabled(isEnabled);
    header_->setShowsPreferences(isOpen);
}
