#pragma once

/// What the application is, in a dialog.
///
/// Thread: main
/// Blocks: until the dialog is closed
namespace AboutBox {

/// Not a second time while it is shown.
void show();

} // namespace AboutBox
