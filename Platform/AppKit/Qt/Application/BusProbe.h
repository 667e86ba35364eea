#pragma once

#include <functional>
#include <string>

/// Logs in at a bus and out again, in a thread of its own, which then tells whether the bus let it.
/// Who logs in at a bus that takes calls and never answers waits for it half a minute or for good.
void probeBus(const std::string& address, std::function<void(bool)> tell);

/// Settles which session bus the libraries of this process go to, before any of them does: the one
/// that the environment names, else the user's own. None, if that one takes calls and then does not
/// answer.
void settleSessionBus();
