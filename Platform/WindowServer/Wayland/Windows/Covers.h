#pragma once

#include "WindowServer/Surfaces.h"
#include "WindowServer/Wayland/Blur/CompositorBlur.h"
#include "WindowServer/Wayland/Blur/Screencopy.h"
#include "WindowServer/Wayland/Windows/Cover.h"
#include "WindowServer/Wayland/Windows/Stages.h"

#include <QTimer>

#include <map>
#include <memory>
#include <vector>

namespace WindowServer::Wayland {

class StagedWindows;

/// Carries out on the stages what the surfaces were told. Each is blurred by the compositor where
/// that hides all text; else it shows a blurred picture of the moment, where one can be taken; else
/// it is plain and dark. None is shown before that is settled for all.
class Covers : public Surfaces {
public:
    Covers(Connection& connection, const Stages& stages, const StagedWindows& windows);

    void attach();

    std::unique_ptr<Surface> makeSurface() override;
    int setBackgroundBlurRadius(int surfaceNumber, int radius) override;
    void setResting(bool rests) override;

    /// What stages there are, or what the compositor offers, has changed.
    void changed() { m_isStale = true; }
    /// To be called at a turn's end.
    void commit();

private:
    void forget(const Surface& cover);
    void takePictures();
    void pictureTaken(Cover& cover, const QImage& picture);
    bool isLive(const Cover& cover) const;
    Stage::Content contentOf(const Cover& cover) const;

    Connection& m_connection;
    const Stages& m_stages;
    const StagedWindows& m_windows;
    CompositorBlur m_blur;
    std::vector<Cover*> m_covers;
    int m_lastNumber = 0;
    std::map<Cover*, std::unique_ptr<Screencopy>> m_awaited;
    QTimer m_patience; ///< With pictures that do not come.
    bool m_resting = false;
    bool m_isCovered = false; ///< As it was told last.
    bool m_isStale = true;
};

} // namespace WindowServer::Wayland
