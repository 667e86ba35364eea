#include "WindowServer/X11/Blur/Enlarger.h"

#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>

namespace WindowServer {

namespace {

void putImage(Connection& connection, xcb_drawable_t drawable, xcb_gcontext_t gc, uint8_t depth,
              const PixelRect& area, const uint32_t* pixels) {
    xcb_put_image(connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, gc,
                  static_cast<uint16_t>(area.width), static_cast<uint16_t>(area.height),
                  static_cast<int16_t>(area.x), static_cast<int16_t>(area.y), 0, depth,
                  static_cast<uint32_t>(area.width) * static_cast<uint32_t>(area.height) * 4,
                  reinterpret_cast<const uint8_t*>(pixels));
}

/// Interpolates to half the full size, in bands that stay in the processor's cache, and doubles
/// each pixel from there: a blur so wide has no step between two neighbours that an eye could see,
/// and doubling costs far less than interpolating.
class RenderEnlarger : public Enlarger {
public:
    RenderEnlarger(Connection& connection, int factor, int width, int height)
        : m_connection(connection), m_pixmap(connection.newId()), m_gc(connection.newId()) {
        xcb_connection_t* const xcb = connection.xcb();
        m_source = makePicture(connection, m_pixmap, width, height);
        setScale(xcb, m_source, 2.0 / factor);
        xcb_create_gc(xcb, m_gc, m_pixmap, 0, nullptr);

        const xcb_pixmap_t band = connection.newId();
        m_band = makePicture(connection, band, width * factor / 2, bandHeight);
        xcb_free_pixmap(xcb, band); // the picture keeps it
        setScale(xcb, m_band, 0.5, "nearest");
    }

    ~RenderEnlarger() override {
        xcb_connection_t* const xcb = m_connection.xcb();
        for (const xcb_render_picture_t picture : {m_band, m_source})
            xcb_render_free_picture(xcb, picture);
        xcb_free_gc(xcb, m_gc);
        xcb_free_pixmap(xcb, m_pixmap);
    }

    void upload(const Pixels& small, const PixelRect& part) override {
        const PixelRect rows{0, part.y, small.width, part.height};
        putImage(m_connection, m_pixmap, m_gc, 24, rows,
                 small.values.data() + static_cast<ptrdiff_t>(rows.y) * small.width);
    }

    void paint(const Canvas& canvas, const PixelRect& area) override {
        xcb_connection_t* const xcb = m_connection.xcb();
        const PixelRect half = reduced(area, 2);
        for (int y = half.y; y < half.y + half.height; y += bandHeight) {
            const int height = std::min(bandHeight, half.y + half.height - y);
            const PixelRect rows{half.x, y, half.width, height};
            composite(xcb, XCB_RENDER_PICT_OP_SRC, m_source, m_band, rows.x, rows.y,
                      sized(rows.width, rows.height));
            composite(xcb, XCB_RENDER_PICT_OP_SRC, m_band, canvas.picture, 0, 0,
                      translated(enlarged(rows, 2), -canvas.originX, -canvas.originY));
        }
    }

private:
    static constexpr int bandHeight = 32;

    Connection& m_connection;
    xcb_pixmap_t m_pixmap;
    xcb_gcontext_t m_gc;
    xcb_render_picture_t m_source;
    xcb_render_picture_t m_band;
};

/// Interpolates here and sends the result in strips, so no full-size picture is held.
class ClientEnlarger : public Enlarger {
public:
    ClientEnlarger(Connection& connection, int factor)
        : m_connection(connection), m_factor(factor), m_gc(connection.newId()) {
        xcb_create_gc(connection.xcb(), m_gc, connection.root(), 0, nullptr);
    }

    ~ClientEnlarger() override { xcb_free_gc(m_connection.xcb(), m_gc); }

    void upload(const Pixels& small, const PixelRect&) override { m_small = small; }

    void paint(const Canvas& canvas, const PixelRect& area) override {
        constexpr int stripHeight = 32;
        for (int y = area.y; y < area.y + area.height; y += stripHeight) {
            const PixelRect strip{area.x, y, area.width,
                                  std::min(stripHeight, area.y + area.height - y)};
            m_strip.clear();
            for (int row = strip.y; row < strip.y + strip.height; ++row)
                for (int x = strip.x; x < strip.x + strip.width; ++x)
                    m_strip.push_back(sample(x, row));
            putImage(m_connection, canvas.drawable, m_gc, m_connection.screen().root_depth,
                     translated(strip, -canvas.originX, -canvas.originY), m_strip.data());
        }
    }

private:
    struct Position {
        int low;
        int high;
        double fraction;
    };

    Position position(int pixel, int count) const {
        const double at = std::clamp((pixel + 0.5) / m_factor - 0.5, 0.0, count - 1.0);
        const int low = static_cast<int>(at);
        return {low, std::min(low + 1, count - 1), at - low};
    }

    uint32_t sample(int x, int y) const {
        const Position h = position(x, m_small.width);
        const Position v = position(y, m_small.height);
        const auto at = [this](int column, int row, int shift) {
            return (m_small.values[static_cast<size_t>(row) * m_small.width + column] >> shift) &
                   255;
        };
        uint32_t pixel = 0;
        for (int shift = 0; shift < 24; shift += 8) {
            const double top =
                at(h.low, v.low, shift) * (1 - h.fraction) + at(h.high, v.low, shift) * h.fraction;
            const double bottom = at(h.low, v.high, shift) * (1 - h.fraction) +
                                  at(h.high, v.high, shift) * h.fraction;
            const double value = top * (1 - v.fraction) + bottom * v.fraction;
            pixel |= static_cast<uint32_t>(value + 0.5) << shift;
        }
        return pixel;
    }

    Connection& m_connection;
    int m_factor;
    xcb_gcontext_t m_gc;
    Pixels m_small;
    std::vector<uint32_t> m_strip;
};

} // namespace

std::unique_ptr<Enlarger> Enlarger::make(Connection& connection, int factor, int smallWidth,
                                         int smallHeight) {
    if (connection.canScaleToScreen())
        return std::make_unique<RenderEnlarger>(connection, factor, smallWidth, smallHeight);
    return std::make_unique<ClientEnlarger>(connection, factor);
}

} // namespace WindowServer
