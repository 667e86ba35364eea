// Preloaded into a server: while a file stands at the path that SCARCE_MEMORY names, no picture of
// some hundred kilobytes to some megabytes can be had. Pictures of whole windows can, and lists of
// events: without those the server ends itself.
#include <cstdlib>

#include <unistd.h>

// How the C library's own are called by those that take their place.
extern "C" void* __libc_malloc(size_t size);
extern "C" void* __libc_calloc(size_t count, size_t size);

namespace {

bool isScarce(size_t bytes) {
    constexpr size_t kilobyte = 1024;
    return bytes >= 320 * kilobyte && bytes < 8192 * kilobyte &&
           access(std::getenv("SCARCE_MEMORY"), F_OK) == 0;
}

} // namespace

extern "C" void* malloc(size_t size) { return isScarce(size) ? nullptr : __libc_malloc(size); }

extern "C" void* calloc(size_t count, size_t size) {
    return isScarce(count * size) ? nullptr : __libc_calloc(count, size);
}
