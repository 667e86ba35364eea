// What assistive technology finds in the program's windows, and where the keyboard goes in them.
#include "Harness/Browser.h"
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"
#include "Harness/ScreenReader.h"

#include <QDBusMessage>

#include <algorithm>
#include <filesystem>

using namespace Harness;

namespace {

#define HINT "(Part of Nimbrel SUMMIT. Opens a short explanation.)"
const std::string strength = "Strength, Fixed at 70% in Lite. SUMMIT goes up to 200%., Part of "
                             "Nimbrel SUMMIT";
const std::string look = "Look, Dark glass in Lite. SUMMIT adds light glass, blur only and solid "
                         "cover., Part of Nimbrel SUMMIT";
const std::string camera = "Camera, Blur by itself when someone looks at your screen., Part of "
                           "Nimbrel SUMMIT";

struct Accessibility : BesidePaper {
    std::optional<Spoken> window(const std::string& name) const {
        const auto all = reader.windows();
        const auto found = std::ranges::find(all, name, &Spoken::name);
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
    bool isOpen(const std::string& name) const {
        return await([&] { return window(name).has_value(); });
    }
    void press(const std::string& in, const std::string& name) const {
        const auto open = window(in);
        ASSERT_TRUE(open && open->called(name)) << name;
        reader.press(*open->called(name));
    }

    void expectLines(const std::string& name, const std::string& lines) const {
        ASSERT_TRUE(isOpen(name));
        EXPECT_TRUE(await([&] { return window(name)->lines() == lines; })) << window(name)->lines();
    }

    /// Strikes a key, and tells where the keyboard goes.
    std::string focusAfter(const std::function<void()>& strike) const {
        const std::string before = reader.focused();
        strike();
        await([&] { return reader.focused() != before; });
        return reader.focused();
    }
    void expectRound(const std::vector<std::string>& stops) const {
        ASSERT_FALSE(stops.empty());
        for (int round = 0; round < 2; ++round)
            for (const std::string& stop : stops)
                EXPECT_EQ(focusAfter([&] { desktop.input.strike(tabKey); }), stop);
        for (size_t i = stops.size() - 1; i-- > 0;)
            EXPECT_EQ(focusAfter([&] { strikeTogether({shiftKey, tabKey}); }), stops[i]);
    }

    ScreenReader reader{desktop};
};

const std::string header = R"(  label "Nimbrel Lite"
  label "1.0.0"
  push button "Support VARDEK"
  push button "Buy SUMMIT"
)";

std::string general(const std::string& status, bool atLogin = false) {
    return R"(frame "General"
  page tab list ""
    page tab "General" [selected]
    page tab "Support"
)" + header +
           R"(  label "Blur"
  push button ")" +
           strength + "\" " HINT "\n  push button \"" + look + "\" " HINT R"(
  push button "Blur Every Screen Now"
  label "Every connected screen is blurred, menu bars and Dock included. Clicks, scrolling and typing still go to the app underneath. Click the floating button again, or press ⌃⌥⌘N, to show the screens. With Reduce transparency on (System Settings › Accessibility › Display) the solid cover is used."
  label "Automatic blur"
  push button ")" +
           camera + "\" " HINT R"(
  label "Keyboard shortcut"
  label "Blur or show every screen"
  label ")" +
           status + R"("
  label "⌃⌥⌘N"
  label "General"
  check box "Open at login")" +
           (atLogin ? " [checked]" : "") + R"(
  label "Nimbrel Lite lives in the menu bar (the crossed-out eye): click it to blur or show the screens, right-click it for the menu. There's a floating button on every screen: drag one to move it. Nothing on your screen is recorded or sent anywhere."
)";
}

const std::string ours = "Works from any app. Fixed in the Lite edition.";
const std::string taken =
    "In use by another app, so it doesn't work here. The floating button and the menu bar icon "
    "still do.";

const std::string everything = "Everything in Nimbrel Lite, plus more control, more looks and a "
                               "blur that reacts for you.";

/// The ten features, in an area that scrolls.
std::string features() {
    constexpr const char* texts[] = {
        "Blur when someone looks at your screen",
        "Uses your Mac's camera to blur your screens the moment someone looks at them.",
        "Hand gestures & wink",
        "Blur or show with a palm, a fist or a wink, or by covering the camera.",
        "Choose which screens",
        "Blur just the screen you're using, or only the screens you tick.",
        "Blur strength up to 200%",
        "Set how strong the blur is, all the way up to 200%.",
        "More looks: light glass, blur only, solid cover",
        "Pick light glass, blur only or a solid cover instead of dark glass.",
        "Fade in/out",
        "A smooth fade when the blur appears and goes away.",
        "Activity report",
        "A PDF report of when your screens were blurred.",
        "Automation links",
        "nimbrel:// links that blur or show from Shortcuts and scripts.",
        "Custom shortcuts",
        "Set your own keyboard shortcuts to blur or show your screens.",
        "Button size & transparency",
        "Choose how big the floating button is and how faint it gets when idle.",
    };
    std::string lines;
    for (const char* text : texts)
        lines += "    label \"" + std::string(text) + "\"\n";
    return lines;
}

constexpr int buyRow = 3;
constexpr int settingsRow = 5;
constexpr int aboutRow = 6;

} // namespace

TEST_F(Accessibility, ReadsTheButtonsOnTheScreensAndPressesThem) {
    desktop.tray.reset(); // Whose icon is a button as well.
    ASSERT_NO_FATAL_FAILURE(start());
    const std::string button = "push button \"Blur every screen\" (Blur every screen (⌃⌥⌘N). Drag "
                               "to move, right-click for more.)\n";
    ASSERT_TRUE(await([&] { return reader.windows().size() == 2; }));
    for (const Spoken& window : reader.windows())
        EXPECT_EQ(window.lines(), button);
    reader.press(reader.windows().at(1));
    EXPECT_TRUE(await([&] { return agent->isCovered(); }));
}

