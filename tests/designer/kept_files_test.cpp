#include "platform/files/paths.h"
#include "tests/designer/designed_run.h"

namespace tarvik::test {
namespace {

class KeptFiles : public DesignedRun {
protected:
    void keep(const Text& lines, std::optional<Text> picked = U"d:\\src\\any.pdf")
    {
        started.open_text(lines);
        started.dialogs.files = {std::move(picked)};
        command(U"An keptfile");
    }
    bool stands(const std::string& name) const { return std::filesystem::exists(started.drive_d.path() / name); }
    std::string missing() const { return started.drive_d.read("out/nofile.txt"); }
};

TEST_F(KeptFiles, files_go_with_the_first_value_that_their_name_holds)
{
    program.form3.Text1[5].set_text(U"2");
    for (const char* name : {"Report-A1.pdf", "a1 b2.TXT", "c3.doc", "z$.txt", "zz d4.txt"}) source_file(name);
    std::filesystem::create_directory(started.drive_d.path() / "src" / "c3 folder");
    keep(U"x\tA1\r\nx\tB2\r\nx\t\r\nonly\r\ny\tA1\r\nx\t中文\r\nx\tc\r\nx\td4\r\n");
    EXPECT_EQ(told(), std::vector<Text>{U"它可以通过打开所有文件，是否包含有源数据表中某列的数组元素，"
                                        U"相当于在某个文件夹中同时建立了多个搜索条件！"});
    EXPECT_EQ(started.dialogs.filters, std::vector<Text>{U"所有文件*.*|*.*"});
    EXPECT_TRUE(stands("out/Report-A1.pdf") && stands("out/a1 b2.TXT") && stands("out/c3.doc"));
    EXPECT_TRUE(stands("src/zz d4.txt") && stands("src/z$.txt") && stands("src/c3 folder"));
    EXPECT_FALSE(stands("src/Report-A1.pdf"));
    EXPECT_EQ(missing(), "b2\r\na1\r\n\xD6\xD0\xCE\xC4\r\nd4\r\n");
    EXPECT_EQ(form1.window.caption(), form1.runtitle + U"    Complete 9:05:07→： OK !");
    EXPECT_TRUE(office.tasks.empty());
}

TEST_F(KeptFiles, no_file_takes_the_place_of_another)
{
    std::filesystem::create_directory(started.drive_d.path() / "out");
    started.drive_d.write("out/a1.pdf", "there before");
    started.drive_d.write("out/a1 (2).pdf", "this too");
    source_file("a1.pdf");
    keep(U"a1\r\n");
    EXPECT_EQ(started.drive_d.read("out/a1.pdf"), "there before");
    EXPECT_EQ(started.drive_d.read("out/a1 (3).pdf"), "x");
    EXPECT_FALSE(stands("src/a1.pdf"));

    // In the output folder itself the files are where they belong, for every value.
    keep(U"1\r\na1\r\nq\r\n", U"d:\\out\\a1.pdf");
    EXPECT_TRUE(stands("out/a1.pdf") && !stands("out/a1 (4).pdf"));
    EXPECT_EQ(missing(), "q\r\n");
}

TEST_F(KeptFiles, a_name_with_a_separator_leads_nowhere)
{
    if (std::filesystem::path::preferred_separator != '/') return;
    started.drive_d.write("secret a1.pdf", "of another folder");
    source_file("..\\secret a1.pdf");
    source_file("z a1.pdf");
    keep(U"a1\r\n");
    EXPECT_NE(told().back().find(U"..\\secret a1.pdf"), Text::npos);
    EXPECT_TRUE(stands("secret a1.pdf") && stands("src/..\\secret a1.pdf") && stands("out/z a1.pdf"));
}

TEST_F(KeptFiles, cancel_and_a_column_that_is_none_move_nothing)
{
    source_file("a1.pdf");
    keep(U"a1\r\n", std::nullopt);
    EXPECT_EQ(told().size(), 1U);
    EXPECT_EQ(missing(), "");
    program.form3.Text1[5].set_text(U"first");
    keep(U"a1\r\n");
    EXPECT_EQ(told().size(), 2U) << "the notice, and a message that names the box";
    EXPECT_TRUE(stands("src/a1.pdf"));
}

TEST_F(KeptFiles, a_folder_in_the_way_and_a_name_that_is_full)
{
    source_file("b2.pdf");
    const std::string long_name(longest_name - 5, 'a');
    source_file(long_name + ".pdf");
    std::filesystem::create_directories(started.drive_d.path() / "out" / "b2.pdf");
    started.drive_d.write("out/" + long_name + ".pdf", "before"); // the number makes it too long: it is cut
    keep(U"aa\r\nb2\r\n");
    EXPECT_EQ(told().size(), 1U);
    EXPECT_TRUE(stands("out/" + std::string(longest_name - 8, 'a') + " (2).pdf"));
    EXPECT_TRUE(stands("out/b2 (2).pdf"));
}

} // namespace
} // namespace tarvik::test
