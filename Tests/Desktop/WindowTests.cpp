// The program's windows among other programs: what they hand over, give back and outlive.
#include "Harness/OnDesktop.h"

#include <algorithm>

using namespace Harness;

namespace {

constexpr int settingsWidth = 540;
constexpr int supportTab = settingsWidth / 2 + 36; ///< The middle of the second tab.

struct Windows : OnDesktop {
    Windows() { desktop.input.move(960, 300); }

    /// Chooses a row, and waits until its window has the keyboard; gives that window.
    xcb_window_t open(int row) const {
        const xcb_window_t before = desktop.screen.focus();
        agent->choose(row);
        EXPECT_TRUE(await([&] {
            const xcb_window_t now = desktop.screen.focus();
            return now > XCB_INPUT_FOCUS_POINTER_ROOT && now != before && area(now).width > 200;
        })) << row;
        return desktop.screen.focus();
    }

    /// Opens the settings as a desktop does when the user opens a program that runs already.
    void reopen() const {
        desktop.run({"gdbus", "call", "--session", "--dest", "com.vardek.NimbrelLite",
                     "--object-path", "/com/vardek/NimbrelLite", "--method",
                     "org.freedesktop.Application.Activate", "{}"});
    }
    bool haveKeyboard() const {
        const xcb_window_t window = desktop.screen.focus();
        return desktop.screen.isViewable(window) && area(window).width == settingsWidth;
    }
    void expectReopened() const {
        reopen();
        // The program may hear of this before it hears of what was done to its window.
        if (!await([&] { return haveKeyboard(); }, 2s)) reopen();
        ASSERT_SOON(haveKeyboard());
    }

    Area area(xcb_window_t window) const {
        return window > XCB_INPUT_FOCUS_POINTER_ROOT ? desktop.screen.areaOf(window) : Area();
    }

    void configure(xcb_window_t window, uint16_t mask, const std::vector<uint32_t>& values) const {
        xcb_configure_window(client, window, mask, values.data());
        client.settle();
    }

    XClient client{desktop.display()};
};

} // namespace

TEST_F(Windows, StandInTheMiddleAndGiveTheKeyboardBackToWhoHadIt) {
    for (const bool managed : {false, true}) {
        const auto manager = managed ? desktop.startWindowManager() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        TestWindow paper(desktop.display(), {200, 200, 400, 300}, TestWindow::Kind::Managed);
        paper.show();
        ASSERT_SOON(desktop.screen.isViewable(paper.number()));
        paper.takeFocus();
        for (const auto& [row, byEscape] :
             {std::pair{Row::about, true}, {Row::summit, true}, {Row::settings, false}}) {
            SCOPED_TRACE(testing::Message() << row << (managed ? " under a window manager" : ""));
            const xcb_window_t window = open(row);
            const Area frame = desktop.screen.frameAround(window);
            const int below = Desktop::left.height - frame.bottom();
            EXPECT_NEAR(frame.y * 3, below * 2, managed ? 40 : 6) << frame;
            EXPECT_NEAR(2 * frame.x + frame.width, Desktop::left.width, 2) << frame;
            if (row == Row::about) {
                agent->cover();
                EXPECT_SOON(desktop.screen.grab(area(window)).sharpestStep() > 50);
                agent->uncover();
            }
            if (byEscape)
                strike({escapeKey});
            else
                client.askToClose(window);
            EXPECT_SOON(desktop.screen.focus() == paper.number());
        }
    }
}

TEST_F(Windows, TheSettingsComeBackFromWhereverAWindowManagerPutThem) {
    const auto manager = desktop.startWindowManager();
    agent.emplace(desktop);
    TestWindow paper(desktop.display(), {200, 200, 400, 300});
    paper.show();
    const auto askManager = [&](xcb_window_t about, const char* type, uint32_t first,
                                uint32_t second = 0) {
        client.send(client.root(), client.atom(type), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                    {first, second, 0, 0, 0}, about);
        client.settle();
    };
    ASSERT_NO_FATAL_FAILURE(expectReopened());
    const xcb_window_t window = desktop.screen.focus();
    const Area opened = area(window);
    configure(window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
              {static_cast<uint32_t>(opened.x + 100), 900, 900});
    EXPECT_SOON(area(window).x >= opened.x + 90) << area(window);
    const Area moved = area(window);
    EXPECT_EQ(moved.width, opened.width);
    EXPECT_EQ(moved.height, opened.height);
    click({moved.x + supportTab, moved.y + 30, 1, 1});
    const auto showsSupport = [&] {
        return desktop.screen.textOf(desktop.screen.focus(), "_NET_WM_NAME") == "Support";
    };
    EXPECT_SOON(showsSupport());
    EXPECT_EQ(area(window), moved);

    const std::pair<const char*, std::function<void(xcb_window_t)>> ways[] = {
        {"closed", [&](xcb_window_t shown) { client.askToClose(shown); }},
        {"closed again", [&](xcb_window_t shown) { client.askToClose(shown); }},
        {"minimised",
         [&](xcb_window_t shown) {
             // The program may still be asking for the keyboard, which brings the window back.
             await([&] {
                 askManager(shown, "WM_CHANGE_STATE", 3);
                 return holdsFor(200ms, [&] { return !haveKeyboard(); });
             });
         }},
        {"shaded",
         [&](xcb_window_t shown) {
             askManager(shown, "_NET_WM_STATE", 1, client.atom("_NET_WM_STATE_SHADED"));
             // The manager hands the keyboard round when it has done so.
             await([&] {
                 paper.takeFocus();
                 return holdsFor(200ms, [&] { return !haveKeyboard(); });
             });
         }},
        {"on another workspace",
         [&](xcb_window_t) { askManager(client.root(), "_NET_CURRENT_DESKTOP", 1); }},
        {"destroyed", [&](xcb_window_t shown) { xcb_destroy_window(client, shown); }},
    };
    for (const auto& [way, putAway] : ways) {
        SCOPED_TRACE(way);
        putAway(desktop.screen.focus());
        client.settle();
        ASSERT_SOON(!haveKeyboard());
        ASSERT_NO_FATAL_FAILURE(expectReopened());
        EXPECT_SOON(showsSupport());
        if (std::string(way).starts_with("closed")) {
            EXPECT_EQ(desktop.screen.focus(), window);
            EXPECT_EQ(area(window), moved);
        }
    }
    agent->cover();
    EXPECT_LT(desktop.screen.grab(moved).sharpestStep(), 10);
    EXPECT_EQ(agent->process().errors(), "");
}
