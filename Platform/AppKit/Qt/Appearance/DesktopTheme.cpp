#include "AppKit/Qt/Appearance/DesktopTheme.h"

#include "WindowServer/Session.h"

using WindowServer::Session;

DesktopTheme& DesktopTheme::current() {
    static auto* const theme = new DesktopTheme; // Outlives all who listen to it.
    return *theme;
}

DesktopTheme::DesktopTheme() {
    Session::current().onThemeChanged = [this] { emit changed(); };
}

QString DesktopTheme::name() const {
    return QString::fromStdString(Session::current().themeName());
}
