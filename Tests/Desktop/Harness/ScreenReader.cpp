#include "Harness/ScreenReader.h"

#include "Harness/Await.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace Harness {

namespace {

const char* const connectionName = "screen reader";
const char* const accessible = "org.a11y.atspi.Accessible";

/// Bits of an element's states, as the protocol numbers them.
const std::map<std::string, int> stateBits = {
    {"checked", 4}, {"focusable", 11}, {"focused", 12}, {"selected", 23}, {"showing", 25}};

QVariantList call(const QDBusConnection& bus, const QString& service, const QString& path,
                  const QString& interface, const QString& member, const QVariantList& arguments) {
    auto question = QDBusMessage::createMethodCall(service, path, interface, member);
    question.setArguments(arguments);
    return bus.call(question).arguments();
}

QDBusConnection accessibilityBus(const QString& sessionBus) {
    const auto session = QDBusConnection::connectToBus(sessionBus, connectionName);
    QString address;
    await([&] {
        address = call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", {})
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

std::string Spoken::roles() const {
    const bool isLayout = name.empty() &&
                          (role == "filler" || role == "layered pane" || role == "panel") &&
                          !states.contains("focusable");
    std::string text = isLayout ? "" : role;
    for (const char* state : {"checked", "selected"})
        if (states.contains(state)) text += std::string(" [") + state + "]";
    for (const Spoken& child : children)
        if (child.states.contains("showing"))
            if (const std::string inner = child.roles(); !inner.empty())
                text += (text.empty() ? "" : ", ") + inner;
    return text;
}

const Spoken* Spoken::find(const std::function<bool(const Spoken&)>& wanted) const {
    if (wanted(*this)) return this;
    for (const Spoken& child : children)
        if (const Spoken* const found = child.find(wanted)) return found;
    return nullptr;
}

ScreenReader::ScreenReader(const Environment& environment)
    : m_launcher({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1",
                  "--screen-reader=1"},
                 environment),
      m_bus(accessibilityBus(QString::fromStdString(environment.at("DBUS_SESSION_BUS_ADDRESS")))) {}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(connectionName);
    m_launcher.send(SIGTERM); // Asked like this, it takes the bus that it started with it.
    m_launcher.awaitEnd();
}

QVariantList ScreenReader::ask(const Place& whom, const char* interface, const char* member,
                               const QVariantList& arguments) const {
    return call(m_bus, whom.service, whom.path, interface, member, arguments);
}

std::vector<ScreenReader::Place> ScreenReader::childrenOf(const Place& element) const {
    using Reference = std::pair<QString, QDBusObjectPath>;
    std::vector<Place> result;
    for (const auto& [service, path] :
         qdbus_cast<QList<Reference>>(ask(element, accessible, "GetChildren").value(0)))
        result.push_back({service, path.path()});
    return result;
}

QString ScreenReader::property(const Place& whom, const char* name) const {
    return ask(whom, "org.freedesktop.DBus.Properties", "Get", {accessible, name})
        .value(0)
        .value<QDBusVariant>()
        .variant()
        .toString();
}

ScreenReader::Place ScreenReader::program() const {
    const auto programs =
        childrenOf({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"});
    return programs.empty() ? Place() : programs.front();
}

Spoken ScreenReader::read(const Place& element) const {
    Spoken spoken;
    spoken.path = element.path;
    spoken.role = ask(element, accessible, "GetRoleName").value(0).toString().toStdString();
    spoken.name = property(element, "Name").toStdString();
    spoken.description = property(element, "Description").toStdString();
    const auto words = qdbus_cast<QList<uint>>(ask(element, accessible, "GetState").value(0));
    for (const auto& [name, bit] : stateBits)
        if (words.value(bit / 32) >> (bit % 32) & 1) spoken.states.insert(name);
    for (const Place& child : childrenOf(element))
        spoken.children.push_back(read(child));
    return spoken;
}

std::vector<Spoken> ScreenReader::windows() const {
    const Place place = program();
    if (place.service.isEmpty()) return {};
    std::vector<Spoken> all = read(place).children;
    std::erase_if(all, [](const Spoken& window) { return !window.states.contains("showing"); });
    return all;
}

std::string ScreenReader::focused() const {
    for (const Spoken& window : windows())
        if (const auto* found =
                window.find([](const Spoken& each) { return each.states.contains("focused"); }))
            return found->line();
    return {};
}

void ScreenReader::press(const Spoken& element) const {
    ask({program().service, element.path}, "org.a11y.atspi.Action", "DoAction", {0});
}

Area ScreenReader::areaOf(const Spoken& element) const {
    const auto answer =
        ask({program().service, element.path}, "org.a11y.atspi.Component", "GetExtents", {0U});
    Area area;
    if (!answer.value(0).canConvert<QDBusArgument>()) return area;
    const auto extents = answer[0].value<QDBusArgument>();
    extents.beginStructure();
    extents >> area.x >> area.y >> area.width >> area.height;
    return area;
}

} // namespace Harness
