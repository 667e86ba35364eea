#include "WindowServer/Shell/ShellWindows.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace WindowServer {

namespace {

bool isPopup(WindowId window) {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [window](const QWindow* each) {
        return each->type() == Qt::Popup && each->handle() && each->winId() == window;
    });
}

} // namespace

class ShellWindows::Lifted : public ToolkitWindow, public std::enable_shared_from_this<Lifted> {
public:
    Lifted(ShellWindows& windows, WindowId window)
        : m_windows(windows), m_window(window), m_onServer(windows.m_onServer.hold(window)) {
        m_onServer->onGone = [this] {
            const auto tell = onGone; // The object may go with it.
            if (tell) tell();
        };
    }
    ~Lifted() override {
        if (m_level) m_windows.m_link.tell("Drop", {static_cast<uint>(m_window)});
        m_windows.m_windows.erase(m_window);
    }

    void setName(const std::string& name) override { m_onServer->setName(name); }
    void setShadowMargin(int margin) override { m_onServer->setShadowMargin(margin); }
    bool place(const CGRect& frame) override { return m_onServer->place(frame); }
    void setShape(Region region, const std::vector<PixelRect>& rectangles) override {
        m_onServer->setShape(region, rectangles);
    }
    Snapshot grabAround(int margin) override { return m_onServer->grabAround(margin); }

    void setLevel(int level) override {
        m_onServer->setLevel(level);
        m_level = level;
        lift();
        // A popup has the keyboard of the X server, which may have none itself.
        if (isPopup(m_window)) m_keyboard = m_windows.m_keyboard.hold([] {});
    }
    void lift() const {
        if (m_level)
            m_windows.m_link.tell("Lift",
                                  {static_cast<uint>(m_window), *m_level, isPopup(m_window)});
    }

    void takeKeyboard() override {
        const QWindow* const front = QGuiApplication::focusWindow();
        if (m_keyboard && front && front->winId() == m_window) return;
        m_keyboard = m_windows.m_keyboard.hold([weakSelf = weak_from_this()] {
            if (const auto self = weakSelf.lock()) self->m_onServer->takeKeyboard();
        });
    }

private:
    ShellWindows& m_windows;
    const WindowId m_window;
    std::shared_ptr<void> m_keyboard; ///< Let go of after the window has given its own back.
    const std::shared_ptr<ToolkitWindow> m_onServer;
    std::optional<int> m_level;
};

ShellWindows::ShellWindows(Connection& connection, ToolkitWindows& onServer, ShellLink& link)
    : m_onServer(onServer), m_link(link), m_keyboard(connection) {}

std::shared_ptr<ToolkitWindow> ShellWindows::hold(WindowId window) {
    Lifted*& known = m_windows[window];
    if (known) return known->shared_from_this();
    const auto made = std::make_shared<Lifted>(*this, window);
    known = made.get();
    return made;
}

void ShellWindows::attached() {
    for (const auto& [number, window] : m_windows)
        window->lift();
}

void ShellWindows::handle(const xcb_generic_event_t& event) { m_keyboard.handle(event); }

void ShellWindows::closePopups() {
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->type() == Qt::Popup && window->isVisible()) window->close();
}

} // namespace WindowServer
