#include "AppKit/Qt/Windows/ContentWindow.h"

#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Windows/Coordinates.h"

#include <QCloseEvent>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <cmath>

using WindowServer::Session;

namespace {

/// So long the program counts as active without the keyboard, which none of its windows has for a
/// moment as it goes from one to another, or as the pointer that it follows passes another program.
constexpr int settlingMilliseconds = 200;

// What window managers usually put around a window, in points. The real frame is known too late.
constexpr int usualTitleBar = 32;
constexpr int usualBorder = 6;

/// Takes the keyboard at the turn's end, unless another window has been made key by then: a window
/// manager that answers late would take the keyboard from that one again.
const ContentWindow* toActivate = nullptr;

} // namespace

ContentWindow::ContentWindow(NSWindow& window) : m_window(window) {
    setWindowIcon(programIcon());
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingMilliseconds);
    connect(&m_settling, &QTimer::timeout, this, &ContentWindow::followActivation);
    const auto settle = [this] {
        m_pointer = QCursor::pos();
        m_settling.start();
    };
    connect(qApp, &QGuiApplication::focusWindowChanged, this, settle);
    connect(qApp, &QApplication::focusChanged, this, settle);
}

ContentWindow::~ContentWindow() { ContentWindow::orderOut(); }

void ContentWindow::activate() {
    ContentWindow* front = nullptr;
    for (NativeWindow* each : all()) {
        auto* const window = dynamic_cast<ContentWindow*>(each);
        if (!window) continue;
        window->comeBack();
        if (window->isVisible() && (!front || window->m_order > front->m_order)) front = window;
    }
    toActivate = front;
    if (!front) return;
    const auto take = [front] { return toActivate == front ? front->takeKeyboard() : void(); };
    QMetaObject::invokeMethod(front, take, Qt::QueuedConnection);
}

NSInteger ContentWindow::number() const {
    return isVisible() ? static_cast<NSInteger>(winId()) : 0;
}

void ContentWindow::describe() { setWindowTitle(QString::fromStdString(m_window.title())); }

void ContentWindow::setFrame(const NSRect& frame) {
    if (m_content) place(rectOf(frame));
}

void ContentWindow::setLevel(NSInteger) {
    if (!m_content) renew(m_window);
}

void ContentWindow::makeKey() {
    toActivate = nullptr;
    takeKeyboard();
}

void ContentWindow::load() {
    m_content = m_window.contentViewController()->loadView().release();
    auto* box = new QVBoxLayout(this);
    box->setSpacing(0);
    box->addWidget(m_content);
    m_bars = m_content->toolbarHeight();
    dress();
    describe();
    const QSizeF size = m_content->sizeHint();
    if (m_window.frame().size.width <= 0) m_window.setContentSize({size.width(), size.height()});
}

void ContentWindow::dress() {
    Qt::WindowFlags flags =
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (hasStyle(NSWindowStyleMaskClosable)) flags |= Qt::WindowCloseButtonHint;
    if (hasStyle(NSWindowStyleMaskMiniaturizable)) flags |= Qt::WindowMinimizeButtonHint;
    setWindowFlags(flags);
}

void ContentWindow::place(const QRect& content) {
    const QMargins shadow = QMargins() + m_shadow;
    layout()->setContentsMargins(shadow);
    const QRect whole = keptOnScreen(content).adjusted(0, -m_bars, 0, 0).marginsAdded(shadow);
    setFixedSize(whole.size());
    setGeometry(whole);
}

bool ContentWindow::isManaged() const {
    return !floats(m_window) && Session::current().windows().hasManager();
}

void ContentWindow::center() {
    constexpr double above = 2.0 / 5; // of the height that is left
    if (!m_content) load();           // It may be what tells the size.
    const auto& displays = Session::current().displays();
    if (displays.all().empty()) return;
    const auto* const here = displays.at({NSEvent::mouseLocation(), {}});
    const NSRect& room = here ? here->visibleFrame : displays.all().front().visibleFrame;
    const NSRect whole = frameOf(around(rectOf(m_window.frame())));
    const double left = (room.size.width - whole.size.width) / 2;
    const double under = (room.size.height - whole.size.height) * (1 - above);
    const NSPoint& content = m_window.frame().origin;
    m_window.setFrameOrigin({std::round(room.origin.x + left + content.x - whole.origin.x),
                             std::round(room.origin.y + under + content.y - whole.origin.y)});
}

