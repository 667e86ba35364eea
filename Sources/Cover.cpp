#include "Cover.h"

#include "CoreGraphics/CGWindow.h"
#include "NoDestructor.h"
#include "WindowServerBlur.h"

#include <set>

namespace {

// The window server's own "no blur" is a radius of 1.
constexpr int noBlur = 1;
constexpr int fullBlur = 168;

constexpr NSUInteger fillsSuperview = NSViewWidthSizable | NSViewHeightSizable;

} // namespace

std::optional<uint32_t> displayNumber(const NSScreen& screen) {
    const auto& description = screen.deviceDescription();
    const auto found = description.find("NSScreenNumber");
    if (found == description.end()) return std::nullopt;
    const auto number = std::dynamic_pointer_cast<NSNumber>(found->second);
    if (!number) return std::nullopt;
    return number->unsignedIntValue();
}

const NSColor& Scrim::tint() {
    static const NSColor color = NSColor::colorWithWhite(0.0, 0.4);
    return color;
}

const NSColor& Scrim::solid() {
    static const NSColor color = NSColor::colorWithSRGBRed(14 / 255.0, 16 / 255.0, 21 / 255.0, 1.0);
    return color;
}

CoverWindow::CoverWindow()
    : NSWindow(CGRectMake(0, 0, 100, 100), NSWindowStyleMaskBorderless, NSBackingStoreBuffered,
               false) {
    setTitle("Nimbrel Lite");
    setIdentifier("cover");
    setOpaque(false);
    setHasShadow(false);
    setBackgroundColor(NSColor::clearColor());
    setIgnoresMouseEvents(true);
    setLevel(NSScreenSaverWindowLevel);
    setCollectionBehavior(
        NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
        NSWindowCollectionBehaviorIgnoresCycle | NSWindowCollectionBehaviorFullScreenAuxiliary);
    setReleasedWhenClosed(false);
    setAnimationBehavior(NSWindowAnimationBehaviorNone);
    setAlphaValue(0.0);

    const auto content = std::make_shared<NSView>();
    content->setWantsLayer(true);
    tint->setWantsLayer(true);
    tint->setAutoresizingMask(fillsSuperview);
    content->addSubview(tint);
    setContentView(content);
    tint->setFrame(content->bounds());

    WindowServerBlur::set(noBlur, *this);
}

void CoverWindow::dress() {
    const bool solid =
        NSWorkspace::sharedWorkspace().accessibilityDisplayShouldReduceTransparency();
    const bool blurred = WindowServerBlur::set(solid ? noBlur : fullBlur, *this);
    if (!solid && !blurred)
        showFallback();
    else if (fallback)
        fallback->setHidden(true);
    if (const auto& layer = tint->layer())
        layer->setBackgroundColor((solid ? Scrim::solid() : Scrim::tint()).CGColor());
}

void CoverWindow::showFallback() {
    if (!fallback && contentView()) {
        fallback = std::make_shared<NSVisualEffectView>(contentView()->bounds());
        fallback->setAutoresizingMask(fillsSuperview);
        fallback->setBlendingMode(NSVisualEffectBlendingModeBehindWindow);
        fallback->setMaterial(NSVisualEffectMaterialFullScreenUI);
        fallback->setState(NSVisualEffectStateActive);
        contentView()->addSubview(fallback, NSWindowBelow, tint);
    }
    if (fallback) fallback->setHidden(false);
}

const std::shared_ptr<Cover>& Cover::shared() {
    static NoDestructor cover(std::make_shared<Cover>());
    return *cover;
}

void Cover::start() {
    syncScreens();
    NSNotificationCenter::defaultCenter().addObserverForName(
        NSApplicationDidChangeScreenParametersNotification, nullptr, NSOperationQueue::mainQueue(),
        [weakSelf = weak_from_this()](const NSNotification&) {
            if (const auto self = weakSelf.lock()) self->syncScreens();
        });
    NSWorkspace::sharedWorkspace().notificationCenter().addObserverForName(
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr,
        NSOperationQueue::mainQueue(), [weakSelf = weak_from_this()](const NSNotification&) {
            if (const auto self = weakSelf.lock()) self->restyle();
        });
}

void Cover::show() {
    if (m_shown || !CGRequestScreenCaptureAccess()) return;
    syncScreens();
    m_shown = true;
    for (const auto& [number, window] : windows)
        window->dress();
    // A pass of its own: no window is seen before all of them are dressed.
    for (const auto& [number, window] : windows)
        window->setAlphaValue(1.0);
    NSNotificationCenter::defaultCenter().postNotificationName(changed, shared_from_this());
}

void Cover::hide() {
    if (!m_shown) return;
    m_shown = false;
    for (const auto& [number, window] : windows) {
        window->setAlphaValue(0.0);
        WindowServerBlur::set(noBlur, *window);
        if (window->fallback) window->fallback->setHidden(true);
        if (const auto& layer = window->tint->layer())
            layer->setBackgroundColor(NSColor::clearColor().CGColor());
    }
    NSNotificationCenter::defaultCenter().postNotificationName(changed, shared_from_this());
}

void Cover::syncScreens() {
    std::set<uint32_t> connected;
    for (const auto& screen : NSScreen::screens()) {
        const auto number = displayNumber(*screen);
        if (!number) continue;
        connected.insert(*number);
        auto& window = windows[*number];
        if (!window) window = std::make_shared<CoverWindow>();
        if (!CGRectEqualToRect(window->frame(), screen->frame()))
            window->setFrame(screen->frame(), false);
        window->orderFrontRegardless();
        if (m_shown) {
            window->dress();
            window->setAlphaValue(1.0);
        }
    }
    const auto snapshot = windows; // What a window calls may come back here.
    for (const auto& [number, window] : snapshot) {
        if (connected.contains(number)) continue;
        window->orderOut(nullptr);
        windows.erase(number);
    }
}

void Cover::restyle() {
    if (!m_shown) return;
    for (const auto& [number, window] : windows)
        window->dress();
}
