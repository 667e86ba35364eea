#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/StatusItem/TrayIcon.h"
#include "WindowServer/Session.h"

#include <QBuffer>

using WindowServer::PixelRect;
using WindowServer::Session;
using WindowServer::TrayFace;
using WindowServer::TrayPress;

namespace {

QRect rectOf(const PixelRect& pixels) { return {pixels.x, pixels.y, pixels.width, pixels.height}; }

/// Of screens the toolkit knows the corner in pixels and the size in points.
QRect inPoints(const QRect& pixels) {
    for (const auto& display : Session::current().displays().all()) {
        const QRect screen = rectOf(display.pixels);
        if (!screen.contains(pixels.topLeft())) continue;
        const QPoint corner = screen.topLeft();
        return {corner + (pixels.topLeft() - corner) / display.scale,
                pixels.size() / display.scale};
    }
    return {pixels.topLeft(), QSize(1, 1)};
}

class DrawnIcon : public TrayItem {
public:
    explicit DrawnIcon(NSStatusBarButton& button) : TrayItem(button) {
        Session::current().tray().onPressed = [this](const TrayPress& press) {
            m_place = inPoints(rectOf(press.place));
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
