#pragma once

#include <chrono>
#include <functional>

namespace Harness {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start);

/// Polls until the condition holds, serving the test's own session bus objects meanwhile. False
/// when it does not hold within the deadline, which only a broken program should ever reach.
bool await(const std::function<bool()>& condition, std::chrono::milliseconds deadline = 10s);

/// True when the condition holds at every poll of the whole time.
bool holdsFor(std::chrono::milliseconds time, const std::function<bool()>& condition);

} // namespace Harness

/// That an expression comes to be true, and that it stays so for a time.
#define EXPECT_SOON(...) EXPECT_TRUE(Harness::await([&] { return __VA_ARGS__; }))
#define ASSERT_SOON(...) ASSERT_TRUE(Harness::await([&] { return __VA_ARGS__; }))
#define EXPECT_FOR(time, ...) EXPECT_TRUE(Harness::holdsFor(time, [&] { return __VA_ARGS__; }))
