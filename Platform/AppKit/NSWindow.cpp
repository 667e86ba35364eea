#include "AppKit/NSWindow.h"

#include "AppKit/NSViewController.h"
#include "AppKit/Qt/Windows/NativeWindow.h"
#include "Foundation/Timeline+Private.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

NSAnimationContext* theGroup = nullptr;

} // namespace

NSAnimationContext& NSAnimationContext::currentContext() {
    static NSAnimationContext outside;
    return theGroup ? *theGroup : outside;
}

void NSAnimationContext::runAnimationGroup(
    const std::function<void(NSAnimationContext&)>& changes) {
    NSAnimationContext context;
    NSAnimationContext* const outer = std::exchange(theGroup, &context);
    changes(context);
    theGroup = outer;
}

/// One change that takes its time, as the current group has it. It stops where it is when it is
/// dropped.
class Animation {
public:
    /// Calls `apply` with a progress from 0 to 1, the last time with just 1.
    explicit Animation(std::function<void(double)> apply) : m_apply(std::move(apply)) {
        m_nextFrame = Timeline::current().schedule(0, [this] { step(); });
    }

private:
    void step() {
        constexpr double frameSeconds = 1.0 / 60;
        const double time = (Timeline::current().now() - m_start) / m_duration;
        const bool ends = time >= 1;
        m_nextFrame =
            ends ? nullptr : Timeline::current().schedule(frameSeconds, [this] { step(); });
        m_apply(ends ? 1 : m_pace ? m_pace->progressAt(time) : time);
    }

    const std::function<void(double)> m_apply;
    const double m_duration = NSAnimationContext::currentContext().duration();
    const std::shared_ptr<CAMediaTimingFunction> m_pace =
        NSAnimationContext::currentContext().timingFunction();
    const double m_start = Timeline::current().now();
    std::shared_ptr<void> m_nextFrame;
};

NSWindow::NSWindow(const NSRect& contentRect, NSUInteger styleMask, NSBackingStoreType, bool)
    : m_styleMask(styleMask), m_frame(contentRect), m_native(NativeWindow::make(*this)) {
    m_native->setFrame(m_frame);
    m_native->setAlpha(m_alphaValue);
}

NSWindow::NSWindow(std::shared_ptr<NSViewController> controller)
    : m_contentViewController(std::move(controller)),
      m_styleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                  NSWindowStyleMaskMiniaturizable),
      m_title(m_contentViewController->title()),
      m_frame{{}, m_contentViewController->preferredContentSize()},
      m_native(NativeWindow::make(*this)) {
    m_contentViewController->onTitleChange([this] { setTitle(m_contentViewController->title()); });
}

NSWindow::~NSWindow() {
    setContentView(nullptr);
    if (m_contentViewController) m_contentViewController->onTitleChange(nullptr);
}

std::shared_ptr<NSWindow>
NSWindow::windowWithContentViewController(std::shared_ptr<NSViewController> controller) {
    return std::shared_ptr<NSWindow>(new NSWindow(std::move(controller)));
}

NSInteger NSWindow::windowNumber() const { return m_native->number(); }

void NSWindow::setFrame(const NSRect& frame, bool) {
    m_move.reset();
    moveTo(frame);
}

void NSWindow::setFrameOrigin(const NSPoint& origin) { setFrame({origin, m_frame.size}, false); }

void NSWindow::setContentSize(const NSSize& size) {
    const double top = m_frame.origin.y + m_frame.size.height;
    setFrame({{m_frame.origin.x, top - size.height}, size}, true);
}

void NSWindow::center() { m_native->center(); }

void NSWindow::moveTo(const NSRect& frame) {
    if (CGRectEqualToRect(m_frame, frame)) return;
    m_frame = frame;
    m_native->setFrame(frame);
    if (m_contentView) m_contentView->setFrame({{}, frame.size});
}

void NSWindow::setLevel(NSInteger level) {
    if (m_level == level) return;
    m_level = level;
    m_native->setLevel(level);
}

void NSWindow::setAlphaValue(double alpha) {
    m_fade.reset();
    fadeTo(alpha);
}

void NSWindow::fadeTo(double alpha) {
    alpha = std::clamp(alpha, 0.0, 1.0);
    if (m_alphaValue == alpha) return;
    m_alphaValue = alpha;
    m_native->setAlpha(alpha);
}

void NSWindow::Animator::setFrameOrigin(const NSPoint& origin) {
    NSWindow& window = m_window;
    window.m_move = std::make_unique<Animation>(
        [&window, from = window.m_frame.origin, origin](double progress) {
            window.moveTo(
                {{std::lerp(from.x, origin.x, progress), std::lerp(from.y, origin.y, progress)},
                 window.m_frame.size});
        });
}

void NSWindow::Animator::setAlphaValue(double alpha) {
    NSWindow& window = m_window;
    window.m_fade =
        std::make_unique<Animation>([&window, from = window.m_alphaValue, alpha](double progress) {
            window.fadeTo(std::lerp(from, alpha, progress));
        });
}

void NSWindow::setContentView(std::shared_ptr<NSView> view) {
    if (const auto former = std::exchange(m_contentView, std::move(view))) {
        former->viewWillMoveToWindow(nullptr);
        former->viewDidMoveToWindow();
    }
    if (!m_contentView) return;
    m_contentView->viewWillMoveToWindow(this);
    m_contentView->setFrame({{}, m_frame.size});
    m_contentView->viewDidMoveToWindow();
    setViewsNeedDisplay(true);
    textsChanged();
}

void NSWindow::setViewsNeedDisplay(bool needDisplay) {
    if (needDisplay) m_native->displayViews();
}

void NSWindow::textsChanged() { m_native->describe(); }

void NSWindow::orderFrontRegardless() {
    m_visible = true;
    m_native->orderFront();
}

void NSWindow::makeKeyAndOrderFront(const id&) {
    orderFrontRegardless();
    m_native->makeKey();
}

void NSWindow::orderOut(const id&) {
    m_visible = false;
    m_native->orderOut();
}
