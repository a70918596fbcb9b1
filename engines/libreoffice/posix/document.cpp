#include "engines/libreoffice/exchange_folder.h"
#include "engines/libreoffice/opened_files.h"

#include "engines/documents/picture.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"
#include "platform/files/file_name.h"

#include <algorithm>

namespace tarvik::libreoffice {

namespace {

/// The names of the formats that a document is saved in again; an older binary one becomes the newest of them.
constexpr const char* package_filter = "MS Word 2007 XML";
constexpr const char* binary_filter = "MS Word 97";

template <typename Work>
decltype(auto) naming_document(TextView path, Work&& work)
{
    return ooxml::naming_file(U"文档", path, std::forward<Work>(work));
}

/// CR LF, CR and LF break the line; of the other control characters only the tabulator has a meaning.
Text cell_text(TextView told)
{
    Text made;
    for (std::size_t i = 0; i < told.size(); ++i) {
        const char32_t character = told[i];
        const bool is_half = character == U'\r' && i + 1 < told.size() && told[i + 1] == U'\n';
        if (is_half) continue;
        if (character == U'\r' || character == U'\v') made += U'\n';
        else if (character >= U' ' || character == U'\n' || character == U'\t') made += character;
    }
    return made;
}

void require_table(OpenDocument& document)
{
    if (!document.has_table()) throw ooxml::Damage(U"文档中没有表格。");
}

[[noreturn]] void refuse_cell(int row, int column)
{
    throw ooxml::Damage(U"第一个表格没有第 " + number_text(row) + U" 行、第 " + number_text(column) + U" 列的单元格。");
}

/// The picture's own size in 1/100 mm, smaller where the room asks for it.
Size fitting(const ooxml::Picture& picture, Size room)
{
    constexpr double inch = 2540;
    const double width = picture.width * inch, height = picture.height * inch;
    const double scale = std::min({1.0, room.width / width, room.height / height});
    const auto length = [scale](double whole) { return std::max(1, static_cast<int>(whole * scale)); };
    return {length(width), length(height)};
}

/// A document that LibreOffice holds open. Failures name the file: the picture's where that is at fault, else the
/// document's.
class OfficeDocument final : public TextDocument {
public:
    OfficeDocument(const Surroundings& around, Text path)
        : files_(around.files), printer_(around.printer), path_(std::move(path))
    {
        naming_document(path_, [&] { open(around.office); });
    }

    void set_cell_text(int row, int column, TextView text) override
    {
        auto& opened = file();
        naming_document(path_, [&] {
            const auto written = cell_text(text);
            opened.call([&](OpenDocument& document) {
                require_table(document);
                if (!document.set_cell_text(row, column, written)) refuse_cell(row, column);
            });
        });
    }

    void add_picture(int row, int column, TextView path) override
    {
        auto& opened = file();
        const auto picture = ooxml::read_picture_file(files_, path);
        naming_document(path_, [&] {
            const auto copy = folder_->put("picture" + std::to_string(++pictures_), picture.contents);
            opened.call([&](OpenDocument& document) {
                require_table(document);
                const auto room = document.room_in_cell(row, column);
                if (!room) refuse_cell(row, column);
                document.add_picture(row, column, copy, fitting(picture.picture, *room));
            });
        });
    }

    void save_as(TextView path) override
    {
        file();
        const auto bytes = naming_document(path_, [&] { return stored(); });
        files_.replace(path, bytes);
        path_ = path.str();
    }

    void print_out() override
    {
        file();
        const auto name = split_path(path_).name;
        const ExchangeFolder folder(folder_->place("printed"));
        const auto copy = naming_document(path_, [&] { return folder.put(to_utf8(name), stored()); });
        printer_.print(copy, name);
    }

    void close() override
    {
        file_.reset();
        folder_.reset();
    }

private:
    void open(LibreOffice& office)
    {
        const auto bytes = files_.read(path_);
        const bool is_package = require_kind(bytes, FileKind::Document) == FileKind::Package;
        folder_.emplace(office.folder());
        auto file = office.open_document(folder_->put(is_package ? "read.docx" : "read.doc", bytes));
        if (!file) throw ooxml::Damage(suite_title() + U" 不能将它作为文档打开。");
        filter_ = is_package ? package_filter : binary_filter;
        file_.emplace(std::move(file));
    }

    Handle<OpenDocument>& file()
    {
        if (!file_) throw Failure(U"文档“" + path_ + U"”已经关闭。");
        return *file_;
    }

    std::string stored()
    {
        const auto copy = folder_->place("written");
        file().call([&](OpenDocument& document) { document.store(copy, filter_); });
        return folder_->take("written");
    }

    Files& files_;
    Printer& printer_;
    Text path_;
    std::optional<ExchangeFolder> folder_;
    std::optional<Handle<OpenDocument>> file_; ///< none once the document is closed
    const char* filter_ = nullptr;             ///< the format that it is kept in
    int pictures_ = 0;
};

} // namespace

std::unique_ptr<TextDocument> open_document(const Surroundings& around, Text path)
{
    return std::make_unique<OfficeDocument>(around, std::move(path));
}

} // namespace tarvik::libreoffice
