// A desktop on which all of the program's windows can be looked at.
#pragma once

#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Keys.h"
#include "Harness/Paper.h"
#include "Harness/Portal.h"

#include <gtest/gtest.h>

/// One monitor, high enough for a window of twice its size, all of one colour.
struct Showcase {
    explicit Showcase(const char* scale = "1", bool dark = false) {
        portal.setDark(dark);
        desktop.extra = {{"QT_SCALE_FACTOR", scale}};
        agent.emplace(desktop);
        EXPECT_TRUE(Harness::await([&] { return agent->buttons().size() == 1; }));
    }

    void strike(uint8_t key, int times = 1) const {
        for (int i = 0; i < times; ++i)
            desktop.input.strike(key);
    }

    void openMenu() {
        const Harness::Area icon = desktop.tray->icons().back();
        m_aside = -m_aside; // Two quick clicks on one spot are a double click.
        desktop.input.move(icon.x + icon.width / 2 + m_aside, icon.y + icon.height / 2);
        desktop.input.click(3);
        ASSERT_TRUE(Harness::await([&] { return agent->menus().size() == 1; }));
        desktop.input.move(5, 5);
    }
    /// Opens what stands so many rows down in the menu, the only window then.
    void choose(int row) {
        ASSERT_NO_FATAL_FAILURE(openMenu());
        strike(Harness::downKey, row);
        strike(Harness::returnKey);
        ASSERT_TRUE(
            Harness::await([&] { return agent->menus().empty() && agent->windows().size() == 1; }));
    }

    Harness::Desktop desktop{Harness::XServer::framebuffer({"-screen", "0", "3200x1800x24"})};
    Harness::Paper paper{desktop, 0x4682B4};
    Harness::Portal portal{desktop.bus->address(), false};
    std::optional<Harness::Agent> agent;

private:
    int m_aside = 5;
};
