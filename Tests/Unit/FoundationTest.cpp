#include "Foundation/Foundation.h"

#include "Foundation/NSBundle+Private.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(NSNotificationCenter, RunsInOrderWhatObservesTheNameAndTheObject) {
    NSNotificationCenter center;
    const auto wanted = std::make_shared<int>(1);
    std::vector<int> log;
    const auto observe = [&](const char* name, const std::shared_ptr<int>& object, int number) {
        center.addObserverForName(name, object, NSOperationQueue::mainQueue(),
                                  [&log, number](const NSNotification&) { log.push_back(number); });
    };
    observe("name", nullptr, 1);
    observe("other", nullptr, 2);
    observe("name", wanted, 3);
    center.postNotificationName("name", wanted);
    center.postNotificationName("name", std::make_shared<int>(1));
    center.postNotificationName("name", nullptr);
    EXPECT_THAT(log, ElementsAre(1, 3, 1, 1));
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

TEST(SEL, ReachesOnlyObjectsThatHaveTheMethodAndSendersOfItsClass) {
    struct Sender : NSObject {
    } sender;
    struct Listener : NSObject {
        void hear(const Sender&) { ++heard; }
        int heard = 0;
    } listener;
    const SEL hear = &Listener::hear;
    hear.send(listener, sender);
    hear.send(listener, listener);
    hear.send(sender, sender);
    SEL().send(listener, sender);
    EXPECT_EQ(listener.heard, 1);
}

TEST(NSBundle, IsAmongTheApplicationsWhereItIsInstalledForEveryone) {
    const std::pair<const char*, const char*> cases[] = {
        {"/usr/bin/program", "/Applications/A Name.app"},
        {"/opt/folder/bin/program", "/Applications/A Name.app"},
        {"/home/someone/usr/bin/program", "/home/someone/usr/bin"},
        {"/optional/program", "/optional"},
        {"/program", "/"},
    };
    for (const auto& [executable, path] : cases)
        EXPECT_EQ(bundlePathOf(executable, "A Name"), path) << executable;
}
