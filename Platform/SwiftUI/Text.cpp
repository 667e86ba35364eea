#include "SwiftUI/Views.h"

#include "SwiftUI/Qt/Element.h"

#include <QFontMetricsF>
#include <QLabel>

#include <cmath>

namespace {

constexpr double widest = 100000;

/// As a label lays it out: never narrower than its longest word, and whole at every width.
QSizeF measureText(const QFont& font, const QString& text, const Proposal& proposal) {
    const double width = std::floor(std::clamp(proposal.width.value_or(widest), 1.0, widest));
    const QFontMetricsF metrics(font);
    const double asked = std::min(
        widest,
        std::max(width,
                 metrics.boundingRect({0, 0, 1, widest}, Qt::TextWordWrap, text).width() + 1));
    const QRectF bounds = metrics.boundingRect({0, 0, asked, widest}, Qt::TextWordWrap, text);
    return {std::min(std::ceil(bounds.width()) + 1, std::ceil(asked)), std::ceil(bounds.height())};
}

class TextElement : public Element {
public:
    TextElement(const Environment& environment, const std::string& text) {
        auto& label = take<QLabel>(environment);
        label.setTextFormat(Qt::PlainText);
        label.setWordWrap(true);
        // What the whole points of its height add stands above: capitals are in the middle then.
        label.setAlignment(Qt::AlignLeft | Qt::AlignBottom);
        // A label in a button would take the button's.
        label.setForegroundRole(QPalette::WindowText);
        label.setFont(fontOf(environment));
        label.setText(QString::fromStdString(text));
        QPalette palette = environment.palette;
        palette.setColor(QPalette::WindowText, foregroundOf(environment));
        label.setPalette(palette);
        readAs(text);
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const auto& label = widget<QLabel>();
        return measureText(label.font(), label.text(), proposal);
    }
};

} // namespace

Text::Text(const std::string& text) : View(makeView<TextElement>(text)) {}
