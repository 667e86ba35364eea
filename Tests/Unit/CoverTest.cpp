// The covers' states, as the window server is told of them.
#include "Offscreen.h"

#include "Cover.h"

#include <algorithm>

namespace {

struct CoverTest : Offscreen {
    CoverTest() { cover->start(); }

    bool allAre(bool shown) const {
        return session.living.size() == 2 && std::ranges::all_of(session.living, [&](auto* each) {
                   return each->wantsToShow() == shown &&
                          each->look().overlay.alpha == (shown ? 0.4 : 0);
               });
    }

    std::shared_ptr<Cover> cover = std::make_shared<Cover>();
};

} // namespace

TEST_F(CoverTest, SaysSoOnceAllWindowsHaveChangedAndMakesNone) {
    int posts = 0;
    NSNotificationCenter::defaultCenter().addObserverForName(
        Cover::changed, nullptr, NSOperationQueue::mainQueue(),
        [&, watched = std::weak_ptr(cover)](const NSNotification& note) {
            if (note.object() != watched.lock()) return; // Of a later test.
            ++posts;
            EXPECT_TRUE(allAre(cover->shown()));
        });
    for (const bool shown : {false, true, true, false, true}) {
        shown ? cover->show() : cover->hide();
        EXPECT_EQ(cover->shown(), shown);
        EXPECT_TRUE(allAre(shown));
    }
    EXPECT_EQ(posts, 3) << "one for each change";
    connect({display(7, CGRectMake(0, 0, 1440, 900)), display(0, CGRectMake(1440, 0, 9, 9))});
    EXPECT_EQ(session.living.size(), 1u) << "none where there is no number";
}

TEST_F(CoverTest, ARefusedBlurBringsUpAMaterialAndLeavesNothingBehind) {
    const WindowServer::Surface& surface = *session.living.front();
    for (const int answer : {1006, 0, 1006}) {
        session.blurAnswer = answer;
        cover->show();
        EXPECT_EQ(surface.look(), (WindowServer::Look{answer != 0, CGColor{0, 0, 0, 0.4}}));
        cover->hide();
        EXPECT_EQ(surface.look(), WindowServer::Look{});
    }
    cover->show();
    cover = nullptr; // What observed for it does nothing more.
    connect({});
    EXPECT_TRUE(session.living.empty());
}
