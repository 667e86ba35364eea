#include "Foundation/ReplaceFile+Private.h"

#include <cerrno>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace files = std::filesystem;

namespace {

// A QSaveFile would do, but takes a disk that fills up in the middle of a text for success.

std::error_code lastError() { return {errno, std::generic_category()}; }

std::error_code write(int file, std::string_view text) {
    while (!text.empty()) {
        const auto count = ::write(file, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<size_t>(count));
        else if (errno != EINTR)
            return lastError();
    }
    return ::fsync(file) == 0 ? std::error_code() : lastError();
}

std::error_code writeFile(const files::path& path, std::string_view text) {
    const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC;
    const int file = ::open(path.c_str(), flags, 0666);
    if (file < 0) return lastError();
    const auto error = write(file, text);
    return ::close(file) == 0 || error ? error : lastError();
}

/// Beside the file, so that the one can be renamed to the other.
files::path temporaryFor(files::path path) {
    path += '.';
    return path += std::to_string(::getpid());
}

} // namespace

std::error_code replaceFile(const files::path& path, std::string_view text) {
    std::error_code error;
    const auto before = files::status(path, error);
    if (files::is_directory(before)) return std::make_error_code(std::errc::is_a_directory);
    if (files::exists(before) && !files::is_regular_file(before))
        return std::make_error_code(std::errc::file_exists);
    if (!files::status_known(before)) return error;

    auto target = path;
    while (files::is_symlink(target, error))
        target = target.parent_path() / files::read_symlink(target, error);
    files::create_directories(path.parent_path(), error);
    if (error) return error;

    const auto temporary = temporaryFor(target);
    error = writeFile(temporary, text);
    if (!error && files::exists(before)) files::permissions(temporary, before.permissions(), error);
    if (!error) files::rename(temporary, target, error);
    if (error) ::unlink(temporary.c_str());
    return error;
}
