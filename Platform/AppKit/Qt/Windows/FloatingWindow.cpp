#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Panels/PanelPicture.h"
#include "AppKit/Qt/Windows/ContentWindow.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPixmapCache>
#include <QScreen>
#include <qdrawutil.h>

#include <algorithm>
#include <cmath>

using WindowServer::Session;

namespace {

// In points.
constexpr double corner = 10;
constexpr int titleBarHeight = 30;
constexpr int leastOnScreen = 60; ///< Of a window that is dragged off a screen.
constexpr int buttonSize = 18;
constexpr int buttonInset = 8; ///< From the bar's right end.
constexpr double crossReach = 3.5;

/// A cross in a disc, which shows while the pointer or the keyboard is on it.
class CloseButton : public QAbstractButton {
public:
    explicit CloseButton(QWidget* parent) : QAbstractButton(parent) {
        setAccessibleName("Close");
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setFixedSize(buttonSize, buttonSize);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : Qt::NoPen);
        painter.setBrush(faintText(palette(), isDown()                     ? 0.25
                                              : underMouse() || hasFocus() ? 0.15
                                                                           : 0.08));
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
        painter.setPen(QPen(faintText(palette(), 0.75), 1.4, Qt::SolidLine, Qt::RoundCap));
        painter.translate(QRectF(rect()).center());
        painter.drawLine(QPointF(-crossReach, -crossReach), QPointF(crossReach, crossReach));
        painter.drawLine(QPointF(-crossReach, crossReach), QPointF(crossReach, -crossReach));
    }
};

/// The bar on top: the window's title, and a button to close it.
class TitleBar : public QWidget {
public:
    explicit TitleBar(QWidget& window) : QWidget(&window) {
        setFixedHeight(titleBarHeight);
        connect(&window, &QWidget::windowTitleChanged, this, [this] { update(); });
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, buttonInset, 0);
        auto* close = new CloseButton(this);
        layout->addWidget(close, 0, Qt::AlignRight | Qt::AlignVCenter);
        connect(close, &QAbstractButton::clicked, &window, &QWidget::close);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QFont bold = font();
        bold.setWeight(QFont::DemiBold);
        painter.setFont(bold);
        const int aside = buttonSize + 2 * buttonInset;
        const QRect room = rect().adjusted(aside, 0, -aside, 0);
        painter.drawText(room, Qt::AlignCenter,
                         painter.fontMetrics().elidedText(window()->windowTitle(), Qt::ElideRight,
                                                          room.width()));
    }
};

bool isComposited() { return Session::current().windows().areComposited(); }

/// A ground with its outline and shadow, in pixels, as small as it can be: a pixel wide and high
/// between its corners. It is drawn once.
QPixmap groundOf(double scale, const QColor& fill, const QColor& line) {
    const QString key = QString("ground %1 %2").arg(scale).arg(fill.name());
    QPixmap ground;
    if (QPixmapCache::find(key, &ground)) return ground;
    const double margin = std::lround(softShadowMargin * scale);
    const int side = 2 * static_cast<int>(std::lround(corner * scale + 2 * margin)) + 1;
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, scale));
    painter.setBrush(fill);
    const double inset = margin + scale / 2;
    painter.drawRoundedRect(QRectF(picture.rect()).adjusted(inset, inset, -inset, -inset),
                            corner * scale, corner * scale);
    painter.end();
    ground = QPixmap::fromImage(withShadow(picture, scale));
    QPixmapCache::insert(key, ground);
    return ground;
}

/// A window that stands above all others and that no window manager knows of. It has a frame of its
/// own, and under a compositor a shadow, and is dragged by its title bar or an empty place.
class FloatingWindow : public ContentWindow {
public:
    using ContentWindow::ContentWindow;

