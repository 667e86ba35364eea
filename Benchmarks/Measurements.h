// What is measured, each on desktops of its own. Figures are told, never judged: they depend on the
// machine, so each stands beside its ratio to something measured in the same run.
#pragma once

#include "Report.h"

namespace Benchmarks {

void measureFrameCopy(Report& report);  ///< The unit of the others.
void measureFloor(Report& report);      ///< What a toggle asks of the server at the least.
void measureToggle(Report& report);     ///< How soon a click shows and clears the blur.
void measureLiveUpdate(Report& report); ///< What following a changing window takes.
void measureIdle(Report& report);       ///< What a screen on which nothing happens takes.
void measureStart(Report& report);      ///< How soon the status item stands.
void measureMemory(Report& report);
void measureFidelity(Report& report); ///< How near the blur comes to a true Gaussian.

} // namespace Benchmarks
