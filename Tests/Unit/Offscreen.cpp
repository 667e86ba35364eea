#include "Offscreen.h"

#include "AppKit/AppKit.h"
#include "Cover.h"

#include <algorithm>

namespace {

/// The application that the tests run in, without a display and a bus. A mere listing of the tests
/// has none.
struct Application : testing::Environment {
    void SetUp() override {
        ::setenv("QT_QPA_PLATFORM", "offscreen", true);
        ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", true);
        WindowServer::Session::install(std::make_unique<MemorySession>());
        Timeline::install(std::make_unique<ManualTime>());
        NSApplication::sharedApplication();
    }
    void TearDown() override { Timeline::install(nullptr); }
};

} // namespace

std::shared_ptr<void> ManualTime::schedule(double seconds, std::function<void()> work) {
    auto alarm = std::make_shared<Alarm>(Alarm{m_now + seconds, std::move(work)});
    m_alarms.push_back(alarm);
    return alarm;
}

void ManualTime::advance(double seconds) {
    const double end = m_now + seconds;
    for (;;) {
        std::erase_if(m_alarms, [](const auto& alarm) { return alarm.expired(); });
        const auto next = std::ranges::min_element(
            m_alarms, {}, [](const auto& each) { return each.lock()->when; });
        if (next == m_alarms.end() || next->lock()->when > end) break;
        const auto alarm = next->lock();
        m_alarms.erase(next);
        m_now = alarm->when;
        alarm->work();
    }
    m_now = end;
}

void ManualTime::forget() {
    for (const auto& each : m_alarms)
        if (const auto alarm = each.lock()) alarm->work = nullptr;
    m_alarms.clear();
}

Offscreen::Offscreen()
    : session(static_cast<MemorySession&>(WindowServer::Session::current())),
      time(static_cast<ManualTime&>(Timeline::current())) {
    ::setenv("XDG_CONFIG_HOME", stored.path().toLocal8Bit(), true);
    *Cover::shared() = {};
    const CGRect left = CGRectMake(0, 0, 1440, 900), right = CGRectMake(1440, 0, 800, 600);
    connect({{7, "", {}, 1, left, left}, {9, "", {}, 1, right, right}});
}

Offscreen::~Offscreen() {
    Cover::shared()->hide();
    connect({});
    time.forget();
    session.blurAnswer = 0;
}

void Offscreen::connect(std::vector<WindowServer::Display> displays) {
    auto& session = static_cast<MemorySession&>(WindowServer::Session::current());
    session.connected = std::move(displays);
    session.onChanged();
}

/// Looked up by the leak sanitizer: the font library keeps what it has read until the process ends.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Application);
    return RUN_ALL_TESTS();
}
