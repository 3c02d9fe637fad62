#pragma once

#include "ui/WindowHeader.h"

/// The main window's header: add files, the title, error log, preferences and menu, minimise and
/// close.
///
/// Thread: main
/// Units:  logical pixels
class HeaderBar : public WindowHeader
{
    Q_OBJECT

  public:
    explicit HeaderBar(QWidget *parent = nullptr);

    [[nodiscard]] HeaderButton *btnAddFiles() const { return addFiles_; }
    [[nodiscard]] HeaderButton *btnErrorLog() const { return errorLog_; }
    [[nodiscard]] HeaderButton *btnPreferences() const { return preferences_; }
    [[nodiscard]] HeaderButton *btnMenu() const { return menu_; }

    /// The error log's button is there only while the log has entries.
    void setErrorCount(int entries);
    /// The open preferences view keeps its button pressed.
    void setShowsPreferences(bool shows);
    /// Under a sheet only minimise and close answer.
    void setUnderSheet(bool isUnder);

    /// The buttons in the order in which Tab goes through them.
    [[nodiscard]] QList<QWidget *> tabStops() const;

  protected:
    [[nodiscard]] int titleMargin() const override;
    void layOut() override;

  private:
    [[nodiscard]] QList<HeaderButton *> ownButtons() const;

    HeaderButton *addFiles_;
    HeaderButton *errorLog_;
    HeaderButton *preferences_;
    HeaderButton *menu_;
    VTLLine *line_;
    int errorCount_ = 0;
};
