#include "engines/packages/package.h"

#include "engines/packages/file_kind.h"
#include "engines/packages/xml_part.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace tarvik::ooxml {

namespace {

// A package of a few kilobytes may unpack to gigabytes. What an honest one needs grows with its size; sheets of equal
// cells need some 230 bytes of memory for one packed byte.
constexpr std::uint64_t memory_of_any = 64U << 20U;
constexpr std::uint64_t memory_per_packed_byte = 300;
constexpr std::uint64_t most_memory = 2U << 30U;
constexpr zip_int64_t most_entries = 65'535;
constexpr zip_uint32_t quick_level = 3; // of deflating: half the time of the usual one for a few more bytes

std::uint64_t memory_for(std::uint64_t packed_size)
{
    return std::clamp(memory_per_packed_byte * packed_size, memory_of_any, most_memory);
}

Damage refused()
{
    return Damage(U"无法组成新的文件。");
}

Damage too_large(std::string_view name)
{
    return Damage(U"部件" + in_quotes(name) + U"展开后过大。");
}

/// Whether a part is a JPEG or PNG picture, from which deflating takes nothing but time.
bool is_compressed_in_itself(std::string_view contents) noexcept
{
    return contents.starts_with("\xFF\xD8\xFF") || contents.starts_with("\x89PNG\r\n\x1A\n");
}

/// A source of an archive to be changed. It has a copy: of bytes that it was only lent libzip frees what it keeps for
/// the changed file.
zip_source_t* make_changeable_source(std::string_view bytes)
{
    void* const copy = std::malloc(bytes.size()); // NOLINT(cppcoreguidelines-no-malloc): libzip frees it
    if (!copy) return nullptr;
    std::memcpy(copy, bytes.data(), bytes.size());
    zip_source_t* const source = zip_source_buffer_create(copy, bytes.size(), 1, nullptr);
    if (!source) std::free(copy); // NOLINT(cppcoreguidelines-no-malloc)
    return source;                // NOLINT(clang-analyzer-unix.Malloc): libzip frees the copy
}

/// What was written to the source.
std::string bytes_in(zip_source_t* source)
{
    zip_stat_t told;
    if (zip_source_open(source) != 0 || zip_source_stat(source, &told) != 0) throw refused();
    std::string bytes(told.size, '\0');
    const auto count = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    if (count != static_cast<zip_int64_t>(told.size)) throw refused();
    return bytes;
}

} // namespace

std::string part_key(std::string_view name)
{
    while (!name.empty() && (name.front() == '/' || name.front() == '\\')) name.remove_prefix(1);
    std::string key(name);
    std::transform(key.begin(), key.end(), key.begin(), [](char c) {
        if (c == '\\') return '/';
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    });
    return key;
}

Package::Package(std::string bytes) : bytes_(std::move(bytes))
{
    require_kind(bytes_, FileKind::Package);
    source_.reset(zip_source_buffer_create(bytes_.data(), bytes_.size(), 0, nullptr)); // to be read alone
    archive_ = open(source_, ZIP_RDONLY);
    const auto count = zip_get_num_entries(archive_.get(), 0);
    if (count > most_entries) throw Damage(U"压缩包里的部件过多。");
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        const char* name = zip_get_name(archive_.get(), index, ZIP_FL_ENC_RAW);
        if (!name) continue;
        auto key = part_key(name);
        const bool is_folder = key.ends_with('/');
        if (!entries_.emplace(std::move(key), index).second && !is_folder) {
            throw Damage(U"压缩包里有两个同名的部件" + in_quotes(name) + U"。");
        }
    }
}

Package::Archive Package::open(const Source& source, int flags)
{
    if (!source) throw std::bad_alloc();
    Archive archive(zip_open_from_source(source.get(), flags, nullptr));
    if (!archive) throw Damage(U"文件已损坏或不完整。");
    zip_source_keep(source.get()); // the archive drops a share of its own when it is closed
    return archive;
}

