#pragma once

#include <memory>

#include <isa-l/igzip_lib.h>

namespace zn::headless {

/// A gzip stream at ISA-L's level 1 and its work space.
struct LevelOne {
    isal_zstream stream{};
    std::unique_ptr<std::uint8_t[]> work = std::make_unique<std::uint8_t[]>(ISAL_DEF_LVL1_DEFAULT);

    LevelOne() {
        isal_deflate_init(&stream);
        stream.level = 1;
        stream.level_buf = work.get();
        stream.level_buf_size = ISAL_DEF_LVL1_DEFAULT;
        stream.gzip_flag = IGZIP_GZIP;
    }

    /// The next bytes to compress; the library does not modify them.
    void supply(const std::byte* bytes, std::size_t count) {
        stream.next_in = reinterpret_cast<std::uint8_t*>(const_cast<std::byte*>(bytes));
        stream.avail_in = static_cast<std::uint32_t>(count);
    }
};

} // namespace zn::headless
