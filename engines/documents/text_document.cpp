#include "engines/documents/text_document.h"

#include "engines/documents/picture_file.h"
#include "engines/packages/temporary_folder.h"
#include "platform/files/file_name.h"

namespace tarvik::ooxml {

OoxmlTextDocument::OoxmlTextDocument(Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package)
    : files_(files), printer_(printer), path_(std::move(path)),
      model_(naming_file(U"文档", path_, [&] { return std::make_unique<DocumentModel>(std::move(package)); }))
{
}

OoxmlTextDocument::~OoxmlTextDocument() = default;

DocumentModel& OoxmlTextDocument::model() const
{
    if (!model_) throw Failure(U"文档“" + path_ + U"”已经关闭。");
    return *model_;
}

void OoxmlTextDocument::set_cell_text(int row, int column, TextView text)
{
    naming_file(U"文档", path_, [&] { model().set_cell_text(row, column, text); });
    is_saved_ = false;
}

void OoxmlTextDocument::add_picture(int row, int column, TextView path)
{
    auto& document = model();
    auto file = read_picture_file(files_, path);
    naming_file(U"文档", path_, [&] {
        document.add_picture(row, column, file.picture, std::move(file.contents), split_path(path).name);
    });
    is_saved_ = false;
}

const std::string& OoxmlTextDocument::packed() const
{
    return naming_file(U"文档", path_, [this]() -> const std::string& { return model().pack(); });
}

void OoxmlTextDocument::save_as(TextView path)
{
    files_.replace(path, packed());
    path_ = path.str();
    is_saved_ = true;
}

void OoxmlTextDocument::print_out()
{
    const auto name = split_path(path_).name;
    if (is_saved_) return printer_.print(files_.resolve(path_), name);
    print_copy(files_, printer_, name, packed());
}

void OoxmlTextDocument::close()
{
    model_.reset();
}

} // namespace tarvik::ooxml
