#pragma once

#include "WindowServer/Shell/ShellLink.h"

#include <QTimer>

#include <optional>
#include <vector>

namespace WindowServer {

class ShellSurfaces;

/// One cover, as far as it is asked for. The Shell draws it.
class ShellSurface : public Surface {
public:
    explicit ShellSurface(ShellSurfaces& surfaces);
    ~ShellSurface() override;

    int number() const override { return m_number; }
    void setTitle(const std::string&) override {}
    void setFrame(const CGRect&) override {}
    void setLevel(int) override {}
    void setIgnoresMouseEvents(bool) override {}
    void setAlpha(double alpha) override { set(m_alpha, alpha); }
    void setLook(const Look& look) override { set(m_look, look); }
    void orderFront() override { set(m_isFront, true); }
    void orderOut() override { set(m_isFront, false); }

    void setRadius(int radius) { set(m_radius, radius); }
    int radius() const { return m_radius; }
    const Look& look() const { return m_look; }
    bool isSeen() const { return m_isFront && m_alpha > 0; }

private:
    template <typename Value> void set(Value& member, const Value& value);

    ShellSurfaces& m_surfaces;
    const int m_number;
    Look m_look;
    double m_alpha = 1;
    int m_radius = 0;
    bool m_isFront = false;
};

/// Has the Shell cover all monitors while a surface is seen. They all look alike, and the Shell
/// knows of a monitor first, so which surface is for which is left to it.
class ShellSurfaces : public Surfaces {
public:
    explicit ShellSurfaces(ShellLink& link);

    std::unique_ptr<Surface> makeSurface() override;
    bool canCover() const override { return m_link.isAttached(); }
    Remedy remedy() const override { return m_link.remedy(); }
    bool allow(bool allowed) override { return m_link.allow(allowed); }
    int setBackgroundBlurRadius(int surfaceNumber, int radius) override;
    void setResting(bool rests) override;

    /// Tells all of it anew.
    void attached();

    // For the surfaces themselves.
    int add(ShellSurface& surface);
    void remove(ShellSurface& surface);
    void scheduleCommit() { m_commit.start(0); }

private:
    /// What all monitors are covered with.
    struct Cover {
        double deviation; ///< In points; 0 is no blur.
        CGColor colour;   ///< Over it.
        bool operator==(const Cover&) const = default;
    };
    std::optional<Cover> wanted() const;
    void commit();

    ShellLink& m_link;
    std::vector<ShellSurface*> m_surfaces;
    std::optional<Cover> m_told; ///< Nothing while the screens are clear.
    bool m_covered = false;      ///< As it was told last.
    int m_lastNumber = 0;
    bool m_rests = false;
    QTimer m_commit;
};

} // namespace WindowServer
