// A session in memory: displays that tests connect, surfaces whose state they read.
#pragma once

#include "WindowServer/Session.h"

#include <algorithm>

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

class HeadlessSession : public Session,
                        public Displays,
                        public Surfaces,
                        public ToolkitWindows,
                        public GlobalKey,
                        public Settings {
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
    Displays& displays() override { return *this; }
    Surfaces& surfaces() override { return *this; }
    ToolkitWindows& windows() override { return *this; }
    GlobalKey& key() override { return *this; }
    Settings& settings() override { return *this; }
    Tray& tray() override { return m_tray; }

    const std::vector<Display>& all() const override { return m_displays; }
    void setDisplays(std::vector<Display> displays) {
        if (m_displays == displays) return;
        m_displays = std::move(displays);
        if (Displays::onChanged) Displays::onChanged();
    }

    std::string themeName() const override { return m_themeName; }
    void setThemeName(const std::string& name) {
        m_themeName = name;
        if (Settings::onChanged) Settings::onChanged();
    }

    bool take(const KeyChord&) override { return true; }

    std::unique_ptr<Surface> makeSurface() override {
        ++m_surfacesMade;
        return std::make_unique<HeadlessSurface>(m_surfaces, m_surfacesMade);
    }
    /// Those that live, oldest first.
    const std::vector<HeadlessSurface*>& livingSurfaces() const { return m_surfaces; }

    std::shared_ptr<ToolkitWindow> hold(WindowId) override {
        return std::make_shared<ToolkitWindow>();
    }

    int setBackgroundBlurRadius(int surfaceNumber, int radius) override {
        const auto found = std::ranges::find(m_surfaces, surfaceNumber, &HeadlessSurface::number);
        if (found == m_surfaces.end()) return -1;
        if (blurAnswer == 0) (*found)->radius = radius;
        return blurAnswer;
    }
    int blurAnswer = 0; ///< What `setBackgroundBlurRadius` says of any surface.

private:
    std::vector<Display> m_displays;
    std::string m_themeName;
    Tray m_tray;
    std::vector<HeadlessSurface*> m_surfaces;
    int m_surfacesMade = 0;
};

} // namespace WindowServer
