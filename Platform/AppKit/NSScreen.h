#pragma once

#include "Foundation/Foundation.h"

/// A connected screen as it was when it was asked for. Rectangles are in points.
class NSScreen : public NSObject {
public:
    using Description = std::map<std::string, std::shared_ptr<NSObject>>;

    NSScreen(const NSRect& frame, const NSRect& visibleFrame, Description deviceDescription)
        : m_frame(frame), m_visibleFrame(visibleFrame),
          m_deviceDescription(std::move(deviceDescription)) {}

    /// The connected screens as they are now, the main one first.
    static std::vector<std::shared_ptr<NSScreen>> screens();

    const NSRect& frame() const { return m_frame; }
    /// The frame less what the desktop's panels keep free for themselves.
    const NSRect& visibleFrame() const { return m_visibleFrame; }
    /// Under "NSScreenNumber" the display number, an NSNumber.
    const Description& deviceDescription() const { return m_deviceDescription; }

private:
    NSRect m_frame;
    NSRect m_visibleFrame;
    Description m_deviceDescription;
};
