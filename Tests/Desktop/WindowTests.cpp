// The program's windows among other programs: what they hand over, give back and outlive.
#include "Harness/Browser.h"
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <algorithm>

using namespace Harness;

namespace {

constexpr uint8_t wheelDown = 5;
constexpr int settingsWidth = 540;
constexpr int settingsHeight = 660;
constexpr int supportTab = settingsWidth / 2 + 36; ///< The middle of the second tab.

/// The rows of the menu, by the steps down to them.
enum Row { support = 2, summit = 3, settings = 5, about = 6 };

struct Windows : OnDesktop {
    Windows() { desktop.input.move(960, 300); }

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

    /// Opens the settings as a desktop does when the user opens a program that runs already.
    void reopen() const {
        auto bus = QDBusConnection::connectToBus(QString::fromStdString(desktop.bus->address()),
                                                 "reopening");
        auto request =
            QDBusMessage::createMethodCall("com.vardek.NimbrelLite", "/com/vardek/NimbrelLite",
                                           "org.freedesktop.Application", "Activate");
        request << QVariantMap();
        EXPECT_EQ(bus.call(request).type(), QDBusMessage::ReplyMessage);
        QDBusConnection::disconnectFromBus("reopening");
    }
    bool haveKeyboard() const {
        const xcb_window_t window = desktop.screen.focus();
        const auto shown =
            client.ask(xcb_get_window_attributes_reply, xcb_get_window_attributes(client, window));
        return shown && shown->map_state == XCB_MAP_STATE_VIEWABLE &&
               area(window).width == settingsWidth;
    }
    void expectReopened() const {
        reopen();
        // The program may hear of this before it hears of what was done to its window.
        if (!await([&] { return haveKeyboard(); }, 2s)) reopen();
        ASSERT_TRUE(await([&] { return haveKeyboard(); }));
    }

    Area area(xcb_window_t window) const {
        return window > XCB_INPUT_FOCUS_POINTER_ROOT ? desktop.screen.areaOf(window) : Area();
    }
    std::string titleOf(xcb_window_t window) const {
        const auto name = client.ask(
            xcb_get_property_reply, xcb_get_property(client, 0, window, client.atom("_NET_WM_NAME"),
                                                     XCB_GET_PROPERTY_TYPE_ANY, 0, 100));
        return {static_cast<const char*>(xcb_get_property_value(name.get())),
                static_cast<size_t>(xcb_get_property_value_length(name.get()))};
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
    Picture drawn(const Area& place) const {
        Picture picture = desktop.screen.grab(place);
        EXPECT_TRUE(await([&] {
            picture = desktop.screen.grab(place);
            return picture.sharpestStep() > 50 &&
                   holdsFor(200ms, [&] { return desktop.screen.grab(place) == picture; });
        })) << place;
        return picture;
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
        ASSERT_TRUE(await([&] { return paper.isViewable(); }));
        paper.takeFocus();
        for (const auto& [row, byEscape] : {std::pair{about, true}, std::pair{summit, true},
                                            std::pair{about, false}, std::pair{settings, false}}) {
            SCOPED_TRACE(testing::Message() << row << (byEscape ? " by Escape" : "")
                                            << (managed ? " under a window manager" : ""));
            const xcb_window_t window = open(row);
            const Area frame = frameAround(window);
            const int below = Desktop::left.height - frame.bottom();
            EXPECT_NEAR(frame.y * 3, below * 2, managed ? 40 : 6) << frame;
            EXPECT_NEAR(2 * frame.x + frame.width, Desktop::left.width, 2) << frame;
            if (row == about) {
                agent->cover();
                drawn(area(window));
                agent->uncover();
            }
            if (byEscape)
                desktop.input.strike(escapeKey);
            else
                client.askToClose(window);
            EXPECT_TRUE(await([&] { return desktop.screen.focus() == paper.number(); }));
        }
        agent.reset();
    }
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

TEST_F(Windows, TheListOfTheEditionWindowScrollsAndNoCompositorChangesIt) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area all = area(open(summit));
    const Area list = {all.x + 40, all.y + 200, 400, 200};
    const Area header = {all.x + 20, all.y, 400, 90};
    const Area footer = {all.x + 20, all.bottom() - 50, 460, 50};
    desktop.input.move(list.middle());
    const Picture before = drawn(all);
    desktop.input.click(wheelDown);
    EXPECT_TRUE(await([&] { return desktop.screen.grab(list) != before.cut(list); }));
    for (const Area& still : {header, footer})
        EXPECT_TRUE(desktop.screen.grab(still) == before.cut(still)) << still;

    const Area middle = {all.x + 20, all.y + 60, all.width - 40, all.height - 120};
    desktop.input.move(960, 1000);
    const Picture scrolled = drawn(middle);
    const auto looksTheSame = [&] { return desktop.screen.grab(middle) == scrolled; };
    auto compositor = desktop.startCompositor();
    EXPECT_TRUE(await(looksTheSame));
    compositor.reset();
    EXPECT_TRUE(await(looksTheSame));
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return !looksTheSame(); }));
}

