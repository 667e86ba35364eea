#include "WindowServer/Wayland/Windows/StagedWindows.h"

#include "WindowServer/Wayland/Windows/Stages.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace WindowServer::Wayland {

namespace {

constexpr int aboveAll = 2000; ///< Menus and tool tips, from the first.

/// Menus and tool tips of ordinary windows are the toolkit's: it does not know where those stand.
bool belongsOnStage(const QWidget& window) {
    if (window.windowFlags() & Qt::BypassWindowManagerHint) return true;
    if (window.windowType() != Qt::Popup && window.windowType() != Qt::ToolTip) return false;
    const QWidget* const parent = window.parentWidget();
    return !parent || parent->window()->testAttribute(Qt::WA_DontShowOnScreen);
}

} // namespace

StagedWindows::StagedWindows(const Connection& connection, Stages& stages)
    : m_connection(connection), m_stages(stages) {}

void StagedWindows::attach() { qApp->installEventFilter(this); }

std::shared_ptr<ToolkitWindow> StagedWindows::hold(WindowId window) {
    std::erase_if(m_held, [](const auto& each) { return each.second.expired(); });
    auto held = m_held[window].lock();
    if (!held) {
        held = std::make_shared<HeldWindow>([this] { m_isStale = true; });
        m_held[window] = held;
    }
    return held;
}

bool StagedWindows::eventFilter(QObject* object, QEvent* event) {
    if (!object->isWidgetType()) return false;
    auto& widget = static_cast<QWidget&>(*object);
    if (!widget.isWindow()) return false;
    switch (event->type()) {
    case QEvent::Show: // Comes just before the toolkit shows it.
        if (!belongsOnStage(widget)) break;
        widget.setAttribute(Qt::WA_DontShowOnScreen);
        add(widget);
        break;
    case QEvent::Hide: // A menu with the attribute would not be kept on the screen.
        if (!find(&widget)) break;
        widget.setAttribute(Qt::WA_DontShowOnScreen, false);
        remove(&widget);
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (find(&widget)) m_isStale = true;
        break;
    case QEvent::UpdateRequest:
        if (auto* const window = find(&widget)) window->repaint();
        break;
    default:
        break;
    }
    return false;
}

StagedWindow* StagedWindows::find(const QWidget* widget) const {
    const auto found = std::ranges::find_if(
        m_windows, [widget](const auto& each) { return each->widget() == widget; });
    return widget && found != m_windows.end() ? found->get() : nullptr;
}

bool StagedWindows::has(const QWidget* widget) const { return find(widget); }

HeldWindow* StagedWindows::heldOf(const QWidget& widget) const {
    const auto held = m_held.find(widget.internalWinId());
    return held == m_held.end() ? nullptr : held->second.lock().get();
}

int StagedWindows::levelOf(const StagedWindow& window) const {
    if (!window.widget()) return 0;
    if (window.isPopup() || window.isToolTip()) return aboveAll;
    const HeldWindow* const held = heldOf(*window.widget());
    return held ? held->level() : 0;
}

QRegion StagedWindows::inputOf(const StagedWindow& window) const {
    const QWidget* const widget = window.widget();
    if (!widget || window.isToolTip()) return {};
    const HeldWindow* const held = heldOf(*widget);
    if (!held) return widget->geometry();
    const Stage* const stage = m_stages.at(QPointF(widget->geometry().center()));
    return held->input(widget->size(), stage ? stage->scale() : 1).translated(widget->pos());
}

void StagedWindows::add(QWidget& widget) {
    if (find(&widget)) return;
    m_windows.push_back(std::make_unique<StagedWindow>(m_connection, widget));
    m_isStale = true;
}

void StagedWindows::remove(const QWidget* widget) {
    const auto gone = std::erase_if(m_windows, [widget](const auto& each) {
        return !each->widget() || each->widget() == widget;
    });
    if (gone) m_isStale = true;
}

QWidget* StagedWindows::at(QPointF point) const {
    const QPoint pixel(static_cast<int>(std::floor(point.x())),
                       static_cast<int>(std::floor(point.y())));
    for (auto window = m_windows.rbegin(); window != m_windows.rend(); ++window)
        if (inputOf(**window).contains(pixel)) return (*window)->widget();
    return nullptr;
}

QWidget* StagedWindows::wantingKeyboard() const {
    QWidget* wanting = nullptr;
    unsigned last = 0;
    for (const auto& window : m_windows) {
        const HeldWindow* const held = window->widget() ? heldOf(*window->widget()) : nullptr;
        if (!held || held->keyboardTurn() <= last) continue;
        last = held->keyboardTurn();
        wanting = window->widget();
    }
    return wanting;
}

void StagedWindows::dropKeyboard() {
    for (const auto& [id, each] : m_held)
        if (const auto held = each.lock()) held->dropKeyboard();
}

QRegion StagedWindows::areasIn(const QRect& place) const {
    QRegion areas;
    for (const auto& window : m_windows)
        if (window->widget()) areas += window->widget()->geometry() & place;
    return areas;
}

void StagedWindows::stagesChanged() { m_isStale = true; }

void StagedWindows::leave(const Stage& stage) {
    for (const auto& window : m_windows)
        window->leave(stage);
}

void StagedWindows::commit() {
    const bool isStale = std::exchange(m_isStale, false);
    if (isStale) {
        remove(nullptr);
        m_isStale = false;
        order();
    }
    for (const auto& window : m_windows)
        window->paint();
    if (!isStale && !m_isStale) return;
    m_isStale = false; // Painting may tell a shape.
    limitInput();
    onMoved();
}

void StagedWindows::order() {
    std::ranges::stable_sort(m_windows, {}, [this](const auto& each) { return levelOf(*each); });
    for (const auto& window : m_windows)
        window->stand(m_stages);
    for (const auto& stage : m_stages.all()) {
        wl_surface* top = stage->surface();
        for (const auto& window : m_windows)
            window->raise(*stage, top);
    }
}

/// While a menu is open, every click is its: one beside it closes it and goes nowhere else.
void StagedWindows::limitInput() {
    const bool hasMenu =
        std::ranges::any_of(m_windows, &StagedWindow::isPopup,
                            [](const auto& each) -> const StagedWindow& { return *each; });
    QRegion input;
    for (const auto& window : m_windows)
        input += inputOf(*window);
    for (const auto& stage : m_stages.all()) {
        const QRect place = stage->place();
        stage->setInput((hasMenu ? QRegion(place) : input & place).translated(-place.topLeft()));
    }
}

} // namespace WindowServer::Wayland
