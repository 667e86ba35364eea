#include "AppDelegate.h"

#include "Bubble.h"
#include "Cover.h"
#include "HotKey.h"
#include "LoginItem.h"
#include "Prefs.h"
#include "SettingsWindow.h"

namespace {
const std::string loginAsked = "loginAsked";
}

void AppDelegate::applicationDidFinishLaunching(const NSNotification&) {
    handOverFromEarlierInstances();
    Cover::shared()->start(); // First: the buttons and the status icon read its state.
    Bubble::shared()->menu = [weakSelf = weak_from_this()] {
        const auto self = weakSelf.lock();
        return self ? self->makeMenu() : std::make_shared<NSMenu>();
    };
    Bubble::shared()->start();
    createStatusItem();
    HotKey::shared().register_();
    NSNotificationCenter::defaultCenter().addObserverForName(
        Cover::changed, nullptr, NSOperationQueue::mainQueue(),
        [weakSelf = weak_from_this()](const NSNotification&) {
            if (const auto self = weakSelf.lock()) self->updateStatusIcon();
        });
    setUpOnFirstRun();
}

bool AppDelegate::applicationShouldHandleReopen(NSApplication&, bool) {
    SettingsWindow::show();
    return false;
}

void AppDelegate::statusClicked() {
    const auto& event = NSApp->currentEvent();
    const bool wantsMenu = event && (event->type() == NSEventTypeRightMouseUp ||
                                     (event->modifierFlags() & NSEventModifierFlagControl));
    if (wantsMenu)
        openStatusMenu();
    else
        toggleBlur();
}

// While a menu is attached the platform opens it at a click and sends no action, so it stays
// attached only as long as it is open.
void AppDelegate::openStatusMenu() {
    if (!statusItem) return;
    const auto menu = makeMenu();
    menu->setDelegate(weak_from_this());
    statusItem->setMenu(menu);
    if (const auto& button = statusItem->button()) button->performClick(nullptr);
}

void AppDelegate::menuDidClose(NSMenu&) {
    if (statusItem) statusItem->setMenu(nullptr);
}

// The newest launch wins: it asks every other instance to quit and carries on at once.
void AppDelegate::handOverFromEarlierInstances() {
    const auto identifier = NSBundle::mainBundle().bundleIdentifier();
    if (!identifier) return;
    const auto applications =
        NSRunningApplication::runningApplicationsWithBundleIdentifier(*identifier);
    for (const auto& application : applications)
        if (!application->isEqual(*NSRunningApplication::currentApplication()))
            application->terminate();
}

// Once, and only where the program is installed for good. Whatever fails is not tried again.
void AppDelegate::setUpOnFirstRun() {
    NSUserDefaults& defaults = Prefs::shared().d;
    if (defaults.boolForKey(loginAsked)) return;
    if (!NSBundle::mainBundle().bundlePath().starts_with("/Applications/")) return;
    defaults.setBool(true, loginAsked);
    LoginItem::set(true);
    SettingsWindow::show();
}

void AppDelegate::createStatusItem() {
    const auto item = NSStatusBar::systemStatusBar().statusItemWithLength(NSSquareStatusItemLength);
    if (const auto& button = item->button()) {
        button->setTarget(shared_from_this());
        button->setAction(&AppDelegate::statusClicked);
        button->sendActionOn(NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp);
        button->setToolTip(
            "Nimbrel Lite: click to blur or show every screen, right-click for the menu");
    }
    statusItem = item;
    updateStatusIcon();
}

// The icon names what a click does next: the crossed-out eye stands while nothing is blurred.
void AppDelegate::updateStatusIcon() {
    const bool shown = Cover::shared()->shown();
    const auto image = NSImage::imageWithSystemSymbolName(
        shown ? "eye" : "eye.slash", shown ? "Show the screens" : "Blur every screen");
    if (image) image->setTemplate(true);
    if (statusItem && statusItem->button()) statusItem->button()->setImage(image);
}
