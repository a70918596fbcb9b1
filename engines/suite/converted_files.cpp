#include "engines/suite/converted_files.h"

#include "engines/libreoffice/exchange_folder.h"
#include "engines/libreoffice/required_kind.h"
#include "engines/packages/damage.h"

namespace tarvik::windows {

namespace {

struct Format {
    const char* filter;    ///< the name that the suite's engine calls it by
    const char* extension; ///< the suite refuses a file whose name does not say what is in it
};
constexpr Format old_workbook{"MS Excel 97", ".xls"}, workbook{"Calc MS Excel 2007 XML", ".xlsx"},
    macro_workbook{"Calc MS Excel 2007 VBA XML", ".xlsm"}, old_document{"MS Word 97", ".doc"},
    document{"MS Word 2007 XML", ".docx"}, macro_document{"MS Word 2007 XML VBA", ".docm"};

const Format& package_of(bool is_workbook, bool with_macros)
{
    if (is_workbook) return with_macros ? macro_workbook : workbook;
    return with_macros ? macro_document : document;
}

std::string converted(libreoffice::LibreOffice& suite, std::string_view bytes, const Format& from, const Format& to)
{
    const libreoffice::ExchangeFolder folder(suite.folder());
    const std::string written = std::string("written") + to.extension;
    auto file = suite.open(folder.put(std::string("read") + from.extension, bytes));
    if (!file) throw ooxml::Damage(libreoffice::suite_title() + U" 不能打开它。");
    file.call([&](libreoffice::OpenFile& opened) { opened.store(folder.place(written), to.filter); });
    file.close(); // the suite holds open what it wrote
    return folder.take(written);
}

} // namespace

std::string ConvertedFiles::naming(TextView path, const std::function<std::string()>& convert) const
{
    return ooxml::naming_file(is_workbook() ? U"工作簿" : U"文档", path, convert);
}

std::string ConvertedFiles::read(TextView path) const
{
    auto bytes = files_.read(path);
    const auto kind = file_kind(bytes);
    if (kind != FileKind::Workbook && kind != FileKind::Document) return bytes;
    return naming(path, [&] {
        libreoffice::require_kind(bytes, kind_);
        return converted(suite_, bytes, is_workbook() ? old_workbook : old_document,
                         package_of(is_workbook(), has_macros(bytes)));
    });
}

void ConvertedFiles::replace(TextView path, std::string_view bytes)
{
    if (is_workbook() && !lower(path.str()).ends_with(U".xls")) return files_.replace(path, bytes);
    files_.replace(path, naming(path, [&] {
                       return converted(suite_, bytes, package_of(is_workbook(), has_macros(bytes)),
                                        is_workbook() ? old_workbook : old_document);
                   }));
}

} // namespace tarvik::windows
