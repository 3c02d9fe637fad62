#include "app/AboutBox.h"

#include "app/ContactLink.h"
#include "platform/UserDefaults.h"
#include "ui/ApplicationIcon.h"
#include "ui/DialogBoxes.h"

#include <QApplication>

void AboutBox::show()
{
    if (QApplication::activeModalWidget())
        return;
    const auto tr = [](const char *text) { return QCoreApplication::translate("AboutBox", text); };
    const UserDefaults &defaults = UserDefaults::standard();
    const QString version = tr("Version %1 (build %2)")
                                .arg(defaults.text(QStringLiteral("AppVersionNr")),
                                     defaults.text(QStringLiteral("AppBuildNr")));
    DialogBoxes::alertBoxDefault(
        tr("Vantorel"),
        version + QStringLiteral("\n\n") +
            tr("Overwrites files in place, pass by pass, and removes them. What cannot be erased "
               "is said plainly."),
        ContactLink::url(), tr("Contact the Makers"), ApplicationIcon::icon());
}
