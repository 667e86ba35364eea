// The program on a session bus: other instances of it, and the desktop's settings.
#include "AppKit/AppKit.h"
#include "WindowServer/HeadlessSession.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMap>
#include <QPalette>

namespace {

const char* const identifier = "com.vardek.NimbrelLite";
const char* const instancePath = "/com/vardek/NimbrelLite/Instance";
const char* const portalService = "org.freedesktop.portal.Desktop";
const char* const portalPath = "/org/freedesktop/portal/desktop";
const char* const portalSettings = "org.freedesktop.portal.Settings";

void runUntil(const std::function<bool()>& holds) {
    const QDeadlineTimer deadline(20000);
    while (!holds() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_TRUE(holds());
}

/// Answers the calls that come to one object of a connection.
class Answerer : public QDBusVirtualObject {
public:
    using Answer = std::function<QDBusMessage(const QDBusMessage&)>;
    explicit Answerer(Answer answer) : m_answer(std::move(answer)) {}

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        return connection.send(m_answer(message));
    }

private:
    Answer m_answer;
};

/// Another instance of the program, as it looks from the bus.
class OtherInstance {
public:
    explicit OtherInstance(const char* name)
        : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)),
          m_object([this](const QDBusMessage& message) {
              ++asked[message.member().toStdString()];
              return message.createReply();
          }) {
        connection.registerVirtualObject(instancePath, &m_object);
        connection.registerService(QString("%1.Instance%2").arg(identifier, number()));
    }

    QString number() const { return connection.baseService().mid(1).replace('.', '_'); }

    QDBusPendingCall askToTerminate(const QDBusConnection& whom) {
        return connection.asyncCall(QDBusMessage::createMethodCall(
            whom.baseService(), instancePath, "com.vardek.NimbrelLite.Instance", "Terminate"));
    }

    QDBusConnection connection;
    std::map<std::string, int> asked;

private:
    Answerer m_object;
};

OtherInstance* older = nullptr;

/// A request that any desktop makes of the application that has the name on the bus.
QDBusPendingCall ask(const char* method, const QVariantList& arguments = {QVariantMap()}) {
    auto request = QDBusMessage::createMethodCall(identifier, "/com/vardek/NimbrelLite",
                                                  "org.freedesktop.Application", method);
    request.setArguments(arguments);
    return older->connection.asyncCall(request);
}

/// The bus starts the program for this one and keeps it until the program has its name.
std::optional<QDBusPendingCall> launch;

struct ReopenCounter : NSApplicationDelegate {
    bool applicationShouldHandleReopen(NSApplication& application, bool) override {
        EXPECT_EQ(&application, NSApp);
        ++count;
        return false;
    }
    int count = 0;
};

QDBusError answered(QDBusPendingCall call) {
    runUntil([&] { return call.isFinished(); });
    return call.error();
}

/// The desktop's settings, in the first version of their interface.
class Portal {
public:
    Portal()
        : m_object([this](const QDBusMessage& message) {
              if (message.member() != "Read")
                  return message.createErrorReply(QDBusError::UnknownMethod, "Too old for that.");
              const auto arguments = message.arguments(); // The group and the key.
              EXPECT_EQ(arguments.value(0), "org.freedesktop.appearance");
              const QDBusVariant inner(settings.value(arguments.value(1).toString()));
              return message.createReply(
                  QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner))));
          }) {
        connection.registerVirtualObject(portalPath, &m_object);
    }
    ~Portal() { QDBusConnection::disconnectFromBus("portal"); }

    void start() { EXPECT_TRUE(connection.registerService(portalService)); }

    void tell(const char* group, const char* key, uint value) {
        auto signal = QDBusMessage::createSignal(portalPath, portalSettings, "SettingChanged");
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        connection.send(signal);
    }

    QMap<QString, uint> settings{{"contrast", 1}, {"color-scheme", 1}};
    QDBusConnection connection =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");

private:
    Answerer m_object;
};

} // namespace

TEST(NSApplication, IsReopenedByRequestsThatFindItRunning) {
    const auto delegate = std::make_shared<ReopenCounter>();
    NSApp->setDelegate(delegate);
    EXPECT_FALSE(answered(*launch).isValid()) << answered(*launch).message().toStdString();
    EXPECT_EQ(delegate->count, 0);
    for (int asked = 1; asked <= 3; ++asked) {
        EXPECT_FALSE(answered(ask("Activate")).isValid());
        EXPECT_EQ(delegate->count, asked);
    }
    const QVariantMap data;
    EXPECT_EQ(answered(ask("ActivateAction", {"blur", QVariantList(), data})).type(),
              QDBusError::InvalidArgs);
    EXPECT_EQ(answered(ask("Open", {QStringList{"file:///a"}, data})).type(),
              QDBusError::NotSupported);
    EXPECT_EQ(delegate->count, 3);
}

