#pragma once

#include <QTemporaryDir>

#include <filesystem>

namespace Harness {

/// A folder of the test's own, gone with this object.
class Folder {
public:
    std::filesystem::path path() const { return m_folder.path().toStdString(); }

    /// Makes a folder inside, open to its owner alone.
    std::filesystem::path make(const std::string& name) const;
    std::filesystem::path write(const std::string& name, const std::string& text) const;

private:
    const QTemporaryDir m_folder;
};

} // namespace Harness
