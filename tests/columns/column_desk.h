#pragma once

#include "columns/columns.h"
#include "tests/support/test_program.h"

namespace tarvik::test {

/// A program with a document and the keys to work on it.
class ColumnDesk : public TestProgram {
public:
    /// Presses the keys in the query box; gives those that would reach it.
    std::string press(std::string_view keys)
    {
        std::string reached;
        for (const char key : keys) {
            bool eaten = false;
            column_keys(program, static_cast<unsigned char>(key), eaten);
            if (!eaten) reached += key;
        }
        return reached;
    }
    void make_table(TextView document, TextView needle = U"|")
    {
        open_text(document);
        form1().query_box().set_text(needle.str());
        press("\x1bq");
        dialogs.messages.clear();
    }
    std::vector<std::string> told_by(std::string_view keys, std::initializer_list<Answer> replies = {})
    {
        dialogs.replies = replies;
        program.scratch_failures.clear(); // an action of its own
        press(keys);
        return dialogs.take_messages();
    }
    std::string pane() { return to_utf8(form1().RichTextBox3.text()); }
    std::string box() { return to_utf8(form1().number_box().text()); }
};

} // namespace tarvik::test
