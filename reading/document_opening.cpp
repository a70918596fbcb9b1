#include "reading/document_opening.h"

#include "platform/text/code_page.h"
#include "reading/paging.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr double last_page_emptied = 100'000;

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

} // namespace tarvik
