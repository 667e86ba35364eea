#include "GeneralSettings.h"

#include "Cover.h"
#include "HotKey.h"
#include "Locked.h"
#include "LockedRow.h"
#include "SettingsHeader.h"
#include "Theme.h"

namespace {

View footer(const std::string& text) {
    return Text::verbatim(text)
        .font(Font::caption)
        .foregroundStyle(HierarchicalShapeStyle::secondary);
}

View lockedRow(const std::string& label, const std::string& note, const std::string& id) {
    return LockedRow{
        .label = label, .note = note, .feature = Locked::feature(id).value_or(LockedFeature{})};
}

View blurSection() {
    const View button =
        HStack({Spacer(), Button("Blur Every Screen Now", [] { Cover::shared()->show(); })});
    const View explanation = footer(
        "Every connected screen is blurred, menu bars and Dock included. Clicks, scrolling and "
        "typing still go to the app underneath. Click the floating button again, or press " +
        HotKey::keys +
        ", to show the screens. With Reduce transparency on (System Settings › Accessibility › "
        "Display) the solid cover is used.");
    return Section(
        {.header = "Blur", .footer = explanation},
        {
            lockedRow("Strength", "Fixed at 70% in Lite. SUMMIT goes up to 200%.", "strength"),
            lockedRow("Look",
                      "Dark glass in Lite. SUMMIT adds light glass, blur only and solid cover.",
                      "looks"),
            button,
        });
}

View automaticSection() {
    return Section(
        {.header = "Automatic blur"},
        {lockedRow("Camera", "Blur by itself when someone looks at your screen.", "camera")});
}

View statusLine() {
    if (HotKey::shared().registered())
        return Text("Works from any app. Fixed in the Lite edition.")
            .font(Font::caption)
            .foregroundStyle(HierarchicalShapeStyle::secondary);
    return Text("In use by another app, so it doesn't work here. The floating button and the menu "
                "bar icon still do.")
        .font(Font::caption)
        .foregroundStyle(Color::red);
}

View keycap() {
    const Font font =
        Font::system({.size = 13, .weight = Font::Weight::medium, .design = Font::Design::rounded});
    return Text::verbatim(HotKey::keys)
        .font(font.monospacedDigit())
        .padding(Edge::Set::horizontal, 10)
        .padding(Edge::Set::vertical, 4)
        .background(RoundedRectangle({.cornerRadius = 6}).fill(Color::secondary.opacity(0.15)));
}

View shortcutSection() {
    const View texts = VStack({.alignment = HorizontalAlignment::leading, .spacing = 2},
                              {Text("Blur or show every screen"), statusLine()});
    return Section({.header = "Keyboard shortcut"},
                   {HStack({.spacing = 8}, {texts, Spacer(), keycap()})});
}

View generalSection(const ObservedObject<LoginSwitch>& login) {
    const View explanation =
        footer("Nimbrel Lite lives in the menu bar (the crossed-out eye): click it to blur or show "
               "the screens, right-click it for the menu. There's a floating button on every "
               "screen: drag one to move it. Nothing on your screen is recorded or sent anywhere.");
    return Section({.header = "General", .footer = explanation},
                   {Toggle("Open at login", {.isOn = login.projectedValue(&LoginSwitch::on)})});
}

} // namespace

View GeneralSettings::body() const {
    const View form =
        Form({blurSection(), automaticSection(), shortcutSection(), generalSection(login)})
            .formStyle(FormStyle::grouped);
    return VStack({.spacing = 0}, {SettingsHeader(), form})
        .tint(Theme::blue)
        .onAppear([login = login] { login->refresh(); });
}
