#pragma once

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

namespace Harness {

/// A folder of the test's own, gone with this object.
class Folder {
public:
    std::filesystem::path path() const { return m_folder.path().toStdString(); }

    /// Makes a folder inside, open to its owner alone.
    std::filesystem::path make(const std::string& name) const {
        const auto folder = path() / name;
        std::filesystem::create_directories(folder);
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
        return folder;
    }
    std::filesystem::path write(const std::string& name, const std::string& text) const {
        const auto file = path() / name;
        std::ofstream(file) << text;
        return file;
    }

private:
    const QTemporaryDir m_folder;
};

} // namespace Harness
