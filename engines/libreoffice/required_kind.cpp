#include "engines/libreoffice/required_kind.h"

#include "engines/packages/damage.h"

namespace tarvik::libreoffice {

namespace {

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

} // namespace

FileKind require_kind(std::string_view bytes, FileKind kind)
{
    const auto found = file_kind(bytes);
    if (found == kind || found == FileKind::Package) return found;
    if (found == FileKind::Encrypted && kind == FileKind::Workbook) return found;
    for (const auto& row : reasons)
        if (row.kind == found) throw ooxml::Damage(Text(row.reason));
    throw ooxml::Damage(kind == FileKind::Workbook ? U"这不是 Excel 工作簿。" : U"这不是 Word 文档。");
}

} // namespace tarvik::libreoffice
