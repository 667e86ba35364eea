#include "Measurements.h"

#include <QCoreApplication>

#include <algorithm>
#include <iostream>

#include <gtest/gtest.h>

using namespace Benchmarks;

namespace {

struct Measurement {
    std::string name;
    void (*take)(Report&);
};

const Measurement measurements[] = {
    {"copy", measureFrameCopy},  {"floor", measureFloor},       {"toggle", measureToggle},
    {"live", measureLiveUpdate}, {"idle", measureIdle},         {"start", measureStart},
    {"memory", measureMemory},   {"fidelity", measureFidelity},
};

} // namespace

/// Takes the measurements named, or all.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // The harness complains as a test does; here a complaint ends the run.
    GTEST_FLAG_SET(throw_on_failure, true);
    QCoreApplication application(argc, argv);
    const std::vector<std::string> chosen(argv + 1, argv + argc);
    Report report;
    try {
        for (const auto& [name, take] : measurements)
            if (chosen.empty() || std::find(chosen.begin(), chosen.end(), name) != chosen.end())
                take(report);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