TEST(NSApplication, LeavesReopeningToANewerInstanceWhileThatRuns) {
    const auto delegate = std::make_shared<ReopenCounter>();
    NSApp->setDelegate(delegate);
    {
        OtherInstance newer("taking over");
        newer.connection.interface()->registerService(
            identifier, QDBusConnectionInterface::ReplaceExistingService);
        ask("Activate").waitForFinished();
        QDBusConnection::disconnectFromBus("taking over");
    }
    EXPECT_FALSE(answered(ask("Activate")).isValid());
    EXPECT_EQ(delegate->count, 1);
}

TEST(NSRunningApplication, FindsTheInstancesOldestFirst) {
    OtherInstance newer("newer");
    newer.connection.registerService("org.example.com.vardek.NimbrelLite.Instance1_1"); // No such.
    const auto current = NSRunningApplication::currentApplication();
    auto found = NSRunningApplication::runningApplicationsWithBundleIdentifier(identifier);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_FALSE(found[0]->isEqual(*current));
    EXPECT_TRUE(found[1]->isEqual(*current));
    EXPECT_FALSE(found[2]->isEqual(*found[0]));

    EXPECT_TRUE(found[2]->terminate());
    runUntil([&] { return newer.asked["Terminate"] == 1; });
    EXPECT_EQ(older->asked["Terminate"], 0);
    EXPECT_TRUE(
        NSRunningApplication::runningApplicationsWithBundleIdentifier("com.vardek").empty());
}

// Two instances that start at once may each ask the other. The older one's request is turned round.
TEST(NSRunningApplication, GivesWayToANewerInstanceAlone) {
    struct Delegate : NSApplicationDelegate {
        void applicationDidFinishLaunching(const NSNotification&) override {
            const auto self = QDBusConnection::sessionBus();
            auto* refusal = new QDBusPendingCallWatcher(older->askToTerminate(self), qApp);
            QObject::connect(refusal, &QDBusPendingCallWatcher::finished, qApp, [=, this] {
                refused = refusal->isError();
                newer.askToTerminate(self);
            });
        }
        OtherInstance newer{"newest"};
        bool refused = false;
    };
    const auto delegate = std::make_shared<Delegate>();
    NSApp->setDelegate(delegate);
    NSApp->run();
    EXPECT_TRUE(delegate->refused);
    runUntil([] { return older->asked["Terminate"] == 1; });
}

TEST(PortalSetting, FollowsItsOwnKeyOfItsOwnGroup) {
    auto& workspace = NSWorkspace::sharedWorkspace();
    int changes = 0;
    workspace.notificationCenter().addObserverForName(
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr,
        NSOperationQueue::mainQueue(), [&](const NSNotification&) { ++changes; });
    const auto reduces = [&] { return workspace.accessibilityDisplayShouldReduceTransparency(); };
    const auto isDark = [] {
        return QGuiApplication::palette().color(QPalette::Window).lightness() < 64;
    };
    EXPECT_TRUE(!reduces() && !isDark());

    Portal portal;
    portal.start();
    runUntil([&] { return changes == 1 && isDark(); });
    EXPECT_TRUE(reduces());

    portal.tell("org.example", "contrast", 0);
    portal.tell("org.freedesktop.appearance", "contrast", 1);
    portal.tell("org.freedesktop.appearance", "color-scheme", 2);
    runUntil([&] { return !isDark(); });
    EXPECT_TRUE(changes == 1 && reduces());
    portal.tell("org.freedesktop.appearance", "contrast", 0);
    runUntil([&] { return changes == 2; });
    EXPECT_FALSE(reduces());

    // Where the portal knows of no wish, the theme tells.
    auto& session = static_cast<WindowServer::HeadlessSession&>(WindowServer::Session::current());
    session.setThemeName("HighContrastInverse");
    EXPECT_TRUE(changes == 3 && reduces() && !isDark());
    portal.tell("org.freedesktop.appearance", "color-scheme", 0);
    runUntil(isDark);
    for (const char* theme : {"Adwaita", "Adwaita-dark", "Greybird", "BlackMATE"}) {
        session.setThemeName(theme);
        EXPECT_EQ(isDark(), QString(theme).contains("ark") || QString(theme).contains("Black"));
    }
    EXPECT_TRUE(changes == 4 && !reduces());
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    OtherInstance first("older");
    older = &first;
    launch = ask("Activate");
    older->connection.interface()->registeredServiceNames(); // Now the bus has read the request.
    NSApplication::sharedApplication();
    return RUN_ALL_TESTS();
}
