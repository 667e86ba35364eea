#include "WindowServer/Wayland/Windows/Covers.h"

#include "WindowServer/Wayland/Comeback.h"
#include "WindowServer/Wayland/Windows/StagedWindows.h"

#include <QTransform>

#include <algorithm>
#include <cmath>
#include <utility>

namespace WindowServer::Wayland {

namespace {

/// A frame or two is what a picture takes.
constexpr int patienceMilliseconds = 200;

QImage pixel(const CGColor& colour, double alpha) {
    const auto part = [&colour](double value) {
        return static_cast<int>(std::lround(value * colour.alpha * 255));
    };
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    *reinterpret_cast<QRgb*>(image.bits()) =
        qRgba(part(colour.red), part(colour.green), part(colour.blue),
              static_cast<int>(std::lround(alpha * 255)));
    return image;
}

} // namespace

Covers::Covers(Connection& connection, const Stages& stages, const StagedWindows& windows)
    : m_connection(connection), m_stages(stages), m_windows(windows), m_blur(connection) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(patienceMilliseconds);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] {
        m_awaited.clear();
        m_isStale = true;
    });
}

void Covers::attach() {
    m_blur.onChanged = [this] { m_isStale = true; };
    m_blur.attach();
}

std::unique_ptr<Surface> Covers::makeSurface() {
    auto cover = std::make_unique<Cover>(
        ++m_lastNumber, [this] { m_isStale = true; },
        [this](const Surface& gone) { forget(gone); });
    m_covers.push_back(cover.get());
    return cover;
}

void Covers::forget(const Surface& cover) {
    std::erase_if(m_awaited, [&cover](const auto& each) { return each.first == &cover; });
    std::erase(m_covers, &cover);
    m_isStale = true;
}

int Covers::setBackgroundBlurRadius(int surfaceNumber, int radius) {
    const auto found = std::ranges::find(m_covers, surfaceNumber, &Cover::number);
    if (found == m_covers.end()) return illegalArgument;
    (*found)->setRadius(radius); // For a blur that comes later, too.
    return radius <= 1 || m_blur.hidesText() ? 0 : notImplemented;
}

void Covers::setResting(bool rests) {
    if (std::exchange(m_resting, rests) == rests) return;
    m_isStale = true;
    commit();
    for (const auto& stage : m_stages.all())
        stage->commit();
    m_connection.settle();
}

/// Only while nothing of ours lies over the output.
void Covers::takePictures() {
    std::erase_if(m_awaited, [this](const auto& each) {
        return !each.first->wantsPicture() || isLive(*each.first);
    });
    for (Cover* const cover : m_covers) {
        const Stage* const stage = m_stages.at(cover->frame());
        if (!stage || !cover->wantsPicture() || isLive(*cover) || cover->isShown || m_resting ||
            !m_connection.globals().screencopy || std::exchange(cover->hasAskedForPicture, true))
            continue;
        m_awaited[cover] = std::make_unique<Screencopy>(
            m_connection, stage->output(),
            [this, cover](const QImage& picture) { pictureTaken(*cover, picture); });
        m_patience.start();
    }
}

void Covers::pictureTaken(Cover& cover, const QImage& picture) {
    const Stage* const stage = m_stages.at(cover.frame());
    if (stage && !picture.isNull()) {
        const double scale = stage->output().scale();
        const QRegion ours =
            m_windows.areasIn(stage->place()).translated(-stage->place().topLeft());
        cover.picture.emplace(picture, QTransform::fromScale(scale, scale).map(ours),
                              materialDeviation * scale);
    }
    m_isStale = true;
    m_awaited.erase(&cover);
}

bool Covers::isLive(const Cover& cover) const {
    return cover.wantsLiveBlur() && m_blur.hidesText();
}

Stage::Content Covers::contentOf(const Cover& cover) const {
    const CGColor& overlay = cover.look().overlay;
    if (isLive(cover) && !m_resting) return {pixel(overlay, overlay.alpha), true};
    if (cover.wantsPicture() && cover.picture && !m_resting) return {cover.picture->under(overlay)};
    return {pixel(overlay, 1)};
}

void Covers::commit() {
    if (!std::exchange(m_isStale, false)) return;
    takePictures();
    if (!m_awaited.empty()) return;
    std::map<Stage*, Stage::Content> contents;
    bool any = false;
    for (Cover* const cover : m_covers) {
        cover->isShown = cover->wantsToShow();
        any |= cover->isShown;
        if (!cover->isShown) cover->picture.reset();
        if (!cover->isShown) cover->hasAskedForPicture = false;
        if (Stage* const stage = m_stages.at(cover->frame()); stage && cover->isShown)
            contents[stage] = contentOf(*cover);
    }
    for (const auto& stage : m_stages.all()) {
        const auto content = contents.find(stage.get());
        stage->setContent(content == contents.end() ? Stage::Content{pixel({}, 0)}
                                                    : content->second);
    }
    Comeback::shared().noteCovered(any);
    if (std::exchange(m_isCovered, any) != any && onCovered) onCovered(any);
}

} // namespace WindowServer::Wayland