zip_uint64_t Package::index_of(std::string_view name) const
{
    const auto found = entries_.find(part_key(name));
    if (found == entries_.end()) throw Damage(U"缺少部件" + in_quotes(name) + U"。");
    return found->second;
}

bool Package::has(std::string_view part) const
{
    return entries_.contains(part_key(part));
}

const std::string& Package::part(std::string_view name) const
{
    const auto index = index_of(name);
    const auto known = inflated_.find(index);
    if (known != inflated_.end()) return known->second;
    return inflated_.emplace(index, inflate(index, name)).first->second;
}

std::string Package::inflate(zip_uint64_t index, std::string_view name) const
{
    const auto damaged = [name] { return Damage(U"部件" + in_quotes(name) + U"已损坏。"); };
    zip_stat_t told;
    if (zip_stat_index(archive_.get(), index, 0, &told) != 0) throw damaged();
    if (told.encryption_method != ZIP_EM_NONE) throw Damage(U"部件" + in_quotes(name) + U"已加密。");
    if (told.comp_method != ZIP_CM_STORE && told.comp_method != ZIP_CM_DEFLATE) {
        throw Damage(U"部件" + in_quotes(name) + U"的压缩方法不是这类文件用的。");
    }
    const auto allowed = memory_for(bytes_.size());
    if (told.size > (allowed - memory_) / least_tree_memory_per_byte) throw too_large(name);

    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(zip_fopen_index(archive_.get(), index, 0),
                                                                  zip_fclose);
    if (!file) throw damaged();
    std::string contents(told.size, '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const auto count = zip_fread(file.get(), contents.data() + filled, contents.size() - filled);
        if (count <= 0) throw damaged();
        filled += static_cast<std::size_t>(count);
    }
    char behind = 0; // the checksum is compared only when the end is read
    if (zip_fread(file.get(), &behind, 1) != 0) throw damaged();
    const auto memory = tree_memory(contents);
    if (memory_ + memory > allowed) throw too_large(name);
    memory_ += memory;
    return contents;
}

// Writes a part, whose contents must stay until the archive is closed, in place of the entry, or behind all others when
// that is nothing.
void Package::write(zip_t* archive, std::optional<zip_uint64_t> entry, const std::string& name,
                    const std::string& contents)
{
    const bool is_new = !entry;
    zip_stat_t told;
    if (zip_stat_index(archive, entry.value_or(0), ZIP_FL_UNCHANGED, &told) != 0) throw refused();
    Source part(zip_source_buffer(archive, contents.data(), contents.size(), 0));
    if (!part) throw refused();
    if (!is_new) {
        if (zip_file_replace(archive, *entry, part.get(), 0) != 0) throw refused();
    } else {
        const auto index = zip_file_add(archive, name.c_str(), part.get(), ZIP_FL_ENC_UTF_8);
        if (index < 0) throw refused();
        entry = static_cast<zip_uint64_t>(index);
    }
    static_cast<void>(part.release()); // the archive has taken it over
    // libzip forgets the level where the method is named as it was.
    const auto deflate = is_new ? ZIP_CM_DEFLATE : ZIP_CM_DEFAULT;
    const auto method = is_compressed_in_itself(contents) ? ZIP_CM_STORE : deflate;
    if (zip_set_file_compression(archive, *entry, method, quick_level) != 0 ||
        zip_file_set_mtime(archive, *entry, told.mtime, 0) != 0)
        throw refused();
}

std::string Package::with(const PartChanges& changes) const
{
    const Source source(make_changeable_source(bytes_));
    Archive archive = open(source, 0);
    for (const auto& name : changes.removed) {
        if (zip_delete(archive.get(), index_of(name)) != 0) throw refused();
    }
    for (const auto& [name, contents] : changes.written) {
        const auto known = entries_.find(part_key(name));
        write(archive.get(), known == entries_.end() ? std::nullopt : std::optional(known->second), name, contents);
    }
    if (zip_close(archive.get()) != 0) throw refused();
    static_cast<void>(archive.release());
    return bytes_in(source.get());
}

} // namespace tarvik::ooxml
