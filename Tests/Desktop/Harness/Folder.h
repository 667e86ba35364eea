#pragma once

#include <filesystem>

namespace Harness {

/// A folder of the test's own, gone with this object.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

    /// Makes a folder inside, open to its owner alone.
    std::filesystem::path make(const std::string& name) const;
    std::filesystem::path write(const std::string& name, const std::string& text) const;

private:
    std::filesystem::path m_path;
};

} // namespace Harness
