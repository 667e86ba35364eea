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

    void setSymbol(const std::string& name, const QColor& color) {
        m_name = name;
        m_color = color;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!QFile::exists(symbolFile(m_name))) return;
        QPainter painter(this);
        drawTintedSymbol(painter, m_name, rect(), m_color);
    }

private:
    std::string m_name;
    QColor m_color;
};

} // namespace

ElementPointer makeSymbol(const std::string& name, const Environment& environment,
                          const WidgetPlace& place) {
    auto& widget = place.take<SymbolWidget>();
    widget.setSymbol(name, foregroundOf(environment));
    widget.setAccessibleName(QString::fromStdString(environment.accessibilityLabel));
    const double side = std::round(environment.font.size() * sidePerPoint);
    const auto measure = [side](const Proposal&) { return QSizeF(side, side); };
    return std::make_unique<WidgetElement<decltype(measure)>>(widget, measure);
}
