#include "AppDelegate.h"

#include "Cover.h"
#include "Locked.h"

namespace {

constexpr NSUInteger hotKeyMask =
    NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;

using Item = std::shared_ptr<NSMenuItem>;

} // namespace

std::shared_ptr<NSMenu> AppDelegate::makeMenu() {
    const auto item = [this](const std::string& title, const SEL& action,
                             const std::string& key = "", const std::string& symbol = "") {
        const auto made = std::make_shared<NSMenuItem>(title, action, key);
        made->setTarget(shared_from_this());
        if (!symbol.empty())
            made->setImage(NSImage::imageWithSystemSymbolName(symbol, std::nullopt));
        return made;
    };
    const auto menu = std::make_shared<NSMenu>();

    const bool shown = Cover::shared()->shown();
    const Item toggle =
        item(shown ? "Show the Screens" : "Blur Every Screen", &AppDelegate::toggleBlur, "n");
    toggle->setKeyEquivalentModifierMask(hotKeyMask);
    menu->addItem(toggle);
    menu->addItem(NSMenuItem::separatorItem());
    menu->addItem(item("Support VARDEK…", &AppDelegate::supportVARDEK, "", "heart"));
    menu->addItem(item("Buy Nimbrel SUMMIT…", &AppDelegate::buySummit, "", "star.fill"));

    const auto more = std::make_shared<NSMenuItem>("More in SUMMIT", SEL(), "");
    more->setImage(NSImage::imageWithSystemSymbolName("lock.fill", std::nullopt));
    const auto submenu = std::make_shared<NSMenu>("More in SUMMIT");
    for (const LockedFeature& feature : Locked::all) {
        const Item row = item(feature.title, &AppDelegate::lockedClicked, "", "lock.fill");
        row->setRepresentedObject(feature.id);
        submenu->addItem(row);
    }
    submenu->addItem(NSMenuItem::separatorItem());
    submenu->addItem(item("See Everything in SUMMIT…", &AppDelegate::buySummit));
    more->setSubmenu(submenu);
    menu->addItem(more);

    menu->addItem(NSMenuItem::separatorItem());
    menu->addItem(item("Settings…", &AppDelegate::openSettings, ","));
    menu->addItem(item("About Nimbrel Lite", &AppDelegate::showAbout));
    menu->addItem(NSMenuItem::separatorItem());
    menu->addItem(item("Quit Nimbrel Lite", &AppDelegate::quit, "q"));
    return menu;
}

void AppDelegate::lockedClicked(NSMenuItem& sender) {
    const auto* known = std::any_cast<std::string>(&sender.representedObject());
    if (!known) return;
    const auto feature = Locked::feature(*known);
    if (feature) Locked::show(*feature);
}
