#include "SwiftUI/Views.h"

#include "SwiftUI/Qt/ViewNode.h"

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

class TextNode : public ViewNode {
public:
    explicit TextNode(std::string text) : m_text(std::move(text)) {}
    std::string accessibleText() const override { return m_text; }

    void realise(Element& element, const Surroundings& surroundings) const override {
        const Environment& environment = surroundings.environment;
        auto& label = element.take<QLabel>(surroundings);
        label.setTextFormat(Qt::PlainText);
        label.setWordWrap(true);
        // What the whole points of its height add stands above: capitals are in the middle then.
        label.setAlignment(Qt::AlignLeft | Qt::AlignBottom);
        // A label in a button would take the button's.
        label.setForegroundRole(QPalette::WindowText);
        label.setFont(fontOf(environment));
        label.setText(QString::fromStdString(m_text));
        QPalette palette = environment.palette;
        palette.setColor(QPalette::WindowText, foregroundOf(environment));
        label.setPalette(palette);
    }

    QSizeF measure(const Element& element, const Proposal& proposal) const override {
        const auto& label = element.widget<QLabel>();
        return measureText(label.font(), label.text(), proposal);
    }

private:
    const std::string m_text;
};

} // namespace

Text::Text(const std::string& text) : View(makeView<TextNode>(text)) {}
