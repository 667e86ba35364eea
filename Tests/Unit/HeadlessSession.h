// A session in memory: displays that tests connect, surfaces whose state they read.
#pragma once

#include "WindowServer/Session.h"

#include <algorithm>
#include <map>
#include <optional>

namespace WindowServer {

class HeadlessSurface : public Surface {
public:
    HeadlessSurface(std::vector<HeadlessSurface*>& all, int number) : m_all(all), m_number(number) {
        m_all.push_back(this);
    }
    ~HeadlessSurface() override { std::erase(m_all, this); }

    int number() const override { return m_number; }

    void setTitle(const std::string&) override {}
    void setFrame(const CGRect& value) override { frame = value; }
    void setLevel(int) override {}
    void setIgnoresMouseEvents(bool) override {}
    void setAlpha(double value) override { alpha = value; }
    void setLook(const Look& value) override { look = value; }
    void orderFront() override { ordered = true; }
    void orderOut() override { ordered = false; }

    CGRect frame;
    double alpha = 1;
    Look look;
    bool ordered = false;
    int radius = 0; ///< The last one that was granted.

private:
    std::vector<HeadlessSurface*>& m_all;
    const int m_number;
};

class HeadlessSession : public Session {
public:
    /// Puts a new one in the place of a server, before the application connects to one, and keeps
    /// the toolkit from a server too.
    static HeadlessSession& install() {
        ::setenv("QT_QPA_PLATFORM", "offscreen", true);
        auto session = std::make_unique<HeadlessSession>();
        HeadlessSession& result = *session;
        Session::install(std::move(session));
        return result;
    }

    void attach() override {}

    const std::vector<Display>& displays() const override { return m_displays; }
    void setDisplays(std::vector<Display> displays) {
        if (m_displays == displays) return;
        m_displays = std::move(displays);
        if (onDisplaysChanged) onDisplaysChanged();
    }

    std::string themeName() const override { return m_themeName; }
    void setThemeName(const std::string& name) {
        m_themeName = name;
        if (onThemeChanged) onThemeChanged();
    }

    bool grabKey(const KeyChord& chord) override {
        if (grantsKeys) grabbedKey = chord;
        return grantsKeys;
    }
    bool grantsKeys = true; ///< Whether `grabKey` succeeds.
    std::optional<KeyChord> grabbedKey;

    std::unique_ptr<Surface> makeSurface() override {
        ++m_surfacesMade;
        return std::make_unique<HeadlessSurface>(m_surfaces, grantsNumbers ? m_surfacesMade : 0);
    }
    /// Those that live, oldest first.
    const std::vector<HeadlessSurface*>& surfaces() const { return m_surfaces; }
    int surfacesMade() const { return m_surfacesMade; }

    void setLevel(ToolkitWindow window, int level) override { levels[window] = level; }
    void dropLevel(ToolkitWindow window) override { levels.erase(window); }
    std::map<ToolkitWindow, int> levels;

    int setBackgroundBlurRadius(int surfaceNumber, int radius) override {
        const auto found = std::ranges::find(m_surfaces, surfaceNumber, &HeadlessSurface::number);
        if (found == m_surfaces.end()) return -1;
        if (blurAnswer == 0) (*found)->radius = radius;
        return blurAnswer;
    }
    int blurAnswer = 0;        ///< What `setBackgroundBlurRadius` says of any surface.
    bool grantsNumbers = true; ///< Whether new surfaces get a number.

private:
    std::vector<Display> m_displays;
    std::string m_themeName;
    std::vector<HeadlessSurface*> m_surfaces;
    int m_surfacesMade = 0;
};

} // namespace WindowServer
