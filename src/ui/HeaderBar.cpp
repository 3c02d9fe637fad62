#include "ui/HeaderBar.h"

#include "support/NumberText.h"
#include "ui/HeaderButton.h"
#include "ui/VTLLine.h"

namespace {

constexpr int countsEnd = 100;
constexpr int buttonWidth = 28;

} // namespace

HeaderBar::HeaderBar(QWidget *parent)
    : WindowHeader(parent),
      addFiles_(new HeaderButton(QStringLiteral("symbol_add"), tr("Add files and folders"), this)),
      errorLog_(new HeaderButton(QStringLiteral("symbol_error_log"), QString(), this)),
      preferences_(new HeaderButton(QStringLiteral("symbol_preferences"), tr("Preferences"), this)),
      menu_(new HeaderButton(QStringLiteral("symbol_menu"), tr("Main menu"), this)),
      line_(new VTLLine(QStringLiteral("BtnInfoLine"), this))
{
    addFiles_->setToolTip(tr("Add files and folders (Ctrl+O)"));
    preferences_->setToolTip(tr("Preferences (Ctrl+,)"));
    menu_->setToolTip(tr("Main menu (F10)"));
    setErrorCount(0);
}

void HeaderBar::setErrorCount(int entries)
{
    errorCount_ = entries;
    const QString name = entries == 1
                             ? tr("Error log, 1 entry")
                             : tr("Error log, %1 entries").arg(NumberText::grouped(entries));
    errorLog_->setBadgeText(entries < countsEnd ? QString::number(entries) : tr("99+"));
    errorLog_->setAccessibleName(name);
    errorLog_->setToolTip(tr("%1 (Ctrl+L)").arg(name));
    errorLog_->setVisible(entries > 0);
    layOut();
}

void HeaderBar::setShowsPreferences(bool shows)
{
    preferences_->setKeptPressed(shows);
}

void HeaderBar::setUnderSheet(bool isUnder)
{
    for (HeaderButton *button : ownButtons())
        button->setAttribute(Qt::WA_TransparentForMouseEvents, isUnder);
}

QList<QWidget *> HeaderBar::tabStops() const
{
    return {addFiles_, errorLog_, preferences_, menu_, btnMinimise(), btnClose()};
}

QList<HeaderButton *> HeaderBar::ownButtons() const
{
    return {addFiles_, errorLog_, preferences_, menu_};
}

int HeaderBar::titleMargin() const
{
    return errorCount_ > 0 ? 208 : 184;
}

void HeaderBar::layOut()
{
    WindowHeader::layOut();
    const int errorWidth = errorCount_ < countsEnd ? 44 : 52;
    placeButton(addFiles_, 8, buttonWidth);
    placeButton(errorLog_, -160 - errorWidth, errorWidth);
    placeButton(preferences_, -156, buttonWidth);
    placeButton(menu_, -124, buttonWidth);
    line_->setGeometry(width() - 85, 10, 1, 16);
}
