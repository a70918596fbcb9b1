#include "engines/documents/cell_contents.h"
#include "engines/documents/engine.h"
#include "platform/files/system_paths.h"

#include <charconv>
#include <map>

namespace tarvik::ooxml {

namespace {

// What leads to the document's part, which must be what this engine can edit.
Relationship find_document(const Package& package, const ContentTypes& types)
{
    const Relationships relationships(package, "");
    const auto* document = relationships.of_kind("officeDocument");
    if (document) {
        const auto type = types.of(document->target);
        const auto has = [&type](std::string_view word) { return type.find(word) != std::string::npos; };
        if (has("wordprocessingml") || has("ms-word.")) return *document;
    }
    throw Damage(U"文件不是 Word 文档。");
}

// The numbers of the drawings in a part, which is searched as it is written.
void collect_numbers(std::string_view part, std::set<int>& numbers)
{
    constexpr std::string_view element = "docPr ";
    std::string_view tag;
    for (auto at = part.find(element); at != std::string_view::npos; at = part.find(element, at + tag.size())) {
        tag = part.substr(at, part.find('>', at) - at);
        const auto id = tag.find(" id=");
        if (id == std::string_view::npos) continue;
        const auto* digits = tag.data() + id + std::string_view(" id=\"").size();
        int number = 0;
        if (std::from_chars(digits, tag.data() + tag.size(), number).ec == std::errc()) numbers.insert(number);
    }
}

} // namespace

DocumentModel::DocumentModel(std::shared_ptr<const Package> package)
    : editor_(std::move(package)), main_(find_document(editor_.original(), editor_.types())),
      relationships_(editor_.original(), main_.target),
      document_(main_.target, editor_.original().part(main_.target), "document")
{
}

const TableCell& DocumentModel::table_cell(int row, int column)
{
    if (!table_) table_.emplace(document_.root());
    return table_->cell(row, column);
}

void DocumentModel::set_cell_text(int row, int column, TextView text)
{
    replace_cell_text(table_cell(row, column).node, text);
    document_.changed = true;
}

void DocumentModel::add_picture(int row, int column, PictureFile file, TextView name)
{
    const auto& cell = table_cell(row, column);
    const auto paragraph = paragraph_for_picture(cell.node);
    const bool is_jpeg = file.picture.kind == PictureKind::Jpeg;
    const auto part =
        editor_.free_name(std::string(folder_of(main_.target)) + "media/image", is_jpeg ? ".jpeg" : ".png");
    const auto group = main_.type.substr(0, main_.type.rfind('/') + 1); // of types in this package
    const auto relationship = relationships_.add(group + "image", part);
    editor_.add(part, std::move(file.contents), is_jpeg ? "image/jpeg" : "image/png");
    const bool is_strict = main_.type.find("purl.oclc.org") != std::string::npos;
    append_drawing(paragraph,
                   inline_drawing(file.picture, cell, paragraph,
                                  {relationship, free_drawing_number(), to_utf8(safe_name_part(name)), is_strict}));
    document_.changed = true;
}

int DocumentModel::free_drawing_number()
{
    if (drawing_numbers_.empty()) {
        std::map<std::string, std::string> parts{{part_key(main_.target), main_.target}}; // many may lead to one
        for (const auto& one : relationships_.all()) {
            const bool has_drawings = one.kind() == "header" || one.kind() == "footer";
            if (has_drawings && editor_.original().has(one.target)) parts.emplace(part_key(one.target), one.target);
        }
        for (const auto& part : parts) collect_numbers(editor_.original().part(part.second), drawing_numbers_);
        drawing_numbers_.insert(0); // counts as none
    }
    int number = 1;
    while (!drawing_numbers_.insert(number).second) ++number;
    return number;
}

std::string DocumentModel::pack()
{
    if (!document_.changed) return editor_.original().bytes();
    editor_.write(document_);
    editor_.write(relationships_);
    return editor_.pack();
}

} // namespace tarvik::ooxml
