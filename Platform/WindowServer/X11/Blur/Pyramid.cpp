#include "WindowServer/X11/Blur/Pyramid.h"

#include "WindowServer/X11/Blur/Drawable.h"
#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

namespace WindowServer {

namespace {

constexpr int bandHeight = 128; ///< In device pixels, where the factor allows.

} // namespace

/// Scratch pictures from half the size downwards. Each ends exactly where the monitor does, so its
/// edge pixels are continued where a size is odd.
class Pyramid::Band {
public:
    Band(Connection& connection, int width, int height, int halvings) : m_connection(connection) {
        for (int i = 1; i < halvings; ++i) {
            const xcb_pixmap_t pixmap = connection.newId();
            m_pictures.push_back(
                makePicture(connection, pixmap, ceilDiv(width, 1 << i), ceilDiv(height, 1 << i)));
            setScale(connection.xcb(), m_pictures.back(), 2);
            // The picture keeps its pixmap.
            xcb_free_pixmap(connection.xcb(), pixmap);
        }
    }

    ~Band() {
        for (const xcb_render_picture_t picture : m_pictures)
            xcb_render_free_picture(m_connection.xcb(), picture);
    }

    Band(const Band&) = delete;
    Band& operator=(const Band&) = delete;

    /// Draws `part`, in small pixels counted from the band's corner at (originX, originY) of the
    /// root, into the target at row `targetY`.
    void reduce(Drawable& desktop, const PixelRect& part, int originX, int originY,
                xcb_render_picture_t target, int targetY) const {
        const int factor = 2 << m_pictures.size();
        const PixelRect area = translated(enlarged(part, factor), originX, originY);
        if (m_pictures.empty())
            return desktop.drawHalf(target, area, originX, originY - targetY * factor);
        desktop.drawHalf(m_pictures.front(), area, originX, originY);
        for (size_t i = 1; i < m_pictures.size(); ++i)
            halve(m_pictures[i - 1], m_pictures[i], enlarged(part, factor >> (i + 1)), 0);
        halve(m_pictures.back(), target, part, targetY);
    }

private:
    void halve(xcb_render_picture_t from, xcb_render_picture_t to, const PixelRect& part,
               int targetY) const {
        composite(m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, from, to, part.x, part.y,
                  translated(part, 0, targetY));
    }

    Connection& m_connection;
    std::vector<xcb_render_picture_t> m_pictures;
};

Pyramid::Pyramid(Connection& connection, int width, int height, int halvings)
    : m_connection(connection), m_factor(1 << halvings), m_smallWidth(ceilDiv(width, m_factor)),
      m_smallHeight(ceilDiv(height, m_factor)), m_rowsPerBand(ceilDiv(bandHeight, m_factor)),
      m_pixmap(connection.newId()),
      m_picture(makePicture(connection, m_pixmap, m_smallWidth, m_smallHeight)) {
    const int rows = m_rowsPerBand * m_factor;
    if (height >= rows) m_band = std::make_unique<Band>(connection, width, rows, halvings);
    if (height % rows)
        m_lastBand = std::make_unique<Band>(connection, width, height % rows, halvings);
}

Pyramid::~Pyramid() {
    xcb_render_free_picture(m_connection.xcb(), m_picture);
    xcb_free_pixmap(m_connection.xcb(), m_pixmap);
}

Pyramid::Request Pyramid::request(Drawable& desktop, const PixelRect& area, int originX,
                                  int originY) {
    const PixelRect part = intersection(reduced(translated(area, -originX, -originY), m_factor),
                                        sized(m_smallWidth, m_smallHeight));
    reduce(desktop, part, originX, originY);
    return {part, xcb_get_image(m_connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_pixmap,
                                static_cast<int16_t>(part.x), static_cast<int16_t>(part.y),
                                static_cast<uint16_t>(part.width),
                                static_cast<uint16_t>(part.height), ~0u)};
}

void Pyramid::reduce(Drawable& desktop, const PixelRect& part, int originX, int originY) {
    for (int top = 0; top < m_smallHeight; top += m_rowsPerBand) {
        const PixelRect rows{part.x, top, part.width, m_rowsPerBand};
        const PixelRect inBand = intersection(part, rows);
        if (isEmpty(inBand)) continue;
        const bool isLast = m_lastBand && top + m_rowsPerBand >= m_smallHeight;
        (isLast ? m_lastBand : m_band)
            ->reduce(desktop, translated(inBand, 0, -top), originX, originY + top * m_factor,
                     m_picture, top);
    }
}

bool Pyramid::receive(const Request& request, SmallImage& image) const {
    const auto reply = m_connection.reply(xcb_get_image_reply, request.cookie);
    const PixelRect& part = request.part;
    if (!reply || xcb_get_image_data_length(reply.get()) < part.width * part.height * 4)
        return false;
    const uint8_t* from = xcb_get_image_data(reply.get());
    for (int y = 0; y < part.height; ++y) {
        float* to = image.row(part.y + y) + static_cast<ptrdiff_t>(part.x) * 4;
        for (int i = 0; i < part.width * 4; ++i)
            to[i] = *from++;
    }
    return true;
}

} // namespace WindowServer
