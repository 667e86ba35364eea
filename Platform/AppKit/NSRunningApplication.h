#pragma once

#include "Foundation/NSObject.h"

#include <memory>
#include <string>
#include <vector>

/// A running instance of the application. Instances find each other on the session bus; without a
/// bus, the current one is the only one known.
class NSRunningApplication : public NSObject {
public:
    /// The process itself. The first call makes it known to the others.
    static std::shared_ptr<NSRunningApplication> currentApplication();

    /// Oldest first, the current application included where the identifier is its own.
    static std::vector<std::shared_ptr<NSRunningApplication>>
    runningApplicationsWithBundleIdentifier(const std::string& bundleIdentifier);

    /// Two objects are equal where they stand for one process.
    bool isEqual(const NSObject& other) const override;

    /// Asks the instance to quit and waits for nothing. True if the request was sent. An instance
    /// that is newer than this one stays, and asks this one to quit instead.
    bool terminate();

private:
    explicit NSRunningApplication(std::string busName) : m_busName(std::move(busName)) {}

    std::string m_busName; ///< Empty without a bus.
};
