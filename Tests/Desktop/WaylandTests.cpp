// The program in a session of Wayland: the same stories with each of two compositors.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/ScreenReader.h"
#include "Harness/ShortcutPortal.h"
#include "Harness/WaylandDesk.h"

#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr int sharp = 10;  ///< No blurred picture has such a step between neighbours.
constexpr int clear = 100; ///< All that the editors show has one.

constexpr const char* words[] = {"ACCOUNT", "PASSWORD", "MERIDIAN",
                                 "LANTERN", "HARBOUR",  "QUARTER"};

/// A program that all of one output belongs to.
struct Editor {
    Editor(const WaylandDesk& its, const Area& area, const std::string& platform)
        : desk(its), home(area) {
        open(platform, 150);
    }
    void open(const std::string& platform, double brightness) {
        desk.hand().move(home.middle()); // Where the compositor puts it.
        Environment environment = desk.environment();
        environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent";
        process.emplace(std::vector<std::string>{EDITOR, "-platform", platform}, environment);
        EXPECT_SOON(desk.grab(home).mean() > brightness && !process->output().empty());
        EXPECT_SOON(notices([&] { click(); }, 500ms));
    }

    /// Where its caret is, how far it is scrolled, and what was typed.
    std::string state() const {
        const std::string all = process->output();
        return all.substr(all.rfind('\n', all.size() - 2) + 1);
    }
    void click() {
        line = !line;
        desk.hand().click({home.x + 300, 200 + 100 * line, 1, 1});
    }
    bool notices(const std::function<void()>& work, std::chrono::milliseconds within = 10s) const {
        const std::string before = state();
        work();
        return await([&] { return state() != before; }, within);
    }
    bool hears(std::chrono::milliseconds within = 10s) const {
        return notices([&] { desk.hand().strike(aKey); }, within);
    }
    void expectInput() {
        EXPECT_TRUE(notices([&] { click(); }));
        EXPECT_TRUE(hears());
        EXPECT_TRUE(notices([&] { desk.hand().click(5); }));
    }

    const WaylandDesk& desk;
    const Area home;
    std::optional<Process> process;
    bool line = false;
};

struct Wayland : testing::TestWithParam<WaylandDesk::Kind> {
    static constexpr Area left = WaylandDesk::left, right = WaylandDesk::right;
    static bool isKWin() { return GetParam() == WaylandDesk::Kind::KWin; }

    ~Wayland() override {
        if (!program) return;
        endCleanly(*program);
        EXPECT_SOON(isClear());
        const auto errors = QString::fromStdString(program->errors());
        EXPECT_EQ(errors.count("has gone"), lostCompositors) << program->errors();
    }
    void start() {
        program.emplace(Agent::command(), desk.environment());
        ASSERT_SOON(buttons().size() == 2) << program->errors();
    }
    void cover() {
        hand.click(buttons().at(0));
        ASSERT_SOON(isCovered());
    }

    /// Of the round buttons, from the left to the right.
    std::vector<Area> buttons() const {
        std::vector<Area> areas;
        for (const Spoken& window : reader.windows())
            if (window.role == "push button") areas.push_back(reader.areaOf(window));
        std::ranges::sort(areas, {}, &Area::x);
        return areas;
    }
    /// Of what is on the screen under this name; empty where nothing is.
    Area areaOf(const std::string& name) const {
        for (const Spoken& window : reader.windows())
            if (const Spoken* const found = window.called(name)) return reader.areaOf(*found);
        return {};
    }
    bool hasAlert() const { return areaOf("Not Now") != Area(); }

