#include "AppKit/Qt/Drawing/Symbol.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/Views.h"

namespace {

View symbol(const std::string& name) {
    const auto paint = [name](QPainter& painter, const QRectF& rect,
                              const Environment& environment) {
        const bool isBold = environment.font.weight() == Font::Weight::bold;
        drawSymbol(painter, name, rect, foregroundOf(environment),
                   isBold ? SymbolWeight::bold : SymbolWeight::semibold);
    };
    return View([picture = painted(paint)](const Environment& environment) {
        constexpr double sidePerPoint = 1.3; // A little larger than the letters beside it.
        const double side = qRound(environment.font.size() * sidePerPoint);
        return picture.frame({.width = side, .height = side}).realise(environment);
    });
}

} // namespace

Image::Image(const Options& options) : View(symbol(options.systemName)) {}

Label::Label(const std::string& title, const Options& options)
    : View(HStack({.spacing = 6}, {Image({.systemName = options.systemImage}), Text(title)})) {}
