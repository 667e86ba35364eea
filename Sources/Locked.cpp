#include "Locked.h"

#include "Levels.h"
#include "Links.h"
#include "NoDestructor.h"
#include "SummitWindowView.h"

#include "AppKit/AppKit.h"
#include "SwiftUI/SwiftUI.h"

#include <algorithm>

namespace {

constexpr NSSize summitSize = {500, 600};

NoDestructor<std::shared_ptr<NSWindow>> theWindow; ///< None before the first `showSummit`.

void closeSummit() {
    if (*theWindow) (*theWindow)->close();
}

std::shared_ptr<NSWindow> makeSummit() {
    const SummitWindowView view = {
        .buy =
            [] {
                closeSummit();
                Links::open(Links::upgrade(), Links::Purpose::upgrade);
            },
        .notNow = closeSummit,
    };
    const auto made =
        NSWindow::windowWithContentViewController(std::make_shared<NSHostingController>(view));
    made->setTitle("Nimbrel SUMMIT");
    made->setStyleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
    made->setLevel(aboveTheButtons);
    made->setCollectionBehavior(NSWindowCollectionBehaviorMoveToActiveSpace |
                                NSWindowCollectionBehaviorFullScreenAuxiliary);
    made->setHidesOnDeactivate(true);
    made->setReleasedWhenClosed(false);
    made->setRestorable(false);
    made->setContentSize(summitSize);
    made->center();
    return made;
}

} // namespace

const std::vector<LockedFeature> Locked::all = {
    {"camera", "Blur when someone looks at your screen",
     "Uses your Mac's camera to blur your screens the moment someone looks at them.",
     "camera.viewfinder"},
    {"gestures", "Hand gestures & wink",
     "Blur or show with a palm, a fist or a wink, or by covering the camera.", "hand.raised"},
    {"screens", "Choose which screens",
     "Blur just the screen you're using, or only the screens you tick.", "display.2"},
    {"strength", "Blur strength up to 200%", "Set how strong the blur is, all the way up to 200%.",
     "slider.horizontal.3"},
    {"looks", "More looks: light glass, blur only, solid cover",
     "Pick light glass, blur only or a solid cover instead of dark glass.", "paintpalette"},
    {"fade", "Fade in/out", "A smooth fade when the blur appears and goes away.", "sparkles"},
    {"report", "Activity report", "A PDF report of when your screens were blurred.",
     "chart.bar.doc.horizontal"},
    {"automation", "Automation links",
     "nimbrel:// links that blur or show from Shortcuts and scripts.", "link"},
    {"shortcuts", "Custom shortcuts",
     "Set your own keyboard shortcuts to blur or show your screens.", "keyboard"},
    {"buttons", "Button size & transparency",
     "Choose how big the floating button is and how faint it gets when idle.", "circle.circle"},
};

std::optional<LockedFeature> Locked::feature(const std::string& wanted) {
    const auto found = std::ranges::find(all, wanted, &LockedFeature::id);
    if (found == all.end()) return {};
    return *found;
}

void Locked::show(const LockedFeature& feature) {
    const auto alert = std::make_shared<NSAlert>();
    alert->setAlertStyle(NSAlertStyleInformational);
    alert->setMessageText(feature.title + " is part of Nimbrel SUMMIT");
    alert->setInformativeText(feature.detail);
    alert->addButtonWithTitle("Get Nimbrel SUMMIT…");
    alert->addButtonWithTitle("Not Now");
    alert->addButtonWithTitle("See Everything in SUMMIT");
    alert->window()->setLevel(aboveTheButtons);
    NSApp->activateIgnoringOtherApps(true);
    switch (alert->runModal()) {
    case NSAlertFirstButtonReturn:
        return Links::open(Links::upgrade(), Links::Purpose::upgrade);
    case NSAlertThirdButtonReturn:
        return showSummit();
    default:
        return;
    }
}

void Locked::showSummit() {
    auto& window = *theWindow;
    if (!window) window = makeSummit();
    NSApp->activateIgnoringOtherApps(true);
    window->makeKeyAndOrderFront(nullptr);
}
