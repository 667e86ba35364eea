#pragma once

#include <type_traits>

namespace WindowServer::Wayland {

template <class Value, class Owner> Owner ownerOf(Value Owner::*);

/// Fits every place of a listener whose data is the owner. What is told there goes to a member of
/// the owner's: a function is called with it, a variable takes it.
template <auto member> struct Tell {
    template <class Object, class... Values>
    using Callback = void (*)(void* data, Object*, Values...);

    template <class Object, class... Values>
    constexpr operator Callback<Object, Values...>() const {
        return [](void* data, Object*, Values... values) {
            auto& owner = *static_cast<decltype(ownerOf(member))*>(data);
            if constexpr (std::is_member_function_pointer_v<decltype(member)>)
                (owner.*member)(values...);
            else
                ((owner.*member = values), ...);
        };
    }
};

/// The same for what nobody needs to know.
struct Ignored {
    template <class... Values> using Callback = void (*)(Values...);
    template <class... Values> constexpr operator Callback<Values...>() const {
        return [](Values...) {};
    }
};

} // namespace WindowServer::Wayland
