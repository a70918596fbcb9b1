#include "engines/packages/package.h"
#include "engines/spreadsheets/engine.h"
#include "tests/support/desk.h"
#include "tests/support/places.h"

#include <algorithm>

namespace tarvik::test {
namespace {

/// The embedded spreadsheets over the program's own files.
class EnginesOnFiles final : public OfficeEngines {
public:
    FileOpener<Workbook> opener; ///< to be set when the program's files stand
    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override
    {
        return HiddenEngines({opener, {}}).create_spreadsheet();
    }
    std::unique_ptr<DocumentApplication> create_document() override { return nullptr; }
};

class Preview : public testing::Test, protected Desk<EnginesOnFiles> {
protected:
    Preview()
    {
        office.opener = ooxml_workbooks(started.files, started.printer);
        std::filesystem::copy(std::filesystem::path(source_folder()) / "installation/designerA.xlsx",
                              started.installation.path() / "designerA.xlsx");
        load_design_texts(form4);
        form4.Text3.set_text(U"班");
        set(form4.Text1, {{0, 3}, {1, 2}, {2, 3}, {3, 7}, {28, 7}, {29, 1}});
        set(form4.Text2, {{1, 1}, {3, 2}, {29, 3}});
    }
    static void set(ControlArray<TextBox>& boxes, std::initializer_list<std::pair<int, int>> numbers)
    {
        for (const auto& [index, value] : numbers) boxes[index].set_text(number_text(value));
    }
    void press(Answer answer)
    {
        started.dialogs.replies = {answer};
        happen(EventKind::Click, form4.Command3);
    }
    const PicturedCell& cell(int row, int column)
    {
        const auto& cells = form4.Preview.contents().picture.cells;
        const auto found = std::ranges::find_if(
            cells, [&](const PicturedCell& each) { return each.row == row && each.column == column; });
        if (found == cells.end()) throw std::out_of_range("no such cell");
        return *found;
    }
};

TEST_F(Preview, shows_the_first_keys_report_and_writes_no_file)
{
    started.open_text(U"s1\t一班\tmath\r\ns2\t二班\tart\r\ns1\t一班\tmusic\r\n");
    const std::string before = started.installation.read("designerA.xlsx");
    program.module1.suf.set_cell(0, 1, U"mine");
    press(Answer::Yes);
    EXPECT_TRUE(form4.Preview.visible());
    EXPECT_EQ(form4.Preview.caption(), U"预览：designerA.xlsx ← s1");
    EXPECT_EQ(to_utf8(cell(3, 2).text), "S1");
    EXPECT_EQ(to_utf8(cell(7, 1).text), "MATH");
    EXPECT_EQ(to_utf8(cell(8, 1).text), "MUSIC");
    // Column 7 of row 3 lies in a merged range, whose first cell takes the text.
    EXPECT_EQ(to_utf8(cell(3, 6).text), to_utf8(U"一班"));
    EXPECT_EQ(cell(3, 6).columns, 2);
    std::vector<std::string> written;
    for (const WrittenCell& each : form4.Preview.contents().written)
        written.push_back(std::to_string(each.row) + "," + std::to_string(each.column) + to_utf8(each.design_row));
    EXPECT_EQ(written, (std::vector<std::string>{"3,2静态 第1行", "3,6静态 第2行", "7,1动态 第1行", "8,1动态 第1行"}));

    EXPECT_EQ(started.installation.read("designerA.xlsx"), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(started.installation.path()), {}), 1);
    EXPECT_EQ(program.module1.suf.cell(0, 1), TextView(U"mine"));
    EXPECT_EQ(program.form1.xlApp, nullptr);
    started.dialogs.replies = {Answer::OK};
    happen(EventKind::Close, form4.window);
    EXPECT_FALSE(form4.Preview.visible());
}

TEST_F(Preview, reads_the_look_of_the_template)
{
    press(Answer::Yes);
    const SheetPicture& picture = form4.Preview.contents().picture;
    EXPECT_TRUE(form4.Preview.contents().written.empty()) << "the document has no rows";
    EXPECT_EQ(picture.widths.size(), 7U);
    EXPECT_NEAR(picture.widths[0], (13 * 7 + 5) * 0.75, 0.01);
    EXPECT_EQ(picture.heights[0], 36);
    const PicturedCell& title = cell(1, 1);
    EXPECT_EQ(title.columns, 7);
    EXPECT_TRUE(title.look.bold);
    EXPECT_EQ(title.look.points, 20);
    EXPECT_EQ(title.look.colour, 0x2E5E4EU);
    EXPECT_EQ(title.look.alignment, AlignmentLook::Centre);
    EXPECT_EQ(cell(6, 1).look.fill, std::optional<SheetColour>(0x2E5E4E));
    EXPECT_EQ(cell(6, 1).look.left.width, 1);
    EXPECT_FALSE(cell(7, 1).look.fill.has_value());
}

TEST_F(Preview, a_cell_that_cannot_be_calculated_keeps_no_other_from_being_seen)
{
    const ooxml::Package sample_package(started.installation.read("designerA.xlsx"));
    const std::string name = "xl/worksheets/sheet1.xml";
    auto sheet = sample_package.part(name);
    sheet.insert(sheet.find("</sheetData>"),
                 "<row r=\"40\"><c r=\"A40\"><f>NOSUCH(1)</f></c><c r=\"B40\"><f>2*3</f></c></row>");
    started.installation.write("designerA.xlsx", sample_package.with({{{name, sheet}}, {}}));
    press(Answer::Yes);
    EXPECT_EQ(to_utf8(cell(40, 1).text), "无法计算");
    EXPECT_EQ(to_utf8(cell(40, 2).text), "6");
}

TEST_F(Preview, a_picked_cell_goes_into_the_pair_that_had_the_focus)
{
    press(Answer::Yes);
    form4.Preview.picked = {19, 2};
    happen(EventKind::Click, form4.Preview);
    EXPECT_EQ(form4.Text1[0].text(), U"3") << "nobody was in a box";
    happen(EventKind::GotFocus, form4.Text2[5]);
    happen(EventKind::Click, form4.Preview);
    EXPECT_EQ(form4.Text1[4].text(), U"19");
    EXPECT_EQ(form4.Text1[5].text(), U"2");
    happen(EventKind::GotFocus, form4.Text3);
    form4.Preview.picked = {1, 1};
    happen(EventKind::Click, form4.Preview);
    EXPECT_EQ(form4.Text1[4].text(), U"19");
}

TEST_F(Preview, cancel_and_what_is_missing_show_nothing)
{
    press(Answer::Cancel);
    EXPECT_FALSE(form4.Preview.visible());
    press(Answer::No);
    EXPECT_NE(started.dialogs.take_messages().back().find("designerB.xlsx"), std::string::npos);
    form4.Text4.set_text(U"x");
    press(Answer::Yes);
    EXPECT_FALSE(form4.Preview.visible());
    EXPECT_EQ(program.form1.xlApp, nullptr);
}

} // namespace
} // namespace tarvik::test
