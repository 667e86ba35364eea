#include "Harness/Screen.h"

#include <array>
#include <cstring>
#include <stdexcept>

#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/shape.h>

namespace Harness {

namespace {

/// How the root's pixels tell their colour.
struct PixelForm {
    explicit PixelForm(const XClient& client) {
        const auto* setup = xcb_get_setup(client);
        for (auto i = xcb_setup_pixmap_formats_iterator(setup); i.rem != 0; xcb_format_next(&i))
            if (i.data->depth == client.screen().root_depth) bytes = i.data->bits_per_pixel / 8;
        for (auto d = xcb_screen_allowed_depths_iterator(&client.screen()); d.rem != 0;
             xcb_depth_next(&d))
            for (auto v = xcb_depth_visuals_iterator(d.data); v.rem != 0; xcb_visualtype_next(&v))
                if (v.data->visual_id == client.screen().root_visual)
                    masks = {v.data->red_mask, v.data->green_mask, v.data->blue_mask};
    }

    bool isPlain() const { return bytes == 4 && masks == std::array{0xFF0000U, 0xFF00U, 0xFFU}; }

    uint32_t colour(const uint8_t* data) const {
        uint32_t pixel = 0;
        std::memcpy(&pixel, data, static_cast<size_t>(bytes));
        uint32_t result = 0;
        for (const uint32_t mask : masks)
            result = result << 8 | static_cast<uint32_t>(uint64_t{pixel & mask} * 255 / mask);
        return result;
    }

