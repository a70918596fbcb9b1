#pragma once

#include "reading/reading.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {

/// A program with a document, and the buttons that turn its pages.
class ReadingDesk : public ::testing::Test {
protected:
    TestProgram test;
    Program& program = test.program;
    Form1& form1 = test.program.form1;

    void open(std::string_view bytes)
    {
        test.drive_d.write("book.txt", bytes);
        test.dialogs.files = {U"d:\\book.txt"};
        Command1_Click(program, 0);
    }
    std::string press(int button)
    {
        Command2_Click(program, button);
        std::string told;
        for (const std::string& message : test.dialogs.take_messages())
            told += message.substr(0, message.find('\r')) + "/";
        return told + to_utf8(form1.RichTextBox1.text()) + "/" + to_utf8(form1.page_box().text());
    }
};

} // namespace tarvik::test
