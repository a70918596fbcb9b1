#pragma once

#include "mainwindow/form1.h"
#include "platform/files/files.h"

namespace tarvik {

/// The files of a program: every access is one of the files behind it, and `fso` and `textstream` of the main window
/// keep what the accesses have left standing: a file-system object each, a text stream those that read or write and do
/// not fail.
class NotedFiles final : public Files {
public:
    NotedFiles(Files& files, Form1& form1) : files_(files), form1_(form1) {}

    Text installation_folder() const override { return files_.installation_folder(); }
    std::filesystem::path resolve(TextView path) const override { return files_.resolve(path); }
    bool file_exists(TextView path) const override { return noted().file_exists(path); }
    bool folder_exists(TextView path) const override { return noted().folder_exists(path); }
    FileStamp stamp(TextView path) const override { return noted().stamp(path); }
    std::string read(TextView path) const override;
    ByteSource open_for_input(TextView path) const override;
    void replace(TextView path, std::string_view bytes) override;
    std::unique_ptr<ReplacementFile> begin_replacement(TextView path) override;
    std::unique_ptr<OutputFile> open_for_output(TextView path) override;
    void append(TextView path, std::string_view bytes) override;
    void create_folder(TextView path) override { noted().create_folder(path); }
    bool move_file(TextView from, TextView to) override { return noted().move_file(from, to); }
    std::vector<Text> file_names(TextView folder) const override { return noted().file_names(folder); }

private:
    Files& noted() const
    {
        form1_.fso = true;
        return files_;
    }

    Files& files_;
    Form1& form1_;
};

} // namespace tarvik