QRect ContentWindow::around(const QRect& content) const {
    const QRect ours = content.adjusted(0, -m_bars, 0, 0);
    if (!isManaged()) return ours;
    return ours.adjusted(-usualBorder, -usualTitleBar, usualBorder, usualBorder);
}

/// A screen may be lower than the window: what is at its top stays in reach, and what scrolls in it
/// gives way.
QRect ContentWindow::keptOnScreen(QRect content) const {
    const QRect whole = around(content);
    const auto* const display = Session::current().displays().at(frameOf(whole));
    const QRect room = display ? rectOf(display->visibleFrame) : whole;
    const int tooHigh = whole.height() - (room.height() - 1); // May be rounded up to whole pixels.
    content.setHeight(content.height() - std::max(tooHigh, 0));
    content.translate(0, std::max(room.top() - whole.top(), 0));
    return content;
}

void ContentWindow::orderFront() {
    static unsigned lastOrder = 0;
    m_order = ++lastOrder;
    m_away = false;
    if (!m_content) load();
    if (isPutAway()) {
        orderOut();
        destroy();
    }
    // Window managers put a window that comes back where they like, unless it asks for a place.
    if (!isVisible()) place(rectOf(m_window.frame()));
    m_held = Session::current().windows().hold(winId());
    windowHandle()->installEventFilter(this);
    m_held->setName(QCoreApplication::arguments().value(0).toStdString());
    show();
    raise();
    m_isEntering = true;
    QMetaObject::invokeMethod(
        this, [this] { m_isEntering = false; }, Qt::QueuedConnection);
}

/// A window manager may have minimised or shaded it, or left it on another workspace, and another
/// program have destroyed it. Each is undone by a new window, which comes to the front of the
/// workspace at hand.
bool ContentWindow::isPutAway() const {
    if (!isVisible() || m_isEntering) return false;
    const bool isLost = windowHandle()->isVisible() && !windowHandle()->isExposed();
    return isLost || (isManaged() && !isActiveWindow());
}

void ContentWindow::orderOut() {
    m_away = false;
    m_held.reset();
    hide();
}

void ContentWindow::takeKeyboard() {
    if (isManaged())
        activateWindow();
    else if (m_held)
        m_held->takeKeyboard();
}

void ContentWindow::comeBack() {
    if (m_away) orderFront();
}

void ContentWindow::followActivation() {
    // A menu takes the keyboard for as long as it is open, whichever program is the active one.
    const QWindow* const front = QGuiApplication::focusWindow();
    if (front) return front->type() == Qt::Popup ? void() : comeBack();
    // A window that others show for the toolkit is active without being the focus window.
    const QWidget* const active = QApplication::activeWindow();
    if (active && active->testAttribute(Qt::WA_DontShowOnScreen)) return comeBack();
    if (!isVisible() || !m_window.hidesOnDeactivate()) return;
    // A pointer that still moves may be on its way here, and bring the keyboard along.
    const QPoint pointer = QCursor::pos();
    const QPoint before = std::exchange(m_pointer, pointer);
    if (pointer != before) {
        const bool hasCome = geometry().contains(pointer) && !geometry().contains(before);
        return hasCome ? takeKeyboard() : m_settling.start();
    }
    orderOut();
    m_away = true;
}

/// A press anywhere takes the keyboard, where no window manager sees to that. While another window
/// runs modally, that one gets it, and this one no input at all: the toolkit's own modality would
/// take in the buttons and the tray's icon, which always work.
bool ContentWindow::eventFilter(QObject* native, QEvent* event) {
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    const auto* const modal = QGuiApplication::modalWindow();
    if (!modal || modal == native) {
        if (isPress && !isManaged()) takeKeyboard();
        return false;
    }
    if (isPress || event->type() == QEvent::FocusIn)
        if (auto* const front = dynamic_cast<ContentWindow*>(QWidget::find(modal->winId())))
            QMetaObject::invokeMethod(
                front, [front] { front->takeKeyboard(); }, Qt::QueuedConnection);
    const bool isKept =
        (event->isInputEvent() && event->type() != QEvent::Enter) || event->type() == QEvent::Close;
    if (isKept) event->ignore();
    return isKept;
}

/// The close button is for `close`, which hides the window and keeps its widgets.
void ContentWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_window.close();
}

void ContentWindow::moveEvent(QMoveEvent*) {
    if (!isVisible()) return;
    const double bottom = m_shadow + m_bars + m_window.frame().size.height;
    m_window.movedByUser(pointFrom(geometry().topLeft() + QPointF(m_shadow, bottom)));
}
