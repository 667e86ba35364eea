#include "SwiftUI/NSHostingController.h"

#include "AppKit/Qt/Contents/ViewContent.h"
#include "SwiftUI/ObservedObject.h"
#include "SwiftUI/Qt/Element.h"

#include <QShowEvent>
#include <QTimer>

#include <cmath>

namespace {

/// A view tree on the screen.
class HostView : public ViewContent {
public:
    explicit HostView(View root) : m_root(std::move(root)) {
        m_redraw.setSingleShot(true); // At the next turn.
        connect(&m_redraw, &QTimer::timeout, this, [this] { draw(); });
        draw();
    }

    QSize sizeHint() const override {
        const QSizeF ideal = m_element->sizeThatFits({});
        return QSizeF(std::ceil(ideal.width()), std::ceil(ideal.height())).toSize();
    }

protected:
    void changeEvent(QEvent* event) override {
        ViewContent::changeEvent(event);
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
            m_redraw.start();
    }

    void resizeEvent(QResizeEvent*) override { place(); }

    void showEvent(QShowEvent* event) override {
        ViewContent::showEvent(event);
        if (event->spontaneous()) return;
        // An action may lead to another drawing of the tree.
        for (const auto& action : std::vector(m_appearActions))
            action();
    }

private:
    void draw() {
        Environment environment;
        environment.parent = this;
        environment.pool = &m_pool;
        environment.appearActions = &m_appearActions;
        environment.palette = palette();
        environment.systemFont = font();
        environment.primary = palette().color(QPalette::WindowText);
        m_appearActions.clear();
        std::set<std::shared_ptr<ObservableObject>> objects;
        readObjects = &objects;
        m_pool.begin();
        m_element = m_root.realise(environment);
        m_pool.end();
        readObjects = nullptr;
        m_observations.clear();
        for (const auto& object : objects) // It has not stored the change yet.
            m_observations.push_back(object->objectWillChange.sink([this] { m_redraw.start(); }));
        place();
    }

    // The window of a small screen may be lower than the tree asks for.
    void place() {
        const QRectF room = rect();
        QSizeF size = m_element->sizeThatFits(Proposal::of(room.size()));
        size.setHeight(std::min(size.height(), room.height()));
        m_element->place({room.center() - QPointF(size.width() / 2, size.height() / 2), size});
    }

    const View m_root;
    WidgetPool m_pool;
    std::shared_ptr<Element> m_element;
    std::vector<std::function<void()>> m_appearActions;
    std::vector<AnyCancellable> m_observations;
    QTimer m_redraw;
};

} // namespace

std::unique_ptr<ViewContent> NSHostingController::loadView() {
    return std::make_unique<HostView>(m_rootView);
}
