#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Paper.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

enum class Moment { BeforeTheStart, BeforeTheCover, UnderTheCover };

class ScarceMemory : public testing::TestWithParam<Moment> {};

} // namespace

TEST_P(ScarceMemory, CoversPlainlyAndLiveOnceThereIsMemoryAgain) {
    const Folder folder;
    const auto sign = folder.path() / "scarce";
    Desktop desktop(XServer::framebuffer(
        {}, {"env", "LD_PRELOAD=" SCARCE_MEMORY, "SCARCE_MEMORY=" + sign.string()}));
    Paper paper(desktop);
    paper.paint(3200, 8, [](int x, int y) { return (x / 4 + y / 4) % 2 == 0 ? white : marker; });
    desktop.server->xrandr({"--setmonitor", "Left", "1600/500x1080/290+0+0", "screen"});
    desktop.server->xrandr({"--setmonitor", "Right", "1600/500x1080/290+1600+0", "none"});
    const auto arrive = [&](Moment moment) {
        if (moment == GetParam()) std::ofstream(sign) << "now";
    };

    arrive(Moment::BeforeTheStart);
    Agent agent(desktop);
    arrive(Moment::BeforeTheCover);
    agent.cover();
    arrive(Moment::UnderTheCover);
    // A larger monitor takes larger pictures.
    for (const char* half : {"Left", "Right"})
        desktop.server->xrandr({"--delmonitor", half});
    EXPECT_SOON(agent.isCovered());
    for (const uint32_t colour : {black, white}) {
        paper.paint(colour);
        EXPECT_TRUE(holdsFor(200ms, [&] {
            const Picture picture = desktop.screen.grabWithoutButtons({0, 0, 1600, 1000});
            return agent.isCovered() && picture.brightest() <= 160 && picture.sharpestStep() <= 4;
        }));
    }

    agent.uncover();
    std::filesystem::remove(sign);
    agent.cover();
    paper.expectShownThrough(desktop.screen, {400, 300, 800, 400});
    EXPECT_EQ(agent.process().errors(),
              "X11: the server refused a request, as it does when it is short of "
              "memory: the cover is plain dark until the next one.\n");
}

INSTANTIATE_TEST_SUITE_P(From, ScarceMemory,
                         testing::Values(Moment::BeforeTheStart, Moment::BeforeTheCover,
                                         Moment::UnderTheCover));
