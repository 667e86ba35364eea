#pragma once

#include "WindowServer/DisplayNumbers.h"
#include "WindowServer/Displays.h"

#include <functional>
#include <string>
#include <vector>

namespace WindowServer {

class Connection;

/// Asks the server for its monitors and makes displays of them: the main one first, then by name.
/// Clones, monitors that lie wholly within another, have no display of their own.
class Monitors {
public:
    /// Device pixels in a point on the output of that name.
    using ScaleOf = std::function<double(const std::string& output)>;

    explicit Monitors(Connection& connection) : m_connection(connection) {}

    std::vector<Display> query(const ScaleOf& scaleOf);

private:
    struct Monitor {
        std::string name;
        PixelRect pixels;
        bool primary = false;
        std::string identity; ///< The EDID, or the name where the monitor gives none.
    };

    std::vector<Monitor> connected();
    std::string identityOf(uint32_t output, const std::string& name);

    Connection& m_connection;
    DisplayNumbers m_numbers;
};

} // namespace WindowServer
