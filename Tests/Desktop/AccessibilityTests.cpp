// What assistive technology finds in the program's windows, and where the keyboard goes in them.
#include "Harness/Browser.h"
#include "Harness/OnDesktop.h"
#include "Harness/ScreenReader.h"

#include <fstream>

using namespace Harness;

namespace {

struct Accessibility : BesidePaper {
    std::optional<Spoken> window(const std::string& name) const {
        const auto all = reader.windows();
        const auto found = std::ranges::find(all, name, &Spoken::name);
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
    void press(const std::string& in, const std::string& name) const {
        ASSERT_SOON(window(in) && window(in)->called(name)) << name;
        reader.press(*window(in)->called(name));
    }

    void expectRoles(const std::string& name, const std::string& roles) const {
        ASSERT_SOON(window(name).has_value()) << name;
        EXPECT_SOON(window(name)->roles() == roles) << window(name)->roles();
    }

    /// The Tab key goes from each to the next, and back with the Shift key.
    void expectRound(const std::vector<std::string>& stops) const {
        const auto expectStop = [&](const std::vector<uint8_t>& keys, const std::string& stop) {
            desktop.input.strikeTogether(keys);
            EXPECT_SOON(reader.focused().starts_with(stop)) << stop << ", not " << reader.focused();
        };
        for (const std::string& stop : stops)
            expectStop({tabKey}, stop);
        for (size_t i = stops.size() - 1; i-- > 0;)
            expectStop({shiftKey, tabKey}, stops[i]);
    }

    ScreenReader reader{desktop};
};

const std::string header = "label, label, push button, push button, ";

/// Three rows that are locked among what is open, and the toggle.
std::string general(bool atLogin = false) {
    return "frame, page tab list, page tab [selected], page tab, " + header +
           "label, push button, push button, push button, label, label, push button, label, "
           "label, label, label, label, check box" +
           (atLogin ? " [checked]" : "") + ", label";
}

std::string labels(int count) {
    std::string text;
    while (count-- > 0)
        text += "label, ";
    return text;
}

} // namespace

TEST_F(Accessibility, ReadsTheSettingsAndWorksThem) {
    const auto entry = std::filesystem::path(desktop.environment().at("XDG_CONFIG_HOME")) /
                       "autostart" / "com.vardek.NimbrelLite.desktop";
    const Browser browser(desktop);
    browser.install();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(Row::settings));
    expectRoles("General", general());
    expectRound({"page tab \"General\"", "push button \"Support VARDEK\"",
                 "push button \"Buy SUMMIT\"", "push button \"Strength", "push button \"Look",
                 "push button \"Blur Every Screen Now\"", "push button \"Camera",
                 "check box \"Open at login\""});
    const auto expectAtLogin = [&](bool on) {
        EXPECT_SOON(std::filesystem::exists(entry) == on);
        expectRoles("General", general(on));
    };
    for (const bool on : {true, false, true}) {
        press("General", "Open at login");
        expectAtLogin(on);
    }
    std::filesystem::remove(entry); // By others: the tab looks again as it comes.
    press("General", "Support");
    press("Support", "General");
    expectAtLogin(false);
    std::filesystem::remove(entry.parent_path());
    std::ofstream(entry.parent_path()) << "not a folder";
    press("General", "Open at login");
    EXPECT_SOON(agent->process().errors().starts_with(
        "Nimbrel Lite: login item not changed: Error Domain="));
    for (int i = 0; i < 2; ++i) // Once more changes nothing.
        press("General", "Blur Every Screen Now");
    press("General", "Support");
    expectRoles("Support", "frame, page tab list, page tab, page tab [selected], " + header +
                               "panel, " + labels(3) + "push button, " + labels(22) +
                               "push button, scroll bar");
    EXPECT_TRUE(agent->isCovered());
    std::string visited;
    for (const auto& [button, page] : {std::pair{"Support VARDEK", "support-vardek/"},
                                       {"Support VARDEK…", "support-vardek/"},
                                       {"Buy Nimbrel SUMMIT…", "buy/nimbrel/"}}) {
        press("Support", button);
        visited += "https://vardek.example/" + std::string(page) + '\n';
        EXPECT_SOON(browser.visited() == visited) << browser.visited();
    }
    press("Support", "Buy SUMMIT");
    expectRoles("Nimbrel SUMMIT", "frame, " + labels(2) + "panel, " + labels(20) +
                                      "scroll bar, push button, push button, push button");
    expectRound({"panel \"Scroll area\"", "push button \"Not Now\"",
                 "push button \"Buy Nimbrel SUMMIT…\"", "push button \"Close\""});
    press("Nimbrel SUMMIT", "Not Now");
    EXPECT_SOON(!window("Nimbrel SUMMIT"));
}

TEST_F(Accessibility, ReadsWhatAnAlertSaysAndWhoHasTheKey) {
    const XClient other(desktop.display());
    xcb_grab_key(other, 0, other.root(), XCB_MOD_MASK_ANY, nKey, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other.settle();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(agent->choose(Row::about));
    expectRoles("About Nimbrel Lite", "frame, graphic, label, label, label, push button");
    press("About Nimbrel Lite", "Close");
    ASSERT_NO_FATAL_FAILURE(agent->choose(Row::settings));
    ASSERT_SOON(window("General").has_value());
    EXPECT_TRUE(window("General")->called(
        "In use by another app, so it doesn't work here. The floating button and the menu bar "
        "icon still do."));
    const auto row = window("General")->find(
        [](const Spoken& each) { return each.name.starts_with("Strength"); });
    ASSERT_TRUE(row);
    const Area place = reader.areaOf(*row); // In the middle of it, between its words.
    desktop.input.drag(place, {{place.x, place.bottom() + 20}});
    EXPECT_FOR(200ms, window("General") && reader.windows().size() == 4) << "dragged off";
    click(place);
    const std::string message = "Blur strength up to 200% is part of Nimbrel SUMMIT";
    expectRoles(message,
                "alert message, graphic, label, label, push button, push button, push button");
    EXPECT_NE(window(message)->description, "");
    EXPECT_SOON(reader.focused() == "push button \"Get Nimbrel SUMMIT…\"");
    expectRound({"push button \"Not Now\"", "push button \"See Everything in SUMMIT\"",
                 "push button \"Get Nimbrel SUMMIT…\""});
    press(message, "Not Now");
    EXPECT_SOON(!window(message));
}
