// The program on a session bus: other instances of it, and the desktop's requests.
#include "HeadlessSession.h"

#include "AppKit/AppKit.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
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

/// Another instance of the program, as it looks from the bus.
class OtherInstance : public QDBusVirtualObject {
public:
    explicit OtherInstance(const QString& name)
        : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)),
          m_name(name) {
        connection.registerVirtualObject("/Instance", this);
        connection.interface()->registerService(identifier + ".Instances",
                                                QDBusConnectionInterface::QueueService);
    }
    ~OtherInstance() override { QDBusConnection::disconnectFromBus(m_name); }

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
        return bus.send(message.createReply());
    }

    QDBusConnection connection;
    QStringList asked;

private:
    const QString m_name;
};

OtherInstance* older = nullptr;

struct Delegate : NSApplicationDelegate {
    bool applicationShouldHandleReopen(NSApplication&, bool) override { return ++reopened; }
    void applicationDidFinishLaunching(const NSNotification&) override { onLaunch(); }
    int reopened = 0;
    std::function<void()> onLaunch;
};

} // namespace

TEST(NSApplication, IsReopenedByRequestsThatFindItRunning) {
    const auto delegate = std::make_shared<Delegate>();
    NSApp->setDelegate(delegate);
    older->asked.clear();
    const auto own = QDBusConnection::sessionBus().baseService();
    runUntil([&] { return older->connection.interface()->serviceOwner(identifier) == own; });
    EXPECT_EQ(older->call(identifier, "/com/vardek/NimbrelLite", "Activate", {QVariantMap()}),
              QDBusError::NoError);
    EXPECT_EQ(delegate->reopened, 1) << "the request that started the program is its launch";
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
