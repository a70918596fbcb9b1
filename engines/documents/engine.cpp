#include "engines/documents/engine.h"

#include "engines/documents/cell_contents.h"
#include "engines/packages/temporary_folder.h"
#include "platform/files/paths.h"

#include <charconv>
#include <map>

namespace tarvik {

namespace ooxml {

namespace {

// What leads to the document's part, which must be what this engine can edit.
Relationship find_document(const Package& package, const ContentTypes& types)
{
    const Relationships relationships(package, "");
    const auto* document = relationships.of_kind("officeDocument");
    if (document) {
        const auto type = types.of(document->target);
        const auto has = [&type](std::string_view word) { return type.find(word) != std::string::npos; };
        if (has("wordprocessingml") || has("ms-word.")) return {document->id, document->type, document->target, {}};
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

/// CR LF, CR, LF and VT break the line, as LF; what no document can hold is left out.
Text plain_lines(TextView text)
{
    Text lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        if (c == U'\r' && i + 1 < text.size() && text[i + 1] == U'\n') continue;
        if (c == U'\r' || c == U'\v') lines += U'\n';
        else if (c == U'\n' || c == U'\t' || (c >= 0x20 && c != 0xFFFE && c != 0xFFFF)) lines += c;
    }
    return lines;
}

class OpenedDocument final : public TextDocument {
public:
    OpenedDocument(Files& files, Printer& printer, TextView path,
                   const std::function<std::unique_ptr<FilledDocument>()>& open)
        : files_(files), printer_(printer), path_(path.str()), document_(naming_file(U"文档", path, open))
    {
    }

    void set_cell_text(int row, int column, TextView text) override
    {
        naming_file(U"文档", path_, [&] { document().set_cell_text(row, column, plain_lines(text)); });
        is_saved_ = false;
    }

    void add_picture(int row, int column, TextView path) override
    {
        auto& opened = document();
        auto file = read_picture_file(files_, path);
        naming_file(U"文档", path_, [&] { opened.add_picture(row, column, std::move(file), split_path(path).name); });
        is_saved_ = false;
    }

    void save_as(TextView path) override
    {
        files_.replace(path, packed());
        path_ = path.str();
        is_saved_ = true;
    }

    void print_out() override
    {
        const auto name = split_path(path_).name;
        if (is_saved_) return printer_.print(files_.resolve(path_), name);
        print_copy(files_, printer_, name, packed());
    }

    void close() override { document_.reset(); }

private:
    FilledDocument& document() const
    {
        if (!document_) throw Failure(U"文档“" + path_ + U"”已经关闭。");
        return *document_;
    }

    std::string packed() const
    {
        return naming_file(U"文档", path_, [this] { return document().pack(); });
    }

    Files& files_;
    Printer& printer_;
    Text path_;
    std::unique_ptr<FilledDocument> document_; // none once it is closed
    bool is_saved_ = true;                     // the file holds what the document does
};

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

std::unique_ptr<TextDocument> open_document(Files& files, Printer& printer, TextView path,
                                            const std::function<std::unique_ptr<FilledDocument>()>& open)
{
    return std::make_unique<OpenedDocument>(files, printer, path, open);
}

} // namespace ooxml

FileOpener<TextDocument> ooxml_documents(Files& files, Printer& printer)
{
    return [&files, &printer, cache = std::make_shared<ooxml::PackageCache>(files)](TextView path) {
        return ooxml::open_document(files, printer, path,
                                    [&] { return std::make_unique<ooxml::DocumentModel>(cache->open(path)); });
    };
}

} // namespace tarvik
