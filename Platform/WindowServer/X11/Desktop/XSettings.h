#pragma once

#include "WindowServer/X11/Desktop/SelectionWatch.h"

#include <functional>
#include <map>
#include <string>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The desktop's settings as they are told on the X server itself, by the one program that owns
/// their selection. They stay as they were last told when that program goes.
class XSettings {
public:
    explicit XSettings(Connection& connection);

    std::string themeName() const; ///< Of the desktop's own widgets; empty where nobody tells.
    /// What sizes are to be multiplied by, besides what the resolution of texts makes of them.
    int windowScale() const;

    /// Called after any of the settings has come to differ.
    std::function<void()> onChanged;

    void handle(const xcb_generic_event_t& event);

private:
    void read();

    Connection& m_connection;
    SelectionWatch m_teller;
    const xcb_atom_t m_property;
    std::map<std::string, std::string> m_texts;
    std::map<std::string, int> m_numbers;
};

} // namespace WindowServer
