#include "office/packages/deflated_source.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include <zlib.h>

namespace tarvik::ooxml {

namespace {

struct Deflated {
    std::string bytes;
    std::size_t position = 0;
    zip_uint64_t full_size = 0;
    zip_uint32_t checksum = 0;
    std::time_t changed = 0;
};

constexpr int raw_window = -MAX_WBITS; ///< deflate without a header of its own, as zip wants it
constexpr int usual_memory = 8;

std::string deflated(std::string_view contents)
{
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, raw_window, usual_memory, Z_DEFAULT_STRATEGY) !=
        Z_OK) {
        throw std::bad_alloc();
    }
    const std::unique_ptr<z_stream, decltype(&deflateEnd)> ending(&stream, deflateEnd);
    std::string target(deflateBound(&stream, contents.size()), '\0');
    // zlib reads through a pointer to non-const and writes nothing there.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(contents.data()));
    stream.avail_in = static_cast<uInt>(contents.size());
    stream.next_out = reinterpret_cast<Bytef*>(target.data());
    stream.avail_out = static_cast<uInt>(target.size());
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) throw std::bad_alloc();
    target.resize(stream.total_out);
    return target;
}

zip_int64_t tell_state(const Deflated& state, void* data, zip_uint64_t length)
{
    if (length < sizeof(zip_stat_t)) return -1;
    auto* told = static_cast<zip_stat_t*>(data);
    zip_stat_init(told);
    told->valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC | ZIP_STAT_MTIME |
                  ZIP_STAT_ENCRYPTION_METHOD;
    told->size = state.full_size;
    told->comp_size = state.bytes.size();
    told->comp_method = ZIP_CM_DEFLATE;
    told->crc = state.checksum;
    told->mtime = state.changed;
    told->encryption_method = ZIP_EM_NONE;
    return sizeof(zip_stat_t);
}

zip_int64_t answer(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto* state = static_cast<Deflated*>(user);
    switch (command) {
    case ZIP_SOURCE_OPEN: state->position = 0; return 0;
    case ZIP_SOURCE_READ: {
        const auto count = std::min<std::size_t>(length, state->bytes.size() - state->position);
        std::memcpy(data, state->bytes.data() + state->position, count);
        state->position += count;
        return static_cast<zip_int64_t>(count);
    }
    case ZIP_SOURCE_CLOSE: return 0;
    case ZIP_SOURCE_STAT: return tell_state(*state, data, length);
    case ZIP_SOURCE_ERROR: std::memset(data, 0, length); return static_cast<zip_int64_t>(2 * sizeof(int));
    case ZIP_SOURCE_FREE: delete state; return 0;
    case ZIP_SOURCE_SUPPORTS: return ZIP_SOURCE_SUPPORTS_READABLE;
    default: return -1;
    }
}

} // namespace

zip_source_t* make_deflated_source(zip_t* archive, std::string_view contents, std::time_t changed)
{
    auto state = std::make_unique<Deflated>();
    state->bytes = deflated(contents);
    state->full_size = contents.size();
    state->checksum =
        static_cast<zip_uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(contents.data()), contents.size()));
    state->changed = changed;
    zip_source_t* source = zip_source_function(archive, answer, state.get());
    if (source) static_cast<void>(state.release()); // libzip has it freed by ZIP_SOURCE_FREE
    return source;
}

} // namespace tarvik::ooxml
