// The settings file may hold anything: reading it is harmless, what is stored comes back, and what
// others wrote beside it stays.
#include "Target.h"

#include "Foundation/NSUserDefaults.h"
#include "Foundation/TextFile+Private.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

namespace files = std::filesystem;

const std::string key = "buttonSpot.7";

/// A folder in memory where the system has one: the store waits until the disk holds its file.
class Store {
public:
    Store() {
        const files::path memory = "/dev/shm";
        std::string name =
            (files::exists(memory) ? memory : files::temp_directory_path()) / "settings-XXXXXX";
        require(::mkdtemp(name.data()), "a folder for the settings");
        m_folder = name;
        ::setenv("XDG_CONFIG_HOME", name.c_str(), true);
        defaults().setBool(true, "first");
        m_file = files::directory_iterator(m_folder)->path();
    }
    ~Store() { files::remove_all(m_folder); }

    NSUserDefaults& defaults() const { return NSUserDefaults::standardUserDefaults(); }

    void write(const std::string& text) const {
        std::ofstream(m_file, std::ios::binary | std::ios::trunc) << text;
    }
    std::string lines() const {
        std::ifstream stream(m_file, std::ios::binary);
        const std::string text{std::istreambuf_iterator(stream), {}};
        return TextSection(QByteArray::fromStdString(text), header).text().toStdString();
    }

    static constexpr const char* header = "[General]";

private:
    files::path m_folder;
    files::path m_file;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Store store;
    NSUserDefaults& defaults = store.defaults();
    const std::string text(reinterpret_cast<const char*>(data), size);

    store.write(text);
    defaults.arrayForKey(key);
    defaults.boolForKey(key);
    defaults.removeObjectForKey(key);
    require(!defaults.arrayForKey(key), "a removed value is gone");
    const std::string others = store.lines();

    store.write(text);
    const std::vector<double> spot = {0.25, 1.0 / 3};
    defaults.setObject(spot, key);
    require(defaults.arrayForKey(key) == NSArray{spot[0], spot[1]}, "a stored value comes back");
    defaults.removeObjectForKey(key);
    const std::string kept = store.lines();
    require(kept == others || kept == Store::header + ("\n" + others), "the other lines stay");
    return 0;
}
