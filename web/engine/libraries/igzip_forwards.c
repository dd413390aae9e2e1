// Three functions that ISA-L's portable part defines with other types than it calls them with, which WebAssembly does
// not allow. Deflation at level 3 and zlib's format need them. Inflating gzip does not, but its functions share files with
// those that do; see cmake/web_libraries.cmake.
#include <stdint.h>

struct isal_zstream;
struct deflate_icf;

uint64_t gen_icf_map_h1_base(struct isal_zstream* stream, struct deflate_icf* matches, uint64_t size);
void set_long_icf_fg_base(uint8_t* next, uint64_t processed, uint64_t size, struct deflate_icf* matches);

uint32_t adler32_of_short(uint32_t adler, uint8_t* bytes, uint32_t count);

uint64_t gen_icf_map_lh1(struct isal_zstream* stream, struct deflate_icf* matches, uint32_t size) {
    return gen_icf_map_h1_base(stream, matches, size);
}

void set_long_icf_fg(uint8_t* next, uint64_t processed, uint64_t size, struct deflate_icf* matches) {
    set_long_icf_fg_base(next, processed, size, matches);
}

uint32_t adler32_base(uint32_t adler, const unsigned char* bytes, uint64_t count) {
    return adler32_of_short(adler, (uint8_t*)bytes, (uint32_t)count);
}
