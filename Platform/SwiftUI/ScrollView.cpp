#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Windows/Accessible.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/Views.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>

namespace {

/// A narrow bar that says how far the content is scrolled, and can be dragged.
class ScrollIndicator : public QScrollBar {
public:
    explicit ScrollIndicator(QWidget* area) : QScrollBar(area), m_area(*area) {}

    static constexpr int width = 12;

    void setTint(const QColor& tint) {
        m_tint = tint;
        update();
    }

    QSize sizeHint() const override { return {width, width}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        const bool grasped = isSliderDown() || underMouse();
        const bool scrolls = m_area.hasFocus(); // By the keyboard.
        painter.setBrush(scrolls ? m_tint : faintText(palette(), grasped ? 0.45 : 0.3));
        const QRectF bar = knob().adjusted(3, 2, -3, -2);
        painter.drawRoundedRect(bar, bar.width() / 2, bar.width() / 2);
    }

    // The desktop's style knows nothing of this knob, so the bar follows the pointer itself.
    void mousePressEvent(QMouseEvent* event) override {
        const QRectF now = knob();
        const double y = event->position().y();
        if (y < now.top()) return triggerAction(SliderPageStepSub);
        if (y > now.bottom()) return triggerAction(SliderPageStepAdd);
        m_grabbedAt = y - now.top();
        setSliderDown(true);
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (!isSliderDown()) return;
        const double way = height() - knob().height();
        if (way <= 0) return;
        const double share = (event->position().y() - m_grabbedAt) / way;
        setSliderPosition(minimum() + qRound(share * (maximum() - minimum())));
    }

private:
    QRectF knob() const {
        constexpr double shortest = 28;
        const double all = maximum() - minimum() + pageStep();
        const double length = std::max(shortest, height() * pageStep() / all);
        const double share = maximum() > minimum()
                                 ? double(sliderPosition() - minimum()) / (maximum() - minimum())
                                 : 0;
        return {0, share * (height() - length), double(QWidget::width()), length};
    }

    const QWidget& m_area;
    QColor m_tint;
    double m_grabbedAt = 0; ///< Below the knob's top.
};

class ScrollWidget : public QScrollArea, public Accessible {
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
        connect(qApp, &QApplication::focusChanged, this,
                [this](const QWidget*, QWidget* now) { follow(now); });
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
    QAccessible::Role accessibleRole() const override { return QAccessible::Pane; }

protected:
    void focusInEvent(QFocusEvent*) override { m_indicator.update(); }
    void focusOutEvent(QFocusEvent*) override { m_indicator.update(); }

private:
    /// Scrolls to the widget that gets the keyboard, which the toolkit does only where the keyboard
    /// was in here before. A widget that has it again as the window becomes active stays where the
    /// user scrolled it.
    void follow(QWidget* focused) {
        if (!focused || focused->window() != window()) return;
        if (std::exchange(m_focused, focused) != focused && widget()->isAncestorOf(focused))
            ensureWidgetVisible(focused);
    }

    ScrollIndicator& m_indicator;
    const QWidget* m_focused = nullptr; ///< In this window, the last to have the keyboard.
};

class ScrollElement : public Element {
public:
    ScrollElement(const Environment& environment, const View& content) {
        auto& scroll = take<ScrollWidget>(environment);
        scroll.setTint(tintOf(environment));
        Environment inner = environment;
        inner.parent = scroll.widget();
        add(content, inner);
    }

    void place(const QRectF& rect) const override {
        auto& scroll = widget<ScrollWidget>();
        const QRect area = wholePoints(rect);
        const double width = area.width();
        const QSizeF size(width, Element::measure({width, std::nullopt}).height());
        scroll.setOverflows(size.height() > area.height());
        scroll.setGeometry(area);
        scroll.widget()->resize(size.toSize());
        parts().front()->place({{}, size});
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const QSizeF content = Element::measure({proposal.width, std::nullopt});
        return {std::max(content.width(), proposal.width.value_or(0)),
                proposal.height.value_or(content.height())};
    }
};

} // namespace

ScrollView::ScrollView(const View& content) : View(makeView<ScrollElement>(content)) {}