TEST_F(Windows, TheSettingsAreOneWindowThatKeepsItsTabAndPlace) {
    agent.emplace(desktop);
    TestWindow paper(desktop.display(), {200, 200, 400, 300});
    paper.show();
    ASSERT_NO_FATAL_FAILURE(expectReopened());
    const xcb_window_t window = desktop.screen.focus();
    const Area opened = area(window);
    EXPECT_GT(opened.height, settingsHeight);
    EXPECT_EQ(titleOf(window), "General");
    desktop.input.click({opened.x + supportTab, opened.y + 30, 1, 1});
    EXPECT_TRUE(await([&] { return titleOf(window) == "Support"; }));
    EXPECT_EQ(area(window), opened);

    const uint32_t moved[] = {300, 100};
    xcb_configure_window(client, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, moved);
    client.settle();
    const Area place = {300, 100, opened.width, opened.height};
    for (const bool closed : {false, true, true}) {
        if (closed) {
            client.askToClose(window);
            ASSERT_TRUE(await([&] { return agent->windows().empty(); }));
        }
        paper.raise();
        paper.takeFocus();
        ASSERT_NO_FATAL_FAILURE(expectReopened());
        EXPECT_EQ(desktop.screen.focus(), window);
        EXPECT_TRUE(await([&] {
            const auto all = desktop.screen.windows();
            const auto at = [&](xcb_window_t number) {
                return std::ranges::find(all, number, &ScreenWindow::number);
            };
            return area(window) == place && at(paper.number()) < at(window);
        })) << area(window);
        EXPECT_EQ(titleOf(window), "Support");
    }

    agent->cover();
    EXPECT_LT(desktop.screen.grab(place).sharpestStep(), 10);
    desktop.input.strike(escapeKey);
    agent->uncover();
    EXPECT_EQ(agent->windows().size(), 1u);
}

TEST_F(Windows, TheSettingsComeBackFromWhereverAWindowManagerPutThem) {
    const auto manager = desktop.startWindowManager();
    agent.emplace(desktop);
    TestWindow paper(desktop.display(), {200, 200, 400, 300});
    paper.show();
    const auto askManager = [&](xcb_window_t about, const char* type, uint32_t first,
                                uint32_t second = 0) {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = about;
        message.type = client.atom(type);
        message.data.data32[0] = first;
        message.data.data32[1] = second;
        xcb_send_event(client, 0, client.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
        client.settle();
    };
    ASSERT_NO_FATAL_FAILURE(expectReopened());
    const xcb_window_t window = desktop.screen.focus();
    const Area opened = area(window);
    const uint32_t wishes[] = {static_cast<uint32_t>(opened.x + 100), 900, 900};
    xcb_configure_window(client, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         wishes);
    client.settle();
    EXPECT_TRUE(await([&] { return area(window).x >= opened.x + 90; })) << area(window);
    const Area moved = area(window);
    EXPECT_EQ(moved.width, opened.width);
    EXPECT_EQ(moved.height, opened.height);

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
        {"destroyed",
         [&](xcb_window_t shown) {
             xcb_destroy_window(client, shown);
             client.settle();
         }},
    };
    for (const auto& [way, putAway] : ways) {
        SCOPED_TRACE(way);
        putAway(desktop.screen.focus());
        ASSERT_TRUE(await([&] { return !haveKeyboard(); }));
        ASSERT_NO_FATAL_FAILURE(expectReopened());
        if (std::string(way).starts_with("closed")) {
            EXPECT_EQ(area(window), moved);
        }
    }
    EXPECT_EQ(agent->process().errors(), "");
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
    EXPECT_EQ(agent->process().output() + agent->process().errors(), "");
}
