#include "Harness/Keys.h"
#include "Harness/NotifierTray.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"

using namespace Harness;

namespace {

bool holds(const Area& outer, const Area& inner) {
    return inner.x >= outer.x && inner.y >= outer.y &&
           inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

struct Menus : OnDesktop {
    /// On another spot than the last time: two quick clicks on one spot are a double click.
    void click(const Area& area, uint8_t button) {
        m_aside = !m_aside;
        desktop.input.move(area.x + area.width / 2 + (m_aside ? 5 : -5), area.y + area.height / 2);
        desktop.input.click(button);
    }

    void openAt(const Area& area) {
        click(area, 3);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
    }
    void open() { openAt(desktop.tray->icons().back()); }

    void expectCloses(const std::string& when = "") const {
        EXPECT_TRUE(await([&] { return agent->menus().empty(); })) << when;
    }
    void close() const {
        desktop.input.strike(escapeKey);
        expectCloses();
    }

    /// What stands in the first row of the open menu, left of its keys. The rows take a moment to
    /// be painted.
    Picture title() const {
        const Area menu = agent->menus().at(0).area;
        const Area row = {menu.x + 12, menu.y + 8, menu.width / 2, 18};
        EXPECT_TRUE(await([&] { return desktop.screen.grab(row).sharpestStep() > 60; }));
        Picture picture = desktop.screen.grab(row);
        while (!holdsFor(50ms, [&] { return desktop.screen.grab(row) == picture; }))
            picture = desktop.screen.grab(row);
        return picture;
    }

    const Paper paper{desktop, 0x4682B4};

private:
    bool m_aside = false;
};

} // namespace

TEST_F(Menus, OpenAboveTheStatusItemAndAboveEverything) {
    for (const bool managed : {false, true}) {
        const auto manager = managed ? desktop.startWindowManager() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        const Area icon = desktop.tray->icons().back();
        for (const bool covered : {false, true}) {
            if (covered) agent->cover();
            ASSERT_NO_FATAL_FAILURE(open());
            const Area menu = agent->menus()[0].area;
            EXPECT_EQ(menu.x, icon.x);
            EXPECT_EQ(menu.y + menu.height, icon.y);
            EXPECT_TRUE(await([&] { return desktop.screen.windows().back().instance == "menu"; }));
            close();
            EXPECT_EQ(agent->isCovered(), covered);
        }
        agent->uncover(); // With the menu gone a click is a click again.
        agent.reset();
    }
}

TEST_F(Menus, OpenWithTheControlKeyAndCloseAtAClickElsewhere) {
    ASSERT_NO_FATAL_FAILURE(start());
    desktop.input.hold(controlKey);
    click(desktop.tray->icons().back(), 1);
    desktop.input.letGo(controlKey);
    ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
    click({900, 200, 1, 1}, 1);
    expectCloses();
    EXPECT_TRUE(agent->visibleCovers().empty());
}

TEST_F(Menus, StayOnTheirMonitor) {
    const auto icon = [&](int x, int y) { desktop.tray.emplace(desktop.display(), x, y); };
    icon(Desktop::left.width - Tray::iconSize, 0); // The corner beside the other monitor.
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_TRUE(holds(Desktop::left, agent->menus()[0].area)) << agent->menus()[0].area;
    EXPECT_EQ(agent->menus()[0].area.y, Tray::iconSize);
    close();
    for (const Area& monitor : {Desktop::left, Desktop::right}) {
        const int right = monitor.x + monitor.width - 30;
        const int bottom = monitor.y + monitor.height - 30;
        for (const auto& [x, y] : {std::pair{monitor.x + 30, monitor.y + 30},
                                   {right, monitor.y + 30},
                                   {monitor.x + 30, bottom},
                                   {right, bottom}}) {
            const size_t which = monitor == Desktop::left ? 0 : 1;
            const Area from = agent->buttons()[which].area;
            desktop.input.move(from.x + 22, from.y + 22);
            desktop.input.press(1);
            desktop.input.move(x, y);
            desktop.input.release(1);
            const int side = x < monitor.x + monitor.width / 2 ? monitor.x + 6 : right - 20;
            ASSERT_TRUE(await([&] {
                const auto buttons = agent->buttons();
                return buttons.size() == 2 && buttons[which].area.x == side;
            }));
            ASSERT_NO_FATAL_FAILURE(openAt(agent->buttons()[which].area));
            EXPECT_TRUE(holds(monitor, agent->menus()[0].area)) << agent->menus()[0].area;
            close();
        }
    }
}

TEST_F(Menus, AreOperatedByTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(open());
    strike({downKey, returnKey});
    expectCloses("after a choice");
    EXPECT_TRUE(await([&] { return agent->isCovered(); }));

    ASSERT_NO_FATAL_FAILURE(open());
    strike({downKey, downKey, downKey, downKey, rightKey});
    ASSERT_TRUE(await([&] { return agent->menus().size() == 2; }));
    EXPECT_TRUE(holds(Desktop::left, agent->menus()[1].area));
    strike({escapeKey});
    EXPECT_TRUE(await([&] { return agent->menus().size() == 1; }));
    strikeTogether({superKey, qKey});
    EXPECT_EQ(agent->process().awaitEnd(), 0);
}

TEST_F(Menus, NameWhatTheFirstItemDoes) {
    ASSERT_NO_FATAL_FAILURE(start());
    const auto titleOf = [&](const Area& area) {
        openAt(area);
        const Picture picture = title();
        close();
        return picture;
    };
    const auto pixels = [](const Picture& picture) {
        std::vector<uint32_t> all;
        for (int y = 0; y < picture.area().height; ++y)
            for (int x = 0; x < picture.area().width; ++x)
                all.push_back(picture.at(picture.area().x + x, picture.area().y + y));
        return all;
    };
    const Area icon = desktop.tray->icons().back();
    const auto clear = pixels(titleOf(icon));
    EXPECT_EQ(pixels(titleOf(agent->buttons()[1].area)), clear);
    agent->cover();
    const auto covered = pixels(titleOf(icon));
    EXPECT_NE(covered, clear);
    EXPECT_EQ(pixels(titleOf(agent->buttons()[1].area)), covered);
    agent->uncover();
    EXPECT_EQ(pixels(titleOf(icon)), clear);
}

TEST_F(Menus, LeaveTheHotKeyInForce) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(open());
    const Picture before = title();
    strikeTogether({controlKey, altKey, superKey, nKey});
    EXPECT_TRUE(await([&] { return agent->isCovered(); }));
    EXPECT_TRUE(await([&] { return desktop.screen.windows().back().instance == "menu"; }));
    EXPECT_EQ(title(), before) << "the title stands while the menu is open";
    strikeTogether({controlKey, altKey, superKey, nKey});
    EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); }));
    close();
}

