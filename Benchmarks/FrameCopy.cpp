#include "FrameCopy.h"

#include "Measurements.h"

#include "Harness/Await.h"

#include <array>
#include <cstring>
#include <memory>

#include <sys/mman.h>

namespace Benchmarks {

namespace {

constexpr size_t frameSize = 1920 * 1080 * 4;

class Frame {
public:
    Frame()
        : m_bytes(mmap(nullptr, frameSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                       0)) {}
    ~Frame() { munmap(m_bytes, frameSize); }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    void fill() { std::memset(m_bytes, 1, frameSize); }

    double copyFrom(const Frame& other) {
        const auto start = Harness::Clock::now();
        std::memcpy(m_bytes, other.m_bytes, frameSize);
        // Nobody reads the copy, which must be made all the same.
        asm volatile("" : : "r"(m_bytes) : "memory");
        return Harness::millisecondsSince(start);
    }

private:
    void* m_bytes;
};

} // namespace

double FrameCopy::cached() {
    Frame from;
    Frame to;
    from.fill();
    to.fill();
    Samples samples;
    for (int i = 0; i < 50; ++i)
        samples.add(to.copyFrom(from));
    return samples.median();
}

double FrameCopy::uncached() {
    // Together far larger than any cache.
    static const auto frames = [] {
        auto filled = std::make_unique<std::array<Frame, 16>>();
        for (Frame& frame : *filled)
            frame.fill();
        return filled;
    }();
    Samples samples;
    for (size_t i = 0; i < frames->size(); i += 2)
        samples.add((*frames)[i].copyFrom((*frames)[i + 1]));
    return samples.median();
}

double FrameCopy::fresh() {
    Frame from;
    from.fill();
    Samples samples;
    for (int i = 0; i < 20; ++i)
        samples.add(Frame().copyFrom(from));
    return samples.median();
}

double FrameCopy::findingMegabyte() { return (fresh() - cached()) / (frameSize / 1024.0 / 1024.0); }

std::string FrameCopy::Unit::ratio(double milliseconds) const {
    return figure(milliseconds / m_samples.median(), "frame copies");
}

void measureFrameCopy(Report& report) {
    report.section("The unit: one frame of 1920x1080 copied in memory");
    FrameCopy::Unit unit;
    for (int i = 0; i < 4; ++i)
        unit.take();
    const auto add = [&](const char* what, double milliseconds) {
        report.add({what, figure(milliseconds, "ms"), "", unit.ratio(milliseconds)});
    };
    add("between places in main memory", unit.milliseconds());
    add("between places in the processor's cache", FrameCopy::cached());
    add("to fresh memory", FrameCopy::fresh());
}

} // namespace Benchmarks
