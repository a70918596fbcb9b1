#include "engines/documents/engine.h"

#include "engines/documents/document_model.h"
#include "engines/packages/package_cache.h"
#include "engines/packages/temporary_folder.h"
#include "platform/files/file_name.h"

namespace tarvik {

namespace ooxml {

namespace {

/// A document opened from a file. Failures name the file: the picture's where that is at fault, else the document's.
class OoxmlTextDocument final : public TextDocument {
public:
    OoxmlTextDocument(Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package,
                      FileOfPackage file_of)
        : files_(files), printer_(printer), path_(std::move(path)), file_of_(std::move(file_of)),
          model_(naming_file(U"文档", path_, [&] { return std::make_unique<DocumentModel>(std::move(package)); }))
    {
    }

    void set_cell_text(int row, int column, TextView text) override
    {
        naming_file(U"文档", path_, [&] { model().set_cell_text(row, column, text); });
        is_saved_ = false;
    }

    void add_picture(int row, int column, TextView path) override
    {
        auto& document = model();
        auto file = read_picture_file(files_, path);
        naming_file(U"文档", path_, [&] {
            document.add_picture(row, column, file.picture, std::move(file.contents), split_path(path).name);
        });
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

    void close() override { model_.reset(); }

private:
    DocumentModel& model() const
    {
        if (!model_) throw Failure(U"文档“" + path_ + U"”已经关闭。");
        return *model_;
    }

    std::string packed() const
    {
        return naming_file(U"文档", path_, [this] { return file_of_(model().pack()); });
    }

    Files& files_;
    Printer& printer_;
    Text path_;
    FileOfPackage file_of_;
    std::unique_ptr<DocumentModel> model_; // none once the document is closed
    bool is_saved_ = true;                 // the file holds what the model does
};

} // namespace

std::unique_ptr<TextDocument> open_document(Files& files, Printer& printer, Text path,
                                            std::shared_ptr<const Package> package, FileOfPackage file_of)
{
    return std::make_unique<OoxmlTextDocument>(files, printer, std::move(path), std::move(package), std::move(file_of));
}

} // namespace ooxml

OoxmlDocuments::OoxmlDocuments(Files& files, Printer& printer)
    : files_(files), printer_(printer), cache_(std::make_shared<ooxml::PackageCache>(files))
{
}

OoxmlDocuments::~OoxmlDocuments() = default;

std::unique_ptr<DocumentApplication> OoxmlDocuments::create()
{
    return std::make_unique<ooxml::HiddenApplication<DocumentApplication, TextDocument>>(
        [&files = files_, &printer = printer_, cache = cache_](TextView path) {
            auto package = ooxml::naming_file(U"文档", path, [&] { return cache->open(path); });
            return ooxml::open_document(files, printer, path.str(), std::move(package));
        });
}

} // namespace tarvik
