#pragma once

#include "Harness/Await.h"

#include <algorithm>
#include <ostream>
#include <vector>

namespace Harness {

/// Measured times in milliseconds.
class Times {
public:
    void add(double time) { m_times.insert(std::ranges::upper_bound(m_times, time), time); }
    void addSince(Clock::time_point start) { add(millisecondsSince(start)); }

    size_t count() const { return m_times.size(); }
    /// The one under which a share of them lies: 0.5 for the median; 0 where there are none.
    double at(double share) const {
        if (m_times.empty()) return 0;
        return m_times[static_cast<size_t>(share * static_cast<double>(m_times.size() - 1))];
    }

private:
    std::vector<double> m_times; ///< From the shortest to the longest.
};

inline std::ostream& operator<<(std::ostream& out, const Times& times) {
    return out << times.at(0.5) << " ms, 90 % under " << times.at(0.9) << " ms, at most "
               << times.at(1) << " ms";
}

} // namespace Harness
