#pragma once

#include "designer/design/design.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {

/// A clerk with a design, a list of marks in the open document, and a folder of workbooks d:\src\.
class DesignedRun : public ReportDesk {
protected:
    DesignedRun()
    {
        typed_folder = U"d:\\out";
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
    void store_design(const char* file) { started.installation.write(file, encode(design_line(form4))); }
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
    void command(TextView text, std::deque<Answer> replies = {})
    {
        press_enter(text, std::move(replies));
        EXPECT_TRUE(started.dialogs.replies.empty()) << "a question did not come";
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
};

} // namespace tarvik::test
