#include "engines/libreoffice/engine.h"

#include "engines/documents/engine.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"

#include <algorithm>

namespace tarvik::libreoffice {

namespace {

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

/// A document that LibreOffice holds open. An older binary one is stored in the newest of these formats.
class OfficeDocument final : public ooxml::FilledDocument {
public:
    OfficeDocument(LibreOffice& office, std::string_view bytes)
        : is_package_(require_kind(bytes, FileKind::Document) == FileKind::Package), folder_(office.folder()),
          file_(office.open<OpenDocument>(folder_.put(is_package_ ? "read.docx" : "read.doc", bytes)))
    {
        if (!file_) throw ooxml::Damage(suite_title() + U" 不能将它作为文档打开。");
    }

    void set_cell_text(int row, int column, TextView text) override
    {
        file_.call([&](OpenDocument& document) {
            require_table(document);
            if (!document.set_cell_text(row, column, text.str())) refuse_cell(row, column);
        });
    }

    void add_picture(int row, int column, ooxml::PictureFile picture, TextView /*name*/) override
    {
        const auto copy = folder_.put("picture" + std::to_string(++pictures_), picture.contents);
        file_.call([&](OpenDocument& document) {
            require_table(document);
            const auto room = document.room_in_cell(row, column);
            if (!room) refuse_cell(row, column);
            document.add_picture(row, column, copy, fitting(picture.picture, *room));
        });
    }

    std::string pack() override
    {
        file_.call([&](OpenDocument& document) {
            document.store(folder_.place("written"), is_package_ ? "MS Word 2007 XML" : "MS Word 97");
        });
        return folder_.take("written");
    }

private:
    bool is_package_;
    ExchangeFolder folder_;
    Handle<OpenDocument> file_;
    int pictures_ = 0;
};

} // namespace

std::unique_ptr<TextDocument> open_document(const Surroundings& around, TextView path)
{
    return ooxml::open_document(around.files, around.printer, path, [&] {
        return std::make_unique<OfficeDocument>(around.office, around.files.read(path));
    });
}

} // namespace tarvik::libreoffice
