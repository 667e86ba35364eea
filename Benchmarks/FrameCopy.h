#pragma once

#include <string>

namespace Benchmarks {

/// What one frame of 1920x1080 pixels of four bytes takes to copy within memory, in milliseconds.
namespace FrameCopy {

double uncached(); ///< Between places last used some frames ago, as a screen's are: the unit.
double cached();   ///< Between places that a large cache may still hold.
double fresh();    ///< To memory that the system has to find first.

/// What the system takes to find a megabyte of memory, in milliseconds.
double findingMegabyte();

/// "11 frame copies"
std::string ratio(double milliseconds);

} // namespace FrameCopy

} // namespace Benchmarks
