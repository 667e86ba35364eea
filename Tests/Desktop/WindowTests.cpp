// The program's windows among other programs: what they hand over, give back and outlive.
#include "Harness/Browser.h"
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"

using namespace Harness;

namespace {

constexpr uint8_t wheelDown = 5;

/// The rows of the menu, by the steps down to them.
enum Row { support = 2, summit = 3, settings = 5, about = 6 };

struct Windows : OnDesktop {
    /// Chooses a row, and waits until its window has the keyboard; gives that window.
    xcb_window_t open(Row row) const {
        const xcb_window_t before = desktop.screen.focus();
        agent->choose(row);
        EXPECT_TRUE(await([&] {
            const xcb_window_t now = desktop.screen.focus();
            return now > XCB_INPUT_FOCUS_POINTER_ROOT && now != before && area(now).width > 200;
        })) << row;
        return desktop.screen.focus();
    }

    /// As a window manager's close button does.
    void close(xcb_window_t window) const {
        client.send(window, client.atom("WM_PROTOCOLS"), XCB_EVENT_MASK_NO_EVENT,
                    {client.atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
    }

    /// On the screen, without the frame of a window manager. Empty once the window has gone.
    Area area(xcb_window_t window) const {
        const auto geometry = client.ask(xcb_get_geometry_reply, xcb_get_geometry(client, window));
        const auto place =
            client.ask(xcb_translate_coordinates_reply,
                       xcb_translate_coordinates(client, window, client.root(), 0, 0));
        if (!geometry || !place) return {};
        return {place->dst_x, place->dst_y, geometry->width, geometry->height};
    }

    /// The child of the root that the window stands in.
    Area frameAround(xcb_window_t window) const {
        for (;;) {
            const auto tree = client.ask(xcb_query_tree_reply, xcb_query_tree(client, window));
            if (!tree || tree->parent == client.root()) return area(window);
            window = tree->parent;
        }
    }

    /// What stands there once it has been drawn and has come to rest.
    Picture drawn(const Area& area) const {
        Picture picture = desktop.screen.grab(area);
        EXPECT_TRUE(await([&] {
            picture = desktop.screen.grab(area);
            return picture.sharpestStep() > 50 &&
                   holdsFor(200ms, [&] { return desktop.screen.grab(area) == picture; });
        })) << area;
        return picture;
    }

    XClient client{desktop.display()};
};

} // namespace

TEST_F(Windows, GiveTheKeyboardBackToWhoHadIt) {
    for (const bool managed : {false, true}) {
        const auto manager = managed ? desktop.startWindowManager() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        TestWindow paper(desktop.display(), {200, 200, 400, 300}, TestWindow::Kind::Managed);
        paper.show();
        ASSERT_TRUE(await([&] { return paper.isViewable(); }));
        paper.takeFocus();
        for (const auto& [row, byEscape] : {std::pair{about, true}, std::pair{summit, true},
                                            std::pair{about, false}, std::pair{settings, false}}) {
            const xcb_window_t window = open(row);
            if (byEscape)
                desktop.input.strike(escapeKey);
            else
                close(window);
            EXPECT_TRUE(await([&] { return desktop.screen.focus() == paper.number(); }))
                << row << (byEscape ? " by Escape" : "")
                << (managed ? " under a window manager" : "");
        }
        agent.reset();
    }
}

TEST_F(Windows, TheWholeFrameStandsInTheMiddleAndALittleAbove) {
    for (const bool managed : {false, true}) {
        const auto manager = managed ? desktop.startWindowManager() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        desktop.input.move(960, 300);
        for (const Row row : {summit, about, settings}) {
            open(row);
            const Area frame = frameAround(desktop.screen.focus());
            const int below = Desktop::left.height - frame.bottom();
            EXPECT_NEAR(frame.y * 3, below * 2, managed ? 40 : 6) << row << managed << frame;
            EXPECT_NEAR(2 * frame.x + frame.width, Desktop::left.width, 2) << row;
            if (row != settings) desktop.input.strike(escapeKey);
        }
        agent.reset();
    }
}

TEST_F(Windows, AboutIsSeenThoughEverythingIsCovered) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    drawn(area(open(about)));
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return agent->panels().empty(); }));
}

TEST_F(Windows, ThrowAShadowThatFadesAllTheWay) {
    const auto compositor = desktop.startCompositor();
    TestWindow paper(desktop.display(), Desktop::left);
    paper.paint(white);
    paper.show();
    ASSERT_NO_FATAL_FAILURE(start());
    const Area all = area(open(summit));
    const Area under = {all.x + all.width / 2, all.bottom() - 12, 1, 12};
    EXPECT_TRUE(await([&] {
        const Picture picture = desktop.screen.grab(under);
        int last = picture.luminance(under.x, under.y);
        if (last > 210) return false;
        for (int y = under.y + 1; y < under.bottom(); ++y) {
            const int here = picture.luminance(under.x, y);
            if (here <= last && here < 250) return false;
            last = here;
        }
        return last > 250;
    }));
}

TEST_F(Windows, TheListOfTheEditionWindowScrollsBetweenItsHeaderAndFooter) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area all = area(open(summit));
    const Area list = {all.x + 40, all.y + 200, 400, 200};
    const Area header = {all.x + 20, all.y, 400, 90};
    const Area footer = {all.x + 20, all.bottom() - 50, 460, 50};
    desktop.input.move(list.x + 200, list.y + 100);
    const Picture before = drawn(all);
    desktop.input.click(wheelDown);
    EXPECT_TRUE(await([&] { return desktop.screen.grab(list) != before.cut(list); }));
    for (const Area& still : {header, footer})
        EXPECT_TRUE(desktop.screen.grab(still) == before.cut(still)) << still;
}

TEST_F(Windows, KeepTheirLooksAsACompositorComesAndGoes) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area all = area(open(summit));
    const Area middle = {all.x + 20, all.y + 60, all.width - 40, all.height - 120};
    desktop.input.move(960, 1000);
    const Picture before = drawn(middle);
    const auto looksTheSame = [&] { return desktop.screen.grab(middle) == before; };
    auto compositor = desktop.startCompositor();
    EXPECT_TRUE(await(looksTheSame));
    compositor.reset();
    EXPECT_TRUE(await(looksTheSame));
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return !looksTheSame(); }));
}

TEST_F(Windows, TheSettingsMoveUnderAWindowManagerAndDoNotGrow) {
    const auto manager = desktop.startWindowManager();
    ASSERT_NO_FATAL_FAILURE(start());
    const xcb_window_t window = open(settings);
    const Area opened = area(window);
    const uint32_t wishes[] = {uint32_t(opened.x + 100), 900, 900};
    xcb_configure_window(client, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         wishes);
    client.settle();
    EXPECT_TRUE(await([&] { return area(window).x >= opened.x + 90; })) << area(window);
    EXPECT_EQ(area(window).width, opened.width);
    EXPECT_EQ(area(window).height, opened.height);
}

TEST_F(Windows, SupportOpensItsPageWithoutAWord) {
    const Browser browser(desktop);
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(support)); // Nothing here can open a page yet.
    browser.install();
    ASSERT_NO_FATAL_FAILURE(agent->choose(support));
    EXPECT_TRUE(await([&] {
        return browser.visited() == "https://vardek.example/support-vardek/\n";
    })) << browser.visited();
    EXPECT_EQ(agent->process().output(), "");
    EXPECT_EQ(agent->process().errors(), "");
}
