// How the floating button looks, compared with pictures of it that were found good.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <QDir>
#include <QImage>

#include <cstdlib>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr uint32_t paperColour = 0x4682B4;
constexpr int around = 12; ///< So many points around the disc belong to the picture.

struct Look {
    const char* scale;
    bool composited;
};

std::string nameOf(const Look& look) {
    std::string name = std::string("Scale") + look.scale;
    std::erase(name, '.');
    return name + (look.composited ? "Composited" : "Plain");
}

class ButtonLooks : public testing::TestWithParam<Look> {};

QImage imageOf(const Picture& picture) {
    const Area& area = picture.area();
    QImage image(area.width, area.height, QImage::Format_RGB32);
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x)
            image.setPixel(x, y, picture.at(area.x + x, area.y + y));
    return image;
}

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

/// Empty where the pictures look alike. A newer toolkit may round an edge in another way.
std::string complaint(const QImage& actual, const QImage& expected) {
    constexpr int tolerable = 40;
    constexpr double tolerableMean = 1.5;
    if (actual.size() != expected.size()) return "another size";
    int worst = 0;
    double sum = 0;
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x) {
            const int here = difference(actual.pixel(x, y), expected.pixel(x, y));
            worst = std::max(worst, here);
            sum += here;
        }
    const double mean = sum / (actual.width() * actual.height());
    if (worst <= tolerable && mean <= tolerableMean) return {};
    return "a pixel differs by " + std::to_string(worst) + ", all by " + std::to_string(mean);
}

std::string complaintAbout(const QImage& actual, const std::string& name) {
    const QString file = QString::fromStdString(name + ".png");
    const QImage expected(QDir(PICTURES).filePath(file));
    const std::string text = complaint(actual, expected);
    if (text.empty()) return {};
    QDir().mkpath(FOUND_PICTURES);
    const QString found = QDir(FOUND_PICTURES).filePath(file);
    actual.save(found);
    return text + "; see " + found.toStdString();
}

} // namespace

TEST_P(ButtonLooks, AreTheOnesThatWereFoundGood) {
    Desktop desktop;
    desktop.extra = {{"QT_SCALE_FACTOR", GetParam().scale}};
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    paper.paint(paperColour);
    paper.lower();
    paper.show();
    desktop.input.move(960, 300);
    const auto compositor = GetParam().composited ? desktop.startCompositor() : nullptr;
    Agent agent(desktop);
    ASSERT_TRUE(await([&] { return agent.buttons().size() == 2; }));

    const auto expectLook = [&](const char* state, std::chrono::seconds deadline) {
        const double scale = std::atof(GetParam().scale);
        const int margin = static_cast<int>((GetParam().composited ? 0 : around) * scale);
        Area area = agent.buttons()[1].area;
        area = {area.x - margin, area.y - margin, area.width + 2 * margin,
                area.height + 2 * margin};
        area.width = std::min(area.width, desktop.screen.bounds().width - area.x);
        const std::string name = nameOf(GetParam()) + state;
        std::string text;
        EXPECT_TRUE(await(
            [&] {
                const QImage image = imageOf(desktop.screen.grab(area));
                text = complaintAbout(image, name);
                return text.empty();
            },
            deadline))
            << name << ": " << text;
    };
    expectLook("Awake", 2s);
    expectLook("Dim", 5s);
    agent.cover();
    expectLook("Blurred", 5s);
}

INSTANTIATE_TEST_SUITE_P(All, ButtonLooks,
                         testing::Values(Look{"1", false}, Look{"1", true}, Look{"1.25", false},
                                         Look{"1.25", true}, Look{"2", false}, Look{"2", true}),
                         [](const auto& each) { return nameOf(each.param); });
