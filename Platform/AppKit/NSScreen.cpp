#include "AppKit/NSScreen.h"

#include "WindowServer/Session.h"

std::vector<std::shared_ptr<NSScreen>> NSScreen::screens() {
    std::vector<std::shared_ptr<NSScreen>> screens;
    for (const auto& display : WindowServer::Session::current().displays().all()) {
        Description description;
        if (display.number != 0)
            description["NSScreenNumber"] = std::make_shared<NSNumber>(display.number);
        screens.push_back(std::make_shared<NSScreen>(display.frame, display.visibleFrame,
                                                     std::move(description)));
    }
    return screens;
}
