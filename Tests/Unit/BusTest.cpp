// The program on a session bus: other instances of it, and the desktop's settings.
#include "Screens.h"

#include "AppKit/AppKit.h"
#include "Cover.h"

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

#include <cmath>

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

TEST(NSWorkspace, FollowsTheContrastOfTheDesktop) {
    auto& workspace = NSWorkspace::sharedWorkspace();
    int changes = 0;
    workspace.notificationCenter().addObserverForName(
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr,
        NSOperationQueue::mainQueue(), [&](const NSNotification&) { ++changes; });
    const auto reduces = [&] { return workspace.accessibilityDisplayShouldReduceTransparency(); };
    EXPECT_FALSE(reduces());

    screens().setDisplays(twoScreens());
    const auto cover = std::make_shared<Cover>();
    cover->start();
    cover->show();
    const PostCounter posts(Cover::changed);
    const auto looks = [](const CGColor& colour, int radius) {
        for (const auto* surface : screens().surfaces())
            EXPECT_TRUE(surface->look.overlay == colour && surface->radius == radius &&
                        surface->alpha == 1 && !surface->look.material);
    };
    const CGColor tint{0, 0, 0, 0.4};
    const CGColor solid{14 / 255.0, 16 / 255.0, 21 / 255.0, 1};
    looks(tint, 168);

    Portal portal;
    portal.start();
    runUntil([&] { return changes == 1; });
    EXPECT_TRUE(reduces());
    looks(solid, 1);
    EXPECT_EQ(posts.count(), 0);

    portal.tell("org.freedesktop.appearance", "color-scheme", 0);
    portal.tell("org.example", "contrast", 0);
    portal.tell("org.freedesktop.appearance", "contrast", 1);
    portal.tell("org.freedesktop.appearance", "contrast", 0);
    runUntil([&] { return changes == 2; });
    EXPECT_FALSE(reduces());
    looks(tint, 168);

    cover->hide();
    portal.tell("org.freedesktop.appearance", "contrast", 1);
    runUntil(reduces);
    for (const auto* surface : screens().surfaces())
        EXPECT_EQ(surface->look, WindowServer::Look{});
    cover->show();
    looks(solid, 1);
}

namespace {

/// From 1, the same, to 21, black on white.
double contrastOf(const QColor& one, const QColor& other) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor& color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

void expectLegibleText() {
    const QPalette palette = QGuiApplication::palette();
    for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::ToolTipBase})
        for (const auto text : {QPalette::WindowText, QPalette::Text, QPalette::PlaceholderText,
                                QPalette::ToolTipText})
            EXPECT_GE(contrastOf(palette.color(ground), palette.color(text)), 4.5)
                << ground << " " << text;
}

} // namespace

TEST(Appearance, IsDarkWhileTheDesktopPrefersThat) {
    const auto lightnessOf = [](QPalette::ColorRole role) {
        return QGuiApplication::palette().color(role).lightness();
    };
    const auto isDark = [&] {
        return lightnessOf(QPalette::Window) < 64 && lightnessOf(QPalette::WindowText) > 192;
    };
    const auto isLight = [&] {
        return lightnessOf(QPalette::Window) > 192 && lightnessOf(QPalette::WindowText) < 64;
    };
    EXPECT_TRUE(isLight());
    Portal portal;
    portal.start();
    expectLegibleText();
    runUntil(isDark);
    expectLegibleText();
    for (const uint scheme : {0u, 2u}) { // No preference, and one for light.
        portal.tell("org.freedesktop.appearance", "color-scheme", scheme);
        runUntil(isLight);
        portal.tell("org.freedesktop.appearance", "color-scheme", 1);
        runUntil(isDark);
    }
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
