#include "office/packages/package.h"

#include "office/packages/file_kind.h"

#include <algorithm>

namespace tarvik::ooxml {

namespace {

// A sheet's tree takes some ten times its text, so these bounds hold the memory at a few gigabytes at the worst.
constexpr std::uint64_t largest_part = 128U << 20U;
constexpr std::uint64_t largest_sum = 256U << 20U;
constexpr std::uint64_t unsuspicious_size = 16U << 20U;
constexpr std::uint64_t largest_ratio = 150;
constexpr zip_int64_t most_entries = 65'535;

Text quoted(std::string_view name)
{
    return U"“" + from_utf8(name) + U"”";
}

void check_kind(std::string_view bytes)
{
    switch (file_kind(bytes)) {
    case FileKind::Package: return;
    case FileKind::Empty: throw Damage(U"文件是空的。");
    case FileKind::Encrypted: throw Damage(U"文件设有打开密码，请先去掉密码。");
    case FileKind::OldWorkbook: throw Damage(U"这是旧格式（.xls）的工作簿，内置引擎不能处理，请另存为 .xlsx。");
    case FileKind::OldDocument: throw Damage(U"这是旧格式（.doc）的文档，内置引擎不能处理，请另存为 .docx。");
    case FileKind::Other: throw Damage(U"文件不是 .xlsx、.docx 一类的文件。");
    }
}

std::string entry_key(std::string_view name)
{
    while (!name.empty() && (name.front() == '/' || name.front() == '\\')) name.remove_prefix(1);
    std::string key(name);
    std::transform(key.begin(), key.end(), key.begin(), [](char c) {
        if (c == '\\') return '/';
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    });
    return key;
}

/// Refuses what no honest file holds, before any memory is taken for it.
void check_size(const zip_stat_t& told, std::string_view name)
{
    if (told.encryption_method != ZIP_EM_NONE) throw Damage(U"部件" + quoted(name) + U"已加密。");
    if (told.comp_method != ZIP_CM_STORE && told.comp_method != ZIP_CM_DEFLATE) {
        throw Damage(U"部件" + quoted(name) + U"的压缩方法不是这类文件用的。");
    }
    const bool bomb = told.size > unsuspicious_size && told.size / largest_ratio > told.comp_size;
    if (told.size > largest_part || bomb) throw Damage(U"部件" + quoted(name) + U"展开后过大。");
}

} // namespace

Package::Package(std::string bytes) : bytes_(std::move(bytes)), file_{bytes_}
{
    check_kind(bytes_);
    source_ = make_source(file_);
    archive_ = open(source_.get(), ZIP_RDONLY);
    const auto count = zip_get_num_entries(archive_.get(), 0);
    if (count > most_entries) throw Damage(U"压缩包里的部件过多。");
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        const char* name = zip_get_name(archive_.get(), index, ZIP_FL_ENC_RAW);
        if (name) entries_.emplace(entry_key(name), index);
    }
}

Package::Source Package::make_source(ZipFile& file)
{
    Source source(make_file_source(file));
    if (!source) throw std::bad_alloc();
    return source;
}

Package::Archive Package::open(zip_source_t* source, int flags)
{
    Archive archive(zip_open_from_source(source, flags, nullptr));
    if (!archive) throw Damage(U"文件已损坏或不完整。");
    zip_source_keep(source); // the archive drops a share of its own when it is closed
    return archive;
}

zip_uint64_t Package::index_of(std::string_view name) const
{
    const auto found = entries_.find(entry_key(name));
    if (found == entries_.end()) throw Damage(U"缺少部件" + quoted(name) + U"。");
    return found->second;
}

bool Package::has(std::string_view part) const
{
    return entries_.contains(entry_key(part));
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
    const auto damaged = [name] { return Damage(U"部件" + quoted(name) + U"已损坏。"); };
    zip_stat_t told;
    if (zip_stat_index(archive_.get(), index, 0, &told) != 0) throw damaged();
    check_size(told, name);
    if (inflated_bytes_ + told.size > largest_sum) throw Damage(U"文件展开后过大。");

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
    inflated_bytes_ += told.size;
    return contents;
}

std::string Package::with(const PartChanges& changes) const
{
    const Damage refused(U"无法组成新的文件。");
    ZipFile file{bytes_};
    const Source source = make_source(file);
    Archive archive = open(source.get(), 0);
    for (const auto& name : changes.removed) {
        if (zip_delete(archive.get(), index_of(name)) != 0) throw refused;
    }
    for (const auto& [name, contents] : changes.written) {
        const auto known = entries_.find(entry_key(name));
        zip_stat_t told;
        if (zip_stat_index(archive.get(), known == entries_.end() ? 0 : known->second, 0, &told) != 0) throw refused;
        Source part(make_deflated_source(archive.get(), contents, told.mtime));
        if (!part) throw refused;
        const auto written = known == entries_.end()
                                 ? zip_file_add(archive.get(), name.c_str(), part.get(), ZIP_FL_ENC_UTF_8)
                                 : zip_file_replace(archive.get(), known->second, part.get(), 0);
        if (written < 0) throw refused;
        static_cast<void>(part.release()); // the archive has taken it over
    }
    if (zip_close(archive.get()) != 0) throw refused;
    static_cast<void>(archive.release());
    return std::move(file.new_bytes);
}

} // namespace tarvik::ooxml
