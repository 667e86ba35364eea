#pragma once

#include "Harness/Desktop.h"

#include <fstream>
#include <iterator>

namespace Harness {

/// A browser that makes a noise and only notes where it was sent. It is the one that the programs
/// of the desktop find; until it is installed, they find none.
class Browser {
public:
    explicit Browser(Desktop& desktop) { desktop.extra["PATH"] = m_folder.path().string(); }

    void install() const {
        const auto program = m_folder.write("xdg-open", "#!/bin/sh\necho \"$@\" >> " +
                                                            m_note.string() + "\necho Noise >&2\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }

    std::string visited() const {
        std::ifstream file(m_note);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    const Folder m_folder;
    const std::filesystem::path m_note = m_folder.path() / "visited";
};

} // namespace Harness
