#pragma once

class ErrorLogModel;
class HeaderBar;

/// Keeps the header's count of errors and its buttons as the workflow is.
///
/// Thread:       main
/// Holds weakly: header and error log, which outlive it
class HeaderPresenter
{
  public:
    HeaderPresenter(HeaderBar *header, const ErrorLogModel *errors);

    void showErrorCount();
    /// Preferences can be opened when some view is shown and no run is busy.
    void showPreferencesButton(bool isEnabled, bool isOpen);

  private:
    HeaderBar *header_;
    const ErrorLogModel *errors_;
    int shownErrors_ = 0;
};
