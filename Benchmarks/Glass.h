#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

namespace Benchmarks {

/// A window that a compositor draws as dark glass: black, of which six tenths shine through.
class Glass {
public:
    /// Throws where the server has no visual with an alpha channel.
    Glass(const std::string& display, const Harness::Area& area);

private:
    Harness::XClient m_client;
};

} // namespace Benchmarks
