#include "Harness/Folder.h"

#include <fstream>

namespace Harness {

namespace fs = std::filesystem;

fs::path Folder::make(const std::string& name) const {
    const fs::path folder = path() / name;
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms::owner_all);
    return folder;
}

fs::path Folder::write(const std::string& name, const std::string& text) const {
    const fs::path file = path() / name;
    std::ofstream(file) << text;
    return file;
}

} // namespace Harness
