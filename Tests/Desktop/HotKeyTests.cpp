#include "Harness/OnDesktop.h"

#include <algorithm>
#include <csignal>
#include <set>

using namespace Harness;

namespace {

struct HotKeys : OnDesktop {
    /// Which modifiers are on.
    uint8_t modifiers() const {
        const auto pointer =
            client.ask(xcb_query_pointer_reply, xcb_query_pointer(client, client.root()));
        return static_cast<uint8_t>(pointer->mask);
    }

    void expectToggles(const Agent& its, const std::string& when, uint8_t key = nKey) const {
        for (const bool covered : {true, false}) {
            desktop.input.strikeTogether({controlKey, altKey, superKey, key});
            EXPECT_SOON(covered ? its.isCovered() : its.visibleCovers().empty()) << when;
        }
    }

    /// The chord of another program. False if it is taken.
    bool grab(uint16_t state, uint8_t key = nKey) const {
        const auto request = xcb_grab_key_checked(client, 0, client.root(), state, key,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return !Received<xcb_generic_error_t>(xcb_request_check(client, request));
    }

    /// Asked without getting in the way of whoever is about to take it.
    bool isTaken(uint16_t state, uint8_t key = nKey) const {
        xcb_grab_server(client);
        const bool free = grab(state, key);
        if (free) xcb_ungrab_key(client, key, client.root(), state);
        xcb_ungrab_server(client);
        client.settle();
        return !free;
    }

    static constexpr uint16_t chord = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

    /// The window of the instance that has the key.
    xcb_window_t holder() const {
        return desktop.screen.selectionOwner("com.vardek.NimbrelLite.HotKey");
    }

    const XClient client{desktop.display()};
};

} // namespace

TEST_F(HotKeys, ToggleInEveryLayoutWhateverLocksAreOn) {
    const Folder folder;
    const auto placeKeys = [&](int n, int m) {
        const auto keymap = folder.write(
            "keymap", "xkb_keymap { xkb_keycodes { include \"evdev+aliases(qwerty)\" <AB06> = " +
                          std::to_string(n) + "; <AB07> = " + std::to_string(m) +
                          "; };\nxkb_types { include \"complete\" };"
                          "xkb_compatibility { include \"complete\" };"
                          "xkb_symbols { include \"pc+us+inet(evdev)\" }; };");
        desktop.run({"xkbcomp", "-w0", keymap.string(), desktop.display()});
        ASSERT_SOON(isTaken(chord, static_cast<uint8_t>(n)));
    };
    agent.emplace(desktop);
    for (const char* layout : {"de", "ru", "fr", "us"}) {
        desktop.run({"setxkbmap", layout});
        expectToggles(*agent, layout);
    }
    desktop.run({"xmodmap", "-e", "add mod3 = Scroll_Lock"});
    std::set<uint8_t> seen; // As a counter counts, so that every combination has its turn.
    for (int combination = 1; combination <= 8; ++combination) {
        expectToggles(*agent, "locked " + std::to_string(modifiers()));
        seen.insert(modifiers());
        desktop.input.strike(capsLock);
        if (combination % 2 == 0) desktop.input.strike(numLock);
        if (combination % 4 == 0) desktop.input.strike(scrollLock);
    }
    EXPECT_EQ(seen.size(), 8U);
    desktop.run({"xmodmap", "-e", "clear mod1", "-e", "clear mod4", "-e", "add mod4 = Alt_L", "-e",
                 "add mod1 = Super_L"});
    expectToggles(*agent, "with Alt and Super exchanged");
    desktop.run({"setxkbmap", "us"});
    placeKeys(58, 57);
    expectToggles(*agent, "moved", 58);
    desktop.input.strikeChord();
    EXPECT_FOR(300ms, agent->visibleCovers().empty());
    placeKeys(57, 58);
    expectToggles(*agent, "and back");
    desktop.run({"setxkbmap", "-layout", "us,ru", "-option", "grp:caps_toggle"});
    desktop.input.strike(capsLock);
    expectToggles(*agent, "in the second group");
}

TEST_F(HotKeys, ToggleOnceHoweverLongTheyAreHeld) {
    TestWindow paper(desktop.display(), {0, 0, 100, 100});
    paper.show();
    paper.takeFocus();
    paper.takeEvents();
    desktop.input.hold(aKey);
    size_t heard = 0;
    ASSERT_SOON((heard += paper.takeEvents().size()) > 6) << "no repeats";
    desktop.input.letGo(aKey);

    agent.emplace(desktop);
    for (const bool covered : {true, false}) {
        const auto isSo = [&] {
            return covered ? agent->isCovered() : agent->visibleCovers().empty();
        };
        for (const uint8_t key : chordKeys)
            desktop.input.hold(key);
        EXPECT_TRUE(await(isSo));
        EXPECT_TRUE(holdsFor(1200ms, isSo));
        for (const uint8_t key : chordKeys)
            desktop.input.letGo(key);
        EXPECT_TRUE(holdsFor(200ms, isSo));
    }
}

TEST_F(HotKeys, OfAnotherProgramAreLeftToIt) {
    ASSERT_TRUE(grab(chord | XCB_MOD_MASK_2)); // With the number lock on, and only so.
    agent.emplace(desktop);
    EXPECT_TRUE(grab(chord)) << "the program keeps a part of what it was refused";
    desktop.input.strikeChord();
    EXPECT_FOR(500ms, agent->visibleCovers().empty());
    int presses = 0;
    while (const auto event = client.nextEvent())
        presses += event->response_type == XCB_KEY_PRESS;
    EXPECT_GT(presses, 0);
    agent->cover();
    agent->uncover();
}

TEST_F(HotKeys, StayWithAStartThatDoesNotGoAndTheSettingsSaySo) {
    constexpr uint32_t red = 0xC8141E;         // What the line is written in.
    for (const bool isStuck : {true, false}) { // Or without a bus to be asked on.
        if (!isStuck) desktop.extra = {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}};
        Agent first(desktop);
        ASSERT_SOON(holder() != XCB_WINDOW_NONE);
        const auto former = holder();
        if (isStuck) first.process().send(SIGSTOP);
        Agent second(desktop);
        EXPECT_EQ(holder(), former);
        desktop.input.click(desktop.tray->icons().back(), 3);
        ASSERT_SOON(second.menus().size() == 1);
        desktop.input.strike(downKey, Row::settings);
        desktop.input.strike(returnKey);
        EXPECT_TRUE(await([&] {
            const auto windows = second.windows();
            return !windows.empty() && desktop.screen.grab(windows.back().area).count(red) > 0;
        })) << isStuck;
        first.process().send(isStuck ? SIGCONT : SIGTERM);
        EXPECT_EQ(first.process().awaitEnd(), 0);
        EXPECT_EQ(holder(), XCB_WINDOW_NONE) << "as the settings say";
    }
}
