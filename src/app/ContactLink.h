#pragma once

#include <QUrl>

/// The makers' contact page.
///
/// Thread: main
namespace ContactLink {

/// As the preferences have it.
QUrl url();
/// In the desktop's browser.
void open();

} // namespace ContactLink
