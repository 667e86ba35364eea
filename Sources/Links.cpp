#include "Links.h"

#include "Levels.h"

#include "AppKit/AppKit.h"

#include <string>

namespace {

const std::string host = "vardek.example";

std::shared_ptr<NSAlert> comingAlert(Links::Purpose what) {
    const auto alert = std::make_shared<NSAlert>();
    alert->setAlertStyle(NSAlertStyleInformational);
    switch (what) {
    case Links::Purpose::upgrade:
        alert->setMessageText("Nimbrel SUMMIT is coming");
        alert->setInformativeText("Nimbrel SUMMIT will be available from " + host + " soon.");
        break;
    case Links::Purpose::support:
        alert->setMessageText("Thank you for supporting VARDEK!");
        alert->setInformativeText("The Support VARDEK page will be available at " + host +
                                  " soon.");
        break;
    }
    alert->addButtonWithTitle("OK");
    alert->window()->setLevel(aboveTheButtons);
    return alert;
}

} // namespace

const std::shared_ptr<NSURL>& Links::support() {
    static const auto url = NSURL::URLWithString("https://" + host + "/support-vardek/");
    return url;
}

const std::shared_ptr<NSURL>& Links::upgrade() {
    static const auto url = NSURL::URLWithString("https://" + host + "/buy/nimbrel/");
    return url;
}

void Links::open(const std::shared_ptr<NSURL>& url, Purpose what) {
    if (url) {
        NSWorkspace::sharedWorkspace().openURL(*url);
        return;
    }
    const auto alert = comingAlert(what);
    NSApp->activateIgnoringOtherApps(true);
    alert->runModal();
}
