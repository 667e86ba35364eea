#include "WindowServer/Wayland/Windows/Stages.h"

#include <algorithm>

namespace WindowServer::Wayland {

namespace {
constexpr int retryMilliseconds = 1000;
}

Stages::Stages(const Connection& connection, const Outputs& outputs)
    : m_connection(connection), m_outputs(outputs) {
    m_retry.setSingleShot(true);
    m_retry.setInterval(retryMilliseconds);
    QObject::connect(&m_retry, &QTimer::timeout, &m_retry, [this] { m_isStale = true; });
}

Stage* Stages::at(const CGRect& frame) const {
    const Display* const display = m_outputs.at(frame);
    if (!display) return nullptr;
    const Output* const output = m_outputs.shown()[display - m_outputs.all().data()];
    const auto stage = std::ranges::find_if(
        m_stages, [output](const auto& each) { return &each->output() == output; });
    return stage == m_stages.end() ? nullptr : stage->get();
}

Stage* Stages::of(const wl_surface* surface) const {
    const auto stage = std::ranges::find_if(
        m_stages, [surface](const auto& each) { return each->surface() == surface; });
    return stage == m_stages.end() ? nullptr : stage->get();
}

Stage* Stages::at(QPointF point) const {
    const auto stage = std::ranges::find_if(
        m_stages, [point](const auto& each) { return QRectF(each->place()).contains(point); });
    return stage == m_stages.end() ? nullptr : stage->get();
}

void Stages::refreshIfStale() {
    if (!std::exchange(m_isStale, false)) return;
    const auto& outputs = m_outputs.shown();
    const auto hasGone = [&](const auto& stage) {
        return std::ranges::find(outputs, &stage->output()) == outputs.end();
    };
    const auto isOver = [&](const auto& stage) {
        return hasGone(stage) || (stage->isClosed() && !m_retry.isActive());
    };
    for (const auto& stage : m_stages)
        if (isOver(stage)) onGoing(*stage);
    std::erase_if(m_stages, isOver);
    for (const Output* output : outputs) {
        const auto isHere = [output](const auto& stage) { return &stage->output() == output; };
        if (std::ranges::any_of(m_stages, isHere)) continue;
        m_stages.push_back(std::make_unique<Stage>(m_connection, *output));
        Stage* const made = m_stages.back().get();
        made->onChanged = [this, made] {
            if (made->isClosed()) m_retry.start();
            m_isStale = true;
        };
    }
    onChanged();
}

void Stages::commit() {
    for (const auto& stage : m_stages)
        stage->commit();
}

} // namespace WindowServer::Wayland
