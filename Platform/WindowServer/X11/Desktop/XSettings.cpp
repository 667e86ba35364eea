#include "WindowServer/X11/Desktop/XSettings.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

namespace WindowServer {

namespace {

/// Takes values from the front of the property. Past its end there is nothing but zeros.
class Reader {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    bool isAtEnd() const { return m_rest.empty(); }

    template <typename Value> Value take() {
        Value value{};
        const std::string_view bytes = takeBytes(sizeof value);
        std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }
    std::string takeText(size_t length) {
        const std::string text(takeBytes(length));
        takeBytes((4 - length % 4) % 4);
        return text;
    }

private:
    std::string_view takeBytes(size_t length) {
        const std::string_view bytes = m_rest.substr(0, length);
        m_rest.remove_prefix(bytes.size());
        return bytes;
    }

    std::string_view m_rest;
};

enum Kind : uint8_t { Number, Letters }; ///< The others are colours.

constexpr uint32_t most = 0x4000; ///< Of the property, in units of four bytes.

} // namespace

XSettings::XSettings(Connection& connection)
    : m_connection(connection), m_teller(connection, "_XSETTINGS_S"),
      m_property(connection.atom("_XSETTINGS_SETTINGS")) {
    m_teller.onChanged = [this] { read(); };
    read();
}

void XSettings::read() {
    if (!m_teller.isOwned()) return;
    const auto reply = m_connection.reply(
        xcb_get_property_reply, xcb_get_property(m_connection.xcb(), false, m_teller.owner(),
                                                 m_property, m_property, 0, most));
    if (!reply || reply->format != 8) return;
    Reader reader({static_cast<const char*>(xcb_get_property_value(reply.get())),
                   static_cast<size_t>(xcb_get_property_value_length(reply.get()))});
    const bool isLittle = reader.take<uint32_t>() % 256 == XCB_IMAGE_ORDER_LSB_FIRST;
    if (isLittle != (std::endian::native == std::endian::little)) return;
    reader.take<uint32_t>(); // The serial number, and next how many there are.
    reader.take<uint32_t>();

    std::map<std::string, std::string> texts;
    std::map<std::string, int> numbers;
    while (!reader.isAtEnd()) {
        const auto kind = reader.take<uint8_t>();
        reader.take<uint8_t>();
        const std::string name = reader.takeText(reader.take<uint16_t>());
        reader.take<uint32_t>();
        if (kind == Number)
            numbers[name] = reader.take<int32_t>();
        else if (kind == Letters)
            texts[name] = reader.takeText(reader.take<uint32_t>());
        else
            reader.take<uint64_t>();
    }
    const bool changed = std::exchange(m_texts, texts) != texts;
    if ((std::exchange(m_numbers, numbers) != numbers || changed) && onChanged) onChanged();
}

void XSettings::handle(const xcb_generic_event_t& event) {
    m_teller.handle(event);
    if (typeOf(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& notify = as<xcb_property_notify_event_t>(event);
    if (notify.window == m_teller.owner() && notify.atom == m_property) read();
}

std::string XSettings::themeName() const {
    const auto found = m_texts.find("Net/ThemeName");
    return found == m_texts.end() ? std::string() : found->second;
}

/// Where the unscaled resolution is told too, the scale is in the other resolution already.
int XSettings::windowScale() const {
    const auto found = m_numbers.find("Gdk/WindowScalingFactor");
    if (found == m_numbers.end() || m_numbers.contains("Gdk/UnscaledDPI")) return 1;
    return std::clamp(found->second, 1, 8);
}

} // namespace WindowServer
