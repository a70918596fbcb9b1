#include "mainwindow/noted_files.h"

namespace tarvik {

std::string NotedFiles::read(TextView path) const
{
    std::string bytes = noted().read(path);
    form1_.textstream = true;
    return bytes;
}

ByteSource NotedFiles::open_for_input(TextView path) const
{
    ByteSource source = noted().open_for_input(path);
    form1_.textstream = true;
    return source;
}

void NotedFiles::replace(TextView path, std::string_view bytes)
{
    noted().replace(path, bytes);
    form1_.textstream = true;
}

std::unique_ptr<ReplacementFile> NotedFiles::begin_replacement(TextView path)
{
    auto file = noted().begin_replacement(path);
    form1_.textstream = true;
    return file;
}

std::unique_ptr<OutputFile> NotedFiles::open_for_output(TextView path)
{
    auto file = noted().open_for_output(path);
    form1_.textstream = true;
    return file;
}

void NotedFiles::append(TextView path, std::string_view bytes)
{
    noted().append(path, bytes);
    form1_.textstream = true;
}

} // namespace tarvik
