#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/file_kind.h"
#include "platform/files/files.h"

namespace tarvik::windows {

/// The files behind it, with workbooks or documents of the older formats as packages: the suite converts them when they
/// are read, and what is written in their place back again. Everything else passes as it is. What the suite cannot do
/// is a Failure that names the file.
class ConvertedFiles final : public Files {
public:
    /// `kind` is Workbook, which is written as its name's extension says, or Document, which is always written in the
    /// older format: it was opened in it.
    ConvertedFiles(Files& files, libreoffice::LibreOffice& suite, FileKind kind)
        : files_(files), suite_(suite), kind_(kind)
    {
    }

    Text installation_folder() const override { return files_.installation_folder(); }
    std::filesystem::path resolve(TextView path) const override { return files_.resolve(path); }
    bool file_exists(TextView path) const override { return files_.file_exists(path); }
    bool folder_exists(TextView path) const override { return files_.folder_exists(path); }
    FileStamp stamp(TextView path) const override { return files_.stamp(path); }
    std::string read(TextView path) const override;
    ByteSource open_for_input(TextView path) const override { return files_.open_for_input(path); }
    void replace(TextView path, std::string_view bytes) override;
    bool stores_xls() const override { return true; }
    std::unique_ptr<ReplacementFile> begin_replacement(TextView path) override
    {
        return files_.begin_replacement(path);
    }
    std::unique_ptr<OutputFile> open_for_output(TextView path) override { return files_.open_for_output(path); }
    void append(TextView path, std::string_view bytes) override { files_.append(path, bytes); }
    void create_folder(TextView path) override { files_.create_folder(path); }
    bool move_file(TextView from, TextView to) override { return files_.move_file(from, to); }
    std::vector<Text> file_names(TextView folder) const override { return files_.file_names(folder); }

private:
    bool is_workbook() const noexcept { return kind_ == FileKind::Workbook; }
    std::string naming(TextView path, const std::function<std::string()>& convert) const;

    Files& files_;
    libreoffice::LibreOffice& suite_;
    FileKind kind_;
};

} // namespace tarvik::windows
