#pragma once

#include "Harness/Screen.h"

#include <string>

/// Compares what stands on the screen with a stored picture that was found good. Empty where they
/// look alike; else what is wrong, and where the picture of this run has been put.
std::string complaintAbout(const Harness::Picture& picture, const std::string& name);

/// The same of a part of the screen, which is given the time to come to look so.
std::string awaitLook(const Harness::Screen& screen, const Harness::Area& area,
                      const std::string& name);
