#pragma once

#include <cstdlib>

namespace Harness {

/// How often a test repeats what it does: a few times, or many in the long run that NIMBREL_SOAK in
/// the environment asks for.
inline int rounds(int few, int many) { return std::getenv("NIMBREL_SOAK") ? many : few; }

} // namespace Harness
