#pragma once

#include "Report.h"

#include <string>

namespace Benchmarks {

/// What one frame of 1920x1080 pixels of four bytes takes to copy within memory, in milliseconds.
namespace FrameCopy {

double uncached(); ///< Between places last used some frames ago, as a screen's are: the unit.
double cached();   ///< Between places that a large cache may still hold.
double fresh();    ///< To memory that the system has to find first.

/// What the system takes to find a megabyte of memory, in milliseconds.
double findingMegabyte();

/// The unit as it was while something was measured.
class Unit {
public:
    void take() { m_samples.add(uncached()); }
    double milliseconds() const { return m_samples.median(); }
    std::string ratio(double milliseconds) const; ///< "11 frame copies"

private:
    Samples m_samples;
};

} // namespace FrameCopy

} // namespace Benchmarks
