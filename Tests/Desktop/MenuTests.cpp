#include "Harness/NotifierTray.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"

using namespace Harness;

namespace {

struct Menus : OnDesktop {
    Area icon() { return desktop.tray->icons().back(); }

    /// On another spot than the last time: two quick clicks on one spot are a double click.
    void openAt(Area area) {
        area.x += m_aside = -m_aside;
        click(area, 3);
        ASSERT_SOON(agent->menus().size() == 1);
    }
    void close() const {
        strike({escapeKey});
        EXPECT_SOON(agent->menus().empty());
    }

    /// What stands in the first row of the open menu, left of its keys, once it is painted.
    std::vector<uint32_t> title() const {
        const Area menu = agent->menus().at(0).area;
        const Area row = {menu.x + 12, menu.y + 8, menu.width / 2, 18};
        EXPECT_SOON(desktop.screen.grab(row).sharpestStep() > 60);
        Picture picture = desktop.screen.grab(row);
        while (!holdsFor(50ms, [&] { return desktop.screen.grab(row) == picture; }))
            picture = desktop.screen.grab(row);
        return picture.pixels();
    }

    const Paper paper{desktop, 0x4682B4};

private:
    int m_aside = 5;
};

} // namespace

TEST_F(Menus, AreOperatedByTheKeyboardAndNameWhatTheFirstItemDoes) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openAt(icon()));
    EXPECT_EQ(agent->menus()[0].area.x, icon().x);
    EXPECT_EQ(agent->menus()[0].area.bottom(), icon().y);
    const auto clear = title();
    strike({downKey, returnKey});
    EXPECT_SOON(agent->menus().empty());
    expectCovered(true);
    ASSERT_NO_FATAL_FAILURE(openAt(agent->buttons()[1].area));
    EXPECT_NE(title(), clear);
    close();

    agent->uncover();
    ASSERT_NO_FATAL_FAILURE(openAt(icon()));
    for (const bool covered : {true, false}) {
        desktop.input.strikeChord();
        expectCovered(covered);
        EXPECT_SOON(desktop.screen.windows().back().instance == "menu");
        EXPECT_EQ(title(), clear) << "the title stands while the menu is open";
    }
    click({900, 200, 1, 1});
    EXPECT_SOON(agent->menus().empty());

    ASSERT_NO_FATAL_FAILURE(openAt(icon()));
    strike({downKey, downKey, downKey, downKey, rightKey});
    ASSERT_SOON(agent->menus().size() == 2);
    strike({escapeKey});
    EXPECT_SOON(agent->menus().size() == 1);
    desktop.input.strikeTogether({altKey, superKey, qKey});
    EXPECT_FOR(200ms, agent->menus().size() == 1) << "a modifier too many";
    desktop.input.strikeTogether({superKey, qKey});
    EXPECT_EQ(agent->process().awaitEnd(), 0);
}

TEST_F(Menus, OpenFromATrayOnTheBus) {
    desktop.tray.reset();
    NotifierTray tray(desktop.bus->address());
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_SOON(!tray.items().empty());
    for (const auto& [x, y] : {std::pair{1000, 10}, {3190, 1020}}) {
        const int answered = tray.answered();
        desktop.input.move(x, y);
        desktop.input.press(3); // As it stays down, whoever has the panel has the mouse.
        tray.rightClick(x, y);
        ASSERT_SOON(agent->menus().size() == 1);
        desktop.input.release(3);
        EXPECT_SOON(tray.answered() > answered) << "while it is open";
        const Area menu = agent->menus()[0].area;
        EXPECT_TRUE((x < 1920 ? Desktop::left : Desktop::right).contains(menu)) << menu;
        EXPECT_TRUE(menu.grown(2).contains({x, y, 1, 1})) << menu;
        EXPECT_TRUE(await([&] {
            strike({escapeKey});
            return agent->menus().empty();
        }));
    }
}
