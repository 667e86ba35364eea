#pragma once

#include <functional>

/// Answers under the bundle identifier on the session bus, where desktops ask an application that
/// runs to show itself. Of several instances the newest one answers. Waits for nothing.
///
/// The request that made the bus start this very process is its launch, and calls nothing.
void answerReopenRequests(std::function<void()> reopen);
