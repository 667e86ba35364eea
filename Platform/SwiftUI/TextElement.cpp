#include "SwiftUI/WidgetElement+Private.h"
#include "SwiftUI/WidgetElements+Private.h"

#include <QFontMetricsF>
#include <QLabel>

#include <algorithm>
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

} // namespace

ElementPointer makeText(const std::string& text, const Environment& environment,
                        const WidgetPlace& place) {
    auto& label = place.take<QLabel>();
    label.setTextFormat(Qt::PlainText);
    label.setWordWrap(true);
    // What the whole points of its height add stands above: capitals are in the middle then.
    label.setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    label.setForegroundRole(QPalette::WindowText); // A label in a button would take the button's.
    label.setFont(fontOf(environment));
    label.setText(QString::fromStdString(text));
    QPalette palette = environment.palette;
    palette.setColor(QPalette::WindowText, foregroundOf(environment));
    label.setPalette(palette);
    label.setAccessibleName(QString::fromStdString(environment.accessibilityLabel));
    label.setAccessibleDescription(QString::fromStdString(environment.accessibilityHint));
    const auto measure = [font = label.font(), shown = label.text()](const Proposal& proposal) {
        return measureText(font, shown, proposal);
    };
    return std::make_unique<WidgetElement<decltype(measure)>>(label, measure);
}
