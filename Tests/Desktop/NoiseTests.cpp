// Whatever others write at the server, where the program reads: nothing of it is what was agreed
// upon.
#include "Harness/Dice.h"
#include "Harness/OnDesktop.h"
#include "Harness/Soak.h"

#include <QStringList>

using namespace Harness;

namespace {

const auto properties =
    QString("_NET_CLIENT_LIST _NET_SUPPORTING_WM_CHECK _NET_ACTIVE_WINDOW _NET_WM_STRUT "
            "_NET_WM_STRUT_PARTIAL _NET_WM_WINDOW_TYPE _NET_WM_STATE _NET_FRAME_EXTENTS WM_STATE "
            "WM_NORMAL_HINTS WM_PROTOCOLS RESOURCE_MANAGER _XSETTINGS_SETTINGS _XKB_RULES_NAMES "
            "_NET_SYSTEM_TRAY_VISUAL _XEMBED_INFO")
        .split(' ');
const auto messages = QString("WM_PROTOCOLS _NET_ACTIVE_WINDOW _XEMBED MANAGER _NET_WM_STATE "
                              "_NET_WM_PING XdndEnter WM_DELETE_WINDOW _NET_SYSTEM_TRAY_S0")
                          .split(' ');

/// A program that writes what it likes into the properties of any window, and sends it messages.
struct Noise : OnDesktop {
    Noise() {
        // From the owner of this selection toolkits take their settings.
        paper.show();
        client.own("_XSETTINGS_S0", paper.number());
    }

    xcb_atom_t anyOf(const QStringList& names) { return client.atom(dice.of(names).toStdString()); }

    void scribble() {
        const xcb_window_t others[] = {client.root(), paper.number()};
        const auto window =
            dice.below(2) ? dice.of(others) : dice.of(desktop.screen.windows()).number;
        if (dice.below(4) == 0)
            return client.send(window, anyOf(messages),
                               dice.below(2) ? 0 : XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                               {anyOf(messages), dice.number(), dice.number(), dice.number(), 0});
        const auto name = anyOf(properties);
        // Of any other type, Qt reads the toolkits' settings for ever.
        const bool isSettings = name == client.atom("_XSETTINGS_SETTINGS");
        constexpr xcb_atom_t types[] = {XCB_ATOM_WINDOW, XCB_ATOM_CARDINAL, XCB_ATOM_ATOM,
                                        XCB_ATOM_PIXMAP, XCB_ATOM_STRING,   XCB_ATOM_WM_HINTS};
        constexpr uint8_t formats[] = {8, 16, 32, 32};
        const auto format = dice.of(formats);
        std::vector<uint32_t> values(dice.below(40));
        for (auto& value : values)
            value = dice.below(4) ? dice.number() : paper.number();
        xcb_change_property(client, XCB_PROP_MODE_REPLACE, window, name,
                            isSettings ? name : dice.of(types), format, values.size() * 32 / format,
                            values.data());
        client.settle();
    }

    Dice dice;
    TestWindow paper{desktop.display(), {200, 200, 400, 300}};
    const XClient& client = paper.client();
};

} // namespace

TEST_F(Noise, AtTheServerDoesNoHarm) {
    for (int i = 0; i < 200; ++i)
        scribble();
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    for (int round = 0; round < rounds(10, 300); ++round) {
        for (int i = 0; i < 100; ++i)
            scribble();
        ASSERT_FALSE(agent->process().status()) << agent->process().errors();
        EXPECT_SOON(agent->isCovered()) << round;
    }
    EXPECT_SOON(agent->buttons().size() == 2);
    agent->uncover();
}
