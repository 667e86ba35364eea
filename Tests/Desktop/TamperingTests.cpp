// What the hands of another program can do to the windows of this one.
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"
#include "Harness/Times.h"

#include <xcb/composite.h>
#include <xcb/shape.h>

using namespace Harness;

namespace {

using Attack = std::function<void(const XClient&, xcb_window_t)>;

Attack configured(uint16_t mask, const std::vector<uint32_t>& values) {
    return [=](const XClient& foe, xcb_window_t victim) {
        xcb_configure_window(foe, victim, mask, values.data());
    };
}

Attack cut(xcb_shape_sk_t kind, const std::vector<xcb_rectangle_t>& kept) {
    return [=](const XClient& foe, xcb_window_t victim) {
        xcb_shape_rectangles(foe, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, victim, 0, 0,
                             static_cast<uint32_t>(kept.size()), kept.data());
    };
}

const std::vector<std::pair<const char*, Attack>> attacks = {
    {"lower", configured(XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_BELOW})},
    {"move", configured(XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, {3000, 900})},
    {"shrink", configured(XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, {10, 10})},
    {"border", configured(XCB_CONFIG_WINDOW_BORDER_WIDTH, {300})},
    {"unmap", [](const XClient& foe, xcb_window_t victim) { xcb_unmap_window(foe, victim); }},
    {"destroy", [](const XClient& foe, xcb_window_t victim) { xcb_destroy_window(foe, victim); }},
    {"adopt",
     [](const XClient& foe, xcb_window_t victim) {
         const xcb_window_t jail = xcb_generate_id(foe);
         xcb_create_window(foe, XCB_COPY_FROM_PARENT, jail, foe.root(), 0, 0, 1, 1, 0,
                           XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
         xcb_reparent_window(foe, victim, jail, 0, 0);
     }},
    {"cut out", cut(XCB_SHAPE_SK_BOUNDING, {{0, 0, 10, 10}})},
    {"clip", cut(XCB_SHAPE_SK_CLIP, {})},
    {"take the input", cut(XCB_SHAPE_SK_INPUT, {{0, 0, 4000, 4000}})},
    {"keep from the screen",
     [](const XClient& foe, xcb_window_t victim) {
         xcb_composite_query_version(foe, 0, 4);
         xcb_composite_redirect_window(foe, victim, XCB_COMPOSITE_REDIRECT_MANUAL);
     }},
    {"see through",
     [](const XClient& foe, xcb_window_t victim) {
         foe.put(victim, "_NET_WM_WINDOW_OPACITY", XCB_ATOM_CARDINAL, {0x10000000});
     }},
};

/// A window as one look at the server finds it, in numbers; none where there is no such window.
using Look = std::vector<int>;

Look lookAt(const XClient& client, xcb_window_t window, xcb_atom_t opacity) {
    const auto attributesAsked = xcb_get_window_attributes(client, window);
    const auto geometryAsked = xcb_get_geometry(client, window);
    const auto extentsAsked = xcb_shape_query_extents(client, window);
    const auto inputAsked = xcb_shape_get_rectangles(client, window, XCB_SHAPE_SK_INPUT);
    const auto opacityAsked = xcb_get_property(client, 0, window, opacity, XCB_ATOM_ANY, 0, 1);
    const auto attributes = client.ask(xcb_get_window_attributes_reply, attributesAsked);
    const auto place = client.ask(xcb_get_geometry_reply, geometryAsked);
    const auto extents = client.ask(xcb_shape_query_extents_reply, extentsAsked);
    const auto input = client.ask(xcb_shape_get_rectangles_reply, inputAsked);
    const auto property = client.ask(xcb_get_property_reply, opacityAsked);
    if (!attributes || !place || !extents || !input || !property) return {};
    Look look = {attributes->map_state,
                 place->x,
                 place->y,
                 place->width,
                 place->height,
                 place->border_width,
                 extents->bounding_shaped,
                 extents->clip_shaped,
                 property->type != XCB_NONE};
    const auto* rectangles = xcb_shape_get_rectangles_rectangles(input.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(input.get()); ++i) {
        const auto& [x, y, width, height] = rectangles[i];
        look.insert(look.end(), {x, y, width, height});
    }
    return look;
}

struct TimedTampering : OnDesktop, testing::WithParamInterface<bool> {
    std::vector<Look> lookAtAll(const Agent::Windows& windows) const {
        std::vector<Look> looks;
        for (const ScreenWindow& window : windows)
            looks.push_back(lookAt(eye, window.number, opacity));
        std::ranges::sort(looks); // Their order may have changed.
        return looks;
    }
    bool areButtonsOnTop() const {
        const auto windows = desktop.screen.windows();
        const auto top = std::find_if(windows.rbegin(), windows.rend(),
                                      [](const auto& each) { return each.viewable; });
        return top->instance.starts_with("button:") && (top + 1)->instance.starts_with("button:");
    }

