// What the desktop around the windows tells and takes.
#pragma once

#include "WindowServer/ToolkitWindows.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace WindowServer {

/// What the desktop has set for all its programs.
class Settings {
public:
    virtual ~Settings() = default;

    /// The theme of the desktop's own widgets. Empty where nobody tells.
    virtual std::string themeName() const { return {}; }

    /// What sizes are multiplied by, besides what the toolkit finds by itself.
    virtual int windowScale() const { return 1; }

    /// Called after any of the settings has come to differ.
    std::function<void()> onChanged;
};

/// How a tray wants the icons that it takes.
struct TrayLook {
    bool translucent = false;    ///< They let its ground through.
    std::optional<uint32_t> ink; ///< The colour of symbols, 0xRRGGBB, where it tells.
};

/// A status icon as a tray draws it that takes no window.
struct TrayFace {
    std::string symbol;           ///< The desktop's own name for it; empty where it has none.
    std::vector<uint8_t> picture; ///< PNG, in its place.
    std::string description;      ///< For assistive technology.
};

/// A press on an icon that a tray draws.
struct TrayPress {
    bool secondary = false; ///< With the button that opens menus.
    bool control = false;   ///< While that key was held.
    PixelRect place;        ///< The icon's.
};

/// The panel of the session itself that takes status icons.
class Tray {
public:
    virtual ~Tray() = default;

    /// Whether it draws the icon itself, as it is told. Such a tray takes no windows.
    virtual bool draws() const { return false; }
    /// Without a face there is no icon.
    virtual void draw(const std::optional<TrayFace>&) {}
    std::function<void(const TrayPress&)> onPressed;

    /// Whether it takes a window.
    virtual bool isPresent() const { return false; }

    virtual TrayLook look() const { return {}; }

    /// Takes a window that the toolkit shows off the screen and asks the tray to show it in itself.
    /// Calls back when it has. One is docked at a time.
    virtual void dock(WindowId, const std::function<void()>& /*docked*/) {}

    /// What the tray shows beneath the window that it took in, in the place of what that showed.
    /// Empty where it does not tell.
    virtual Snapshot groundOfDocked() const { return {}; }

    /// Called as it comes or goes, hands over to another, or tells another look.
    std::function<void()> onChanged;
};

} // namespace WindowServer
