#include "Harness/Await.h"

#include <QCoreApplication>

#include <thread>

namespace Harness {

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

bool await(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
    const auto end = Clock::now() + deadline;
    while (!condition()) {
        if (Clock::now() > end) return false;
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

bool holdsFor(std::chrono::milliseconds time, const std::function<bool()>& condition) {
    return !await([&] { return !condition(); }, time);
}

} // namespace Harness
