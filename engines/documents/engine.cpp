#include "engines/documents/engine.h"

#include "engines/packages/package.h"
#include "engines/packages/temporary_folder.h"
#include "platform/files/system_paths.h"

namespace tarvik {

namespace ooxml {

namespace {

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
