#include "engines/packages/file_kind.h"

#include "engines/packages/compound_file.h"
#include "engines/packages/package.h"

#include <algorithm>

namespace tarvik {

namespace {

/// A part's beginning, the end of a package without parts, a package that was once cut into several files.
constexpr std::string_view zip_signatures[] = {"PK\x03\x04", "PK\x05\x06", "PK\x07\x08"};

unsigned number_at(std::string_view bytes, std::size_t at)
{
    if (at + 2 > bytes.size()) return 0;
    return static_cast<unsigned char>(bytes[at]) | static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1]))
                                                       << 8U;
}

/// A workbook is a row of records; the one that tells of a password stands near the first.
bool is_locked_workbook(std::string_view beginning)
{
    constexpr unsigned first_record = 0x0809, password = 0x002f;
    constexpr int records_looked_at = 5;
    if (number_at(beginning, 0) != first_record) return false;
    std::size_t at = 0;
    for (int record = 0; record < records_looked_at; ++record) {
        if (number_at(beginning, at) == password) return true;
        at += 4 + number_at(beginning, at + 2);
    }
    return false;
}

bool is_locked_document(std::string_view beginning)
{
    constexpr unsigned encrypted = 0x0100;
    return (number_at(beginning, 10) & encrypted) != 0;
}

/// The oldest workbooks are their records alone, from the first, which tells the version, to the one that ends them.
/// What records hold is short; nothing else begins so.
bool is_bare_workbook(std::string_view bytes)
{
    constexpr unsigned first_records[] = {0x0009, 0x0209, 0x0409, 0x0809};
    const auto length = number_at(bytes, 2);
    return std::ranges::find(first_records, number_at(bytes, 0)) != std::end(first_records) && length >= 4 &&
           length <= 16 && bytes.size() >= 8;
}

bool ends_whole(std::string_view records)
{
    constexpr unsigned last_record = 0x000a;
    bool has_ended = false;
    std::size_t at = 0;
    for (; at + 4 <= records.size(); at += 4 + number_at(records, at + 2))
        has_ended = has_ended || number_at(records, at) == last_record;
    return has_ended && at <= records.size();
}

struct StreamRow {
    std::string_view name;
    FileKind kind;
    bool (*is_locked)(std::string_view beginning);
};
constexpr StreamRow streams[] = {
    {"EncryptedPackage", FileKind::Encrypted, nullptr}, // first: some hold a WordDocument too, which says so
    {"Workbook", FileKind::Workbook, is_locked_workbook},
    {"Book", FileKind::Workbook, is_locked_workbook},
    {"WordDocument", FileKind::Document, is_locked_document},
};

struct ReasonRow {
    FileKind kind;
    std::u32string_view reason;
};
constexpr ReasonRow reasons[] = {
    {FileKind::Encrypted, locked_reason},
    {FileKind::Damaged, U"文件不完整或已损坏。"},
    {FileKind::Workbook, U"这是一个 Excel 工作簿，不是 Word 文档。"},
    {FileKind::Document, U"这是一个 Word 文档，不是 Excel 工作簿。"},
};

/// As the names of a compound file are compared.
bool are_same_name(std::string_view one, std::string_view other)
{
    const auto plain = [](char letter) { return letter >= 'A' && letter <= 'Z' ? letter + 0x20 : letter; };
    return std::ranges::equal(one, other, {}, plain, plain);
}

} // namespace

void remove_read_only_advice(std::string& workbook)
{
    constexpr unsigned first_record = 0x0809, sharing = 0x005b;
    const auto entries = read_compound_file(workbook);
    if (!entries) return;
    for (const auto& entry : *entries) {
        const auto records = entry.beginning;
        if (!are_same_name(entry.name, "Workbook") || number_at(records, 0) != first_record) continue;
        std::size_t at = 0;
        while (at + 6 <= records.size() && number_at(records, at) != sharing) at += 4 + number_at(records, at + 2);
        if (at + 6 > records.size()) return;
        const auto advice = static_cast<std::size_t>(records.data() - workbook.data()) + at + 4;
        workbook[advice] = workbook[advice + 1] = '\0';
        return;
    }
}

FileKind file_kind(std::string_view bytes)
{
    if (bytes.empty()) return FileKind::Empty;
    for (const auto signature : zip_signatures)
        if (bytes.starts_with(signature)) return FileKind::Package;
    if (is_bare_workbook(bytes)) return ends_whole(bytes) ? FileKind::Workbook : FileKind::Damaged;
    if (!is_compound_file(bytes)) return FileKind::Other;
    const auto entries = read_compound_file(bytes);
    if (!entries) return FileKind::Damaged;
    for (const auto& row : streams) {
        const auto entry = std::find_if(entries->begin(), entries->end(), [&](const CompoundEntry& one) {
            return one.is_stream && are_same_name(one.name, row.name);
        });
        if (entry == entries->end()) continue;
        return row.is_locked && row.is_locked(entry->beginning) ? FileKind::Encrypted : row.kind;
    }
    return FileKind::Other;
}

FileKind require_kind(std::string_view bytes, FileKind kind)
{
    const auto found = file_kind(bytes);
    if (found == kind || found == FileKind::Package) return found;
    if (found == FileKind::Encrypted && kind == FileKind::Workbook) return found;
    for (const auto& row : reasons)
        if (row.kind == found) throw ooxml::Damage(Text(row.reason));
    throw ooxml::Damage(kind == FileKind::Workbook ? U"这不是 Excel 工作簿。" : U"这不是 Word 文档。");
}

bool has_macros(std::string_view bytes)
{
    if (file_kind(bytes) == FileKind::Package) {
        const ooxml::Package package{std::string(bytes)};
        return package.part("[Content_Types].xml").find("macroEnabled") != std::string::npos;
    }
    const auto entries = read_compound_file(bytes);
    return entries && std::ranges::any_of(*entries, [](const CompoundEntry& entry) {
               return entry.name == "_VBA_PROJECT_CUR" || entry.name == "Macros";
           });
}

} // namespace tarvik
