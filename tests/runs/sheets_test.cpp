#include "runs/sheets.h"

#include "platform/files/paths.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

class SheetPath : public testing::Test {
protected:
    TestProgram desk;
    SheetPath()
    {
        desk.form1().outfolder = U"d:\\out\\";
        std::filesystem::create_directory(desk.drive_d.path() / "out");
    }

    std::string path(const SheetName& name) { return to_utf8(sheet_path(desk.program, name)); }
    static std::size_t size_of_name(const std::string& path) { return name_size(split_path(from_utf8(path)).name); }
};

TEST_F(SheetPath, joins_the_folder_text_and_the_parts)
{
    EXPECT_EQ(path({U"a.b.", {U"1", U""}}), "d:\\out\\ab\\ab-1-.xlsx");
    EXPECT_EQ(path({U"a", {}, U"_汇总"}), "d:\\out\\a\\a_汇总.xlsx");
    EXPECT_EQ(path({U"a/..", {U"../x"}, {}, U".doc"}), "d:\\out\\a_\\a_-.._x.doc");
    EXPECT_EQ(path({U"", {U"a\u007fb\u0085c\u202ecod\u2066d\u2028e"}}), "d:\\out\\-a_b_c_cod_d\u2028e.xlsx");
    EXPECT_EQ(path({U"..", {U"1"}}), "d:\\out\\-1.xlsx") << "without a folder text the sheet lies in outfolder itself";
    EXPECT_EQ(path({U"", {}, U"_汇总"}), "d:\\out\\_汇总.xlsx");
    EXPECT_TRUE(std::filesystem::is_directory(desk.drive_d.path() / "out/ab"));
}

TEST_F(SheetPath, cuts_the_folder_text_before_what_tells_sheets_apart)
{
    const Text receipt(60, U'9');
    const std::string cut = path({Text(100, U'中'), {receipt, U"rn"}});
    EXPECT_LE(size_of_name(cut), longest_name);
    EXPECT_GT(size_of_name(cut), longest_name - name_size(U'中')) << "as much as fits stays";
    EXPECT_TRUE(cut.ends_with("-" + to_utf8(receipt) + "-rn.xlsx"));
    const std::string all_tail = path({U"head", {Text(300, U'x')}});
    EXPECT_EQ(size_of_name(all_tail), longest_name);
    EXPECT_TRUE(all_tail.ends_with("x.xlsx"));
    EXPECT_EQ(size_of_name(path({Text(39, U'a'), {Text(longest_name - 45, U'b')}})), longest_name)
        << "what fits is not cut";
}

TEST_F(SheetPath, keeps_names_of_one_run_apart)
{
    EXPECT_EQ(path({U"a", {U"80001/1"}}), "d:\\out\\a\\a-80001_1.xlsx");
    EXPECT_EQ(path({U"a", {U"80001:1"}}), "d:\\out\\a\\a-80001_1 (2).xlsx");
    EXPECT_EQ(path({U"a", {U"80001/1"}}), "d:\\out\\a\\a-80001_1.xlsx") << "the same name replaces the older sheet";
    EXPECT_EQ(path({U"a", {U"80001*1"}}), "d:\\out\\a\\a-80001_1 (3).xlsx");
    EXPECT_EQ(path({U"a", {U"k"}}), "d:\\out\\a\\a-k.xlsx");
    EXPECT_EQ(path({U"a", {U"K"}}), "d:\\out\\a\\a-K (2).xlsx") << "some disks take both for one";
    const Text same(300, U'x');
    EXPECT_NE(path({U"a", {same + U"1"}}), path({U"a", {same + U"2"}}));
    EXPECT_EQ(to_utf8(plain_sheet_path(desk.program, U"K/1")), "d:\\out\\K_1");
    EXPECT_EQ(to_utf8(plain_sheet_path(desk.program, U"K:1")), "d:\\out\\K_1 (2)");
    EXPECT_EQ(to_utf8(plain_sheet_path(desk.program, U".a/1")), "d:\\out\\.a_1");
    EXPECT_EQ(to_utf8(plain_sheet_path(desk.program, U".a:1")), "d:\\out\\.a_1 (2)") << "no extension";
    for (const Text& long_name :
         {Text(300, U'k'), Text(300, U'k') + U"1", U"a." + Text(300, U'b'), U"a." + Text(301, U'b')})
        EXPECT_EQ(size_of_name(to_utf8(plain_sheet_path(desk.program, long_name))), longest_name - 5)
            << "room for an extension that the saving adds, behind a number too";
}

std::vector<Text> hostile_fields()
{
    std::vector<Text> fields(1);
    for (const char32_t character : std::u32string_view(
             U"a/b\\c|a:b*c|a_b_c|../../x|..\\..\\x|..|.|...| |/escaped/x|\\escaped|d:\\escaped\\x|d:escaped|"
             U"\\\\server\\share|<>\"*?|__;__|CON|nul.txt|COM1.xlsx|LPT9|aux |name.|name |a\x1\x1f\x7f"
             U"b|a\x85\x2028\x202e"
             U"b|\xd800x|x\xdc00|\xffff|\x10ffff|e\x301|\xe9|$x|`x`|-rf|~|%n%s|.tarvik-1-2-3.tmp|3139.txt"))
        if (character == U'|') fields.emplace_back();
        else fields.back() += character;
    for (const char32_t endless : {U'x', U'长'})
        for (const char32_t end : {U'1', U'2'}) fields.push_back(Text(300, endless) + end);
    fields.emplace_back(U"a\0b", 3);
    return fields;
}

// Fields of reports that were never meant to become names of files and folders.
TEST_F(SheetPath, of_any_field_lies_below_the_output_folder_and_takes_no_other_one_s_place)
{
    desk.form1().outfolder = U"d:\\1\\2\\3\\4\\out\\"; // "..", four times over, stays on drive d
    const auto out = (desk.drive_d.path() / "1/2/3/4/out").make_preferred();
    std::filesystem::create_directories(out / "plain");
    std::size_t made = 0;
    const auto make = [&](const Text& path) {
        EXPECT_FALSE(desk.files.file_exists(path)) << to_utf8(path) << " is another's";
        desk.files.replace(path, "a sheet");
        ++made;
    };
    for (const Text& field : hostile_fields()) {
        make(sheet_path(desk.program, {field, {number_text(static_cast<double>(made))}}));
        make(sheet_path(desk.program, {field, {field}}));
        make(sheet_path(desk.program, {U"k", {field}, U"_汇总", U".doc"}));
    }
    desk.form1().outfolder += U"plain\\";
    for (const Text& field : hostile_fields()) make(plain_sheet_path(desk.program, field));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(desk.drive_d.path())) {
        const Text name = text_of(entry.path().filename());
        EXPECT_EQ(name.find_first_of(U"\\:*?\"<>|\n\r\t\x1\x1f"), Text::npos) << entry.path();
        if (!entry.is_regular_file()) continue;
        EXPECT_TRUE(entry.path().string().starts_with(out.string())) << entry.path();
        --made;
    }
    EXPECT_EQ(made, 0U);
}

} // namespace
} // namespace tarvik::test
