// A session in memory: displays that tests connect, surfaces whose state they read.
#pragma once

#include "WindowServer/Session.h"

#include <map>
#include <optional>

namespace WindowServer {

class HeadlessSession;

class HeadlessSurface : public Surface {
public:
    HeadlessSurface(HeadlessSession& session, int number);
    ~HeadlessSurface() override;

    int number() const override { return m_number; }

    void setTitle(const std::string& value) override { title = value; }
    void setFrame(const CGRect& value) override { frame = value; }
    void setLevel(int value) override { level = value; }
    void setIgnoresMouseEvents(bool value) override { ignoresMouseEvents = value; }
    void setAlpha(double value) override { alpha = value; }
    void setLook(const Look& value) override { look = value; }
    void orderFront() override { ordered = true; }
    void orderOut() override { ordered = false; }

    std::string title;
    CGRect frame;
    int level = 0;
    bool ignoresMouseEvents = false;
    double alpha = 1;
    Look look;
    bool ordered = false;
    int radius = 0;          ///< The last one that was granted.
    int requestedRadius = 0; ///< The last one that was asked for.

private:
    HeadlessSession& m_session;
    const int m_number;
};

class HeadlessSession : public Session {
public:
    void attach() override {}

    const std::vector<Display>& displays() const override { return m_displays; }
    void setDisplays(std::vector<Display> displays);

    bool canBeCovered() const override { return isCoverable; }
    bool isCoverable = true;

    std::string themeName() const override { return m_themeName; }
    void setThemeName(const std::string& name);

    bool grabKey(const KeyChord& chord) override;
    bool grantsKeys = true; ///< Whether `grabKey` succeeds.
    std::optional<KeyChord> grabbedKey;

    std::unique_ptr<Surface> makeSurface() override;
    /// Those that live, oldest first.
    const std::vector<HeadlessSurface*>& surfaces() const { return m_surfaces; }
    int surfacesMade() const { return m_surfacesMade; }

    void setLevel(ToolkitWindow window, int level) override { levels[window] = level; }
    void dropLevel(ToolkitWindow window) override { levels.erase(window); }
    std::map<ToolkitWindow, int> levels;

    Snapshot grabAround(ToolkitWindow, int) override { return around; }
    Snapshot around; ///< What is seen around any window.

    int setBackgroundBlurRadius(int surfaceNumber, int radius) override;
    int blurAnswer = 0;        ///< What `setBackgroundBlurRadius` says of any surface.
    bool grantsNumbers = true; ///< Whether new surfaces get a number.

private:
    friend class HeadlessSurface;

    std::vector<Display> m_displays;
    std::string m_themeName;
    std::vector<HeadlessSurface*> m_surfaces;
    int m_surfacesMade = 0;
};

} // namespace WindowServer
