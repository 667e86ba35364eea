#include "SettingsWindowController.h"

#include "GeneralSettings.h"
#include "LoginSwitch.h"
#include "SupportSettings.h"

namespace {

constexpr NSSize size = {540, 660}; ///< In points, of either tab and so of the window.

std::shared_ptr<NSTabViewController> makeTabs() {
    const auto tabs = std::make_shared<NSTabViewController>();
    tabs->setTabStyle(NSTabViewControllerTabStyleToolbar);
    return tabs;
}

std::shared_ptr<NSWindow> makeWindow(const std::shared_ptr<NSTabViewController>& tabs) {
    const auto window = NSWindow::windowWithContentViewController(tabs);
    window->setStyleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                         NSWindowStyleMaskMiniaturizable);
    window->setToolbarStyle(NSWindowToolbarStylePreference);
    window->setRestorable(false);
    return window;
}

} // namespace

SettingsWindowController::SettingsWindowController() : SettingsWindowController(makeTabs()) {}

SettingsWindowController::SettingsWindowController(std::shared_ptr<NSTabViewController> owned)
    : NSWindowController(makeWindow(owned)), tabs(std::move(owned)) {
    add("General", "slider.horizontal.3",
        GeneralSettings{.login = std::make_shared<LoginSwitch>()});
    add("Support", "heart", SupportSettings());
    window()->setContentSize(size);
    window()->center();
}

void SettingsWindowController::add(const std::string& name, const std::string& symbol,
                                   const View& view) {
    const auto hosting = std::make_shared<NSHostingController>(
        view.frame({.width = size.width, .height = size.height}));
    hosting->setTitle(name);
    hosting->setPreferredContentSize(size);
    const auto item = NSTabViewItem::tabViewItemWithViewController(hosting);
    item->setLabel(name);
    item->setImage(NSImage::imageWithSystemSymbolName(symbol, name));
    tabs->addTabViewItem(item);
}
