#include "engines/packages/file_kind.h"

#include "engines/packages/compound_file.h"

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

struct StreamRow {
    std::string_view name;
    FileKind kind;
    bool (*is_locked)(std::string_view beginning);
};
constexpr StreamRow streams[] = {
    {"Workbook", FileKind::Workbook, is_locked_workbook},
    {"Book", FileKind::Workbook, is_locked_workbook},
    {"WordDocument", FileKind::Document, is_locked_document},
    {"EncryptedPackage", FileKind::Encrypted, nullptr},
};

} // namespace

FileKind file_kind(std::string_view bytes)
{
    if (bytes.empty()) return FileKind::Empty;
    for (const auto signature : zip_signatures)
        if (bytes.starts_with(signature)) return FileKind::Package;
    if (!is_compound_file(bytes)) return FileKind::Other;
    const auto entries = read_compound_file(bytes);
    if (!entries) return FileKind::Damaged;
    for (const auto& row : streams) {
        const auto entry = std::find_if(entries->begin(), entries->end(), [&](const CompoundEntry& one) {
            return one.is_stream && one.name == row.name;
        });
        if (entry == entries->end()) continue;
        return row.is_locked && row.is_locked(entry->beginning) ? FileKind::Encrypted : row.kind;
    }
    return FileKind::Other;
}

} // namespace tarvik
