#include "reading/reading.h"

#include "platform/text/code_page.h"
#include "reading/marking.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarvik {

namespace {

constexpr std::u32string_view paging_title = U"Tarvik 计算 之查寻";
constexpr std::u32string_view reading_title = U"Tarvik";
constexpr double last_page_emptied = 100'000;

bool document_is_open(Program& program)
{
    if (is_number(program.form1.page_box().text())) return true;
    tell(program, U"请读入文本文件！", paging_title);
    return false;
}

/// Characters per page, a fraction of one not counted; nothing when there is not even one.
std::optional<double> page_size(const Program& program)
{
    const double size = std::floor(number(program.form1.page_size_box().text()).value_or(0));
    if (size >= 1) return size;
    return std::nullopt;
}

bool can_be_cut(Program& program)
{
    if (page_size(program)) return true;
    tell(program, U"每页的字数应为大于 0 的数字，请修改后再翻页！", paging_title);
    return false;
}

void show_page(Program& program, double page)
{
    const TextArray& pages = program.module1.pages;
    if (!(page >= 0 && page <= static_cast<double>(pages.last())))
        throw Failure(U"没有第" + number_text(page) + U"页，请在页面框中修改页数！");
    program.form1.RichTextBox1.set_text(pages.get(static_cast<std::size_t>(page)));
    program.form1.pageno = page;
}

/// A fraction of a page does not count.
double page_in_box(const Program& program)
{
    return std::floor(leading_number(program.form1.page_box().text()));
}

/// Tells something around the number of the page shown.
void tell_page(Program& program, TextView before, TextView behind)
{
    tell(program, before.str() + TextView(number_text(program.form1.pageno)) + behind, reading_title);
}

void read_and_cut(Program& program, TextView path)
{
    Form1& form1 = program.form1;
    form1.RichTextBox1.set_visible(false);
    form1.RichTextBox2.set_visible(true);
    const ForeignText text = recognise_foreign([&] { return program.platform.files.open_for_input(path); });
    form1.RichTextBox2.set_content(PaneText(text.document.with_closing_line_end()));
    program.opened = {path.str(), text.encoding, text.lines_ended_in_lf};
    if (!cut_pages(program)) return;
    form1.page_box().set_text(number_text(form1.lastpage));
}

} // namespace

void open_document(Program& program)
{
    Form1& form1 = program.form1;
    form1.dbresult = false;
    form1.lastpage = std::min(form1.lastpage, last_page_emptied);
    program.module1.pages.clear(0, static_cast<std::size_t>(form1.lastpage));
    form1.RichTextBox3.set_visible(false);
    form1.pageno = 0;
    try {
        const auto path = program.platform.dialogs.open_file(text_files);
        if (path && !path->empty()) read_and_cut(program, *path);
    } catch (const Failure& failure) { // no box tells of it
        program.notice = U"没有打开：" + failure.message();
    }
}

bool cut_pages(Program& program)
{
    Form1& form1 = program.form1;
    const auto size = page_size(program);
    if (!size) return false;

    const Document& document = form1.RichTextBox2.document();
    const TextView text = document.text();
    const auto length = *size <= static_cast<double>(text.size()) ? static_cast<std::size_t>(*size) : text.size() + 1;
    const std::size_t full_pages = text.size() / length;
    form1.lastpage = 0;
    for (std::size_t page = 0; page <= full_pages; ++page) {
        form1.lastpage = static_cast<double>(page);
        program.module1.pages.set(page, text.substr(page * length, length), document.buffer());
    }
    return true;
}

void previous_page(Program& program)
{
    Form1& form1 = program.form1;
    if (!document_is_open(program) || !can_be_cut(program)) return;
    cut_pages(program);
    bring_up(form1, form1.RichTextBox1);
    if (form1.pageno >= 1) {
        show_page(program, page_in_box(program) - 1);
        if (form1.pageno == 0) tell_page(program, U"目前已到首页，第", U"页,\r\n请往右翻页，或在页面框中修改页数！");
    }
    form1.page_box().set_text(number_text(form1.pageno));
}

void next_page(Program& program)
{
    Form1& form1 = program.form1;
    const bool searches = form1.Option3.value();
    if (!document_is_open(program) || (!searches && !can_be_cut(program))) return;
    if (form1.page_box().text() == number_text(form1.lastpage)) {
        tell_page(program, U"开始阅读！这是第", U"页,\r\n如果要跳页，请在页面框中修改页数后，按下“▼”！");
        form1.page_box().set_text(U"-1");
    }
    if (searches) {
        search_pages(program);
        return;
    }
    cut_pages(program);
    bring_up(form1, form1.RichTextBox1);
    show_page(program, page_in_box(program) + 1);
    form1.page_box().set_text(number_text(form1.pageno));
    if (form1.pageno > form1.lastpage)
        tell_page(program, U"目前已经超出页面范围，已经跳到第", U"空页,\r\n请往左翻页，或在页面框中修改页数！");
}

void go_to_page(Program& program)
{
    Form1& form1 = program.form1;
    form1.pageno = page_in_box(program);
    if (form1.pageno > form1.lastpage) return;
    show_page(program, form1.pageno);
    if (!form1.RichTextBox1.empty()) mark_query(program, page_match_colour);
}

} // namespace tarvik
