#include "Measurements.h"
#include "Scenery.h"
#include "TrueGaussian.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <thread>

namespace Benchmarks {

using namespace Harness;

namespace {

constexpr double deviation = 84;
constexpr double tint = 0.6; // what the dark glass lets through
constexpr int channelShifts[] = {0, 8, 16};

uint32_t noise(int x, int y) {
    uint32_t value =
        static_cast<uint32_t>(x) * 0x9E3779B1U ^ static_cast<uint32_t>(y) * 0x85EBCA77U;
    value = (value ^ value >> 15) * 0x2C1B3C6DU;
    return value ^ value >> 13;
}

uint32_t colour(double red, double green, double blue) {
    const auto part = [](double value) {
        return static_cast<uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    return part(red) << 16 | part(green) << 8 | part(blue);
}

using Paint = std::function<uint32_t(int x, int y)>;

Paint checks(int size) {
    return [size](int x, int y) { return x / size % 2 == y / size % 2 ? white : black; };
}

/// Lines of words of ragged strokes, black on white.
uint32_t text(int x, int y) {
    const bool betweenLines = y % 20 > 13;
    const bool betweenLetters = x % 9 > 6 || noise(x / 9, y / 20) % 6 == 0;
    return !betweenLines && !betweenLetters && noise(x / 2, y / 2) % 2 == 0 ? black : white;
}

uint32_t gradient(int x, int y) { return colour(x / 1920.0, y / 1080.0, 1 - x / 1920.0); }

/// A sky over hills before a dark foreground, with a bright sun and grain.
uint32_t landscape(int x, int y) {
    const double grain = (noise(x, y) % 256 / 255.0 - 0.5) * 0.1;
    const double hills = 560 + 90 * std::sin(x / 190.0) + 40 * std::sin(x / 47.0);
    if (std::hypot(x - 1180, y - 210) < 70) return colour(1, 0.97, 0.8);
    if (y < hills) return colour(0.35 + y / 1500.0 + grain, 0.55 + y / 2000.0 + grain, 0.9 + grain);
    if (y < hills + 180) return colour(0.2 + grain, 0.42 + grain, 0.15 + grain);
    return colour(0.1 + grain, 0.08 + grain, 0.06 + grain + x % 130 / 800.0);
}

struct TestPicture {
    const char* name;
    Paint paint;
};

const TestPicture pictures[] = {
    {"checks of 1", checks(1)},   {"checks of 8", checks(8)},
    {"checks of 64", checks(64)}, {"text", text},
    {"gradients", gradient},      {"landscape", landscape},
};

/// One monitor full of a test picture, and the program over it.
class Bench {
public:
    Bench(int width, int height)
        : m_desktop(Scenery::monitor(width, height)), m_bounds{0, 0, width, height},
          m_paper(m_desktop.display(), m_bounds), m_agent(m_desktop) {
        m_paper.lower();
        m_paper.show();
    }

    struct Nearness {
        double first; ///< Of the first frame, taken from the screen.
        double live;  ///< Of a later one, drawn from the windows.
    };

    /// How near the cover over the picture comes to the true Gaussian, in dB of the peak signal to
    /// the noise.
    Nearness measure(const Paint& paint) {
        m_paper.paint(m_bounds.width, m_bounds.height, paint);
        const std::vector<Plane> truth = ideal(paint);
        m_agent.cover();
        const Picture first = m_desktop.screen.grabWithoutButtons(m_bounds);
        m_paper.paint(white);
        m_paper.paint(m_bounds.width, m_bounds.height, paint);
        const Picture live = settled();
        m_agent.uncover();
        return {nearness(first, truth), nearness(live, truth)};
    }

private:
    bool isButton(int x, int y) const {
        return std::any_of(m_buttons.begin(), m_buttons.end(), [=](const Area& area) {
            return x >= area.x && x < area.right() && y >= area.y && y < area.bottom();
        });
    }

    /// The clear screen, tray included, blurred by the book. The program's own buttons are no part
    /// of what is blurred, and stand above it.
    std::vector<Plane> ideal(const Paint& paint) {
        m_buttons.clear();
        for (const ScreenWindow& window : m_desktop.screen.windows())
            if (window.instance.starts_with("button:")) m_buttons.push_back(window.area);
        const Picture clear = m_desktop.screen.grabWithoutButtons(m_bounds);
        std::vector<Plane> planes;
        for (const int shift : channelShifts) {
            Plane plane{m_bounds.width, m_bounds.height, {}};
            for (int y = 0; y < plane.height; ++y)
                for (int x = 0; x < plane.width; ++x) {
                    const uint32_t pixel = isButton(x, y) ? paint(x, y) : clear.at(x, y);
                    plane.values.push_back(pixel >> shift & 0xFF);
                }
            planes.push_back(trueGaussian(plane, deviation));
        }
        return planes;
    }

    /// The screen once no frame has changed it for a while.
    Picture settled() const {
        for (Picture last = m_desktop.screen.grabWithoutButtons(m_bounds);;) {
            std::this_thread::sleep_for(300ms);
            Picture now = m_desktop.screen.grabWithoutButtons(m_bounds);
            if (now == last) return now;
            last = std::move(now);
        }
    }

    double nearness(const Picture& shown, const std::vector<Plane>& truth) const {
        double squares = 0;
        double count = 0;
        for (int y = 0; y < m_bounds.height; ++y)
            for (int x = 0; x < m_bounds.width; ++x) {
                if (isButton(x, y)) continue;
                const int index = y * m_bounds.width + x;
                for (size_t channel = 0; channel < truth.size(); ++channel) {
                    const double value = shown.at(x, y) >> channelShifts[channel] & 0xFF;
                    squares += std::pow(
                        value - tint * truth[channel].values[static_cast<size_t>(index)], 2);
                    ++count;
                }
            }
        return 10 * std::log10(255 * 255 * count / squares);
    }

    Desktop m_desktop;
    Area m_bounds;
    TestWindow m_paper;
    Agent m_agent;
    std::vector<Area> m_buttons;
};

} // namespace

void measureFidelity(Report& report) {
    report.section("Nearness to six tenths of the true Gaussian, 84 pixels of standard deviation");
    const std::pair<int, int> sizes[] = {{1920, 1080}, {1366, 768}};
    for (const auto& [width, height] : sizes) {
        Bench bench(width, height);
        for (const TestPicture& picture : pictures) {
            const auto [first, live] = bench.measure(picture.paint);
            report.add({std::string(picture.name) + ", " + std::to_string(width) + "x" +
                            std::to_string(height),
                        "first " + figure(first, "dB") + ", live " + figure(live, "dB"), "40 dB"});
        }
    }
}

} // namespace Benchmarks
