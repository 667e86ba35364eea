#pragma once

#include "SwiftUI/Element+Private.h"

#include <QWidget>

/// A widget without others in it, which is measured by a function.
template <class Measure> class WidgetElement : public Element {
public:
    WidgetElement(QWidget& widget, Measure function)
        : m_widget(widget), m_measure(std::move(function)) {}

    void place(const QRectF& rect) override { m_widget.setGeometry(wholePoints(rect)); }

protected:
    QSizeF measure(const Proposal& proposal) const override { return m_measure(proposal); }

private:
    QWidget& m_widget;
    const Measure m_measure;
};
