#pragma once

#include "WindowServer/Desktop.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"

#include <map>
#include <string>
#include <variant>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The desktop's settings as they are told on the X server itself, by the one program that owns
/// their selection. They stay as they were last told when that program goes.
class XSettings : public Settings {
public:
    explicit XSettings(Connection& connection);

    std::string themeName() const override;
    int windowScale() const override;

    void handle(const xcb_generic_event_t& event);

private:
    void read();
    template <class Value> Value value(const char* name, Value otherwise) const;

    Connection& m_connection;
    SelectionWatch m_teller;
    const xcb_atom_t m_property;
    std::map<std::string, std::variant<int, std::string>> m_values;
};

} // namespace WindowServer
