#include "Offscreen.h"

#include "Cover.h"

TEST_F(Offscreen, ARefusedBlurBringsUpAMaterialAndLeavesNothingBehind) {
    auto cover = std::make_shared<Cover>();
    cover->start();
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
