#pragma once

#include <functional>

/// Calls `quit` from the event loop after a SIGTERM, SIGINT or SIGHUP. Called once.
void watchQuitSignals(std::function<void()> quit);
