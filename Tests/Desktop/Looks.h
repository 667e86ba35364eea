#pragma once

#include "Harness/Picture.h"

#include <string>

/// Compares what stands on the screen with a stored picture that was found good. Empty where they
/// look alike; else what is wrong, and where the picture of this run has been put.
std::string complaintAbout(const Harness::Picture& picture, const std::string& name);
