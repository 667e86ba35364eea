#pragma once

#include "WindowServer/DisplayNumbers.h"
#include "WindowServer/Displays.h"
#include "WindowServer/Wayland/Desktop/Output.h"

#include <memory>
#include <vector>

namespace WindowServer::Wayland {

/// The outputs as displays. Corners are in points here, as the compositor and the toolkit lay the
/// outputs out; only the sizes are in device pixels.
class Outputs : public Displays {
public:
    explicit Outputs(Connection& connection);

    const std::vector<Display>& all() const override { return m_displays; }

    /// Those with a display, in the same order.
    const std::vector<const Output*>& shown() const { return m_shown; }

    /// Called before `onChanged`, for what stands on the outputs.
    std::function<void()> onRefreshed;

    void globalsChanged();
    /// To be called at a turn's end.
    void refreshIfStale();

private:
    void refresh();

    Connection& m_connection;
    std::vector<std::unique_ptr<Output>> m_outputs; ///< Of every kind.
    std::vector<const Output*> m_shown;
    std::vector<Display> m_displays;
    DisplayNumbers m_numbers;
    bool m_isStale = true;
};

} // namespace WindowServer::Wayland
