// The settings window: an ordinary window, made once.
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <algorithm>

using namespace Harness;

namespace {

constexpr int contentWidth = 540;
constexpr int contentHeight = 660;
constexpr int supportTab = contentWidth / 2 + 36; ///< The middle of the second tab.

struct Settings : BesidePaper {
    /// As a desktop does when the user opens a program that runs already.
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

    std::vector<ScreenWindow> windows() const {
        auto all = desktop.screen.windows();
        std::erase_if(all, [](const auto& window) {
            return !window.viewable || window.overrideRedirect ||
                   window.instance != "nimbrel-lite" || window.area.width < contentWidth;
        });
        return all;
    }

    /// Opens the window, and waits until it has the keyboard.
    void open() const {
        reopen();
        ASSERT_TRUE(await([&] { return windows().size() == 1; }));
        ASSERT_TRUE(await([&] { return desktop.screen.focus() == windows()[0].number; }));
    }

    /// As a window manager's close button does.
    void close(xcb_window_t window) const {
        const XClient& client = paper.client();
        client.send(window, client.atom("WM_PROTOCOLS"), XCB_EVENT_MASK_NO_EVENT,
                    {client.atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
    }

    std::string title() const {
        const XClient& client = paper.client();
        const auto name =
            client.ask(xcb_get_property_reply, xcb_get_property(client, 0, windows().at(0).number,
                                                                client.atom("_NET_WM_NAME"),
                                                                XCB_GET_PROPERTY_TYPE_ANY, 0, 100));
        return {static_cast<const char*>(xcb_get_property_value(name.get())),
                static_cast<size_t>(xcb_get_property_value_length(name.get()))};
    }
};

} // namespace

TEST_F(Settings, IsOneWindowThatEachRequestBringsToTheFront) {
    agent.emplace(desktop);
    ASSERT_NO_FATAL_FAILURE(open());
    const ScreenWindow first = windows()[0];
    EXPECT_EQ(first.area.width, contentWidth);
    EXPECT_GT(first.area.height, contentHeight);

    paper.raise();
    paper.takeFocus();
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_EQ(windows()[0].number, first.number);
    EXPECT_TRUE(await([&] {
        const auto all = desktop.screen.windows();
        const auto at = [&](xcb_window_t number) {
            return std::ranges::find(all, number, &ScreenWindow::number);
        };
        return at(paper.number()) < at(first.number);
    }));
}

TEST_F(Settings, KeepsItsTabAndPlaceUntilItIsOpenedAgain) {
    agent.emplace(desktop);
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_EQ(title(), "General");
    const Area general = windows()[0].area;
    click({general.x + supportTab, general.y + 30, 1, 1});
    EXPECT_TRUE(await([&] { return title() == "Support"; }));
    EXPECT_EQ(windows()[0].area, general);

    const uint32_t moved[] = {300, 100};
    xcb_configure_window(paper.client(), windows()[0].number,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, moved);
    paper.client().settle();
    const Area place = {300, 100, general.width, general.height};
    ASSERT_TRUE(await([&] { return windows()[0].area == place; }));
    for (int i = 0; i < 3; ++i) {
        close(windows()[0].number);
        ASSERT_TRUE(await([&] { return windows().empty(); }));
        ASSERT_NO_FATAL_FAILURE(open());
        EXPECT_TRUE(await([&] { return windows()[0].area == place; })) << i;
        EXPECT_EQ(title(), "Support");
    }
}

TEST_F(Settings, LiesUnderTheCoverAndOutlivesEscape) {
    agent.emplace(desktop);
    ASSERT_NO_FATAL_FAILURE(open());
    agent->cover();
    EXPECT_LT(desktop.screen.grab(windows()[0].area).sharpestStep(), 10);
    desktop.input.strike(escapeKey);
    agent->uncover();
    EXPECT_EQ(windows().size(), 1u);
}

TEST_F(Settings, ComeToTheFrontFromWhereverTheyWerePutAway) {
    const auto manager = desktop.startWindowManager();
    agent.emplace(desktop);
    const XClient& client = paper.client();
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
    const auto hasKeyboard = [&] {
        const auto place =
            client.ask(xcb_get_geometry_reply, xcb_get_geometry(client, desktop.screen.focus()));
        return place && place->width == contentWidth;
    };
    reopen();
    ASSERT_TRUE(await(hasKeyboard));
    const std::pair<const char*, std::function<void(xcb_window_t)>> ways[] = {
        {"minimised",
         [&](xcb_window_t window) {
             // The program may still be asking for the keyboard, which brings the window back.
             await([&] {
                 askManager(window, "WM_CHANGE_STATE", 3);
                 return holdsFor(200ms, [&] { return !hasKeyboard(); });
             });
         }},
        {"shaded",
         [&](xcb_window_t window) {
             askManager(window, "_NET_WM_STATE", 1, client.atom("_NET_WM_STATE_SHADED"));
             // The manager hands the keyboard round when it has done so.
             await([&] {
                 paper.takeFocus();
                 return holdsFor(200ms, [&] { return !hasKeyboard(); });
             });
         }},
        {"on another workspace",
         [&](xcb_window_t) { askManager(client.root(), "_NET_CURRENT_DESKTOP", 1); }},
        {"destroyed",
         [&](xcb_window_t window) {
             xcb_destroy_window(client, window);
             client.settle();
         }},
    };
    for (const auto& [way, putAway] : ways) {
        SCOPED_TRACE(way);
        putAway(desktop.screen.focus());
        ASSERT_TRUE(await([&] { return !hasKeyboard(); }));
        const auto isBack = [&] {
            const auto shown =
                client.ask(xcb_get_window_attributes_reply,
                           xcb_get_window_attributes(client, desktop.screen.focus()));
            return hasKeyboard() && shown && shown->map_state == XCB_MAP_STATE_VIEWABLE;
        };
        reopen();
        // The program may hear of this before it hears of what was done to its window.
        if (!await(isBack, 2s)) reopen();
        EXPECT_TRUE(await(isBack));
    }
    EXPECT_EQ(agent->process().errors(), "");
}

TEST_F(Settings, KeepsItsPlaceUnderAWindowManager) {
    const auto manager = desktop.startWindowManager();
    agent.emplace(desktop);
    reopen();
    // The manager frames the window: it is found by the keyboard.
    const auto focused = [&] {
        const XClient& client = paper.client();
        const auto geometry =
            client.ask(xcb_get_geometry_reply, xcb_get_geometry(client, desktop.screen.focus()));
        const auto place = client.ask(
            xcb_translate_coordinates_reply,
            xcb_translate_coordinates(client, desktop.screen.focus(), client.root(), 0, 0));
        return Area{place->dst_x, place->dst_y, geometry->width, geometry->height};
    };
    ASSERT_TRUE(await([&] {
        return desktop.screen.focus() > XCB_INPUT_FOCUS_POINTER_ROOT &&
               focused().width == contentWidth;
    }));
    const xcb_window_t window = desktop.screen.focus();
    const Area place = focused();
    for (int i = 0; i < 5; ++i) {
        close(window);
        ASSERT_TRUE(await([&] { return desktop.screen.focus() != window; }));
        reopen();
        ASSERT_TRUE(await([&] { return desktop.screen.focus() == window; }));
        EXPECT_EQ(focused(), place) << i;
    }
}
