#include "AppKit/Qt/Windows/ContentWindow.h"

#include "AppKit/NSViewController.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "AppKit/Qt/Windows/FrameWidget.h"

#include <vector>

namespace {

/// All that there are, oldest first. The list outlives every window.
std::vector<ContentWindow*>& windows() {
    static auto* const all = new std::vector<ContentWindow*>;
    return *all;
}

/// Takes the keyboard at the turn's end, unless a window is made key before that. The window
/// manager may answer late, and would then take it from that one again.
QPointer<FrameWidget> toActivate;

} // namespace

ContentWindow::ContentWindow(NSWindow& window) : m_window(window) { windows().push_back(this); }

ContentWindow::~ContentWindow() {
    ContentWindow::orderOut();
    std::erase(windows(), this);
}

void ContentWindow::compositingChanged() {
    for (const ContentWindow* window : windows())
        if (window->m_frame) window->m_frame->checkForm();
}

void ContentWindow::windowGone(WindowServer::ToolkitWindow gone) {
    for (const ContentWindow* window : windows())
        if (window->m_frame && window->m_frame->internalWinId() == gone) window->m_frame->renew();
}

void ContentWindow::activate() {
    FrameWidget* front = nullptr;
    for (const ContentWindow* window : windows()) {
        FrameWidget* const frame = window->m_frame.get();
        if (!frame) continue;
        frame->comeBack();
        if (frame->isVisible() && (!front || frame->orderedAfter(*front))) front = frame;
    }
    toActivate = front;
    const auto take = [front] {
        if (toActivate == front) front->takeKeyboard();
    };
    if (front) QMetaObject::invokeMethod(front, take, Qt::QueuedConnection);
}

void ContentWindow::leaveForGood() {
    for (ContentWindow* window : windows()) {
        window->orderOut();
        window->m_frame.reset();
    }
}

NSInteger ContentWindow::number() const {
    return m_frame && m_frame->isVisible() ? static_cast<NSInteger>(m_frame->winId()) : 0;
}

NSRect ContentWindow::frameAround(const NSRect& content) const {
    return m_frame ? frameOf(m_frame->around(rectOf(content))) : content;
}

void ContentWindow::setTitle(const std::string& title) {
    if (m_frame) m_frame->setWindowTitle(QString::fromStdString(title));
}

void ContentWindow::setFrame(const NSRect& frame) {
    if (m_frame) m_frame->place(rectOf(frame));
}

void ContentWindow::makeKey() {
    toActivate = nullptr;
    if (m_frame) m_frame->takeKeyboard();
}

void ContentWindow::orderFront() {
    if (!m_frame) {
        makeFrame(m_window.contentViewController()->loadView());
        m_window.setContentSize(m_window.frame().size); // Known by now, as is all around it.
    }
    // Modal to no window as the toolkit sees it: ModalInput says which take no input meanwhile.
    m_frame->setWindowModality(m_modal ? Qt::WindowModal : Qt::NonModal);
    m_frame->enter();
}

void ContentWindow::orderOut() {
    if (m_frame) m_frame->leave();
}

void ContentWindow::makeFrame(std::unique_ptr<ViewContent> content) {
    m_frame = FrameWidget::make(m_window, std::move(content));
    m_frame->onWrongForm = [this] { changeForm(); };
}

void ContentWindow::changeForm() {
    FrameWidget* const former = m_frame.release(); // It is still telling of the change.
    const bool shown = former->isVisible();
    former->leave();
    former->deleteLater();
    makeFrame(former->takeContent());
    if (!shown) return;
    orderFront();
    makeKey();
}
