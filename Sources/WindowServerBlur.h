#pragma once

class NSWindow;

/// The window server's blur of what lies behind a window. Its calls are private to the platform, so
/// they are looked up by name at run time.
namespace WindowServerBlur {

/// True if the window server has taken the radius; false too where it has no such calls.
bool set(int radius, const NSWindow& on);

} // namespace WindowServerBlur
