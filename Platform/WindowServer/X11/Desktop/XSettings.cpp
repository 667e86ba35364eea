#include "WindowServer/X11/Desktop/XSettings.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace WindowServer {

namespace {

enum Kind : quint8 { Number, Letters }; ///< The others are colours.

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
    QDataStream stream(QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                  xcb_get_property_value_length(reply.get())));
    // Past the end there is nothing but zeros.
    const auto take = [&stream](auto value) {
        stream >> value;
        return value;
    };
    const auto takeText = [&stream](quint32 length) {
        QByteArray text(std::min<qint64>(length, stream.device()->bytesAvailable()), 0);
        stream.readRawData(text.data(), static_cast<int>(text.size()));
        stream.skipRawData(static_cast<int>(-length % 4));
        return text.toStdString();
    };
    const bool isLittle = take(quint32()) >> 24 == XCB_IMAGE_ORDER_LSB_FIRST;
    stream.setByteOrder(isLittle ? QDataStream::LittleEndian : QDataStream::BigEndian);
    take(quint64()); // The serial number, and how many there are.

    decltype(m_values) values;
    while (!stream.atEnd()) {
        const auto kind = take(quint8());
        take(quint8());
        const std::string name = takeText(take(quint16()));
        take(quint32());
        if (kind == Number)
            values[name] = take(qint32());
        else if (kind == Letters)
            values[name] = takeText(take(quint32()));
        else
            take(quint64());
    }
    if (std::exchange(m_values, values) != values && onChanged) onChanged();
}

void XSettings::handle(const xcb_generic_event_t& event) {
    m_teller.handle(event);
    if (typeOf(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& notify = as<xcb_property_notify_event_t>(event);
    if (notify.window == m_teller.owner() && notify.atom == m_property) read();
}

std::string XSettings::themeName() const { return value("Net/ThemeName", std::string()); }

/// Where the unscaled resolution is told too, the scale is in the other resolution already.
int XSettings::windowScale() const {
    if (m_values.contains("Gdk/UnscaledDPI")) return 1;
    return std::clamp(value("Gdk/WindowScalingFactor", 1), 1, 8);
}

template <class Value> Value XSettings::value(const char* name, Value otherwise) const {
    const auto found = m_values.find(name);
    const auto* known = found == m_values.end() ? nullptr : std::get_if<Value>(&found->second);
    return known ? *known : otherwise;
}

} // namespace WindowServer