    /// Does it to all of these windows. Gives the time until the last look that is not whole.
    double suffer(const Attack& attack, const Agent::Windows& victims,
                  const std::function<bool()>& isWhole) {
        const auto begin = Clock::now();
        Process({"true"}).awaitEnd();
        another.addSince(begin);
        const XClient foe(desktop.display());
        for (const ScreenWindow& victim : victims)
            attack(foe, victim.number);
        foe.settle();
        const auto start = Clock::now();
        auto lastHarm = start;
        const auto quiet = GetParam() ? 60ms : 10ms; // A compositor shows late what happened.
        while (Clock::now() - lastHarm < quiet && millisecondsSince(start) < 5000)
            if (!isWhole()) lastHarm = Clock::now();
        return std::chrono::duration<double, std::milli>(lastHarm - start).count();
    }

    /// That all attacks on these windows are undone: they are as they were, and this holds.
    void expectUndone(const std::string& what, Agent::Windows (Agent::*victims)() const,
                      const std::function<bool()>& holds) {
        const auto before = lookAtAll((*agent.*victims)());
        const auto isWhole = [&] { return holds() && lookAtAll((*agent.*victims)()) == before; };
        ASSERT_SOON(before.size() == 2 && isWhole());
        for (const auto& [name, attack] : attacks) {
            // Against these the key and the icon are left.
            const bool isLetBe =
                std::string(name) == "see through" || std::string(name) == "keep from the screen";
            if (isLetBe && victims == &Agent::buttons) continue;
            Times times;
            for (int round = 0; round < rounds(3, 30); ++round) {
                times.add(suffer(attack, (*agent.*victims)(), isWhole));
                ASSERT_SOON(isWhole()) << name << ", " << what;
            }
            std::cout << name << ", " << what << ": undone after " << times
                      << "; to run a program takes " << another << "\n";
            EXPECT_LE(times.at(0.5), 50 + 10 * another.at(0.5)) << name << ", " << what;
            EXPECT_LE(times.at(0.9), 100 + 20 * another.at(1)) << name << ", " << what;
        }
    }

    Times another; ///< What others keep the machine busy with makes any program wait.

    const XClient eye{desktop.display()};
    const xcb_atom_t opacity = eye.atom("_NET_WM_WINDOW_OPACITY");
    std::unique_ptr<Process> compositor = GetParam() ? desktop.startCompositor() : nullptr;
};

} // namespace

TEST_P(TimedTampering, IsUndone) {
    Paper paper(desktop, marker);
    ASSERT_NO_FATAL_FAILURE(start());
    const auto areOnTop = [&] { return areButtonsOnTop(); };
    ASSERT_NO_FATAL_FAILURE(expectUndone("buttons", &Agent::buttons, areOnTop));
    agent->cover();
    ASSERT_NO_FATAL_FAILURE(expectUndone("buttons while covered", &Agent::buttons, areOnTop));
    ASSERT_NO_FATAL_FAILURE(expectUndone("covers", &Agent::visibleCovers, [&] {
        return !desktop.screen.grab({800, 500, 1, 1}).isAll(marker);
    }));
    // Still alive under the blur, not a plain sheet that stands in for it.
    paper.expectShownThrough(desktop.screen, Desktop::left);
}

INSTANTIATE_TEST_SUITE_P(Timed, TimedTampering, testing::Bool(), [](const auto& each) {
    return each.param ? "WithACompositor" : "WithoutACompositor";
});
