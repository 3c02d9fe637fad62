#pragma once

#include "engine/WipeDescriptionController.h"

#include <QObject>

#include <functional>

class MethodSelector;
class PreferencesView;
class SwitchButton;

/// Puts the preferences into their controls and what the user changes there into the preferences,
/// at once. Whoever changes a preference elsewhere is followed, too.
///
/// Thread:       main
/// Holds weakly: the controls, which outlive it
class PreferencesPresenter : public QObject
{
    Q_OBJECT

  public:
    struct Actions
    {
        std::function<void()> wipeSelectorClicked;
        std::function<void(int)> appearanceSettingChanged;
    };

    PreferencesPresenter(PreferencesView *view, Actions actions, QObject *parent);

    /// Keeps a selector and the preferred method the same. The preferences have one; so has the
    /// ready view.
    void bindMethodSelector(MethodSelector *selector);

  private:
    void bindSwitch(SwitchButton *button, const QString &key);
    void bindTheme();
    void showTheme();
    void whenChanged(const QString &key, std::function<void()> show);

    PreferencesView *view_;
    Actions actions_;
    WipeDescriptionController methods_;
};
