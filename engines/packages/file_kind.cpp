#include "engines/packages/file_kind.h"

#include "engines/packages/package.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace tarvik {

namespace {

/// A part's beginning, the end of a package without parts, a package that was once cut into several files.
constexpr std::string_view zip_signatures[] = {"PK\x03\x04", "PK\x05\x06", "PK\x07\x08"};

constexpr std::string_view signature = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1";
constexpr std::size_t header_size = 512, entry_size = 128, table_places_in_header = 109;
constexpr std::uint32_t last_regular_sector = 0xfffffffa, end_of_chain = 0xfffffffe, no_entry = 0xffffffff;
constexpr std::uint64_t shortest_stream_in_sectors = 4096;

/// The streams and storages in the root of a compound file, the container of .xls, of .doc and of packages behind a
/// password: their names in lower case, since case makes no difference, with "?" for characters that are not ASCII; and
/// the beginning of a stream's bytes, which is empty for one that is short; a storage has none.
using CompoundEntries = std::map<std::string, std::optional<std::string_view>, std::less<>>;

/// The bytes are damaged.
struct Damaged {};

std::uint32_t number_at(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at) throw Damaged();
    std::uint32_t number = 0;
    for (std::size_t i = size; i-- > 0;) number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

class CompoundFile {
public:
    explicit CompoundFile(std::string_view bytes) : bytes_(bytes), shift_(number_at(bytes, 30, 2))
    {
        if (shift_ != 9 && shift_ != 12) throw Damaged();
        read_table();
        read_directory();
    }

    /// No two streams share bytes, so all of them fit into the file.
    void check_streams() const
    {
        std::uint64_t room = bytes_.size();
        for (std::uint32_t entry = 0; entry < directory_.size() / entry_size; ++entry) {
            auto left = size(entry);
            if (type(entry) != root && (type(entry) != stream || left < shortest_stream_in_sectors))
                continue; // a short stream lies in the root's own
            if (left > room) throw Damaged();
            room -= left;
            for (auto at = directory_number(entry, 116); left > 0; at = next(at)) {
                const auto needed = std::min<std::uint64_t>(left, sector_size());
                if (sector(at).size() < needed) throw Damaged();
                left -= needed;
            }
        }
    }

    CompoundEntries entries_of_root() const
    {
        CompoundEntries entries;
        std::vector<bool> seen(directory_.size() / entry_size);
        std::vector<std::uint32_t> waiting{directory_number(0, 76)};
        while (!waiting.empty()) {
            const auto entry = waiting.back();
            waiting.pop_back();
            if (entry == no_entry) continue;
            if (entry >= seen.size() || seen[entry]) throw Damaged();
            seen[entry] = true;
            entries.emplace(name(entry), type(entry) == stream ? std::optional(beginning(entry)) : std::nullopt);
            waiting.push_back(directory_number(entry, 68));
            waiting.push_back(directory_number(entry, 72));
        }
        return entries;
    }

private:
    static constexpr std::uint32_t stream = 2, root = 5;

    std::size_t sector_size() const { return std::size_t{1} << shift_; }

    std::string_view sector(std::uint32_t number) const
    {
        const auto start = (std::size_t{number} + 1) << shift_;
        if (number > last_regular_sector || start >= bytes_.size()) throw Damaged();
        return bytes_.substr(start, sector_size());
    }

    std::uint32_t next(std::uint32_t number) const
    {
        if (number >= table_.size()) throw Damaged();
        return table_[number];
    }

    // The table of sectors lies in sectors that the header names, and where they do not suffice a chain of lists.
    void read_table()
    {
        add_to_table(bytes_.substr(76, table_places_in_header * 4));
        const std::size_t most_lists = bytes_.size() >> shift_;
        std::uint32_t list = number_at(bytes_, 68, 4);
        for (std::size_t read = 0; list <= last_regular_sector; ++read) {
            if (read > most_lists) throw Damaged();
            const auto numbers = sector(list);
            add_to_table(numbers.substr(0, sector_size() - 4));
            list = number_at(numbers, sector_size() - 4, 4);
        }
    }

