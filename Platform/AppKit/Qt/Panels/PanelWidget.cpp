#include "AppKit/Qt/Panels/PanelWidget.h"

#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Menus/MenuPopup.h"
#include "AppKit/Qt/Panels/PanelPicture.h"
#include "AppKit/Qt/Panels/SoftShadow.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "WindowServer/Session.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWindow>

#include <cmath>
#include <utility>

using WindowServer::Session;

namespace {

/// The windows behind take their time to redraw what has come to light.
constexpr int lookAfterMilliseconds = 60;

NSEvent eventOf(NSEventType type, Qt::KeyboardModifiers modifiers) {
    return {type, modifiers & Qt::ControlModifier ? NSUInteger{NSEventModifierFlagControl} : 0};
}

/// The output that holds the middle of the frame.
std::string outputAt(const NSRect& frame) {
    const NSPoint middle{CGRectGetMidX(frame), CGRectGetMidY(frame)};
    for (const auto& display : Session::current().displays())
        if (CGRectContainsPoint(display.frame, middle)) return display.name;
    return {};
}

} // namespace

std::shared_ptr<PanelWidget> PanelWidget::make(NSWindow& window) {
    return {new PanelWidget(window), [](PanelWidget* widget) { widget->deleteLater(); }};
}

PanelWidget::PanelWidget(NSWindow& window)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                           Qt::WindowDoesNotAcceptFocus),
      m_window(&window), m_translucent(Session::current().isComposited()),
      m_margin(m_translucent && window.hasShadow() ? softShadowMargin : 0),
      m_alpha(window.alphaValue()) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(m_translucent ? Qt::WA_TranslucentBackground : Qt::WA_OpaquePaintEvent);
    m_look.setSingleShot(true);
    m_look.setInterval(lookAfterMilliseconds);
    connect(&m_look, &QTimer::timeout, this, [this] { lookBehind(); });
}

void PanelWidget::enter() {
    create();
    windowHandle()->installEventFilter(this);
    updateTexts();
    setGeometry(place());
    updateFrame();
    Session::current().setName(winId(), "button:" + outputAt(m_window->frame()));
    if (m_margin > 0)
        Session::current().setShadowMargin(
            winId(), static_cast<int>(std::lround(m_margin * devicePixelRatioF())));
    updateLevel();
    draw();
    lookBehind();
    show();
    m_look.start();
}

void PanelWidget::leave() {
    Session::current().dropLevel(winId());
    m_window = nullptr;
    m_look.stop();
    hide();
    // A hidden window that hears of a drag still on its way would stay the pressed one for the
    // toolkit, even when it is no more. So it goes at once, but not in the middle of an event.
    if (m_delivering == 0) destroy();
}

void PanelWidget::checkForm() {
    const bool suits = m_translucent == Session::current().isComposited();
    if (m_window && !m_pressed && !suits) onWrongForm();
}

/// The toolkit knows whole points alone.
QRect PanelWidget::place() const {
    return rectOf(CGRectInset(m_window->frame(), -m_margin, -m_margin));
}

/// The toolkit by itself would take another program's move for the user's and drop its own move to
/// the same place as one that is done.
void PanelWidget::updateFrame() {
    if (!Session::current().place(winId(), frameOf(place()))) setGeometry(place());
    if (!m_look.isActive()) m_look.start();
}

void PanelWidget::updateLevel() {
    Session::current().setLevel(winId(), static_cast<int>(m_window->level()));
}

void PanelWidget::updateAlpha() {
    const double before = std::exchange(m_alpha, m_window->alphaValue());
    if (before == 1) lookBehind(); // Now it is seen through the panel.
    update();
}

void PanelWidget::updatePicture() {
    m_picture = {};
    m_look.start();
    update();
}

void PanelWidget::updateTexts() {
    setWindowTitle(QString::fromStdString(m_window->title()));
    if (!m_window->contentView()) return;
    setTip(QString::fromStdString(m_window->contentView()->toolTip()));
    setAccessibleName(QString::fromStdString(m_window->contentView()->accessibilityLabel()));
}

/// The one that is on the screen changes with it.
void PanelWidget::setTip(const QString& tip) {
    const bool shown = m_hovered && QToolTip::isVisible() && QToolTip::text() == toolTip();
    setToolTip(tip);
    if (shown) QToolTip::showText(QCursor::pos(), tip, this);
}

NSView* PanelWidget::view() const { return m_window ? m_window->contentView().get() : nullptr; }

// --- Looks

void PanelWidget::draw() {
    const double scale = devicePixelRatioF();
    m_picture = {};
    if (view()) m_picture = pictureOf(*view(), m_window->frame().size, scale);
    m_shadowed = m_margin > 0 ? withShadow(m_picture, m_margin * scale, scale) : m_picture;
    m_shadowed.setDevicePixelRatio(scale);
    setShapes();
}

/// What the drawing leaves clear neither hides anything nor takes input.
void PanelWidget::setShapes() {
    const int margin = static_cast<int>(std::lround(m_margin * devicePixelRatioF()));
    auto ink = inkOf(m_picture);
    for (auto& run : ink) {
        run.x += margin;
        run.y += margin;
    }
    if (!m_translucent) Session::current().setShape(winId(), Session::Region::Bounding, ink);
    if (m_window->ignoresMouseEvents()) ink.clear();
    Session::current().setShape(winId(), Session::Region::Input, ink);
}

