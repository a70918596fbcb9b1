#pragma once

#include "events/events.h"
#include "platform/text/code_page.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {

/// A clerk with a design, a list of marks in the open document, and a folder of workbooks d:\src\.
class DesignedRun : public testing::Test {
protected:
    RecordedOffice office;
    TestProgram started{&office};
    Program& program = started.program;
    Form1& form1 = program.form1;
    Form4& form4 = program.form4;

    DesignedRun()
    {
        for (TextBox* box : form4.design_boxes()) box->set_text(U"-1");
        form4.Text3.set_text(U"班");
        form4.Text4.set_text(U"1");
        std::filesystem::create_directory(started.drive_d.path() / "src");
        for (const char* name : {"designerA.xlsx", "designerB.xlsx"}) started.installation.write(name, "x");
    }

    void boxes(ControlArray<TextBox>& array, std::initializer_list<std::pair<int, Text>> texts)
    {
        for (const auto& [index, text] : texts) array[index].set_text(text);
    }
    /// The boxes as they stand become the parameter file.
    void store_design(const char* file)
    {
        Text line;
        for (const TextBox* box : form4.design_boxes()) line += box->text() + U"*";
        line.pop_back();
        started.installation.write(file, encode(line + U"\r\n"));
    }
    /// The same lines in the open document and in the report that a run reads.
    void marks(const char* report, const Text& lines)
    {
        started.installation.write(report, encode(lines));
        started.open_text(lines);
    }
    Text source_file(const std::string& name, Cells cells = {})
    {
        started.drive_d.write("src/" + name, "x");
        const Text path = U"d:\\src\\" + from_utf8(name);
        office.files[path] = std::move(cells);
        return path;
    }

    void press_enter(TextView command, std::initializer_list<Answer> replies = {})
    {
        form1.query_box().set_text(command.str());
        started.dialogs.inputs = {U"d:\\out"};
        started.dialogs.replies = replies;
        Event event{EventKind::KeyPress, form1.query_box()};
        event.key = U'\r';
        dispatch(program, event);
        EXPECT_TRUE(started.dialogs.replies.empty()) << "a question did not come";
    }
    void tick(Timer& timer)
    {
        Event event{EventKind::Tick, timer};
        dispatch(program, event);
    }
    void run(Timer& timer)
    {
        for (int guard = 0; timer.enabled() && guard < 1000; ++guard) tick(timer);
        EXPECT_FALSE(timer.enabled());
    }

    /// What the user was told since the last call, questions aside.
    std::vector<Text> told()
    {
        std::vector<Text> texts;
        for (const Message& message : started.dialogs.messages)
            if (message.buttons == Buttons::OK) texts.push_back(message.text);
        started.dialogs.messages.clear();
        return texts;
    }
    /// What a file holds: "row,column=text" in the order of the cells.
    std::string held(const Text& path) const
    {
        if (!office.files.contains(path)) return "(no file)";
        std::string text;
        for (const auto& [place, value] : office.files.at(path))
            text += std::to_string(place.first) + "," + std::to_string(place.second) + "=" +
                    to_utf8(std::get<Text>(value)) + " ";
        return text;
    }
    void expect_idle()
    {
        EXPECT_EQ(office.open_applications, 0);
        EXPECT_TRUE(form1.xlApp == nullptr && form1.xlBook == nullptr && form1.xlSheet == nullptr);
        EXPECT_TRUE(form1.batchgate);
        for (const Timer* timer : form1.batch_timers()) EXPECT_FALSE(timer->enabled());
    }
};

} // namespace tarvik::test
