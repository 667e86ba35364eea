// The program on a session bus: other instances of it, and the desktop's requests and settings.
#include "HeadlessSession.h"

#include "AppKit/AppKit.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>

namespace {

const QString identifier = "com.vardek.NimbrelLite";

void runUntil(const std::function<bool()>& holds) {
    const QDeadlineTimer deadline(20000);
    while (!holds() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_TRUE(holds());
}

/// A connection of its own, which answers every call to one object.
class Peer : public QDBusVirtualObject {
public:
    Peer(const QString& name, const QString& path)
        : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)),
          m_name(name) {
        connection.registerVirtualObject(path, this);
    }
    ~Peer() override { QDBusConnection::disconnectFromBus(m_name); }

    /// The kind of the error that came back.
    QDBusError::ErrorType call(const QString& whom, const QString& path, const char* method,
                               const QVariantList& arguments = {}) {
        auto request = QDBusMessage::createMethodCall(whom, path, {}, method);
        request.setArguments(arguments);
        return QDBusError(connection.call(request, QDBus::BlockWithGui)).type();
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        asked << message.member();
        // As a settings portal of the first version.
        if (message.member() == "ReadOne")
            return bus.send(message.createErrorReply(QDBusError::UnknownMethod, "Too old."));
        const QDBusVariant inner(1U);
        return bus.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }

    QDBusConnection connection;
    QStringList asked;

private:
    const QString m_name;
};

/// Another instance of the program, as it looks from the bus.
struct OtherInstance : Peer {
    explicit OtherInstance(const char* name) : Peer(name, "/Instance") {
        connection.interface()->registerService(identifier + ".Instances",
                                                QDBusConnectionInterface::QueueService);
    }
    QDBusError::ErrorType ask(const char* method, const QVariantList& arguments) {
        return call(identifier, "/com/vardek/NimbrelLite", method, arguments);
    }
    QDBusError::ErrorType activate() { return ask("Activate", {QVariantMap()}); }
};

OtherInstance* older = nullptr;

struct Delegate : NSApplicationDelegate {
    bool applicationShouldHandleReopen(NSApplication&, bool) override { return ++reopened; }
    void applicationDidFinishLaunching(const NSNotification&) override { onLaunch(); }
    int reopened = 0;
    std::function<void()> onLaunch;
};

} // namespace

TEST(NSApplication, IsReopenedByRequestsThatFindItRunningAndNoNewerInstance) {
    const auto delegate = std::make_shared<Delegate>();
    NSApp->setDelegate(delegate);
    older->asked.clear();
    const auto own = QDBusConnection::sessionBus().baseService();
    runUntil([&] { return older->connection.interface()->serviceOwner(identifier) == own; });
    EXPECT_EQ(older->activate(), QDBusError::NoError);
    EXPECT_EQ(delegate->reopened, 1) << "the request that started the program is its launch";
    const QVariantMap data;
    EXPECT_EQ(older->ask("ActivateAction", {"blur", QVariantList(), data}),
              QDBusError::InvalidArgs);
    EXPECT_EQ(older->ask("Open", {QStringList{"file:///a"}, data}), QDBusError::NotSupported);
    {
        OtherInstance newer("taking over");
        newer.connection.interface()->registerService(
            identifier, QDBusConnectionInterface::ReplaceExistingService);
        older->ask("Activate", {data});
    }
    EXPECT_EQ(older->activate(), QDBusError::NoError);
    EXPECT_EQ(delegate->reopened, 2);
}

// Two instances that start at once may each ask the other. The older one's request is turned round.
TEST(NSRunningApplication, FindsTheInstancesOldestFirstAndGivesWayToANewerOneAlone) {
    OtherInstance newer("newer");
    const auto current = NSRunningApplication::currentApplication();
    const auto find = [](const QString& name) {
        return NSRunningApplication::runningApplicationsWithBundleIdentifier(name.toStdString());
    };
    const auto found = find(identifier);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_TRUE(found[1]->isEqual(*current));
    EXPECT_FALSE(found[0]->isEqual(*current));
    EXPECT_TRUE(find("com.vardek").empty());
    EXPECT_TRUE(found[2]->terminate());
    runUntil([&] { return newer.asked.contains("Terminate"); });
    EXPECT_FALSE(older->asked.contains("Terminate"));

    const auto delegate = std::make_shared<Delegate>();
    delegate->onLaunch = [&] {
        const auto own = QDBusConnection::sessionBus().baseService();
        EXPECT_EQ(older->call(own, "/Instance", "Terminate"), QDBusError::AccessDenied);
        newer.connection.send(QDBusMessage::createMethodCall(own, "/Instance", {}, "Terminate"));
    };
    NSApp->setDelegate(delegate);
    NSApp->run(); // Returns.
    runUntil([] { return older->asked.contains("Terminate"); });
}

TEST(PortalSetting, FollowsItsOwnKeyOfItsOwnGroupInEitherVersion) {
    auto& workspace = NSWorkspace::sharedWorkspace();
    EXPECT_FALSE(workspace.accessibilityDisplayShouldReduceTransparency());
    const char* const path = "/org/freedesktop/portal/desktop";
    Peer portal("portal", path);
    portal.connection.registerService("org.freedesktop.portal.Desktop");
    runUntil([&] { return workspace.accessibilityDisplayShouldReduceTransparency(); });
    const auto tell = [&](const char* group, const char* key) {
        auto signal =
            QDBusMessage::createSignal(path, "org.freedesktop.portal.Settings", "SettingChanged");
        portal.connection.send(signal << group << key << QVariant::fromValue(QDBusVariant(0U)));
    };
    tell("org.example", "contrast");
    tell("org.freedesktop.appearance", "color-scheme");
    portal.call(QDBusConnection::sessionBus().baseService(), "/nowhere", "None"); // And is heard.
    EXPECT_TRUE(workspace.accessibilityDisplayShouldReduceTransparency());
    tell("org.freedesktop.appearance", "contrast");
    runUntil([&] { return !workspace.accessibilityDisplayShouldReduceTransparency(); });
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    OtherInstance first("older");
    older = &first;
    // The bus starts the program for this request and keeps it until the program has its name.
    first.connection.send(QDBusMessage::createMethodCall(identifier, "/com/vardek/NimbrelLite",
                                                         "org.freedesktop.Application", "Activate")
                          << QVariantMap());
    first.connection.interface()->registeredServiceNames(); // Now the bus has read the request.
    WindowServer::HeadlessSession::install();
    NSApplication::sharedApplication();
    return RUN_ALL_TESTS();
}
