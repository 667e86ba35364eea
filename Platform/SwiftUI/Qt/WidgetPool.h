#pragma once

#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <typeinfo>
#include <vector>

/// The widgets of a drawn tree. Drawn anew, a tree finds the widgets of the time before again, in
/// their order, so that whoever has the focus, is pressed or scrolled stays so.
class WidgetPool {
public:
    template <class Widget> Widget& take(QWidget& parent) {
        const auto again =
            std::find_if(m_before.begin(), m_before.end(), [&](const QPointer<QWidget>& each) {
                return each && each->parentWidget() == &parent && typeid(*each) == typeid(Widget);
            });
        if (again == m_before.end()) return keep(*new Widget(&parent));
        auto& widget = static_cast<Widget&>(**again);
        m_before.erase(again);
        return keep(widget);
    }

    void begin();
    /// Drops what was not taken, and puts the others in the tree's order, for the Tab key too.
    void end();

private:
    template <class Widget> Widget& keep(Widget& widget) {
        m_now.emplace_back(&widget);
        widget.show();
        return widget;
    }

    std::vector<QPointer<QWidget>> m_before;
    std::vector<QPointer<QWidget>> m_now;
};
