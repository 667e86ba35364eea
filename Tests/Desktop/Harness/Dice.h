#pragma once

#include <cstdint>
#include <iterator>
#include <random>

namespace Harness {

/// The same throws in every run.
class Dice {
public:
    size_t below(size_t limit) {
        return std::uniform_int_distribution<size_t>(0, limit - 1)(m_random);
    }
    template <class Choices> const auto& of(const Choices& choices) {
        return choices[below(std::size(choices))];
    }
    uint32_t number() {
        constexpr uint32_t edges[] = {0, 1, 2, 0x7fff, 0x8000, 0xffff, 0x7fffffff, 0x80000000, ~0u};
        return below(2) ? of(edges) : static_cast<uint32_t>(m_random());
    }

private:
    std::mt19937 m_random{1};
};

} // namespace Harness