TEST_F(Menus, OutliveTheirTrayAndTheirMonitor) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(open());
    desktop.tray.reset();
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_TRUE(await([&] { return agent->buttons().size() == 1; }));
    close();
    desktop.tray.emplace(desktop.display(), 100, 0);
    ASSERT_TRUE(await([&] { return desktop.tray->docked() == 1; }));
    agent->cover();
}

TEST_F(Menus, OpenFromATrayOnTheBus) {
    desktop.tray.reset();
    NotifierTray tray(desktop.bus->address());
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(await([&] { return !tray.items().empty(); }));
    tray.click(1000, 10);
    EXPECT_TRUE(await([&] { return agent->isCovered(); }));
    for (const auto& [x, y] : {std::pair{1000, 10}, {3190, 1020}}) {
        const int answered = tray.answered();
        desktop.input.move(x, y);
        desktop.input.press(3); // As it stays down, whoever has the panel has the mouse.
        tray.rightClick(x, y);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
        desktop.input.release(3);
        EXPECT_TRUE(await([&] { return tray.answered() > answered; })) << "while it is open";
        const Area menu = agent->menus()[0].area;
        EXPECT_TRUE(holds(x < 1920 ? Desktop::left : Desktop::right, menu)) << menu;
        EXPECT_TRUE(holds({menu.x - 2, menu.y - 2, menu.width + 4, menu.height + 4}, {x, y, 1, 1}))
            << menu;
        EXPECT_TRUE(await([&] {
            strike({escapeKey});
            return agent->menus().empty();
        }));
    }
    tray.click(1000, 10);
    EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); }));
}
