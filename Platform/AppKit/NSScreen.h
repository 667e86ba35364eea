#pragma once

#include "Foundation/NSGeometry.h"
#include "Foundation/NSObject.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class NSScreen : public NSObject {
public:
    using Description = std::map<std::string, std::shared_ptr<NSObject>>;

    NSScreen(const NSRect& frame, Description deviceDescription)
        : m_frame(frame), m_deviceDescription(std::move(deviceDescription)) {}

    /// The connected screens as they are now, the main one first.
    static std::vector<std::shared_ptr<NSScreen>> screens();

    const NSRect& frame() const { return m_frame; }
    /// Under "NSScreenNumber" the display number, an NSNumber.
    const Description& deviceDescription() const { return m_deviceDescription; }

private:
    NSRect m_frame;
    Description m_deviceDescription;
};