    /// Each output but for its sides, where the buttons are.
    std::vector<Picture> grab() const {
        const Picture all = desk.grab();
        return {all.cut({left.x + 72, 0, left.width - 144, left.height}),
                all.cut({right.x + 72, 0, right.width - 144, right.height})};
    }
    bool isClear() const {
        return std::ranges::all_of(grab(), [](auto& each) { return each.sharpestStep() > clear; });
    }
    bool isHidden() const {
        return std::ranges::all_of(grab(), [](auto& each) { return each.sharpestStep() <= sharp; });
    }
    bool isCovered() const { ///< With something to be seen.
        return std::ranges::all_of(
            grab(), [](auto& each) { return each.sharpestStep() <= sharp && each.mean() > 20; });
    }
    /// How many of the editor's words the recogniser reads on this output.
    size_t wordsOn(const Area& output) const {
        const std::string file = desk.home().path() / "picture.png";
        desk.grab(output).image().save(QString::fromStdString(file));
        const std::string text =
            desk.run({"env", "OMP_THREAD_LIMIT=1", "tesseract", file, "-", "--psm", "11"});
        return static_cast<size_t>(std::ranges::count_if(
            words, [&](const char* word) { return text.find(word) != std::string::npos; }));
    }
    /// Around all that is brighter than any cover lets it be: an open menu.
    Area bright(const Area& within) const {
        Picture picture = desk.grab();
        for (const Area& button : buttons())
            picture.erase(button);
        Area box;
        for (int y = within.y; y < within.bottom(); ++y)
            for (int x = within.x; x < within.right(); ++x)
                if (picture.luminance(x, y) > 200) box = box.joined({x, y, 1, 1});
        return box;
    }

    WaylandDesk desk{GetParam()};
    const WaylandInput& hand = desk.hand();
    ScreenReader reader{desk.environment()};
    Editor paper{desk, left, "wayland"};
    Editor xPaper{desk, right, "xcb"};
    std::optional<Process> program;
    int lostCompositors = 0;
};

} // namespace

TEST_P(Wayland, BlursBothOutputsAndLetsInputThrough) {
    for (const Area& output : {left, right})
        EXPECT_GT(wordsOn(output), 4u);
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_TRUE(isClear());
    paper.click();
    ASSERT_NO_FATAL_FAILURE(cover());
    EXPECT_SOON(paper.hears(500ms));
    for (const Area& output : {left, right})
        EXPECT_EQ(wordsOn(output), 0u);
    EXPECT_GT(desk.grab(buttons().at(1)).sharpestStep(), clear);
    paper.expectInput();
    xPaper.expectInput();
    EXPECT_TRUE(isCovered());

    enum { byMouse, byKey, byFinger };
    for (const auto way : {byMouse, byKey, byFinger})
        for (const bool covered : {false, true}) {
            if (way == byMouse || !isKWin())
                hand.click(buttons().at(1));
            else
                way == byKey ? hand.strikeChord() : hand.tap(buttons().at(1));
            EXPECT_SOON(covered ? isCovered() : isClear());
        }
    if (isKWin()) {
        desk.setBlur(false);
        EXPECT_FOR(1s, isHidden());
        desk.setBlur(true);
        EXPECT_SOON(isCovered());
        return;
    }
    std::optional<ShortcutPortal> portal(desk.bus()); // It asks, so the settings are opened first.
    hand.click(buttons().at(0), 3);
    ASSERT_SOON(bright(left).height > 100);
    EXPECT_EQ(portal->bound(), 0u);
    hand.strike(downKey, 5);
    hand.strike(returnKey);
    ASSERT_SOON(portal->bound() == 1);
    portal->press();
    EXPECT_SOON(isClear());
    endCleanly(*program);
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_SOON(portal->bound() == 2);
    portal.reset();
    portal.emplace(desk.bus());
    EXPECT_SOON(portal->bound() == 1);
    portal->press();
    EXPECT_SOON(isCovered());
}

