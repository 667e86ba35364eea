#include "Harness/Screen.h"

#include <stdexcept>

#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/shape.h>

namespace Harness {

Picture Screen::grab(const Area& area) const {
    const auto image = m_client.ask(
        xcb_get_image_reply,
        xcb_get_image(m_client, XCB_IMAGE_FORMAT_Z_PIXMAP, m_client.root(),
                      static_cast<int16_t>(area.x), static_cast<int16_t>(area.y),
                      static_cast<uint16_t>(area.width), static_cast<uint16_t>(area.height), ~0U));
    if (!image) throw std::runtime_error("no such area of the screen");
    const auto format = image->depth == 16   ? QImage::Format_RGB16
                        : image->depth == 30 ? QImage::Format_RGB30
                                             : QImage::Format_RGB32;
    return {area, QImage(xcb_get_image_data(image.get()), area.width, area.height,
                         xcb_get_image_data_length(image.get()) / area.height, format)};
}

Picture Screen::grabWithoutButtons(const Area& area) const {
    Picture picture = grab(area);
    for (const ScreenWindow& window : windows())
        if (window.viewable && window.instance.starts_with("button:")) picture.erase(window.area);
    return picture;
}

std::vector<Area> Screen::monitors() const {
    if (!xcb_get_extension_data(m_client, &xcb_randr_id)->present) return {bounds()};
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
    // Either is missing where the window has gone since the tree was asked for.
    if (!geometry || !attributes) return result;
    result.area = {geometry->x, geometry->y, geometry->width, geometry->height};
    result.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    result.overrideRedirect = attributes->override_redirect;
    const std::string names = textOf(window, "WM_CLASS");
    const size_t end = names.find('\0');
    if (end == std::string::npos) return result;
    result.instance = names.substr(0, end);
    result.className = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
    return result;
}

std::string Screen::textOf(xcb_window_t window, const std::string& property) const {
    const auto text = m_client.ask(xcb_get_property_reply,
                                   xcb_get_property(m_client, 0, window, m_client.atom(property),
                                                    XCB_GET_PROPERTY_TYPE_ANY, 0, 100));
    if (!text) return {};
    return {static_cast<const char*>(xcb_get_property_value(text.get())),
            static_cast<size_t>(xcb_get_property_value_length(text.get()))};
}

size_t Screen::inputRectangles(xcb_window_t window) const {
    const auto reply = m_client.ask(xcb_shape_get_rectangles_reply,
                                    xcb_shape_get_rectangles(m_client, window, XCB_SHAPE_SK_INPUT));
    if (!reply) throw std::runtime_error("no such window");
    return static_cast<size_t>(xcb_shape_get_rectangles_rectangles_length(reply.get()));
}

Area Screen::areaOf(xcb_window_t window) const {
    const auto geometry = m_client.ask(xcb_get_geometry_reply, xcb_get_geometry(m_client, window));
    const auto place =
        m_client.ask(xcb_translate_coordinates_reply,
                     xcb_translate_coordinates(m_client, window, m_client.root(), 0, 0));
    if (!geometry || !place) return {};
    return {place->dst_x, place->dst_y, geometry->width, geometry->height};
}

Area Screen::frameAround(xcb_window_t window) const {
    for (;;) {
        const auto tree = m_client.ask(xcb_query_tree_reply, xcb_query_tree(m_client, window));
        if (!tree || tree->parent == m_client.root()) return areaOf(window);
        window = tree->parent;
    }
}

xcb_window_t Screen::windowAtPointer() const {
    return m_client.ask(xcb_query_pointer_reply, xcb_query_pointer(m_client, m_client.root()))
        ->child;
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

std::map<std::string, size_t> Screen::holdingsOf(pid_t process) const {
    const xcb_res_client_id_spec_t everyone = {XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto ids = m_client.ask(xcb_res_query_client_ids_reply,
                                  xcb_res_query_client_ids(m_client, 1, &everyone));
    std::map<std::string, size_t> counts;
    for (auto i = xcb_res_query_client_ids_ids_iterator(ids.get()); i.rem != 0;
         xcb_res_client_id_value_next(&i))
        if (*xcb_res_client_id_value_value(i.data) == static_cast<uint32_t>(process))
            if (const auto types =
                    m_client.ask(xcb_res_query_client_resources_reply,
                                 xcb_res_query_client_resources(m_client, i.data->spec.client)))
                for (auto type = xcb_res_query_client_resources_types_iterator(types.get());
                     type.rem != 0; xcb_res_type_next(&type))
                    counts[m_client.nameOf(type.data->resource_type)] += type.data->count;
    return counts;
}

} // namespace Harness