    void add_to_table(std::string_view places)
    {
        for (std::size_t at = 0; at + 4 <= places.size(); at += 4) {
            const auto place = number_at(places, at, 4);
            if (place > last_regular_sector) continue;
            const auto numbers = sector(place);
            for (std::size_t i = 0; i < sector_size(); i += 4) table_.push_back(number_at(numbers, i, 4));
        }
    }

    void read_directory()
    {
        for (auto at = number_at(bytes_, 48, 4); at != end_of_chain; at = next(at)) {
            if (directory_.size() > bytes_.size()) throw Damaged();
            directory_ += sector(at);
        }
        if (directory_.size() < entry_size) throw Damaged();
    }

    std::uint32_t directory_number(std::uint32_t entry, std::size_t at, std::size_t size = 4) const
    {
        return number_at(directory_, entry * entry_size + at, size);
    }
    std::uint32_t type(std::uint32_t entry) const { return directory_number(entry, 66, 1); }
    std::uint64_t size(std::uint32_t entry) const
    {
        const std::uint64_t high = shift_ == 12 ? directory_number(entry, 124) : 0;
        return high << 32U | directory_number(entry, 120);
    }

    std::string name(std::uint32_t entry) const
    {
        std::string made;
        const std::size_t length = std::min(directory_number(entry, 64, 2), 64U) / 2;
        for (std::size_t i = 0; i + 1 < length; ++i) {
            const auto unit = directory_number(entry, 2 * i, 2);
            made += unit < 128 ? static_cast<char>(unit) : '?';
        }
        return ooxml::part_key(made);
    }

    std::string_view beginning(std::uint32_t entry) const
    {
        if (size(entry) < shortest_stream_in_sectors) return {};
        return sector(directory_number(entry, 116));
    }

    std::string_view bytes_;
    std::uint32_t shift_;
    std::vector<std::uint32_t> table_;
    std::string directory_;
};

/// The entries in the root of a compound file; nothing when the bytes are cut off or damaged: when some stream's bytes,
/// at whatever depth, do not all lie in the file. `bytes` must outlive the entries.
std::optional<CompoundEntries> read_compound_file(std::string_view bytes)
{
    try {
        if (!bytes.starts_with(signature) || bytes.size() < header_size) return std::nullopt;
        const CompoundFile file(bytes);
        file.check_streams();
        return file.entries_of_root();
    } catch (const Damaged&) {
        return std::nullopt;
    }
}

/// The number of two bytes at a place; 0 behind the end.
unsigned short_at(std::string_view bytes, std::size_t at)
{
    return at + 2 > bytes.size() ? 0 : number_at(bytes, at, 2);
}

/// Where the record of this kind begins among those of a workbook; npos where none does.
std::size_t find_record(std::string_view records, unsigned kind)
{
    constexpr unsigned first_record = 0x0809;
    if (short_at(records, 0) != first_record) return std::string_view::npos;
    std::size_t at = 0;
    while (at + 4 <= records.size() && short_at(records, at) != kind) at += 4 + short_at(records, at + 2);
    return at + 4 <= records.size() ? at : std::string_view::npos;
}

/// The oldest workbooks are their records alone, from the first, which tells the version, to the one that ends them.
/// What records hold is short; nothing else begins so.
bool is_bare_workbook(std::string_view bytes)
{
    constexpr unsigned first_records[] = {0x0009, 0x0209, 0x0409, 0x0809};
    const auto length = short_at(bytes, 2);
    return std::ranges::find(first_records, short_at(bytes, 0)) != std::end(first_records) && length >= 4 &&
           length <= 16 && bytes.size() >= 8;
}

bool ends_whole(std::string_view records)
{
    constexpr unsigned last_record = 0x000a;
    bool has_ended = false;
    std::size_t at = 0;
    for (; at + 4 <= records.size(); at += 4 + short_at(records, at + 2))
        has_ended = has_ended || short_at(records, at) == last_record;
    return has_ended && at <= records.size();
}

bool is_locked_workbook(std::string_view beginning)
{
    constexpr unsigned password = 0x002f;
    return find_record(beginning, password) != std::string_view::npos;
}

bool is_locked_document(std::string_view beginning)
{
    constexpr unsigned encrypted = 0x0100;
    return (short_at(beginning, 10) & encrypted) != 0;
}

struct StreamRow {
    std::string_view name;
    FileKind kind;
    bool (*is_locked)(std::string_view beginning);
};
constexpr StreamRow streams[] = {
    {"encryptedpackage", FileKind::Encrypted, nullptr}, // first: some hold a WordDocument too, which says so
    {"workbook", FileKind::Workbook, is_locked_workbook},
    {"book", FileKind::Workbook, is_locked_workbook},
    {"worddocument", FileKind::Document, is_locked_document},
};

/// Why a file of this kind is refused where a package is wanted, and where an older format is.
struct ReasonRow {
    FileKind kind;
    std::u32string_view no_package, no_older_file;
};
constexpr std::u32string_view damaged_reason = U"文件不完整或已损坏。";
constexpr ReasonRow reasons[] = {
    {FileKind::Encrypted, locked_reason, locked_reason},
    {FileKind::Damaged, damaged_reason, damaged_reason},
    {FileKind::Workbook, U"这是旧格式（.xls）的工作簿，内置引擎不能处理，请另存为 .xlsx。",
     U"这是一个 Excel 工作簿，不是 Word 文档。"},
    {FileKind::Document, U"这是旧格式（.doc）的文档，内置引擎不能处理，请另存为 .docx。",
     U"这是一个 Word 文档，不是 Excel 工作簿。"},
};

} // namespace

