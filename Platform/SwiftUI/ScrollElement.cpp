#include "SwiftUI/ContainerElements+Private.h"
#include "SwiftUI/ScrollIndicator+Private.h"

#include <QScrollArea>

#include <algorithm>

class ScrollWidget : public QScrollArea {
public:
    explicit ScrollWidget(QWidget* parent)
        : QScrollArea(parent), m_indicator(*new ScrollIndicator(this)) {
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBar(&m_indicator);
        auto* const content = new QWidget;
        setWidget(content);
        // The window's own ground shows through.
        viewport()->setAutoFillBackground(false);
        content->setAutoFillBackground(false);
    }

    /// With something to scroll it is a stop of the Tab key, so that the arrow keys reach it.
    void setOverflows(bool overflows) {
        setFocusPolicy(overflows ? Qt::TabFocus : Qt::NoFocus);
        setAccessibleName(overflows ? "Scroll area" : "");
        setVerticalScrollBarPolicy(overflows ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        // The indicator lies over the content's margin and takes no room from it.
        setViewportMargins(0, 0, overflows ? -ScrollIndicator::width : 0, 0);
        m_indicator.parentWidget()->raise();
    }

    void setTint(const QColor& tint) { m_indicator.setTint(tint); }

protected:
    void focusInEvent(QFocusEvent*) override { m_indicator.setMarked(true); }
    void focusOutEvent(QFocusEvent*) override { m_indicator.setMarked(false); }

private:
    ScrollIndicator& m_indicator;
};

namespace {

class ScrollElement : public Element {
public:
    ScrollElement(ScrollWidget& scroll, ElementPointer content)
        : m_scroll(scroll), m_content(std::move(content)) {}

    void place(const QRectF& rect) override {
        const QRect area = wholePoints(rect);
        const double width = area.width();
        const QSizeF size(width, m_content->sizeThatFits({width, std::nullopt}).height());
        m_scroll.setOverflows(size.height() > area.height());
        m_scroll.setGeometry(area);
        m_scroll.widget()->resize(size.toSize());
        m_content->place({{}, size});
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const QSizeF content = m_content->sizeThatFits({proposal.width, std::nullopt});
        return {std::max(content.width(), proposal.width.value_or(0)),
                proposal.height.value_or(content.height())};
    }

private:
    ScrollWidget& m_scroll;
    const ElementPointer m_content;
};

} // namespace

ScrollWidget& takeScroll(const Environment& environment, const WidgetPlace& place) {
    auto& scroll = place.take<ScrollWidget>();
    scroll.setTint(tintOf(environment));
    return scroll;
}

QWidget& contentOf(ScrollWidget& scroll) { return *scroll.widget(); }

ElementPointer makeScroll(ScrollWidget& scroll, ElementPointer content) {
    return std::make_unique<ScrollElement>(scroll, std::move(content));
}
