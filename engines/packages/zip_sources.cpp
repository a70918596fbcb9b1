#include "engines/packages/zip_sources.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include <zlib.h>

namespace tarvik::ooxml {

namespace {

template <typename Argument>
Argument& argument(void* data) noexcept
{
    return *static_cast<Argument*>(data);
}

zip_int64_t read(std::string_view bytes, zip_uint64_t& position, void* target, zip_uint64_t length) noexcept
{
    const auto count = std::min<zip_uint64_t>(length, bytes.size() - position);
    std::memcpy(target, bytes.data() + position, count);
    position += count;
    return static_cast<zip_int64_t>(count);
}

struct PackedPart {
    std::string bytes;
    zip_uint16_t method = ZIP_CM_DEFLATE;
    zip_uint64_t position = 0;
    zip_uint64_t full_size = 0;
    zip_uint32_t checksum = 0;
    std::time_t changed = 0;
};

constexpr int raw_window = -MAX_WBITS; // deflate without a header of its own, as zip wants it
constexpr int usual_memory = 8;
constexpr int quick_level = 3; // half the time of the usual one for a few more bytes

std::string deflated(std::string_view contents)
{
    z_stream stream{};
    if (deflateInit2(&stream, quick_level, Z_DEFLATED, raw_window, usual_memory, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    const std::unique_ptr<z_stream, decltype(&deflateEnd)> ending(&stream, deflateEnd);
    const auto bound = deflateBound(&stream, static_cast<uLong>(contents.size()));
    const auto target = std::make_unique_for_overwrite<char[]>(bound); // most of it is never touched
    // zlib reads through a pointer to non-const and writes nothing there.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(contents.data()));
    stream.avail_in = static_cast<uInt>(contents.size());
    stream.next_out = reinterpret_cast<Bytef*>(target.get());
    stream.avail_out = static_cast<uInt>(bound);
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) throw std::bad_alloc();
    return {target.get(), stream.total_out};
}

zip_int64_t tell_state(const PackedPart& state, void* data, zip_uint64_t length)
{
    if (length < sizeof(zip_stat_t)) return -1;
    auto* told = &argument<zip_stat_t>(data);
    zip_stat_init(told);
    told->valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC | ZIP_STAT_MTIME |
                  ZIP_STAT_ENCRYPTION_METHOD;
    told->size = state.full_size;
    told->comp_size = state.bytes.size();
    told->comp_method = state.method;
    told->crc = state.checksum;
    told->mtime = state.changed;
    told->encryption_method = ZIP_EM_NONE;
    return sizeof(zip_stat_t);
}

zip_int64_t answer_for_part(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto* state = static_cast<PackedPart*>(user);
    switch (command) {
    case ZIP_SOURCE_OPEN: state->position = 0; return 0;
    case ZIP_SOURCE_READ: return read(state->bytes, state->position, data, length);
    case ZIP_SOURCE_CLOSE: return 0;
    case ZIP_SOURCE_STAT: return tell_state(*state, data, length);
    case ZIP_SOURCE_ERROR: std::memset(data, 0, length); return static_cast<zip_int64_t>(2 * sizeof(int));
    case ZIP_SOURCE_FREE: delete state; return 0;
    case ZIP_SOURCE_SUPPORTS: return ZIP_SOURCE_SUPPORTS_READABLE;
    default: return -1;
    }
}

} // namespace

zip_source_t* make_lent_source(std::string_view bytes)
{
    return zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
}

zip_source_t* make_changeable_source(std::string_view bytes)
{
    void* const copy = std::malloc(bytes.size()); // NOLINT(cppcoreguidelines-no-malloc): libzip frees it
    if (!copy) return nullptr;
    std::memcpy(copy, bytes.data(), bytes.size());
    zip_source_t* const source = zip_source_buffer_create(copy, bytes.size(), 1, nullptr);
    if (!source) std::free(copy); // NOLINT(cppcoreguidelines-no-malloc)
    return source;                // NOLINT(clang-analyzer-unix.Malloc): libzip frees the copy
}

std::optional<std::string> bytes_in(zip_source_t* source)
{
    zip_stat_t told;
    if (zip_source_open(source) != 0 || zip_source_stat(source, &told) != 0) return std::nullopt;
    std::string bytes(told.size, '\0');
    const bool is_whole = zip_source_read(source, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(told.size);
    zip_source_close(source);
    return is_whole ? std::optional(std::move(bytes)) : std::nullopt;
}

bool is_compressed_in_itself(std::string_view contents) noexcept
{
    return contents.starts_with("\xFF\xD8\xFF") || contents.starts_with("\x89PNG\r\n\x1A\n");
}

zip_source_t* make_part_source(zip_t* archive, std::string_view contents, std::time_t changed)
{
    auto state = std::make_unique<PackedPart>();
    if (is_compressed_in_itself(contents)) {
        state->bytes = contents;
        state->method = ZIP_CM_STORE;
    } else {
        state->bytes = deflated(contents);
    }
    state->full_size = contents.size();
    state->checksum =
        static_cast<zip_uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(contents.data()), contents.size()));
    state->changed = changed;
    zip_source_t* source = zip_source_function(archive, answer_for_part, state.get());
    if (source) static_cast<void>(state.release()); // libzip has it freed by ZIP_SOURCE_FREE
    return source;
}

} // namespace tarvik::ooxml
