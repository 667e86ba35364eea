#include "WindowServer/Shell/ShellTray.h"

namespace WindowServer {

ShellTray::ShellTray(Tray& onServer, ShellLink& link) : m_onServer(onServer), m_link(link) {
    onServer.onChanged = [this] { changed(); };
    link.onIconPressed = [this](uint button, uint modifiers, const PixelRect& place) {
        constexpr uint secondary = 3;
        constexpr uint control = 4; // As X11 has it in its masks.
        if (onPressed)
            onPressed({.secondary = button == secondary,
                       .control = (modifiers & control) != 0,
                       .place = place});
    };
}

void ShellTray::draw(const std::optional<TrayFace>& face) {
    if (!face) return m_link.tell("HideIcon");
    const QByteArray picture(reinterpret_cast<const char*>(face->picture.data()),
                             static_cast<qsizetype>(face->picture.size()));
    m_link.tell("ShowIcon", {QString::fromStdString(face->symbol), picture,
                             QString::fromStdString(face->description)});
}

} // namespace WindowServer
