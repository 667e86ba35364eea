// One process for each set of names: the program looks them up once in a process.
#include "HeadlessSession.h"

#include "AppKit/AppKit.h"
#include "WindowServerBlur.h"

#include <tuple>

namespace {

using Call = std::tuple<int32_t, uint32_t, int32_t>; ///< Connection, window and radius.
std::vector<Call> cgs, sls;
int connections = 0;

[[maybe_unused]] int32_t take(std::vector<Call>& calls, const Call& call) {
    calls.push_back(call);
    return ANSWER;
}

} // namespace

extern "C" {
#ifdef CONNECTION
int32_t CONNECTION() { return ++connections, 77; }
#endif
#ifdef RADIUS_CGS
int32_t CGSSetWindowBackgroundBlurRadius(int32_t from, uint32_t window, int32_t radius) {
    return take(cgs, {from, window, radius});
}
#endif
#ifdef RADIUS_SLS
int32_t SLSSetWindowBackgroundBlurRadius(int32_t from, uint32_t window, int32_t radius) {
    return take(sls, {from, window, radius});
}
#endif
}

int main() {
    auto& session = WindowServer::HeadlessSession::install();
    NSApplication::sharedApplication();
    const auto set = [](bool expected) {
        const NSWindow window(CGRectMake(0, 0, 9, 9), NSWindowStyleMaskBorderless,
                              NSBackingStoreBuffered, false);
        const Call call = {77, static_cast<uint32_t>(window.windowNumber()), 168};
        const bool holds = WindowServerBlur::set(168, window) == expected;
        const auto& asked = cgs.empty() ? sls : cgs;
        return holds && (asked.empty() || asked.back() == call || !expected);
    };
    const bool holds = set(EXPECTED) && set(EXPECTED);
    const auto& asked = cgs.empty() ? sls : cgs; // The CGS name goes first.
    const bool asksBoth = asked.size() == static_cast<size_t>(connections);
    const bool asksOne = (cgs.empty() || sls.empty()) && (!EXPECTED || asked.size() == 2);
    session.grantsNumbers = false; // A window without a number has no blur.
    const bool asksNoMore = set(false) && asked.size() == static_cast<size_t>(connections);
    return !(holds && asksBoth && asksOne && asksNoMore);
}
