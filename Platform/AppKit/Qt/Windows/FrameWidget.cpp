#include "AppKit/Qt/Windows/FrameWidget.h"

#include "AppKit/NSScreen.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "AppKit/Qt/Windows/FloatingFrame.h"
#include "WindowServer/Session.h"

#include <QApplication>
#include <QCloseEvent>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

using WindowServer::Session;

namespace {

/// While the keyboard goes from one of the program's windows to another, none may have it; nor
/// while the pointer passes another window where the keyboard follows it.
constexpr int settlingMilliseconds = 200;

// What window managers lay around a window, in points. Theirs is told only once it is there.
constexpr int usualTitleBar = 32;
constexpr int usualBorder = 6;

constexpr NSInteger firstOwnLevel = 1000; ///< From here on window managers have no say.

Qt::WindowFlags managedFlags(NSUInteger style) {
    Qt::WindowFlags flags =
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (style & NSWindowStyleMaskClosable) flags |= Qt::WindowCloseButtonHint;
    if (style & NSWindowStyleMaskMiniaturizable) flags |= Qt::WindowMinimizeButtonHint;
    return flags;
}

/// What is free on the screen that the rectangle is mostly on; the rectangle itself where there is
/// none.
QRect roomAround(const QRect& rect) {
    for (const auto& screen : NSScreen::screens())
        if (rectOf(screen->frame()).contains(rect.center())) return rectOf(screen->visibleFrame());
    return rect;
}

} // namespace

std::unique_ptr<FrameWidget> FrameWidget::make(NSWindow& window,
                                               std::unique_ptr<ViewContent> content) {
    if (window.level() >= firstOwnLevel)
        return std::make_unique<FloatingFrame>(window, std::move(content));
    return std::unique_ptr<FrameWidget>(
        new FrameWidget(window, std::move(content), {}, managedFlags(window.styleMask())));
}

FrameWidget::FrameWidget(NSWindow& window, std::unique_ptr<ViewContent> content,
                         const Chrome& chrome, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), m_window(window), m_content(content.release()),
      m_shadow(chrome.shadow),
      m_chrome(m_shadow, m_shadow + chrome.titleBar + m_content->toolbarHeight(), m_shadow,
               m_shadow) {
    setWindowTitle(QString::fromStdString(window.title()));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(m_chrome - QMargins(0, m_content->toolbarHeight(), 0, 0));
    layout->setSpacing(0);
    layout->addWidget(m_content);
    if (window.frame().size.width <= 0)
        window.setContentSize(
            {m_content->sizeHint().width() * 1.0, m_content->sizeHint().height() * 1.0});
    place(rectOf(window.frame()));
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingMilliseconds);
    connect(&m_settling, &QTimer::timeout, this, &FrameWidget::followActivation);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] {
        m_pointer = QCursor::pos();
        m_settling.start();
    });
}

std::unique_ptr<ViewContent> FrameWidget::takeContent() {
    m_content->setParent(nullptr);
    return std::unique_ptr<ViewContent>(m_content);
}

void FrameWidget::place(const QRect& content) {
    const QRect whole = keptOnScreen(content).marginsAdded(m_chrome);
    if (hasStyle(NSWindowStyleMaskResizable))
        resize(whole.size());
    else
        setFixedSize(whole.size());
    setGeometry(whole);
}

bool FrameWidget::isManaged() const {
    return m_window.level() < firstOwnLevel && Session::current().hasWindowManager();
}

QRect FrameWidget::around(const QRect& content) const {
    const QMargins theirs(usualBorder, usualTitleBar, usualBorder, usualBorder);
    const QMargins ours = m_chrome - m_shadow;
    return content.marginsAdded(isManaged() ? ours + theirs : ours);
}

/// A screen may be lower than the window: what is at its top stays in reach, and what scrolls in it
/// gives way.
QRect FrameWidget::keptOnScreen(QRect content) const {
    const QRect whole = around(content);
    const QRect room = roomAround(whole);
    const int tooHigh = whole.height() - (room.height() - 1); // May be rounded up to whole pixels.
    content.setHeight(content.height() - std::max(tooHigh, 0));
    content.translate(0, std::max(room.top() - whole.top(), 0));
    return content;
}

void FrameWidget::enter() {
    static unsigned lastOrder = 0;
    m_order = ++lastOrder;
    m_away = false;
    if (isPutAway()) {
        leave();
        destroy();
    }
    // Window managers put a window that comes back where they like, unless it asks for a place.
    if (!isVisible()) place(rectOf(m_window.frame()));
    Session::current().setName(winId(), QCoreApplication::arguments().value(0).toStdString());
    show();
    raise();
    m_isEntering = true;
    QMetaObject::invokeMethod(
        this, [this] { m_isEntering = false; }, Qt::QueuedConnection);
}

/// A window manager may have minimised or shaded it, or left it on another workspace, and another
/// program have destroyed it. Each is undone by a new window, which comes to the front of the
/// workspace at hand.
bool FrameWidget::isPutAway() const {
    if (!isVisible() || m_isEntering) return false;
    return !windowHandle()->isExposed() || (isManaged() && !isActiveWindow());
}

void FrameWidget::renew() {
    leave();
    destroy();
    enter();
    takeKeyboard();
}

void FrameWidget::leave() {
    m_away = false;
    if (!isVisible()) return;
    Session::current().giveKeyboardBack(winId());
    hide();
}

void FrameWidget::takeKeyboard() {
    if (Session::current().hasWindowManager())
        activateWindow();
    else
        Session::current().takeKeyboard(winId());
}

void FrameWidget::comeBack() {
    if (m_away) enter();
}

void FrameWidget::followActivation() {
    // A menu takes the keyboard for as long as it is open, whichever program is the active one.
    const QWindow* const front = QGuiApplication::focusWindow();
    if (front) return front->type() == Qt::Popup ? void() : comeBack();
    if (!isVisible() || !m_window.hidesOnDeactivate()) return;
    // A pointer on its way here, which takes the keyboard along, is no sign of another program
    // being wanted.
    const QPoint pointer = QCursor::pos();
    const QPoint before = std::exchange(m_pointer, pointer);
    if (pointer != before) {
        const bool hasCome = geometry().contains(pointer) && !geometry().contains(before);
        return hasCome ? takeKeyboard() : m_settling.start();
    }
    leave();
    m_away = true;
}

/// The window manager's close button goes the window's own way.
void FrameWidget::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_window.close();
}

void FrameWidget::moveEvent(QMoveEvent*) {
    if (!isVisible()) return;
    const QPoint corner = geometry().marginsRemoved(m_chrome).topLeft();
    m_window.movedByUser(pointFrom(QPointF(corner.x(), corner.y() + m_window.frame().size.height)));
}
