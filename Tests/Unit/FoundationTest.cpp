#include "Foundation/Foundation.h"

#include "Foundation/NSBundle+Private.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::ElementsAre;

TEST(NSNotificationCenter, RunsTheBlocksOfANameInOrderWithTheNotification) {
    NSNotificationCenter center;
    const auto sender = std::make_shared<int>(1);
    std::vector<std::string> log;
    for (const char* name : {"one", "other", "one"})
        center.addObserverForName(name, nullptr, NSOperationQueue::mainQueue(),
                                  [&, name](const NSNotification& notification) {
                                      EXPECT_EQ(notification.name(), name);
                                      EXPECT_EQ(notification.object(), sender);
                                      log.push_back(name);
                                  });
    center.postNotificationName("one", sender); // The tokens are long gone.
    EXPECT_THAT(log, ElementsAre("one", "one"));
}

TEST(NSNotificationCenter, ObservesOneObjectWhereAskedTo) {
    NSNotificationCenter center;
    const auto wanted = std::make_shared<int>(1);
    int posts = 0;
    center.addObserverForName("name", wanted, NSOperationQueue::mainQueue(),
                              [&](const NSNotification&) { ++posts; });
    center.postNotificationName("name", std::make_shared<int>(1));
    center.postNotificationName("name", nullptr);
    EXPECT_EQ(posts, 0);
    center.postNotificationName("name", wanted);
    EXPECT_EQ(posts, 1);
}

TEST(NSNotificationCenter, ABlockMayAddObserversAndPost) {
    NSNotificationCenter center;
    int late = 0;
    center.addObserverForName(
        "name", nullptr, NSOperationQueue::mainQueue(), [&](const NSNotification&) {
            for (int i = 0; i < 100; ++i)
                center.addObserverForName("inner", nullptr, NSOperationQueue::mainQueue(),
                                          [&](const NSNotification&) { ++late; });
            center.postNotificationName("inner", nullptr);
        });
    center.postNotificationName("name", nullptr);
    EXPECT_EQ(late, 100);
}

TEST(NSObject, EqualsItselfAlone) {
    const NSNumber one(4000000000u), other(4000000000u);
    EXPECT_TRUE(one.isEqual(one));
    EXPECT_FALSE(one.isEqual(other));
    EXPECT_EQ(one.unsignedIntValue(), 4000000000u);
}

TEST(SEL, ReachesOnlyObjectsThatHaveTheMethod) {
    struct Counter : NSObject {
        void count() { ++counted; }
        int counted = 0;
    } counter;
    struct Other : NSObject {
    } other;
    const SEL count = &Counter::count;
    count.send(counter, other);
    count.send(other, counter);
    SEL().send(counter, other);
    EXPECT_EQ(counter.counted, 1);
}

TEST(SEL, HandsOverASenderOfTheRightClass) {
    struct Sender : NSObject {
    } sender;
    struct Listener : NSObject {
        void hear(const Sender& from) { heard.push_back(&from); }
        std::vector<const NSObject*> heard;
    } listener;
    const SEL hear = &Listener::hear;
    hear.send(listener, sender);
    hear.send(listener, listener);
    EXPECT_EQ(listener.heard, std::vector<const NSObject*>{&sender});
}

TEST(NSBundle, KnowsItsIdentifier) {
    EXPECT_EQ(NSBundle::mainBundle().bundleIdentifier(), "com.vardek.NimbrelLite");
}

TEST(NSBundle, IsAmongTheApplicationsWhereItIsInstalledForEveryone) {
    const std::pair<const char*, const char*> cases[] = {
        {"/usr/bin/program", "/Applications/A Name.app"},
        {"/usr/local/bin/program", "/Applications/A Name.app"},
        {"/opt/folder/bin/program", "/Applications/A Name.app"},
        {"/home/someone/.local/bin/program", "/home/someone/.local/bin"},
        {"/home/someone/usr/bin/program", "/home/someone/usr/bin"},
        {"/home/someone/Applications/program", "/home/someone/Applications"},
        {"/media/disk/A Name.app/program", "/media/disk/A Name.app"},
        {"/optional/program", "/optional"},
        {"/usr2/bin/program", "/usr2/bin"},
        {"/program", "/"},
    };
    for (const auto& [executable, path] : cases)
        EXPECT_EQ(bundlePathOf(executable, "A Name"), path) << executable;
}

TEST(NSBundle, ReadsItsPropertyList) {
    const auto& bundle = NSBundle::mainBundle();
    EXPECT_EQ(bundle.objectForInfoDictionaryKey("CFBundleName"), "Nimbrel Lite");
    EXPECT_EQ(bundle.objectForInfoDictionaryKey("LSUIElement"), std::nullopt);
    const auto executable = std::filesystem::read_symlink("/proc/self/exe").string();
    EXPECT_EQ(bundle.bundlePath(), bundlePathOf(executable, "Nimbrel Lite"));
}

TEST(NSLog, WritesOneLine) {
    const NSError error("Domain", 7, "No room");
    testing::internal::CaptureStderr();
    NSLog("50%s: " + error.description());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "50%s: Error Domain=Domain Code=7 \"No room\"\n");
}