TEST_P(Wayland, OpensMenusAndAlertsAndGivesTheKeyboardBack) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(cover());
    enum End { byMouse, byReturn, byEscape };
    for (const End end : {byMouse, byReturn, byEscape}) {
        paper.click();
        hand.click(buttons().at(0), 3);
        ASSERT_SOON(bright(left).height > 100);
        const Area menu = bright(left);
        const Area beside = {0, 0, menu.x - 8, left.height};
        if (end == byMouse) { // The fourth row, and the first one beside it.
            hand.move(menu.middle().x, menu.y + menu.height * 48 / 100);
            ASSERT_SOON(bright(beside).height > 100);
            hand.click({bright(beside).middle().x, bright(beside).y + 16, 1, 1});
        } else {
            hand.strike(downKey, 4);
            hand.strike({shiftKey, rightKey, returnKey}); // The first is nothing to a menu.
        }
        ASSERT_SOON(hasAlert() && bright(beside) != Area());
        EXPECT_SOON(reader.focused() == "push button \"Get Nimbrel SUMMIT…\"");
        hand.strike(tabKey);
        EXPECT_SOON(reader.focused() == "push button \"Not Now\"");
        const std::string before = paper.state();
        hand.strike(aKey);
        if (end == byMouse)
            hand.click(areaOf("Not Now"));
        else
            hand.strike(end == byReturn ? returnKey : escapeKey);
        EXPECT_SOON(!hasAlert() && isCovered());
        EXPECT_EQ(paper.state(), before);
        EXPECT_SOON(paper.hears(500ms)); // KWin takes a moment to give the keyboard back.
    }
    // A click beside the menu closes it, and nothing else.
    hand.click(buttons().at(0), 3);
    ASSERT_SOON(bright(left).height > 100);
    const std::string before = paper.state();
    paper.click();
    EXPECT_SOON(isCovered());
    EXPECT_EQ(paper.state(), before);
    paper.expectInput();
}

TEST_P(Wayland, KeepsItsPlacesWhateverComesAndGoes) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area home = buttons().at(0);
    hand.drag(home, {{800, 200}, {500, 200}, {210, 200}}, false);
    desk.plugIn(); // It ends as the mouse goes.
    hand.release(1);
    const Area place = {-6, 200 - home.height / 2, home.width, home.height}; // At the side.
    EXPECT_SOON(buttons().at(0) == place) << buttons().at(0);
    endCleanly(*program);
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(buttons().at(0), place);
    ASSERT_NO_FATAL_FAILURE(cover());

    paper.click();
    hand.strike(f11Key); // It fills the screen.
    paper.click();
    EXPECT_FOR(1s, isCovered());
    paper.expectInput();
    hand.strike(f11Key);

    if (isKWin()) {
        desk.setRightOutput(false);
        ASSERT_SOON(buttons().size() == 1);
        EXPECT_EQ(wordsOn(left), 0u);
        desk.setRightOutput(true);
        ASSERT_SOON(buttons().size() == 2);
        EXPECT_SOON(isCovered());
        EXPECT_EQ(buttons().at(0), place);
        xPaper.expectInput();
    } else {
        desk.addOutput();
        ASSERT_SOON(buttons().size() == 3);
        EXPECT_SOON(isCovered());
        EXPECT_EQ(buttons().at(0), place);
        EXPECT_SOON(desk.grab(WaylandDesk::pieceOfAdded).brightest() < 80); // 95 where it is bare.
    }
}

TEST_P(Wayland, ComesBackWithTheCompositor) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area home = buttons().at(0);
    for (const bool covered : {true, false}) {
        isKWin() && !covered ? hand.strikeChord() : hand.click(buttons().at(0));
        EXPECT_SOON(covered ? isCovered() : isClear());
        desk.restartCompositor();
        ++lostCompositors;
        ASSERT_SOON(buttons().size() == 2) << program->errors();
        EXPECT_EQ(buttons().at(0), home);
        paper.open("wayland", 20);
        xPaper.open("wayland", 20); // The X server may take a while.
        EXPECT_SOON(covered ? isCovered() : isClear());
    }
}

INSTANTIATE_TEST_SUITE_P(On, Wayland,
                         testing::Values(WaylandDesk::Kind::Sway, WaylandDesk::Kind::KWin),
                         [](const auto& each) {
                             return each.param == WaylandDesk::Kind::Sway ? "Sway" : "KWin";
                         });