void remove_read_only_advice(std::string& workbook)
{
    constexpr unsigned sharing = 0x005b;
    const auto entries = read_compound_file(workbook);
    if (!entries) return;
    const auto entry = entries->find("workbook");
    if (entry == entries->end() || !entry->second) return;
    const auto beginning = *entry->second;
    const auto at = find_record(beginning, sharing);
    if (at == std::string_view::npos || beginning.size() - at < 6) return;
    const auto advice = static_cast<std::size_t>(beginning.data() - workbook.data()) + at + 4;
    workbook[advice] = workbook[advice + 1] = '\0';
}

FileKind file_kind(std::string_view bytes)
{
    if (bytes.empty()) return FileKind::Empty;
    for (const auto signature : zip_signatures)
        if (bytes.starts_with(signature)) return FileKind::Package;
    if (is_bare_workbook(bytes)) return ends_whole(bytes) ? FileKind::Workbook : FileKind::Damaged;
    if (!bytes.starts_with(signature)) return FileKind::Other;
    const auto entries = read_compound_file(bytes);
    if (!entries) return FileKind::Damaged;
    for (const auto& row : streams) {
        const auto entry = entries->find(row.name);
        if (entry == entries->end() || !entry->second) continue; // a folder of that name says nothing
        return row.is_locked && row.is_locked(*entry->second) ? FileKind::Encrypted : row.kind;
    }
    return FileKind::Other;
}

FileKind require_kind(std::string_view bytes, FileKind kind)
{
    const auto found = file_kind(bytes);
    if (found == kind || found == FileKind::Package) return found;
    if (found == FileKind::Encrypted && kind == FileKind::Workbook) return found;
    const bool wants_package = kind == FileKind::Package;
    for (const auto& row : reasons)
        if (row.kind == found) throw ooxml::Damage(Text(wants_package ? row.no_package : row.no_older_file));
    if (!wants_package)
        throw ooxml::Damage(kind == FileKind::Workbook ? U"这不是 Excel 工作簿。" : U"这不是 Word 文档。");
    throw ooxml::Damage(found == FileKind::Empty ? U"文件是空的。" : U"文件不是 .xlsx、.docx 一类的文件。");
}

bool has_macros(std::string_view bytes)
{
    if (file_kind(bytes) == FileKind::Package) {
        const ooxml::Package package{std::string(bytes)};
        return package.part("[Content_Types].xml").find("macroEnabled") != std::string::npos;
    }
    const auto entries = read_compound_file(bytes);
    return entries && (entries->contains("_vba_project_cur") || entries->contains("macros"));
}

} // namespace tarvik
