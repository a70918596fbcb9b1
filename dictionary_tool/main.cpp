#include "dictionary_tool/dictionary_files.h"
#include "platform/failure.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/program_start.h"

#include <iostream>
#include <span>

namespace {

using namespace tarvik;

constexpr const char* usage = "用法：tarvik-dictionary [--chinese] [--replace] 词典文件 目标文件夹\n"
                              "  词典文件    StarDict 的 .ifo 文件，或 dictd 的 .index 文件；其余文件在它旁边\n"
                              "  目标文件夹  写入词典文件的文件夹，例如安装目录\n"
                              "  --chinese   全部写入“现代汉语词典.txt”；否则写入“牛津字典”各文件\n"
                              "  --replace   替换目标文件夹中已有的词典文件\n"
                              "  --help      显示这段说明\n"
                              "  --version   显示版本\n";

struct Request {
    DictionaryUse use = DictionaryUse::English;
    bool replace = false;
    std::filesystem::path source, target;
};

bool parse(std::span<const std::string> words, Request& request)
{
    for (const std::string& word : words) {
        if (word == "--chinese") request.use = DictionaryUse::Chinese;
        else if (word == "--replace") request.replace = true;
        else if (word.starts_with("--") || !request.target.empty()) return false;
        else (request.source.empty() ? request.source : request.target) = path_of_utf8(word);
    }
    return !request.target.empty();
}

void convert(const Request& request)
{
    std::filesystem::create_directories(request.target);
    DictionaryFiles dictionary(request.use, text_of(request.source.stem()));
    std::size_t entries = 0, left_out = 0;
    const SourceSummary summary = read_dictionary_source(
        request.source, [&](const SourceEntry& entry) { dictionary.add(entry) ? ++entries : ++left_out; });

    Files files(request.target);
    for (const auto& [name, bytes] : dictionary.bytes())
        if (!request.replace && files.file_exists(name))
            throw Failure(U"目标文件夹中已有“" + TextView(name) + U"”；要替换，请加 --replace");
    for (const auto& [name, bytes] : dictionary.bytes()) {
        files.replace(name, bytes);
        std::cout << to_utf8(name) << "  " << bytes.size() << '\n';
    }
    std::cout << to_utf8(summary.name) << "：" << entries << " 个词条\n";
    if (left_out + summary.damaged > 0)
        std::cout << "略去 " << left_out + summary.damaged << " 个：没有词头、词头过长或索引已损坏\n";
}

} // namespace

int main(int count, char** words)
{
    Request request;
    const std::vector<std::string> arguments = start_program(count, words);
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "--version")) {
        if (arguments[0] == "--help") std::cout << usage;
        else std::cout << "tarvik-dictionary " << version() << '\n';
        return 0;
    }
    if (!parse(arguments, request)) {
        std::cerr << usage;
        return 2;
    }
    try {
        convert(request);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "tarvik-dictionary: " << error.what() << '\n';
        return 1;
    }
}