    void orderFront() override {
        if (!isVisible()) takeForm();
        ContentWindow::orderFront();
        m_held->setName(hasTitleBar() ? "window" : "alert");
        m_held->setShadowMargin(static_cast<int>(std::lround(m_shadow * devicePixelRatioF())));
        m_held->setLevel(static_cast<int>(m_window.level()));
        m_held->onGone = [this] { comeAnew(); };
    }

protected:
    void dress() override {
        setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        connect(qApp, &QGuiApplication::screenRemoved, this, &FloatingWindow::returnToScreen,
                Qt::QueuedConnection);
        if (!hasTitleBar()) return;
        static_cast<QBoxLayout*>(layout())->insertWidget(0, new TitleBar(*this));
        m_bars += titleBarHeight;
    }

    void checkForm() override {
        if (m_held && isTranslucent() != isComposited()) comeAnew();
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QColor fill = palette().color(QPalette::Window);
        if (!isTranslucent()) {
            // Without a shadow the outline alone sets it off from the windows behind.
            painter.setPen(faintText(palette(), 0.5));
            painter.setBrush(fill);
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
            return;
        }
        const double scale = scaleOf(painter);
        const QPixmap ground = groundOf(scale, fill, faintText(palette(), 0.2));
        painter.scale(1 / scale, 1 / scale);
        qDrawBorderPixmap(&painter, {{}, size() * scale}, QMargins() + ground.width() / 2, ground);
    }

    void mousePressEvent(QMouseEvent* event) override {
        m_grip = event->globalPosition().toPoint() - pos();
    }

    void mouseReleaseEvent(QMouseEvent*) override { m_grip.reset(); }

    /// The title bar's middle stays in reach on some screen. A button that is pressed lets the
    /// moves beside it through.
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!m_grip || !(event->buttons() & Qt::LeftButton)) return;
        const QPoint pointer = event->globalPosition().toPoint();
        const QScreen* const screen = QGuiApplication::screenAt(pointer);
        if (!screen) return;
        const QRect room = screen->availableGeometry();
        const QRect shown = body();
        const QPoint wanted = pointer - *m_grip + shown.topLeft();
        const int x = std::clamp(wanted.x(), room.left() - shown.width() + leastOnScreen,
                                 room.right() - leastOnScreen);
        const int y = std::clamp(wanted.y(), room.top(), room.bottom() - titleBarHeight);
        move(QPoint(x, y) - shown.topLeft());
    }

private:
    /// Without the shadow.
    QRect body() const { return rect().marginsRemoved(QMargins() + m_shadow); }
    bool hasTitleBar() const { return hasStyle(NSWindowStyleMaskClosable); } ///< Alerts have none.

    bool isTranslucent() const { return testAttribute(Qt::WA_TranslucentBackground); }

    void comeAnew() {
        orderOut();
        destroy();
        orderFront();
        takeKeyboard();
    }

    /// A native window is made translucent or opaque and stays so.
    void takeForm() {
        const bool composited = isComposited();
        if (isTranslucent() == composited) return;
        destroy();
        setAttribute(Qt::WA_TranslucentBackground, composited);
        setAttribute(Qt::WA_NoSystemBackground, composited);
        m_shadow = composited ? softShadowMargin : 0;
    }

    /// Moves to the middle of the main screen where its own screen has gone.
    void returnToScreen() {
        const QRect shown = body().translated(pos());
        const auto screens = QGuiApplication::screens();
        const bool isSeen = std::ranges::any_of(screens, [&](const QScreen* screen) {
            const QRect seen = screen->geometry() & shown;
            return seen.width() >= leastOnScreen && seen.height() >= leastOnScreen;
        });
        if (!isSeen) move(screens.front()->availableGeometry().center() - rect().center());
    }

    std::optional<QPoint> m_grip; ///< Where the pointer has taken hold of the window.
};

} // namespace

std::shared_ptr<NativeWindow> makeFloatingWindow(NSWindow& window) {
    return std::make_shared<FloatingWindow>(window);
}