/// A look, not a watch: what changes behind a panel that stays as it is does not show through.
void PanelWidget::lookBehind() {
    if (m_translucent || !m_window) return;
    if (m_picture.isNull()) draw();
    constexpr int rim = 2;
    const QImage behind =
        estimateBehind(m_picture, Session::current().grabAround(winId(), rim), hiddenByOurs());
    if (behind.isNull()) return;
    m_behind = behind;
    update();
}

/// What windows of the program's own that stand above panels hide of the surroundings, in pixels.
QRegion PanelWidget::hiddenByOurs() const {
    QRegion hidden;
    for (const QWidget* each : QApplication::topLevelWidgets()) {
        const bool isAbove = each->windowType() == Qt::Popup || each->windowType() == Qt::ToolTip ||
                             each->windowFlags() & Qt::BypassWindowManagerHint;
        if (each == this || !each->isVisible() || !isAbove) continue;
        const QRectF place = each->geometry().translated(-pos());
        const double scale = devicePixelRatioF();
        hidden += QRectF(place.topLeft() * scale, place.size() * scale).toAlignedRect();
    }
    return hidden;
}

void PanelWidget::paintEvent(QPaintEvent*) {
    if (!m_window) return;
    const double scale = devicePixelRatioF();
    const QSize size(static_cast<int>(std::lround(m_window->frame().size.width * scale)),
                     static_cast<int>(std::lround(m_window->frame().size.height * scale)));
    if (m_picture.size() != size) draw();
    QPainter painter(this);
    if (m_translucent) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    } else if (!m_behind.isNull()) {
        m_behind.setDevicePixelRatio(scale);
        painter.drawImage(0, 0, m_behind);
    } else {
        painter.fillRect(rect(), Qt::black);
    }
    painter.setOpacity(m_alpha);
    painter.drawImage(0, 0, m_shadowed);
}

// --- Input

bool PanelWidget::eventFilter(QObject* window, QEvent* event) {
    if (const auto* mouse = dynamic_cast<const QMouseEvent*>(event))
        m_mouse = mouse->globalPosition();
    return QWidget::eventFilter(window, event);
}

void PanelWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_pressed = true;
        send(&NSView::mouseDown, NSEventTypeLeftMouseDown, *event);
    } else if (event->button() == Qt::RightButton && !m_pressed) {
        // During a drag its menu would take the release, and the drag would never end.
        send(&NSView::rightMouseDown, NSEventTypeRightMouseDown, *event);
    }
}

void PanelWidget::mouseMoveEvent(QMouseEvent* event) {
    if (m_pressed) send(&NSView::mouseDragged, NSEventTypeLeftMouseDragged, *event);
}

void PanelWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(m_pressed, false)) return;
    send(&NSView::mouseUp, NSEventTypeLeftMouseUp, *event);
    checkForm();
}

void PanelWidget::enterEvent(QEnterEvent*) { hover(true); }

void PanelWidget::leaveEvent(QEvent*) { hover(false); }

/// Not told while a menu is open: that the pointer goes to it, or to whatever is around it, means
/// nothing to what lies beneath.
void PanelWidget::hover(bool hovered) {
    m_hovered = hovered;
    if (!MenuPopup::isOpen()) tellTrackers();
}

void PanelWidget::forgetPointer() {
    m_hovered = false;
    tellTrackers();
}

void PanelWidget::menuClosed() {
    m_pressed = false;
    m_look.start(); // It may have hidden what lies behind.
    tellTrackers();
    checkForm();
}

void PanelWidget::press() {
    const auto self = shared_from_this();
    const NSPoint middle = {CGRectGetMidX(m_window->frame()), CGRectGetMidY(m_window->frame())};
    const auto at = [&](Handler handler, NSEventType type) {
        if (view()) deliver(handler, *view(), eventOf(type, {}), middle);
    };
    at(&NSView::mouseDown, NSEventTypeLeftMouseDown);
    at(&NSView::mouseUp, NSEventTypeLeftMouseUp);
}

void PanelWidget::send(Handler handler, NSEventType type, const QMouseEvent& event) {
    if (!view()) return;
    const NSEvent translated = eventOf(type, event.modifiers());
    const bool first = QGuiApplication::applicationState() != Qt::ApplicationActive;
    if (first && !view()->acceptsFirstMouse(translated)) return;
    deliver(handler, *view(), translated, pointFrom(m_mouse));
}

void PanelWidget::tellTrackers() {
    if (!view()) return;
    if (std::exchange(m_toldHovered, m_hovered) == m_hovered) return;
    const Handler handler = m_hovered ? &NSView::mouseEntered : &NSView::mouseExited;
    const auto type = m_hovered ? NSEventTypeMouseEntered : NSEventTypeMouseExited;
    const NSEvent event = eventOf(type, QGuiApplication::queryKeyboardModifiers());
    for (const auto& area : std::vector(view()->trackingAreas()))
        if (area->options() & NSTrackingMouseEnteredAndExited)
            deliver(handler, *area->owner(), event, {});
}

/// What the view does may put an end to the window, and a menu that it opens to everything.
void PanelWidget::deliver(Handler handler, NSView& view, const NSEvent& event,
                          std::optional<NSPoint> location) {
    const auto self = shared_from_this();
    const auto content = m_window->contentView();
    const CurrentEvent current(event, location);
    ++m_delivering;
    (view.*handler)(event);
    --m_delivering;
}
