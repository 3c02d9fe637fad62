#pragma once

#include "ui/ContentView.h"

#include <array>

class ButtonBlue;
class LinkButton;
class MethodSelector;
class PathField;
class PlainButton;
class PreferenceGroup;
class PreferenceRow;
class SegmentedControl;
class SwitchButton;

/// The settings. It keeps none: what it shows is set from outside, and what the user does is said.
///
/// Thread: main
class PreferencesView : public ContentView
{
    Q_OBJECT

  public:
    explicit PreferencesView(QWidget *parent = nullptr);

    [[nodiscard]] MethodSelector *methodSelector() const { return methodSelector_; }
    [[nodiscard]] SegmentedControl *themeSegments() const { return themeSegments_; }
    [[nodiscard]] SwitchButton *skipLinkTargets() const { return skipLinkTargets_; }
    [[nodiscard]] SwitchButton *autoExit() const { return autoExit_; }
    [[nodiscard]] SwitchButton *checkForUpdates() const { return checkForUpdates_; }
    [[nodiscard]] SwitchButton *betaReleases() const { return betaReleases_; }
    [[nodiscard]] SwitchButton *alphaReleases() const { return alphaReleases_; }
    [[nodiscard]] PathField *pathField() const { return pathField_; }
    [[nodiscard]] PlainButton *chooseButton() const { return chooseButton_; }
    [[nodiscard]] LinkButton *contactLink() const { return contactLink_; }
    [[nodiscard]] ButtonBlue *doneButton() const { return doneButton_; }
    [[nodiscard]] TextLabel *heading() const { return heading_; }
    [[nodiscard]] TextLabel *versionText() const { return versionText_; }
    [[nodiscard]] TextLabel *logRemark() const { return logRemark_; }
    [[nodiscard]] TextLabel *groupLabel(int group) const { return labels_[std::size_t(group)]; }
    [[nodiscard]] PreferenceGroup *group(int group) const { return groups_[std::size_t(group)]; }

    void setThemeRemark(const QString &remark);
    void setThemeEnabled(bool isEnabled);
    void setLogRemark(const QString &remark);
    /// Whether this build checks for updates at all; where it does not, it says so.
    void setChecksForUpdates(bool checks);
    void setVersionText(const QString &text);

    [[nodiscard]] QWidget *firstFocus() const override;
    [[nodiscard]] std::vector<QWidget *> tabStops() const override;

  Q_SIGNALS:
    void doneClicked();
    void contactClicked();
    void chooseLogClicked();
    /// The user has written another path and left the field or pressed Return in it.
    void logPathTaken(const QString &path);

  protected:
    void layOut(const ViewRuler &ruler) override;
    [[nodiscard]] QAbstractButton *defaultButton() const override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void makeGeneralGroup();
    void makeUpdatesGroup();
    void makeLogGroup();
    void connectSignals();
    void takePath();
    void keepPath(const QString &path);

    TextLabel *heading_;
    std::array<TextLabel *, 3> labels_;
    std::array<PreferenceGroup *, 3> groups_;
    MethodSelector *methodSelector_;
    SegmentedControl *themeSegments_;
    SwitchButton *skipLinkTargets_;
    SwitchButton *autoExit_;
    SwitchButton *checkForUpdates_;
    SwitchButton *betaReleases_;
    SwitchButton *alphaReleases_;
    PathField *pathField_;
    PlainButton *chooseButton_;
    TextLabel *logRemark_;
    TextLabel *versionText_;
    LinkButton *contactLink_;
    ButtonBlue *doneButton_;
    PreferenceRow *themeRow_ = nullptr;
    QString keptPath_;
};
