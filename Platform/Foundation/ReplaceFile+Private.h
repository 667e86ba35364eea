#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

/// Gives a file another text as a whole: a reader, a crash at any moment or a disk that fills up
/// finds the old text or the new one, for the new one is on the disk before it takes the place.
/// Folders that are missing are made. A link stays one; the file that it leads to is replaced.
/// Anything else in the file's place is left alone. The error is the system's reason, or none.
std::error_code replaceFile(const std::filesystem::path& path, std::string_view text);
