#pragma once

#include "WindowServer/Shell/ShellLink.h"
#include "WindowServer/Surfaces.h"

#include <QTimer>

#include <optional>
#include <vector>

namespace WindowServer {

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
    std::vector<Surface*> m_surfaces;
    std::optional<Cover> m_told; ///< Nothing while the screens are clear.
    bool m_covered = false;      ///< As it was told last.
    int m_lastNumber = 0;
    bool m_rests = false;
    QTimer m_commit;
};

} // namespace WindowServer
