#include "reading/reading.h"

#include "platform/text/code_page.h"
#include "platform/text/text_index.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

namespace tarvik {

namespace {

constexpr std::u32string_view table_title = U"Tarvik 计算 查寻存储";
constexpr std::u32string_view saving_title = U"Tarvik 计算 之 查寻存储";
constexpr std::u32string_view saved_title = U"Tarvik 计算 之 查寻&存储";
constexpr std::u32string_view go_on = U"\r\n是否继续？";

/// A new file beside the one that the user chose, when that may be written; it takes its place when it is complete.
std::unique_ptr<ReplacementFile> choose_file(Program& program)
{
    const auto path = program.platform.dialogs.save_file(text_files);
    if (!path || path->empty()) return {};
    Files& files = program.platform.files;
    if (files.file_exists(*path) &&
        ask(program, *path + U"已经存在。\r\n要替换她吗？", saving_title, Buttons::YesNo) != Answer::Yes)
        return {};
    return files.begin_replacement(*path);
}

// Not every way of saving has a box that tells of it.
void take_place(Program& program, ReplacementFile& chosen)
{
    chosen.take_place();
    program.notice = U"已保存：" + chosen.shown_path();
}

/// Writes the pane's text in small letters as one line.
void save_pane(Program& program, const Pane& pane)
{
    const auto chosen = choose_file(program);
    if (!chosen) return;
    std::string bytes;
    pane.content().for_each_part([&](TextView part) {
        bytes.clear();
        encode_to(lower(part), bytes);
        chosen->write(bytes);
    });
    chosen->write("\r\n");
    take_place(program, *chosen);
}

/// Writes the arrays side by side, each result as a line, and leaves the file complete beside its target.
void write_arrays(Program& program, ReplacementFile& file, std::span<TextArray* const> arrays)
{
    constexpr std::size_t at_once = 1 << 20;
    const auto last = std::min(static_cast<std::size_t>(program.form1.resultcount), arrays.front()->last());
    for (TextArray* results : arrays) empty_earlier_copies(*results, last);
    std::string bytes;
    for (std::size_t i = 0; i <= last; ++i) {
        for (const TextArray* results : arrays) {
            const TextView result = results->get(i);
            if (result.empty()) continue;
            encode_to(result, bytes);
            bytes += "\r\n";
        }
        if (bytes.size() < at_once) continue;
        file.write(bytes);
        bytes.clear();
    }
    file.write(bytes);
    file.complete();
}

void save_table(Program& program)
{
    tell(program, U"将要保存的是excel转换的数据库文件的查寻结果；" + TextView(go_on), table_title);
    Pane& pane = program.form1.RichTextBox3;
    pane.set_visible(true);
    pane.append(U"\r\n");
    save_pane(program, pane);
}

void save_results_of_queries(Program& program)
{
    const Form1& form1 = program.form1;
    Module1& module1 = program.module1;
    const bool of_documents = no_option_selected(form1);
    const struct {
        bool active;
        std::u32string_view done; ///< of a mode that reports the end of the save
        std::vector<TextArray*> arrays;
    } modes[] = {
        {of_documents, {}, {&module1.hits}},
        {form1.Option1.value(), U"查寻汉语词典的查寻结果：", {&module1.cnhits}},
        {form1.Option2.value(), U"查寻牛津英语的查寻结果：", {&module1.zhhits, &module1.enhits}},
        {form1.Option3.value(), U"查寻文件的查寻结果：", {&module1.filehits}},
    };
    const TextView found =
        of_documents ? U"将要保存的是文本文件的查寻结果；" : U"将要保存的是查寻文件、英汉词典、汉语词典的查寻结果；";
    tell(program, found.str() + TextView(go_on), saving_title);
    const bool all = ask(program, U"请选择，是：表示保存查寻到的所有结果。\r\n否：表示只保存当前显示的查寻结果。",
                         saving_title, Buttons::YesNo) == Answer::Yes;
    if (!all) return save_pane(program, program.form1.RichTextBox1);
    const auto chosen = choose_file(program);
    if (!chosen) return;
    for (const auto& mode : modes) {
        if (!mode.active) continue;
        write_arrays(program, *chosen, mode.arrays);
        if (!mode.done.empty()) tell(program, Text(mode.done) + U"\r\n保存完毕！", saved_title, Icon::Information);
        take_place(program, *chosen);
    }
}

} // namespace

void empty_earlier_copies(TextArray& results, std::size_t last)
{
    TextIndex seen;
    for (std::size_t i = last + 1; i-- > 0;) {
        const TextView result = results.get(i);
        if (result.empty()) continue;
        if (!seen.insert(result).is_new) results.clear(i, i);
    }
}

void save_results(Program& program)
{
    Form1& form1 = program.form1;
    form1.RichTextBox3.set_visible(false);
    form1.RichTextBox1.set_selection_colour(0);
    try {
        if (form1.dbresult && no_option_selected(form1)) save_table(program);
        else save_results_of_queries(program);
    } catch (const Failure& failure) { // no box tells of it
        program.notice = U"没有保存：" + failure.message();
    }
}

} // namespace tarvik
