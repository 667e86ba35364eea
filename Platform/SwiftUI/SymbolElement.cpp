#include "AppKit/Symbol+Private.h"
#include "SwiftUI/WidgetElement+Private.h"
#include "SwiftUI/WidgetElements+Private.h"

#include <QFile>

#include <cmath>

namespace {

/// A symbol is a little larger than the letters beside it.
constexpr double sidePerPoint = 1.3;

class SymbolWidget : public QWidget {
public:
    using QWidget::QWidget;

    void setSymbol(const std::string& name, const QColor& color, SymbolWeight weight) {
        m_name = name;
        m_color = color;
        m_weight = weight;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!QFile::exists(symbolFile(m_name))) return;
        QPainter painter(this);
        drawTintedSymbol(painter, m_name, rect(), m_color, m_weight);
    }

private:
    std::string m_name;
    QColor m_color;
    SymbolWeight m_weight = SymbolWeight::semibold;
};

} // namespace

ElementPointer makeSymbol(const std::string& name, const Environment& environment,
                          const WidgetPlace& place) {
    auto& widget = place.take<SymbolWidget>();
    widget.setSymbol(name, foregroundOf(environment),
                     environment.font.weight() == Font::Weight::bold ? SymbolWeight::bold
                                                                     : SymbolWeight::semibold);
    widget.setAccessibleName(QString::fromStdString(environment.accessibilityLabel));
    const double side = std::round(environment.font.size() * sidePerPoint);
    const auto measure = [side](const Proposal&) { return QSizeF(side, side); };
    return std::make_unique<WidgetElement<decltype(measure)>>(widget, measure);
}
