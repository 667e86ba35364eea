#include "Harness/Folder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace Harness {

namespace fs = std::filesystem;

Folder::Folder() {
    std::string name = (fs::temp_directory_path() / "desktop-tests-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    m_path = name;
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

fs::path Folder::make(const std::string& name) const {
    const fs::path path = m_path / name;
    fs::create_directories(path);
    fs::permissions(path, fs::perms::owner_all);
    return path;
}

fs::path Folder::write(const std::string& name, const std::string& text) const {
    const fs::path path = m_path / name;
    std::ofstream(path) << text;
    return path;
}

} // namespace Harness
