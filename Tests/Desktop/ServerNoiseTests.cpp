// Whatever others write where the program reads at the server: nothing of it is what was agreed
// upon.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Dice.h"
#include "Harness/Soak.h"

#include <gtest/gtest.h>
#include <xcb/randr.h>

using namespace Harness;

namespace {

/// A program that writes what it likes into the properties of any window, and sends it messages.
class Scribbler {
public:
    Scribbler(const std::string& display, Dice& dice) : m_client(display), m_dice(dice) {
        // From the owner of this selection toolkits take their settings.
        const auto window = xcb_generate_id(m_client);
        xcb_create_window(m_client, 0, window, m_client.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(m_client, window, m_client.atom("_XSETTINGS_S0"), 0);
        m_windows = {m_client.root(), window};
        m_client.settle();
    }

    void scribble(const std::vector<ScreenWindow>& windows) {
        const auto number = m_dice.of(windows).number;
        scribbleAt(m_dice.below(2) ? number : m_dice.of(m_windows));
    }

    /// Into what the monitors tell of themselves.
    void scribbleAtOutputs() {
        const auto resources =
            m_client.ask(xcb_randr_get_screen_resources_current_reply,
                         xcb_randr_get_screen_resources_current(m_client, m_client.root()));
        const auto* outputs = xcb_randr_get_screen_resources_current_outputs(resources.get());
        for (int i = 0; i < resources->num_outputs; ++i) {
            const auto [format, values] = value();
            xcb_randr_change_output_property(m_client, outputs[i], m_client.atom("EDID"), type(),
                                             format, XCB_PROP_MODE_REPLACE, count(format, values),
                                             values.data());
        }
        m_client.settle();
    }

private:
    static constexpr const char* names[] = {"_NET_CLIENT_LIST",
                                            "_NET_SUPPORTING_WM_CHECK",
                                            "_NET_SUPPORTED",
                                            "_NET_WORKAREA",
                                            "_NET_ACTIVE_WINDOW",
                                            "_NET_CURRENT_DESKTOP",
                                            "_NET_WM_STRUT",
                                            "_NET_WM_STRUT_PARTIAL",
                                            "_NET_WM_WINDOW_TYPE",
                                            "_NET_WM_STATE",
                                            "_NET_WM_NAME",
                                            "_NET_FRAME_EXTENTS",
                                            "WM_STATE",
                                            "WM_NORMAL_HINTS",
                                            "WM_HINTS",
                                            "WM_PROTOCOLS",
                                            "_XROOTPMAP_ID",
                                            "ESETROOT_PMAP_ID",
                                            "RESOURCE_MANAGER",
                                            "_XSETTINGS_SETTINGS",
                                            "_XKB_RULES_NAMES",
                                            "_NET_SYSTEM_TRAY_VISUAL",
                                            "_NET_SYSTEM_TRAY_ORIENTATION",
                                            "_XEMBED_INFO",
                                            "WM_CLIENT_LEADER"};
    static constexpr const char* messages[] = {
        "WM_PROTOCOLS", "_NET_ACTIVE_WINDOW", "_XEMBED",   "MANAGER",  "_NET_WM_STATE",
        "_NET_WM_PING", "WM_CHANGE_STATE",    "XdndEnter", "XdndDrop", "_GTK_LOAD_ICONTHEMES"};
    static constexpr const char* data[] = {"WM_DELETE_WINDOW", "WM_TAKE_FOCUS", "_NET_WM_PING",
                                           "_NET_WM_SYNC_REQUEST", "_NET_SYSTEM_TRAY_S0"};

    void scribbleAt(xcb_window_t window) {
        if (m_dice.below(4) == 0) {
            const uint32_t words[5] = {m_client.atom(m_dice.of(data)), m_dice.number(),
                                       m_dice.number(), m_dice.number(), m_dice.number()};
            m_client.send(window, m_client.atom(m_dice.of(messages)),
                          m_dice.below(2) ? 0 : XCB_EVENT_MASK_STRUCTURE_NOTIFY, words);
            return;
        }
        const std::string name = m_dice.of(names);
        const auto [format, values] = value();
        // Of any other type, Qt reads the toolkits' settings for ever.
        const bool isSettings = name == "_XSETTINGS_SETTINGS";
        xcb_change_property(m_client, XCB_PROP_MODE_REPLACE, window, m_client.atom(name),
                            isSettings ? m_client.atom(name) : type(), format,
                            count(format, values), values.data());
        m_client.settle();
    }

    xcb_atom_t type() {
        constexpr xcb_atom_t types[] = {XCB_ATOM_WINDOW,  XCB_ATOM_CARDINAL, XCB_ATOM_ATOM,
                                        XCB_ATOM_PIXMAP,  XCB_ATOM_STRING,   XCB_ATOM_INTEGER,
                                        XCB_ATOM_WM_HINTS};
        return m_dice.of(types);
    }
    std::pair<uint8_t, std::vector<uint32_t>> value() {
        constexpr uint8_t formats[] = {8, 16, 32, 32};
        std::vector<uint32_t> values(m_dice.below(40));
        for (auto& value : values)
            value = m_dice.below(4) ? m_dice.number() : m_dice.of(m_windows);
        return {m_dice.of(formats), values};
    }
    static uint32_t count(uint8_t format, const std::vector<uint32_t>& values) {
        return static_cast<uint32_t>(values.size() * 32 / format);
    }

    XClient m_client;
    Dice& m_dice;
    std::vector<xcb_window_t> m_windows; ///< That are there and say nothing of use.
};

} // namespace

TEST(ServerNoise, DoesNoHarm) {
    Dice dice;
    Desktop desktop;
    Scribbler scribbler(desktop.display(), dice);
    for (int i = 0; i < 200; ++i)
        scribbler.scribble(desktop.screen.windows());
    Agent agent(desktop);
    agent.cover();
    for (int round = 0; round < rounds(10, 300); ++round) {
        for (int i = 0; i < 100; ++i)
            scribbler.scribble(desktop.screen.windows());
        scribbler.scribbleAtOutputs();
        ASSERT_FALSE(agent.process().status()) << agent.process().errors();
        EXPECT_TRUE(await([&] { return agent.isCovered(); })) << round;
    }
    EXPECT_TRUE(await([&] { return agent.buttons().size() == 2; }));
    agent.uncover();
}
