#include "Harness/SettingsManager.h"

#include <bit>

namespace Harness {

namespace {

template <typename Value> void add(std::string& bytes, Value value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void addPadded(std::string& bytes, const std::string& text) {
    bytes += text;
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

void addHead(std::string& bytes, uint8_t type, const std::string& name, uint32_t serial) {
    add<uint8_t>(bytes, type);
    add<uint8_t>(bytes, 0);
    add(bytes, static_cast<uint16_t>(name.size()));
    addPadded(bytes, name);
    add(bytes, serial);
}

} // namespace

SettingsManager::SettingsManager(const std::string& display)
    : m_client(display), m_window(xcb_generate_id(m_client)) {
    xcb_create_window(m_client, 0, m_window, m_client.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t selection = m_client.atom("_XSETTINGS_S0");
    xcb_set_selection_owner(m_client, m_window, selection, XCB_CURRENT_TIME);
    m_client.send(m_client.root(), m_client.atom("MANAGER"), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                  {XCB_CURRENT_TIME, selection, m_window, 0, 0});
    m_client.settle();
}

void SettingsManager::tell(const std::map<std::string, std::string>& texts,
                           const std::map<std::string, uint32_t>& numbers) {
    constexpr uint32_t least = 0, most = 1; // The byte orders.
    std::string bytes;
    add(bytes, std::endian::native == std::endian::little ? least : most << 24);
    add(bytes, ++m_serial);
    add(bytes, static_cast<uint32_t>(texts.size() + numbers.size()));
    for (const auto& [name, text] : texts) {
        addHead(bytes, 1, name, m_serial);
        add(bytes, static_cast<uint32_t>(text.size()));
        addPadded(bytes, text);
    }
    for (const auto& [name, number] : numbers) {
        addHead(bytes, 0, name, m_serial);
        add(bytes, number);
    }
    const xcb_atom_t property = m_client.atom("_XSETTINGS_SETTINGS");
    xcb_change_property(m_client, XCB_PROP_MODE_REPLACE, m_window, property, property, 8,
                        static_cast<uint32_t>(bytes.size()), bytes.data());
    m_client.settle();
}

} // namespace Harness