    int bytes = 4;
    std::array<uint32_t, 3> masks = {0xFF0000, 0xFF00, 0xFF};
};

} // namespace

Area Screen::bounds() const { return areaOf(m_client.root()); }

Picture Screen::grab(const Area& area) const {
    const auto image = m_client.ask(
        xcb_get_image_reply,
        xcb_get_image(m_client, XCB_IMAGE_FORMAT_Z_PIXMAP, m_client.root(),
                      static_cast<int16_t>(area.x), static_cast<int16_t>(area.y),
                      static_cast<uint16_t>(area.width), static_cast<uint16_t>(area.height), ~0U));
    if (!image) throw std::runtime_error("no such area of the screen");
    std::vector<uint32_t> pixels(static_cast<size_t>(area.width) *
                                 static_cast<size_t>(area.height));
    const PixelForm form(m_client);
    const uint8_t* data = xcb_get_image_data(image.get());
    if (form.isPlain()) {
        std::memcpy(pixels.data(), data, pixels.size() * sizeof(uint32_t));
        return {area, std::move(pixels)};
    }
    const size_t line = static_cast<size_t>(xcb_get_image_data_length(image.get()) / area.height);
    for (int y = 0; y < area.height; ++y, data += line)
        for (int x = 0; x < area.width; ++x)
            pixels[static_cast<size_t>(y) * area.width + x] = form.colour(data + x * form.bytes);
    return {area, std::move(pixels)};
}

Picture Screen::grabWithoutButtons(const Area& area) const {
    Picture picture = grab(area);
    for (const ScreenWindow& window : windows())
        if (window.viewable && window.instance.starts_with("button:")) picture.erase(window.area);
    return picture;
}

std::vector<Area> Screen::monitors() const {
    const std::string extension = "RANDR";
    const auto found = m_client.ask(
        xcb_query_extension_reply,
        xcb_query_extension(m_client, static_cast<uint16_t>(extension.size()), extension.c_str()));
    if (!found->present) return {bounds()};
    const auto reply = m_client.ask(xcb_randr_get_monitors_reply,
                                    xcb_randr_get_monitors(m_client, m_client.root(), 1));
    std::vector<Area> result;
    for (auto i = xcb_randr_get_monitors_monitors_iterator(reply.get()); i.rem != 0;
         xcb_randr_monitor_info_next(&i))
        result.push_back({i.data->x, i.data->y, i.data->width, i.data->height});
    return result;
}

std::vector<ScreenWindow> Screen::windows() const {
    const auto tree = m_client.ask(xcb_query_tree_reply, xcb_query_tree(m_client, m_client.root()));
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    std::vector<ScreenWindow> result;
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
        result.push_back(describe(children[i]));
    return result;
}

ScreenWindow Screen::describe(xcb_window_t window) const {
    ScreenWindow result;
    result.number = window;
    const auto geometry = m_client.ask(xcb_get_geometry_reply, xcb_get_geometry(m_client, window));
    const auto attributes =
        m_client.ask(xcb_get_window_attributes_reply, xcb_get_window_attributes(m_client, window));
    const auto property = m_client.ask(
        xcb_get_property_reply,
        xcb_get_property(m_client, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64));
    // Any of them is missing where the window has gone since the tree was asked for.
    if (!geometry || !attributes || !property) return result;
    result.area = {geometry->x, geometry->y, geometry->width, geometry->height};
    result.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    result.overrideRedirect = attributes->override_redirect;
    const std::string names(static_cast<const char*>(xcb_get_property_value(property.get())),
                            static_cast<size_t>(xcb_get_property_value_length(property.get())));
    const size_t end = names.find('\0');
    if (end == std::string::npos) return result;
    result.instance = names.substr(0, end);
    result.className = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
    return result;
}

size_t Screen::inputRectangles(xcb_window_t window) const {
    const auto reply = m_client.ask(xcb_shape_get_rectangles_reply,
                                    xcb_shape_get_rectangles(m_client, window, XCB_SHAPE_SK_INPUT));
    if (!reply) throw std::runtime_error("no such window");
    return static_cast<size_t>(xcb_shape_get_rectangles_rectangles_length(reply.get()));
}

bool Screen::isWhole(xcb_window_t window) const {
    const auto reply =
        m_client.ask(xcb_shape_query_extents_reply, xcb_shape_query_extents(m_client, window));
    return reply && !reply->bounding_shaped && !reply->clip_shaped;
}

Area Screen::areaOf(xcb_window_t window) const {
    const auto geometry = m_client.ask(xcb_get_geometry_reply, xcb_get_geometry(m_client, window));
    const auto place =
        m_client.ask(xcb_translate_coordinates_reply,
                     xcb_translate_coordinates(m_client, window, m_client.root(), 0, 0));
    if (!geometry || !place) return {};
    return {place->dst_x, place->dst_y, geometry->width, geometry->height};
}

xcb_window_t Screen::focus() const {
    return m_client.ask(xcb_get_input_focus_reply, xcb_get_input_focus(m_client))->focus;
}

xcb_window_t Screen::selectionOwner(const std::string& selection) const {
    return m_client
        .ask(xcb_get_selection_owner_reply,
             xcb_get_selection_owner(m_client, m_client.atom(selection)))
        ->owner;
}

std::map<xcb_atom_t, size_t> Screen::heldBy(uint32_t client) const {
    const auto types = m_client.ask(xcb_res_query_client_resources_reply,
                                    xcb_res_query_client_resources(m_client, client));
    std::map<xcb_atom_t, size_t> counts;
    if (!types) return counts; // It has gone meanwhile.
    for (auto type = xcb_res_query_client_resources_types_iterator(types.get()); type.rem != 0;
         xcb_res_type_next(&type))
        counts[type.data->resource_type] += type.data->count;
    return counts;
}

size_t Screen::pixmaps() const {
    const auto clients = m_client.ask(xcb_res_query_clients_reply, xcb_res_query_clients(m_client));
    size_t result = 0;
    for (auto i = xcb_res_query_clients_clients_iterator(clients.get()); i.rem != 0;
         xcb_res_client_next(&i))
        result += heldBy(i.data->resource_base)[m_client.atom("PIXMAP")];
    return result;
}

std::map<std::string, size_t> Screen::holdingsOf(pid_t process) const {
    const xcb_res_client_id_spec_t everyone = {XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto ids = m_client.ask(xcb_res_query_client_ids_reply,
                                  xcb_res_query_client_ids(m_client, 1, &everyone));
    std::map<std::string, size_t> counts;
    for (auto i = xcb_res_query_client_ids_ids_iterator(ids.get()); i.rem != 0;
         xcb_res_client_id_value_next(&i))
        if (*xcb_res_client_id_value_value(i.data) == static_cast<uint32_t>(process))
            for (const auto& [type, count] : heldBy(i.data->spec.client))
                counts[m_client.nameOf(type)] += count;
    return counts;
}

} // namespace Harness
