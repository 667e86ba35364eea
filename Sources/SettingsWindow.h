#pragma once

namespace SettingsWindow {

/// Brings the settings window to the front. It is made once, and keeps its tab and place.
void show();

} // namespace SettingsWindow
