#include "AppKit/Qt/Drawing/Symbol.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/Views.h"

namespace {

class SymbolWidget : public QWidget {
public:
    using QWidget::QWidget;

    void setSymbol(const std::string& name, const Environment& environment) {
        constexpr double sidePerPoint = 1.3; // A little larger than the letters beside it.
        m_name = name;
        m_color = foregroundOf(environment);
        m_weight = environment.font.weight() == Font::Weight::bold ? SymbolWeight::bold
                                                                   : SymbolWeight::semibold;
        m_side = qRound(environment.font.size() * sidePerPoint);
        update();
    }

    QSize sizeHint() const override { return {m_side, m_side}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        drawSymbol(painter, m_name, rect(), m_color, m_weight);
    }

private:
    std::string m_name;
    QColor m_color;
    SymbolWeight m_weight = SymbolWeight::semibold;
    int m_side = 0;
};

class ImageElement : public Element {
public:
    ImageElement(const Environment& environment, const std::string& name) {
        take<SymbolWidget>(environment).setSymbol(name, environment);
    }

protected:
    QSizeF measure(const Proposal&) const override { return widget().sizeHint(); }
};

} // namespace

Image::Image(const Options& options) : View(makeView<ImageElement>(options.systemName)) {}

Label::Label(const std::string& title, const Options& options)
    : View(HStack({.spacing = 6}, {Image({.systemName = options.systemImage}), Text(title)})) {}
