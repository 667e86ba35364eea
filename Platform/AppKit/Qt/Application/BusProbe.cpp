#include "AppKit/Qt/Application/Launch.h"

#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

#include <dbus/dbus.h>
#include <unistd.h>

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::chrono::seconds patience(2); // A bus in health answers within a millisecond.

bool letsIn(const std::string& address) {
    DBusConnection* const bus = dbus_connection_open_private(address.c_str(), nullptr);
    if (!bus) return false;
    dbus_connection_set_exit_on_disconnect(bus, false);
    const bool answered = dbus_bus_register(bus, nullptr);
    dbus_connection_close(bus);
    dbus_connection_unref(bus);
    return answered;
}

bool isSilent(const std::string& address) {
    const auto answer = std::make_shared<std::promise<bool>>();
    probeBus(address, [answer](bool letIn) { answer->set_value(letIn); });
    return answer->get_future().wait_for(patience) == std::future_status::timeout;
}

} // namespace

void probeBus(const std::string& address, std::function<void(bool)> tell) {
    std::thread([address, tell = std::move(tell)] { tell(letsIn(address)); }).detach();
}

void settleSessionBus() {
    const char* named = std::getenv(variable);
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string folder = runtime ? runtime : "/run/user/" + std::to_string(::getuid());
    // Left without a name, the bus library would start a new bus.
    std::string address = named ? named : "unix:path=" + folder + "/bus";
    if (isSilent(address)) address = "unix:path=/nonexistent";
    ::setenv(variable, address.c_str(), true);
}
