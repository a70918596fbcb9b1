#include "engines/packages/zip_sources.h"

#include <algorithm>
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

zip_int64_t seek(zip_uint64_t& position, zip_uint64_t end, void* data, zip_uint64_t length, zip_error_t& error)
{
    const auto target = zip_source_seek_compute_offset(position, end, data, length, &error);
    if (target < 0) return -1;
    position = static_cast<zip_uint64_t>(target);
    return 0;
}

zip_int64_t begin_writing(ZipFile& file, zip_uint64_t kept)
{
    file.new_bytes.reserve(file.old_bytes.size());
    file.new_bytes.assign(file.old_bytes.substr(0, kept));
    file.write_position = kept;
    return 0;
}

zip_int64_t write(ZipFile& file, const void* data, zip_uint64_t length)
{
    const auto replaced = std::min<zip_uint64_t>(length, file.new_bytes.size() - file.write_position);
    file.new_bytes.replace(file.write_position, replaced, static_cast<const char*>(data), length);
    file.write_position += length;
    return static_cast<zip_int64_t>(length);
}

zip_int64_t tell_size(const ZipFile& file, void* data)
{
    auto& told = argument<zip_stat_t>(data);
    zip_stat_init(&told);
    told.valid = ZIP_STAT_SIZE;
    told.size = file.old_bytes.size();
    return sizeof(zip_stat_t);
}

zip_int64_t serve(ZipFile& file, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_OPEN: file.read_position = 0; return 0;
    case ZIP_SOURCE_READ: return read(file.old_bytes, file.read_position, data, length);
    case ZIP_SOURCE_SEEK: return seek(file.read_position, file.old_bytes.size(), data, length, file.error);
    case ZIP_SOURCE_TELL: return static_cast<zip_int64_t>(file.read_position);
    case ZIP_SOURCE_STAT: return tell_size(file, data);
    case ZIP_SOURCE_BEGIN_WRITE: return begin_writing(file, 0);
    case ZIP_SOURCE_BEGIN_WRITE_CLONING: return begin_writing(file, length);
    case ZIP_SOURCE_WRITE: return write(file, data, length);
    case ZIP_SOURCE_SEEK_WRITE: return seek(file.write_position, file.new_bytes.size(), data, length, file.error);
    case ZIP_SOURCE_TELL_WRITE: return static_cast<zip_int64_t>(file.write_position);
    case ZIP_SOURCE_REMOVE:
    case ZIP_SOURCE_ROLLBACK_WRITE: file.new_bytes.clear(); return 0;
    case ZIP_SOURCE_COMMIT_WRITE:
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE: return 0; // the bytes belong to others
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&file.error, data, length);
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_WRITABLE | ZIP_SOURCE_MAKE_COMMAND_BITMASK(ZIP_SOURCE_BEGIN_WRITE_CLONING);
    default: zip_error_set(&file.error, ZIP_ER_OPNOTSUPP, 0); return -1;
    }
}

zip_int64_t answer_for_file(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept
{
    auto& file = argument<ZipFile>(user);
    try {
        return serve(file, data, length, command);
    } catch (const std::exception&) { // no exception may pass through libzip
        zip_error_set(&file.error, ZIP_ER_MEMORY, 0);
        return -1;
    }
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

zip_source_t* make_file_source(ZipFile& file)
{
    return zip_source_function_create(answer_for_file, &file, nullptr);
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
