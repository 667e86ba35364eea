#include "AppKit/FloatingFrame+Private.h"

#include "AppKit/TitleBar+Private.h"
#include "AppKit/ViewContent+Private.h"
#include "WindowServer/Session.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cmath>

using WindowServer::Session;

namespace {

// In points.
constexpr int shadowReach = 24;
constexpr int shadowDrop = 6;
constexpr double corner = 10;
constexpr int leastOnScreen = 60; ///< Of a window that is dragged off a screen.

bool isComposited() { return Session::current().isComposited(); }

bool hasTitleBar(const NSWindow& window) {
    return !window.title().empty() || (window.styleMask() & NSWindowStyleMaskClosable);
}

QMargins chromeOf(const NSWindow& window) {
    const int margin = isComposited() ? shadowReach : 0;
    const int bar = hasTitleBar(window) ? TitleBar::height : 0;
    return {margin, margin + bar, margin, margin};
}

/// Many faint outlines, each a little larger, add up to a soft edge.
void paintShadow(QPainter& painter, const QRectF& body) {
    constexpr double darkest = 0.025;
    painter.setPen(Qt::NoPen);
    for (int reach = shadowReach; reach > 0; --reach) {
        const double near = 1.0 - static_cast<double>(reach) / shadowReach;
        painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(darkest * near)));
        painter.drawRoundedRect(body.adjusted(-reach, -reach + shadowDrop, reach,
                                              std::min(reach + shadowDrop, shadowReach)),
                                corner + reach, corner + reach);
    }
}

} // namespace

FloatingFrame::FloatingFrame(NSWindow& window, std::unique_ptr<ViewContent> content)
    : FrameWidget(window, std::move(content), chromeOf(window),
                  Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint),
      m_translucent(isComposited()) {
    connect(qApp, &QGuiApplication::screenRemoved, this, &FloatingFrame::returnToScreen,
            Qt::QueuedConnection);
    if (m_translucent) setAttribute(Qt::WA_TranslucentBackground);
    if (!hasTitleBar(window)) return;
    auto* bar = new TitleBar(*this, hasStyle(NSWindowStyleMaskClosable));
    const QRect place = body();
    bar->setGeometry(place.left(), place.top(), place.width(), TitleBar::height);
}

QRect FloatingFrame::body() const {
    const int margin = m_translucent ? shadowReach : 0;
    return rect().adjusted(margin, margin, -margin, -margin);
}

/// To the main screen's middle, from a screen that is no more.
void FloatingFrame::returnToScreen() {
    const QRect shown = body().translated(pos());
    const auto screens = QGuiApplication::screens();
    const bool isSeen = std::ranges::any_of(screens, [&](const QScreen* screen) {
        const QRect seen = screen->geometry() & shown;
        return seen.width() >= leastOnScreen && seen.height() >= leastOnScreen;
    });
    if (isSeen || screens.empty()) return;
    const QRect room = screens.front()->availableGeometry();
    move(room.center() - rect().center());
}

void FloatingFrame::enter() {
    FrameWidget::enter();
    Session::current().setName(winId(), hasTitleBar(window()) ? "window" : "alert");
    if (m_translucent)
        Session::current().setShadowMargin(
            winId(), static_cast<int>(std::lround(shadowReach * devicePixelRatioF())));
    Session::current().setLevel(winId(), static_cast<int>(window().level()));
}

void FloatingFrame::leave() {
    if (isVisible()) Session::current().dropLevel(winId());
    FrameWidget::leave();
}

void FloatingFrame::takeKeyboard() { Session::current().takeKeyboard(winId()); }

void FloatingFrame::checkForm() {
    if (m_translucent != isComposited()) onWrongForm();
}

void FloatingFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF outline = QRectF(body()).adjusted(0.5, 0.5, -0.5, -0.5);
    const double radius = m_translucent ? corner : 0; // Only a compositor rounds off smoothly.
    if (m_translucent) paintShadow(painter, outline);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.2F);
    painter.setPen(line);
    painter.setBrush(palette().color(QPalette::Window));
    painter.drawRoundedRect(outline, radius, radius);
}

void FloatingFrame::mousePressEvent(QMouseEvent* event) {
    m_grip = event->globalPosition().toPoint() - pos();
}

/// The title bar's middle stays in reach on some screen.
void FloatingFrame::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) return;
    const QPoint pointer = event->globalPosition().toPoint();
    const QScreen* const screen = QGuiApplication::screenAt(pointer);
    if (!screen) return;
    const QRect room = screen->availableGeometry();
    const QRect shown = body();
    const QPoint wanted = pointer - m_grip + shown.topLeft();
    const int x = std::clamp(wanted.x(), room.left() - shown.width() + leastOnScreen,
                             room.right() - leastOnScreen);
    const int y = std::clamp(wanted.y(), room.top(), room.bottom() - TitleBar::height);
    move(QPoint(x, y) - shown.topLeft());
}
