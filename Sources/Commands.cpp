#include "AppDelegate.h"

#include "Cover.h"
#include "Links.h"
#include "Locked.h"
#include "SettingsWindow.h"

void AppDelegate::toggleBlur() {
    if (Cover::shared()->shown())
        Cover::shared()->hide();
    else
        Cover::shared()->show();
}

void AppDelegate::openSettings() { SettingsWindow::show(); }

void AppDelegate::showAbout() {
    const auto credits = std::make_shared<NSAttributedString>(
        "One click blurs every screen.\n"
        "Free edition · Support VARDEK from the Nimbrel Lite menu",
        NSAttributedString::Attributes{
            {NSFontAttributeName, NSFont::systemFontOfSize(11)},
            {NSForegroundColorAttributeName, NSColor::secondaryLabelColor()},
        });
    NSApp->orderFrontStandardAboutPanelWithOptions({{NSAboutPanelOptionCredits, credits}});
    NSApp->activateIgnoringOtherApps(true);
}

void AppDelegate::supportVARDEK() { Links::open(Links::support(), Links::Purpose::support); }

void AppDelegate::buySummit() { Locked::showSummit(); }

void AppDelegate::quit() {
    Cover::shared()->hide();
    NSApp->terminate(nullptr);
}
