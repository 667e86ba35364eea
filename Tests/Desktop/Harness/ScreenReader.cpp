#include "Harness/ScreenReader.h"

#include "Harness/Await.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

#include <algorithm>
#include <csignal>
#include <map>
#include <stdexcept>

namespace Harness {

namespace {

const std::string interfaces = "org.a11y.atspi.";
const char* const connectionName = "screen reader";

/// Bits of an element's states, as the protocol numbers them.
const std::map<std::string, int> stateBits = {
    {"checked", 4}, {"focusable", 11}, {"focused", 12}, {"selected", 23}, {"showing", 25}};

QVariantList ask(const QDBusConnection& bus, const std::string& service, const std::string& path,
                 const std::string& interface, const std::string& member,
                 const QVariantList& arguments = {}) {
    auto call = QDBusMessage::createMethodCall(
        QString::fromStdString(service), QString::fromStdString(path),
        QString::fromStdString(interface), QString::fromStdString(member));
    call.setArguments(arguments);
    return bus.call(call).arguments();
}

std::string property(const QDBusConnection& bus, const std::string& service,
                     const std::string& path, const char* name) {
    const auto answer = ask(bus, service, path, "org.freedesktop.DBus.Properties", "Get",
                            {QString::fromStdString(interfaces + "Accessible"), name});
    return answer.value(0).value<QDBusVariant>().variant().toString().toStdString();
}

std::vector<std::pair<std::string, std::string>>
children(const QDBusConnection& bus, const std::string& service, const std::string& path) {
    std::vector<std::pair<std::string, std::string>> result;
    const auto answer = ask(bus, service, path, interfaces + "Accessible", "GetChildren");
    if (!answer.value(0).canConvert<QDBusArgument>()) return result;
    const auto list = answer[0].value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString child;
        QDBusObjectPath place;
        list.beginStructure();
        list >> child >> place;
        list.endStructure();
        result.emplace_back(child.toStdString(), place.path().toStdString());
    }
    list.endArray();
    return result;
}

std::set<std::string> states(const QDBusConnection& bus, const std::string& service,
                             const std::string& path) {
    std::set<std::string> result;
    const auto answer = ask(bus, service, path, interfaces + "Accessible", "GetState");
    const auto words = qdbus_cast<QList<uint>>(answer.value(0));
    for (const auto& [name, bit] : stateBits)
        if (words.value(bit / 32) >> (bit % 32) & 1) result.insert(name);
    return result;
}

QDBusConnection accessibilityBus(const std::string& sessionBus) {
    auto session =
        QDBusConnection::connectToBus(QString::fromStdString(sessionBus), connectionName);
    QString address;
    await([&] {
        address = ask(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
                      .value(0)
                      .toString();
        return address.startsWith("unix:");
    });
    QDBusConnection::disconnectFromBus(connectionName);
    auto bus = QDBusConnection::connectToBus(address, connectionName);
    if (!bus.isConnected()) throw std::runtime_error("no accessibility bus");
    return bus;
}

} // namespace

std::string Spoken::line() const {
    std::string text = role + " \"" + name + "\"";
    if (!description.empty()) text += " (" + description + ")";
    for (const char* state : {"checked", "selected"})
        if (states.contains(state)) text += std::string(" [") + state + "]";
    return text;
}

std::string Spoken::lines(int depth) const {
    const bool isLayout = name.empty() &&
                          (role == "filler" || role == "layered pane" || role == "panel") &&
                          !states.contains("focusable");
    std::string text;
    if (!isLayout) text = std::string(static_cast<size_t>(depth++) * 2, ' ') + line() + "\n";
    for (const Spoken& child : children)
        if (child.states.contains("showing")) text += child.lines(depth);
    return text;
}

const Spoken* Spoken::with(const std::string& state) const {
    if (states.contains(state)) return this;
    for (const Spoken& child : children)
        if (const Spoken* const found = child.with(state)) return found;
    return nullptr;
}

const Spoken* Spoken::called(const std::string& wanted) const {
    if (name == wanted) return this;
    for (const Spoken& child : children)
        if (const Spoken* const found = child.called(wanted)) return found;
    return nullptr;
}

ScreenReader::ScreenReader(const Desktop& desktop)
    : m_launcher({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1",
                  "--screen-reader=1"},
                 desktop.environment()),
      m_bus(accessibilityBus(desktop.bus->address())) {}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(connectionName);
    m_launcher.send(SIGTERM); // Asked like this, it takes the bus that it started with it.
    m_launcher.awaitEnd();
}

std::pair<std::string, std::string> ScreenReader::program() const {
    const auto programs =
        children(m_bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root");
    return programs.empty() ? std::pair<std::string, std::string>() : programs.front();
}

Spoken ScreenReader::read(const std::string& service, const std::string& path) const {
    Spoken element;
    element.path = path;
    element.role = ask(m_bus, service, path, interfaces + "Accessible", "GetRoleName")
                       .value(0)
                       .toString()
                       .toStdString();
    element.name = property(m_bus, service, path, "Name");
    element.description = property(m_bus, service, path, "Description");
    element.states = states(m_bus, service, path);
    for (const auto& [owner, child] : children(m_bus, service, path))
        element.children.push_back(read(owner, child));
    return element;
}

std::vector<Spoken> ScreenReader::windows() const {
    const auto [service, path] = program();
    if (service.empty()) return {};
    std::vector<Spoken> all = read(service, path).children;
    std::erase_if(all, [](const Spoken& window) { return !window.states.contains("showing"); });
    return all;
}

std::string ScreenReader::focused() const {
    for (const Spoken& window : windows())
        if (const Spoken* const found = window.with("focused"))
            return found->role + " \"" + found->name + "\"";
    return {};
}

void ScreenReader::press(const Spoken& element) const {
    ask(m_bus, program().first, element.path, interfaces + "Action", "DoAction", {0});
}

} // namespace Harness