TEST_F(Accessibility, ReadsTheSettingsAndWorksThem) {
    const auto entry = std::filesystem::path(desktop.environment().at("XDG_CONFIG_HOME")) /
                       "autostart" / "com.vardek.NimbrelLite.desktop";
    const Browser browser(desktop);
    browser.install();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(settingsRow));
    expectLines("General", general(ours));
    for (const bool on : {true, false}) {
        press("General", "Open at login");
        EXPECT_TRUE(await([&] { return std::filesystem::exists(entry) == on; }));
        expectLines("General", general(ours, on));
    }
    for (int i = 0; i < 2; ++i) // Once more changes nothing.
        press("General", "Blur Every Screen Now");
    press("General", "Support");
    expectLines("Support", R"(frame "Support"
  page tab list ""
    page tab "General"
    page tab "Support" [selected]
)" + header + "  panel \"Scroll area\"\n" +
                               R"(    label "Support Nimbrel"
    label "Thank you for using Nimbrel Lite"
    label "Nimbrel Lite is free, with no ads and no tracking. If it helps you keep your screens private, you can support VARDEK."
    push button "Support VARDEK…"
    label "What Nimbrel SUMMIT adds"
    label ")" + everything + "\"\n" +
                               features() + R"(    push button "Buy Nimbrel SUMMIT…"
    scroll bar ""
)");
    EXPECT_TRUE(agent->isCovered());
    std::string visited;
    for (const auto& [button, page] : {std::pair{"Support VARDEK", "support-vardek/"},
                                       {"Support VARDEK…", "support-vardek/"},
                                       {"Buy Nimbrel SUMMIT…", "buy/nimbrel/"}}) {
        press("Support", button);
        visited += "https://vardek.example/" + std::string(page) + '\n';
        EXPECT_TRUE(await([&] { return browser.visited() == visited; })) << browser.visited();
    }
    press("Support", "Buy SUMMIT");
    EXPECT_TRUE(isOpen("Nimbrel SUMMIT"));
}

TEST_F(Accessibility, ReadsThatAnotherProgramHasTheKey) {
    const XClient other(desktop.display());
    xcb_grab_key(other, 0, other.root(), XCB_MOD_MASK_ANY, nKey, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other.settle();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(settingsRow));
    expectLines("General", general(taken));
}

TEST_F(Accessibility, ReadsTheWindowsAboveTheOthers) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(buyRow));
    expectLines("Nimbrel SUMMIT", R"(frame "Nimbrel SUMMIT"
  label "Nimbrel SUMMIT"
  label ")" + everything + "\"\n  panel \"Scroll area\"\n" +
                                      features() + R"(    scroll bar ""
  push button "Not Now"
  push button "Buy Nimbrel SUMMIT…"
  push button "Close"
)");
    expectRound({"panel \"Scroll area\"", "push button \"Not Now\"",
                 "push button \"Buy Nimbrel SUMMIT…\"", "push button \"Close\""});
    press("Nimbrel SUMMIT", "Not Now");
    EXPECT_TRUE(await([&] { return !window("Nimbrel SUMMIT"); }));

    ASSERT_NO_FATAL_FAILURE(agent->choose(aboutRow));
    expectLines("About Nimbrel Lite", R"(frame "About Nimbrel Lite"
  graphic "Nimbrel Lite"
  label "Nimbrel Lite"
  label "Version 1.0.0"
  label "One click blurs every screen.
Free edition · Support VARDEK from the Nimbrel Lite menu"
  push button "Close"
)");
}

TEST_F(Accessibility, ReadsWhatAnAlertSays) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(settingsRow));
    ASSERT_TRUE(isOpen("General"));
    press("General", strength);
    const std::string message = "Blur strength up to 200% is part of Nimbrel SUMMIT";
    expectLines(message, "alert message \"" + message +
                             R"(" (Set how strong the blur is, all the way up to 200%.)
  graphic "Nimbrel Lite"
  label "Blur strength up to 200% is part of Nimbrel SUMMIT"
  label "Set how strong the blur is, all the way up to 200%."
  push button "Get Nimbrel SUMMIT…"
  push button "Not Now"
  push button "See Everything in SUMMIT"
)");
    EXPECT_TRUE(await([&] { return reader.focused() == "push button \"Get Nimbrel SUMMIT…\""; }));
    expectRound({"push button \"Not Now\"", "push button \"See Everything in SUMMIT\"",
                 "push button \"Get Nimbrel SUMMIT…\""});
    press(message, "Not Now");
    EXPECT_TRUE(await([&] { return !window(message); }));
}

TEST_F(Accessibility, TheKeyboardGoesThroughTheSettingsFromTopToBottom) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(settingsRow));
    ASSERT_TRUE(await([&] { return reader.focused() == "frame \"General\""; })) << reader.focused();
    expectRound({"page tab \"General\"", "push button \"Support VARDEK\"",
                 "push button \"Buy SUMMIT\"", "push button \"" + strength + '"',
                 "push button \"" + look + '"', "push button \"Blur Every Screen Now\"",
                 "push button \"" + camera + '"', "check box \"Open at login\""});
    EXPECT_EQ(focusAfter([&] { desktop.input.strike(rightKey); }), "page tab \"Support\"");
    ASSERT_TRUE(isOpen("Support"));
    expectRound({"push button \"Support VARDEK\"", "push button \"Buy SUMMIT\"",
                 "panel \"Scroll area\"", "push button \"Support VARDEK…\"",
                 "push button \"Buy Nimbrel SUMMIT…\"", "page tab \"Support\""});
}
