// The program without a display: screens that a test connects, surfaces whose state it reads, and
// a time that it moves by hand.
#pragma once

#include "Foundation/Timeline+Private.h"
#include "WindowServer/Session.h"

#include <QTemporaryDir>

#include <vector>

#include <gtest/gtest.h>

/// Of a desktop that has nothing but screens and surfaces.
struct MemorySession : WindowServer::Session, WindowServer::Displays, WindowServer::Surfaces {
    struct Windows : WindowServer::ToolkitWindows {
        std::shared_ptr<WindowServer::ToolkitWindow> hold(WindowServer::WindowId) override {
            return std::make_shared<WindowServer::ToolkitWindow>();
        }
    };
    struct Key : WindowServer::GlobalKey {
        bool take(const WindowServer::KeyChord&) override { return true; }
    };

    void attach() override {}
    WindowServer::Displays& displays() override { return *this; }
    WindowServer::Surfaces& surfaces() override { return *this; }
    WindowServer::ToolkitWindows& windows() override { return toolkitWindows; }
    WindowServer::GlobalKey& key() override { return globalKey; }
    WindowServer::Settings& settings() override { return none; }
    WindowServer::Tray& tray() override { return noTray; }

    const std::vector<WindowServer::Display>& all() const override { return connected; }
    std::unique_ptr<WindowServer::Surface> makeSurface() override {
        auto made = std::make_unique<WindowServer::Surface>(
            1, [] {}, [this](const auto& gone) { std::erase(living, &gone); });
        living.push_back(made.get());
        return made;
    }
    int setBackgroundBlurRadius(int, int) override { return blurAnswer; }

    std::vector<WindowServer::Display> connected;
    std::vector<WindowServer::Surface*> living;
    int blurAnswer = 0; ///< What is said of any surface.
    Windows toolkitWindows;
    Key globalKey;
    WindowServer::Settings none;
    WindowServer::Tray noTray;
};

class ManualTime : public Timeline {
public:
    double now() const override { return m_now; }
    std::shared_ptr<void> schedule(double seconds, std::function<void()> work) override;

    /// Rings all that is due in these seconds, in its order.
    void advance(double seconds);
    /// An alarm and the timer that waits for it hold one another until it rings.
    void forget();

private:
    struct Alarm {
        double when;
        std::function<void()> work;
    };

    double m_now = 0;
    std::vector<std::weak_ptr<Alarm>> m_alarms;
};

class Offscreen : public testing::Test {
protected:
    /// Two screens side by side, of numbers 7 and 9.
    Offscreen();
    ~Offscreen() override;

    static void connect(std::vector<WindowServer::Display> displays);

    QTemporaryDir stored; ///< What the program stores is in it.
    MemorySession& session;
    ManualTime& time;
};
