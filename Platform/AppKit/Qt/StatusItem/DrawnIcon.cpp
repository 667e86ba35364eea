#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/StatusItem/TrayIcon.h"
#include "WindowServer/Session.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

using WindowServer::PixelRect;
using WindowServer::Session;
using WindowServer::TrayFace;
using WindowServer::TrayPress;

namespace {

/// Of screens the toolkit knows the corner in pixels and the size in points.
QRect rectOf(const PixelRect& pixels) {
    const QPoint corner(pixels.x, pixels.y);
    const auto screens = QGuiApplication::screens();
    const auto on = std::ranges::find_if(screens, [&](const QScreen* screen) {
        return QRect(screen->geometry().topLeft(), screen->size() * screen->devicePixelRatio())
            .contains(corner);
    });
    if (on == screens.end()) return {corner, QSize(1, 1)};
    const QPoint origin = (*on)->geometry().topLeft();
    const double scale = (*on)->devicePixelRatio();
    return {origin + (corner - origin) / scale, QSize(pixels.width, pixels.height) / scale};
}

class DrawnIcon : public TrayItem {
public:
    explicit DrawnIcon(NSStatusBarButton& button) : TrayItem(button) {
        Session::current().tray().onPressed = [this](const TrayPress& press) {
            m_place = rectOf(press.place);
            click(press.secondary ? NSEventTypeRightMouseUp : NSEventTypeLeftMouseUp,
                  press.control ? Qt::ControlModifier : Qt::NoModifier);
        };
        refresh();
    }
    ~DrawnIcon() override {
        Session::current().tray().onPressed = nullptr;
        Session::current().tray().draw(std::nullopt);
    }

    void refresh() override {
        TrayFace face{.symbol = themeNameOf(image()).toStdString(),
                      .picture = {},
                      .description = image().accessibilityDescription()};
        if (face.symbol.empty()) {
            constexpr int side = 64; // The tray scales it down.
            QBuffer png;
            pictureOf(image(), side, Qt::white).save(&png, "PNG"); // Such panels are dark.
            face.picture.assign(png.data().begin(), png.data().end());
        }
        Session::current().tray().draw(face);
    }

    QRect place() const override { return m_place; }

private:
    QRect m_place; ///< As of the last press.
};

} // namespace

std::unique_ptr<TrayItem> drawnIcon(NSStatusBarButton& button) {
    return std::make_unique<DrawnIcon>(button);
}
