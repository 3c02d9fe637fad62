#include "ui/PreferencesView.h"

#include "ui/ButtonBlue.h"
#include "ui/LinkButton.h"
#include "ui/MethodSelector.h"
#include "ui/PathField.h"
#include "ui/PlainButton.h"
#include "ui/PreferenceRow.h"
#include "ui/SegmentedControl.h"
#include "ui/SwitchButton.h"
#include "ui/ViewLayouts.h"

#include <QKeyEvent>

namespace {

constexpr QSizeF wideControl(262, 28);
constexpr QSizeF switchSize(36, 20);
constexpr QSizeF chooseSize(88, 28);

} // namespace

PreferencesView::PreferencesView(QWidget *parent)
    : ContentView(parent), heading_(addText(TextStyle::Heading, ColorRole::Text)),
      labels_{addText(TextStyle::SmallMedium, ColorRole::TextSecondary),
              addText(TextStyle::SmallMedium, ColorRole::TextSecondary),
              addText(TextStyle::SmallMedium, ColorRole::TextSecondary)},
      groups_{new PreferenceGroup(canvas()), new PreferenceGroup(canvas()),
              new PreferenceGroup(canvas())},
      methodSelector_(new MethodSelector(groups_[0])),
      themeSegments_(new SegmentedControl(groups_[0])),
      skipLinkTargets_(new SwitchButton(groups_[0])), autoExit_(new SwitchButton(groups_[0])),
      checkForUpdates_(new SwitchButton(groups_[1])), betaReleases_(new SwitchButton(groups_[1])),
      alphaReleases_(new SwitchButton(groups_[1])), pathField_(new PathField(groups_[2])),
      chooseButton_(new PlainButton(tr("Choose…"), groups_[2])),
      logRemark_(addText(TextStyle::Small, ColorRole::TextSecondary)),
      versionText_(addText(TextStyle::Small, ColorRole::TextSecondary)),
      contactLink_(new LinkButton(tr("Contact the makers"), canvas())),
      doneButton_(new ButtonBlue(tr("Done"), canvas()))
{
    heading_->setText(tr("Preferences"));
    makeGeneralGroup();
    makeUpdatesGroup();
    makeLogGroup();
    contactLink_->setAccessibleName(contactLink_->text());
    doneButton_->setAccessibleName(doneButton_->text());
    connectSignals();
    chainTabStops();
}

void PreferencesView::makeGeneralGroup()
{
    labels_[0]->setText(tr("General"));
    themeSegments_->setSegments({tr("Light"), tr("Dark"), tr("System")});
    groups_[0]->addRow(tr("Wipe method"))->setControl(methodSelector_, wideControl);
    themeRow_ = groups_[0]->addRow(tr("Theme"));
    themeRow_->setControl(themeSegments_, wideControl);
    PreferenceRow *links = groups_[0]->addRow(tr("Leave the targets of links alone"));
    links->setControl(skipLinkTargets_, switchSize);
    links->setRemark(tr("a symbolic link is removed, its file stays"));
    groups_[0]->addRow(tr("Quit after a finished run"))->setControl(autoExit_, switchSize);
}

void PreferencesView::makeUpdatesGroup()
{
    labels_[1]->setText(tr("Updates"));
    groups_[1]
        ->addRow(tr("Check for updates automatically"))
        ->setControl(checkForUpdates_, switchSize);
    groups_[1]->addRow(tr("Include beta releases"))->setControl(betaReleases_, switchSize);
    PreferenceRow *alpha = groups_[1]->addRow(tr("Include alpha releases"));
    alpha->setControl(alphaReleases_, switchSize);
    alpha->setRemark(tr("unfinished, for testing only"));
}

void PreferencesView::makeLogGroup()
{
    labels_[2]->setText(tr("Log file"));
    chooseButton_->setAccessibleName(chooseButton_->text());
    pathField_->setPlaceholderText(tr("No log file"));
    PreferenceRow *path = groups_[2]->addRow(tr("Path"));
    path->setField(pathField_);
    path->setControl(chooseButton_, chooseSize);
}

void PreferencesView::connectSignals()
{
    methodSelector_->installEventFilter(this);
    connect(chooseButton_, &PlainButton::clicked, this, &PreferencesView::chooseLogClicked);
    connect(contactLink_, &LinkButton::clicked, this, &PreferencesView::contactClicked);
    connect(doneButton_, &ButtonBlue::clicked, this, &PreferencesView::doneClicked);
    connect(pathField_, &PathField::editingFinished, this, &PreferencesView::takePath);
    connect(pathField_, &PathField::textChanged, this, &PreferencesView::keepPath);
}

void PreferencesView::keepPath(const QString &path)
{
    if (!pathField_->isModified())
        keptPath_ = path;
}

void PreferencesView::takePath()
{
    if (!pathField_->isModified())
        return;
    pathField_->setModified(false);
    keptPath_ = pathField_->text();
    Q_EMIT logPathTaken(keptPath_);
}

void PreferencesView::setThemeRemark(const QString &remark)
{
    themeRow_->setRemark(remark);
}

void PreferencesView::setThemeEnabled(bool isEnabled)
{
    themeSegments_->setEnabled(isEnabled);
}

void PreferencesView::setChecksForUpdates(bool checks)
{
    for (SwitchButton *button : {checkForUpdates_, betaReleases_, alphaReleases_})
        button->setEnabled(checks);
    groups_[1]->rows().front()->setRemark(checks ? QString()
                                                 : tr("this build does not check for updates"));
}

void PreferencesView::setLogRemark(const QString &remark)
{
    logRemark_->setText(remark);
    pathField_->setAccessibleDescription(remark);
}

void PreferencesView::setVersionText(const QString &text)
{
    versionText_->setText(text);
    layOutAgain();
}

QWidget *PreferencesView::firstFocus() const
{
    return methodSelector_;
}

std::vector<QWidget *> PreferencesView::tabStops() const
{
    return {methodSelector_,  themeSegments_, skipLinkTargets_, autoExit_,
            checkForUpdates_, betaReleases_,  alphaReleases_,   pathField_,
            chooseButton_,    contactLink_,   doneButton_};
}

QAbstractButton *PreferencesView::defaultButton() const
{
    return doneButton_;
}

void PreferencesView::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && pathField_->hasFocus())
        return;
    if (event->key() != Qt::Key_Escape || event->modifiers() != Qt::NoModifier) {
        ContentView::keyPressEvent(event);
        return;
    }
    pathField_->setText(keptPath_);
    Q_EMIT doneClicked();
}

bool PreferencesView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return ContentView::eventFilter(watched, event);
    // The selector would open on Return. Here, where the keyboard is first, the key means Done.
    auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    keyPressEvent(key);
    return true;
}

void PreferencesView::layOut(const ViewRuler &ruler)
{
    const PreferencesLayout layout = PreferencesLayout::of(ruler, versionText_->sizeHint().width(),
                                                           contactLink_->sizeHint().width());
    heading_->setGeometry(layout.heading);
    for (std::size_t index = 0; index < groups_.size(); ++index) {
        labels_[index]->setGeometry(layout.groups[index].label);
        groups_[index]->setGeometry(layout.groups[index].card);
    }
    logRemark_->setGeometry(layout.groups.back().remark);
    versionText_->setGeometry(layout.version);
    contactLink_->setGeometry(layout.contact);
    doneButton_->setGeometry(layout.done);
}
