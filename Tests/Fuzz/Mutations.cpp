// Stands in for the fuzzer where the compiler has none: the same inputs at every run, made of the
// seeds in a folder by random changes.
//   TARGET SEEDS MUTATIONS
#include "Target.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

namespace files = std::filesystem;

class Mutator {
public:
    explicit Mutator(std::vector<std::string> seeds) : m_seeds(std::move(seeds)) {}

    std::string next() {
        std::string text = any(m_seeds);
        for (size_t changes = 1 + below(8); changes > 0; --changes)
            change(text);
        return text;
    }

private:
    size_t below(size_t limit) {
        return std::uniform_int_distribution<size_t>(0, limit - 1)(m_random);
    }
    const std::string& any(const std::vector<std::string>& texts) {
        return texts[below(texts.size())];
    }
    char character() {
        constexpr std::string_view telling("\0\n\r\t\"'\\[]=,;%@ -.", 17);
        return below(2) ? telling[below(telling.size())] : static_cast<char>(below(256));
    }

    void change(std::string& text) {
        const size_t place = below(text.size() + 1);
        const size_t length = below(1 + std::min<size_t>(text.size() - place, 32));
        switch (below(4)) {
        case 0:
            text.erase(place, length);
            break;
        case 1:
            text.insert(place, 1 + below(3), character());
            break;
        case 2:
            text.replace(place, length, any(m_seeds).substr(0, 64));
            break;
        default:
            text.insert(below(text.size() + 1), text.substr(place, length));
        }
    }

    const std::vector<std::string> m_seeds;
    std::mt19937 m_random{1};
};

void run(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
}

} // namespace

int main(int, char** arguments) {
    std::set<files::path> paths; // In an order of our own, so that every run is the same.
    for (const auto& entry : files::directory_iterator(arguments[1]))
        paths.insert(entry.path());
    std::vector<std::string> seeds;
    for (const auto& path : paths) {
        std::ifstream stream(path, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator(stream), std::istreambuf_iterator<char>());
        run(seeds.back());
    }
    Mutator mutator(seeds);
    for (int left = std::atoi(arguments[2]); left > 0; --left)
        run(mutator.next());
}
