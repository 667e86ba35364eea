#include "BareCover.h"

#include <algorithm>
#include <string_view>

#include <xcb/composite.h>

namespace Benchmarks {

using namespace Harness;

namespace {

constexpr int bandHeight = 128; ///< Scratch pictures of that height stay in the cache.

xcb_render_pictformat_t plainFormat(const XClient& client) {
    const auto* formats = xcb_render_util_query_formats(client);
    return xcb_render_util_find_standard_format(formats, XCB_PICT_STANDARD_RGB_24)->id;
}

xcb_render_picture_t makePicture(const XClient& client, xcb_drawable_t drawable,
                                 xcb_render_pictformat_t format) {
    const xcb_render_picture_t picture = xcb_generate_id(client);
    const uint32_t values[] = {XCB_RENDER_REPEAT_PAD, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
    xcb_render_create_picture(client, picture, drawable, format,
                              XCB_RENDER_CP_REPEAT | XCB_RENDER_CP_SUBWINDOW_MODE, values);
    return picture;
}

void setScale(const XClient& client, xcb_render_picture_t source, double scale,
              std::string_view filter) {
    const auto fixed = static_cast<xcb_render_fixed_t>(scale * 65536);
    xcb_render_set_picture_transform(client, source, {fixed, 0, 0, 0, fixed, 0, 0, 0, 65536});
    xcb_render_set_picture_filter(client, source, static_cast<uint16_t>(filter.size()),
                                  filter.data(), 0, nullptr);
}

void composite(const XClient& client, xcb_render_picture_t from, int x, int y,
               xcb_render_picture_t to, const Area& area) {
    xcb_render_composite(client, XCB_RENDER_PICT_OP_SRC, from, XCB_NONE, to,
                         static_cast<int16_t>(x), static_cast<int16_t>(y), 0, 0,
                         static_cast<int16_t>(area.x), static_cast<int16_t>(area.y),
                         static_cast<uint16_t>(area.width), static_cast<uint16_t>(area.height));
}

Area divided(const Area& area, int by) {
    return {area.x / by, area.y / by, area.width / by, area.height / by};
}

int roundedUp(int pixels) {
    return (pixels + BareCover::factor - 1) / BareCover::factor * BareCover::factor;
}

} // namespace

BareCover::BareCover(const XClient& client, const Area& monitor)
    : m_client(client), m_monitor(monitor), m_format(plainFormat(client)),
      m_window(xcb_generate_id(client)), m_context(xcb_generate_id(client)) {
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, true};
    xcb_create_window(client, XCB_COPY_FROM_PARENT, m_window, client.root(),
                      static_cast<int16_t>(monitor.x), static_cast<int16_t>(monitor.y),
                      static_cast<uint16_t>(monitor.width), static_cast<uint16_t>(monitor.height),
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
    m_half = makeScratch(monitor.width / 2, bandHeight / 4, 0.5, "nearest");
    for (int level = 1; level < halvings; ++level)
        m_levels.push_back(makeScratch(monitor.width >> level, bandHeight >> level, 2, "bilinear"));
    m_levels.push_back(
        makeScratch(whole().width / factor, whole().height / factor, 2.0 / factor, "bilinear"));
    m_cover = makePicture(client, m_window, m_format);
    xcb_create_gc(client, m_context, m_pixmap, 0, nullptr);
}

BareCover::~BareCover() {
    for (const xcb_render_picture_t picture : m_levels)
        xcb_render_free_picture(m_client, picture);
    for (const xcb_render_picture_t picture : {m_half, m_cover})
        xcb_render_free_picture(m_client, picture);
    xcb_free_gc(m_client, m_context);
    xcb_free_pixmap(m_client, m_pixmap);
    xcb_destroy_window(m_client, m_window);
}

Area BareCover::whole() const {
    return {0, 0, roundedUp(m_monitor.width), roundedUp(m_monitor.height)};
}

xcb_render_picture_t BareCover::makeSource(xcb_drawable_t drawable) const {
    const xcb_render_picture_t source = makePicture(m_client, drawable, m_format);
    setScale(m_client, source, 2, "bilinear");
    return source;
}

xcb_render_picture_t BareCover::makeScratch(int width, int height, double scale,
                                            const char* filter) {
    if (m_pixmap) xcb_free_pixmap(m_client, m_pixmap); // its picture keeps it
    m_pixmap = xcb_generate_id(m_client);
    xcb_create_pixmap(m_client, 24, m_pixmap, m_client.root(), static_cast<uint16_t>(width),
                      static_cast<uint16_t>(height));
    const xcb_render_picture_t picture = makePicture(m_client, m_pixmap, m_format);
    setScale(m_client, picture, scale, filter);
    return picture;
}

void BareCover::halve(xcb_render_picture_t source, int x, int y, const Area& part) const {
    for (int top = part.y; top < part.bottom(); top += bandHeight) {
        const Area band = {part.x, 0, part.width, std::min(bandHeight, part.bottom() - top)};
        composite(m_client, source, (x + part.x) / 2, (y + top) / 2, m_levels.front(),
                  divided(band, 2));
        for (size_t level = 1; level < m_levels.size(); ++level) {
            Area to = divided(band, 2 << level);
            if (level + 1 == m_levels.size()) to.y = top / factor;
            composite(m_client, m_levels[level - 1], to.x, 0, m_levels[level], to);
        }
    }
}

Received<xcb_get_image_reply_t> BareCover::read(const Area& part) const {
    const Area small = divided(part, factor);
    return m_client.ask(xcb_get_image_reply,
                        xcb_get_image(m_client, XCB_IMAGE_FORMAT_Z_PIXMAP, m_pixmap,
                                      static_cast<int16_t>(small.x), static_cast<int16_t>(small.y),
                                      static_cast<uint16_t>(small.width),
                                      static_cast<uint16_t>(small.height), ~0U));
}

void BareCover::write(const uint32_t* pixels, const Area& part) const {
    const Area small = divided(part, factor);
    xcb_put_image(m_client, XCB_IMAGE_FORMAT_Z_PIXMAP, m_pixmap, m_context,
                  static_cast<uint16_t>(small.width), static_cast<uint16_t>(small.height),
                  static_cast<int16_t>(small.x), static_cast<int16_t>(small.y), 0, 24,
                  static_cast<uint32_t>(small.width * small.height * 4),
                  reinterpret_cast<const uint8_t*>(pixels));
}

void BareCover::enlarge(const Area& part) const {
    for (int top = part.y; top < part.bottom(); top += bandHeight / 2) {
        const Area band = {part.x, top, part.width, std::min(bandHeight / 2, part.bottom() - top)};
        composite(m_client, m_levels.back(), band.x / 2, band.y / 2, m_half,
                  {0, 0, band.width / 2, band.height / 2});
        composite(m_client, m_half, 0, 0, m_cover, band);
    }
}

void BareCover::markLastPixel() const {
    const xcb_rectangle_t last = {static_cast<int16_t>(m_monitor.width - 1),
                                  static_cast<int16_t>(m_monitor.height - 1), 1, 1};
    xcb_render_fill_rectangles(m_client, XCB_RENDER_PICT_OP_SRC, m_cover, {0, 0, 0, 0xffff}, 1,
                               &last);
}

BareToggle::BareToggle(const XClient& client, const std::vector<Area>& monitors)
    : m_client(client), m_monitors(monitors) {
    for (const Area& monitor : monitors)
        m_covers.push_back(std::make_unique<BareCover>(client, monitor));
    m_screen = m_covers.front()->makeSource(client.root());
}

BareToggle::~BareToggle() {
    xcb_render_free_picture(m_client, m_screen);
    for (size_t i = m_pictures.size(); i-- > 0;)
        xcb_free_pixmap(m_client, m_pictures[i]);
}

void BareToggle::halve() const {
    for (size_t i = 0; i < m_covers.size(); ++i)
        m_covers[i]->halve(m_screen, m_monitors[i].x, m_monitors[i].y, m_covers[i]->whole());
}

void BareToggle::keepPictures() const {
    xcb_composite_redirect_subwindows(m_client, m_client.root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    for (const auto& cover : m_covers)
        xcb_composite_unredirect_window(m_client, cover->window(),
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void BareToggle::keepPicture(xcb_window_t window) const {
    xcb_composite_redirect_window(m_client, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void BareToggle::paint() const {
    for (const auto& cover : m_covers) {
        xcb_map_window(m_client, cover->window());
        cover->enlarge(cover->whole());
    }
}

void BareToggle::namePictures(const std::vector<xcb_window_t>& windows) {
    for (const xcb_window_t window : windows) {
        m_pictures.push_back(xcb_generate_id(m_client));
        xcb_composite_name_window_pixmap(m_client, window, m_pictures.back());
    }
}

void BareToggle::markLastPixels() const {
    for (const auto& cover : m_covers)
        cover->markLastPixel();
}

void BareToggle::hide() const {
    for (const auto& cover : m_covers)
        xcb_unmap_window(m_client, cover->window());
    xcb_composite_unredirect_subwindows(m_client, m_client.root(),
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

} // namespace Benchmarks
