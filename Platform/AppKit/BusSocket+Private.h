#pragma once

#include <string>

/// Asks a bus how to log in, and so whether anyone is awake there. The answer may be read from the
/// socket, which is the caller's to close. -1 where nobody takes the question, with the reason in
/// errno: EAGAIN from a bus that leaves its clients waiting.
int askBus(const std::string& address);
