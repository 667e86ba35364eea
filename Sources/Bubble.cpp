#include "Bubble.h"

#include "Cover.h"
#include "NoDestructor.h"
#include "Prefs.h"

#include <algorithm>

namespace {

constexpr CGFloat buttonSize = 44.0;
constexpr CGFloat idleAlpha = 0.6;

/// What of a screen a button keeps to.
CGRect areaOf(const NSScreen& screen) { return CGRectInset(screen.visibleFrame(), 6.0, 6.0); }

void place(BubblePanel& panel, const NSScreen& screen) {
    const auto spot = Prefs::shared().buttonSpot(*panel.home);
    const CGRect area = areaOf(screen);
    const double x = spot.side < 0.5 ? CGRectGetMinX(area) : CGRectGetMaxX(area) - buttonSize;
    const double travel = std::max(CGRectGetHeight(area) - buttonSize, 0.0);
    const double y = CGRectGetMaxY(area) - buttonSize - spot.down * travel;
    panel.setFrameOrigin({x, y});
}

} // namespace

const std::shared_ptr<Bubble>& Bubble::shared() {
    static NoDestructor bubble(std::make_shared<Bubble>());
    return *bubble;
}

void Bubble::start() {
    NSNotificationCenter::defaultCenter().addObserverForName(
        Cover::changed, nullptr, NSOperationQueue::mainQueue(),
        [weakSelf = weak_from_this()](const NSNotification&) {
            if (const auto self = weakSelf.lock()) self->refreshIcons();
        });
    NSNotificationCenter::defaultCenter().addObserverForName(
        NSApplicationDidChangeScreenParametersNotification, nullptr, NSOperationQueue::mainQueue(),
        [weakSelf = weak_from_this()](const NSNotification&) {
            if (const auto self = weakSelf.lock()) self->rebuild();
        });
    rebuild();
}

// Nothing of a panel outlives a change of the screens but its stored spot.
void Bubble::rebuild() {
    for (const auto& [number, panel] : m_panels)
        panel->orderOut(nullptr);
    m_panels.clear();
    for (const auto& screen : NSScreen::screens())
        if (const auto number = displayNumber(*screen)) m_panels[*number] = add(*number, *screen);
}

std::shared_ptr<BubblePanel> Bubble::add(uint32_t home, const NSScreen& on) {
    const auto panel = std::make_shared<BubblePanel>(buttonSize, idleAlpha);
    panel->home = home;
    panel->button->onClick = [] {
        if (Cover::shared()->shown())
            Cover::shared()->hide();
        else
            Cover::shared()->show();
    };
    panel->button->onMenu = [weakSelf = weak_from_this()](const NSEvent& event, NSView& view) {
        if (const auto self = weakSelf.lock()) NSMenu::popUpContextMenu(self->menu(), event, view);
    };
    panel->button->onMoved = [weakSelf = weak_from_this(),
                              weakPanel = std::weak_ptr<BubblePanel>(panel)] {
        const auto self = weakSelf.lock();
        const auto moved = weakPanel.lock();
        if (self && moved) self->settle(*moved);
    };
    place(*panel, on);
    panel->button->setBlurred(Cover::shared()->shown());
    panel->orderFrontRegardless();
    return panel;
}

void Bubble::refreshIcons() {
    const bool shown = Cover::shared()->shown();
    for (const auto& [number, panel] : m_panels)
        panel->button->setBlurred(shown);
}

// A button that was dropped slides to the nearer side edge of its own screen, wherever it is.
void Bubble::settle(BubblePanel& panel) {
    if (!panel.home) return;
    const auto screens = NSScreen::screens();
    const auto home = std::find_if(screens.begin(), screens.end(), [&](const auto& screen) {
        return displayNumber(*screen) == panel.home;
    });
    if (home == screens.end()) return;
    const CGRect area = areaOf(**home);
    const double size = CGRectGetWidth(panel.frame());

    // Where the area is too small for the button, its maximum wins.
    const double middle =
        std::min(std::max(CGRectGetMidX(panel.frame()), CGRectGetMinX(area)), CGRectGetMaxX(area));
    const bool left = middle < CGRectGetMidX(area);
    const double x = left ? CGRectGetMinX(area) : CGRectGetMaxX(area) - size;
    const double y = std::min(std::max(CGRectGetMinY(panel.frame()), CGRectGetMinY(area)),
                              CGRectGetMaxY(area) - size);
    NSAnimationContext::runAnimationGroup([&](NSAnimationContext& context) {
        context.setDuration(0.16);
        context.setTimingFunction(
            CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut));
        panel.animator().setFrameOrigin({x, y});
    });

    const double travel = CGRectGetHeight(area) - size;
    const double down = travel > 0 ? (CGRectGetMaxY(area) - size - y) / travel : 0.5;
    Prefs::shared().setButtonSpot(*panel.home, left ? 0.0 : 1.0, down);
}
