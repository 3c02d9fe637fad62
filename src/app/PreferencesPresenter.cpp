#include "app/PreferencesPresenter.h"

#include "app/ContactLink.h"
#include "app/LogPathPresenter.h"
#include "platform/UserDefaults.h"
#include "support/ValueTransformerRegistry.h"
#include "ui/ColorThemeClass.h"
#include "ui/MethodSelector.h"
#include "ui/PreferencesView.h"
#include "ui/SegmentedControl.h"
#include "ui/SwitchButton.h"
#include "ui/ThemeKeys.h"
#include "ui/ValueTransformers.h"

namespace {

const QString methodKey = QStringLiteral("WipeMethod");

/// The segment of the stored theme; none for a value that is no theme.
int shownTheme()
{
    const auto isShown = [](const QString &transformer) {
        return ValueTransformers::shared()
            .transformerForName(transformer)
            ->transformedValue({})
            .toBool();
    };
    if (isShown(QStringLiteral("IsLightColorTheme")))
        return ColorThemeClass::ColorThemeLight;
    if (isShown(QStringLiteral("IsDarkColorTheme")))
        return ColorThemeClass::ColorThemeDark;
    if (isShown(QStringLiteral("IsSystemColorTheme")))
        return ColorThemeClass::ColorThemeSystem;
    return -1;
}

} // namespace

PreferencesPresenter::PreferencesPresenter(PreferencesView *view, Actions actions, QObject *parent)
    : QObject(parent), view_(view), actions_(std::move(actions))
{
    const UserDefaults &defaults = UserDefaults::standard();
    bindMethodSelector(view_->methodSelector());
    bindTheme();
    bindSwitch(view_->skipLinkTargets(), QStringLiteral("skipLinkTargets"));
    bindSwitch(view_->autoExit(), QStringLiteral("AutoExit"));
    bindSwitch(view_->checkForUpdates(), QStringLiteral("checkForUpdates"));
    bindSwitch(view_->betaReleases(), QStringLiteral("checkForBetaReleases"));
    bindSwitch(view_->alphaReleases(), QStringLiteral("checkForAlphaReleases"));
    new LogPathPresenter(view_, this);
    connect(view_, &PreferencesView::contactClicked, this, [] { ContactLink::open(); });
    view_->setVersionText(tr("Version %1 (build %2)")
                              .arg(defaults.text(QStringLiteral("AppVersionNr")),
                                   defaults.text(QStringLiteral("AppBuildNr"))));
}

void PreferencesPresenter::bindMethodSelector(MethodSelector *selector)
{
    selector->setMethods(methods_.wipeDescriptions());
    connect(selector, &MethodSelector::methodChosen, this, [this](std::int64_t method) {
        UserDefaults::standard().setValue(methodKey, qlonglong(method));
        actions_.wipeSelectorClicked();
    });
    whenChanged(methodKey, [selector] {
        selector->setCurrentMethod(UserDefaults::standard().integer(methodKey));
    });
}

void PreferencesPresenter::bindSwitch(SwitchButton *button, const QString &key)
{
    connect(button, &SwitchButton::toggled, this,
            [key](bool isOn) { UserDefaults::standard().setValue(key, isOn); });
    whenChanged(key, [button, key] { button->setChecked(UserDefaults::standard().boolean(key)); });
}

void PreferencesPresenter::bindTheme()
{
    connect(view_->themeSegments(), &SegmentedControl::chosen, this, [this](int theme) {
        actions_.appearanceSettingChanged(theme);
        showTheme();
    });
    whenChanged(ThemeKeys::theme, [this] { showTheme(); });
    whenChanged(ThemeKeys::isThemeEnabled, [this] {
        view_->setThemeEnabled(UserDefaults::standard().boolean(ThemeKeys::isThemeEnabled));
    });
}

void PreferencesPresenter::showTheme()
{
    const int theme = shownTheme();
    view_->themeSegments()->setCurrentIndex(theme);
    view_->setThemeRemark(theme == ColorThemeClass::ColorThemeSystem
                              ? tr("light now, dark from the next start")
                              : QString());
}

/// Shows the value now and whenever it changes.
void PreferencesPresenter::whenChanged(const QString &key, std::function<void()> show)
{
    show();
    connect(&UserDefaults::standard(), &UserDefaults::valueChanged, this,
            [key, show = std::move(show)](const QString &changed) {
                if (changed == key)
                    show();
            });
}
