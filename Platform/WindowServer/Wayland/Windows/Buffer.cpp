#include "WindowServer/Wayland/Windows/Buffer.h"

#include <algorithm>
#include <climits>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace WindowServer::Wayland {

std::unique_ptr<Buffer> Buffer::make(const Connection& connection, QSize size, int stride,
                                     wl_shm_format format, QImage::Format imageFormat) {
    const size_t length = static_cast<size_t>(stride) * size.height();
    if (size.isEmpty() || length > INT_MAX) return nullptr;
    const int file = memfd_create("picture", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (file < 0) return nullptr;
    std::unique_ptr<Buffer> result;
    void* bytes = MAP_FAILED;
    if (::ftruncate(file, static_cast<off_t>(length)) == 0) {
        // Nobody can cut it short beneath the other one.
        ::fcntl(file, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL);
        bytes = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    }
    if (bytes != MAP_FAILED) {
        result.reset(new Buffer);
        result->m_image = {static_cast<uchar*>(bytes), size.width(), size.height(), stride,
                           imageFormat};
        const Owned<wl_shm_pool> pool(
            wl_shm_create_pool(connection.globals().shm, file, static_cast<int>(length)));
        result->m_buffer.reset(
            wl_shm_pool_create_buffer(pool.get(), 0, size.width(), size.height(), stride, format));
        static const wl_buffer_listener listener = {.release = Tell<&Buffer::release>()};
        wl_buffer_add_listener(result->m_buffer.get(), &listener, result.get());
    }
    ::close(file);
    return result;
}

Buffer::~Buffer() {
    ::munmap(const_cast<uchar*>(m_image.constBits()), static_cast<size_t>(m_image.sizeInBytes()));
}

void Buffer::attach(wl_surface* surface) {
    m_isBusy = true;
    wl_surface_attach(surface, get(), 0, 0);
    wl_surface_damage_buffer(surface, 0, 0, m_image.width(), m_image.height());
}

Buffer* Buffers::take(QSize size) {
    std::erase_if(m_buffers, [size](const auto& each) {
        return !each->isBusy() && each->image().size() != size;
    });
    const auto free =
        std::ranges::find_if(m_buffers, [](const auto& each) { return !each->isBusy(); });
    if (free != m_buffers.end()) return free->get();
    auto made = Buffer::make(m_connection, size, size.width() * 4, WL_SHM_FORMAT_ARGB8888,
                             QImage::Format_ARGB32_Premultiplied);
    if (!made) return nullptr;
    m_buffers.push_back(std::move(made));
    return m_buffers.back().get();
}

} // namespace WindowServer::Wayland
