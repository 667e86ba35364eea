#include "AppKit/Qt/Windows/FloatingWindow.h"

#include "AppKit/Qt/Panels/PanelPicture.h"
#include "AppKit/Qt/Windows/TitleBar.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QScreen>
#include <QWindow>
#include <qdrawutil.h>

#include <algorithm>
#include <cmath>

using WindowServer::Session;

namespace {

// In points.
constexpr double corner = 10;
constexpr int leastOnScreen = 60; ///< Of a window that is dragged off a screen.

bool isComposited() { return Session::current().windows().areComposited(); }

/// A ground with its outline and shadow, in pixels, as small as it can be: a pixel wide and high
/// between its corners.
QPixmap groundOf(double scale, const QColor& fill, const QColor& line) {
    const double margin = std::lround(softShadowMargin * scale);
    const int side = 2 * static_cast<int>(std::lround(corner * scale + margin)) + 1;
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, scale));
    painter.setBrush(fill);
    const double inset = scale / 2;
    painter.drawRoundedRect(QRectF(picture.rect()).adjusted(inset, inset, -inset, -inset),
                            corner * scale, corner * scale);
    painter.end();
    return QPixmap::fromImage(withShadow(picture, scale));
}

/// The same, drawn once.
QPixmap cachedGround(double scale, const QColor& fill, const QColor& line) {
    const QString key = QString("ground %1 %2").arg(scale).arg(fill.name());
    QPixmap ground;
    if (QPixmapCache::find(key, &ground)) return ground;
    ground = groundOf(scale, fill, line);
    QPixmapCache::insert(key, ground);
    return ground;
}

} // namespace

bool FloatingWindow::hasTitleBar() const {
    return !window().title().empty() || hasStyle(NSWindowStyleMaskClosable);
}

void FloatingWindow::dress() {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    connect(qApp, &QGuiApplication::screenRemoved, this, &FloatingWindow::returnToScreen,
            Qt::QueuedConnection);
    if (hasTitleBar())
        static_cast<QBoxLayout*>(layout())->insertWidget(
            0, new TitleBar(*this, hasStyle(NSWindowStyleMaskClosable)));
    takeForm();
}

void FloatingWindow::takeForm() {
    m_translucent = isComposited();
    setAttribute(Qt::WA_TranslucentBackground, m_translucent);
    setAttribute(Qt::WA_NoSystemBackground, m_translucent);
    setChrome(hasTitleBar() ? TitleBar::height : 0, m_translucent ? softShadowMargin : 0);
}

void FloatingWindow::checkForm() {
    if (m_translucent == isComposited()) return;
    const bool wasShown = isVisible();
    if (wasShown) orderOut();
    destroy();
    takeForm();
    if (!wasShown) return;
    orderFront();
    makeKey();
}

QRect FloatingWindow::body() const { return rect().marginsRemoved(QMargins() + shadow()); }

/// Moves to the middle of the main screen where its own screen has gone.
void FloatingWindow::returnToScreen() {
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

void FloatingWindow::orderFront() {
    ContentWindow::orderFront();
    windowHandle()->installEventFilter(this);
    held()->setName(hasTitleBar() ? "window" : "alert");
    if (m_translucent)
        held()->setShadowMargin(static_cast<int>(std::lround(shadow() * devicePixelRatioF())));
    held()->setLevel(static_cast<int>(window().level()));
    held()->onGone = [this] {
        orderOut();
        destroy();
        orderFront();
        takeKeyboard();
    };
}

void FloatingWindow::takeKeyboard() {
    if (held()) held()->takeKeyboard();
}

void FloatingWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor fill = palette().color(QPalette::Window);
    QColor line = palette().color(QPalette::WindowText);
    if (!m_translucent) {
        // Without a shadow the outline alone sets it off from the windows behind.
        line.setAlphaF(0.5F);
        painter.setPen(line);
        painter.setBrush(fill);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        return;
    }
    line.setAlphaF(0.2F);
    const double scale = scaleOf(painter);
    const QPixmap ground = cachedGround(scale, fill, line);
    painter.scale(1 / scale, 1 / scale);
    qDrawBorderPixmap(&painter, {{}, size() * scale}, QMargins() + ground.width() / 2, ground);
}

/// A press anywhere in it takes the keyboard, as no window manager sees to that.
bool FloatingWindow::eventFilter(QObject* native, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) takeKeyboard();
    return ContentWindow::eventFilter(native, event);
}

void FloatingWindow::mousePressEvent(QMouseEvent* event) {
    m_grip = event->globalPosition().toPoint() - pos();
}

/// The title bar's middle stays in reach on some screen.
void FloatingWindow::mouseMoveEvent(QMouseEvent* event) {
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
