#include "tests/platform/files_fixture.h"

#include "platform/files/paths.h"
#include "tests/support/full_disk.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(FilesTest, own_names_and_the_home_folder)
{
    const fs::path here = installation.path();
    fs::create_directories(here / "photo/Old");
    std::ofstream(here / "a\\b.txt") << "x";
    const std::string own = (here / "a\\b.txt").string();
    const std::pair<std::string, fs::path> cases[] = {
        {"PHOTO\\New.jpg", here / "photo/New.jpg"},
        {"photo\\New.jpg", here / "photo/New.jpg"},
        {"photo\\oLD\\New\\a.jpg", here / "photo/Old/New/a.jpg"},
        {"PHOTO\\oLD", here / "photo/Old"},
        {"None\\photo\\old", here / "None/photo/old"},
        {"e:\\x", fs::path(std::getenv("HOME")) / "x"},
        {own, own},
        {"中:x", here / "中:x"},
    };
    for (const auto& [given, path] : cases) EXPECT_EQ(files.resolve(from_utf8(given)), path) << given;
}

TEST(FileName, long_ones_are_cut_between_characters)
{
    EXPECT_EQ(safe_file_name(Text(85, U'中')), Text(85, U'中'));
    EXPECT_EQ(safe_file_name(Text(86, U'中')), Text(85, U'中'));
    EXPECT_EQ(safe_file_name(U"ab" + Text(85, U'中')), U"ab" + Text(84, U'中'));
    EXPECT_EQ(safe_file_name(Text(90, U'中') + U".xlsx"), Text(83, U'中') + U".xlsx");
    EXPECT_EQ(safe_file_name(U"." + Text(90, U'中')), U"." + Text(84, U'中'));
}

TEST_F(FilesTest, of_two_names_that_differ_in_case_the_first_is_taken)
{
    drive.write("same.txt", "small");
    drive.write("SAME.txt", "capitals");
    EXPECT_EQ(files.read(U"d:\\same.txt"), "small");
    EXPECT_EQ(files.read(U"d:\\Same.txt"), "capitals") << "the first in the order of the bytes";
}

TEST_F(FilesTest, names_that_are_no_text_are_listed_and_found)
{
    installation.write("bad\xff.txt", "x");
    EXPECT_THAT(files.file_names(files.installation_folder()), ElementsAre(U"bad\ufffd.txt"));
    EXPECT_EQ(files.read(U"bad\ufffd.txt"), "x") << "a listed name can be read";
}

TEST_F(FilesTest, replace_keeps_permissions_group_and_links)
{
    installation.write("old.bin", "old");
    const fs::path old = installation.path() / "old.bin";
    fs::permissions(old, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const bool given_away = ::chown(old.c_str(), 1234, 4321) == 0; // only root may
    fs::create_symlink("old.bin", installation.path() / "link.bin");
    const FileStamp before = files.stamp(U"old.bin");
    files.replace(U"link.bin", "newer");
    EXPECT_EQ(installation.read("old.bin"), "newer");
    EXPECT_TRUE(fs::is_symlink(installation.path() / "link.bin"));
    EXPECT_EQ(fs::status(old).permissions(), static_cast<fs::perms>(0640));
    struct stat status {};
    ASSERT_EQ(::stat(old.c_str(), &status), 0);
    EXPECT_TRUE(!given_away || (status.st_uid == 1234 && status.st_gid == 4321));
    EXPECT_NE(files.stamp(U"old.bin"), before);
    EXPECT_EQ(files.stamp(U"old.bin").size, 5U);
    EXPECT_EQ(entries(), 2U);
}

TEST_F(FilesTest, a_full_disk_leaves_the_old_file_whole)
{
    installation.write("z1.xlsx", "old");
    installation.write("notes.txt", "line\r\n");
    const std::string large(300'000, 'x');
    {
        const FullDisk full(4096);
        EXPECT_THAT(failure_of([&] { files.replace(U"z1.xlsx", large); }), HasSubstr("无法写入文件“z1.xlsx”："));
        EXPECT_THAT(failure_of([&] { files.append(U"notes.txt", large); }), HasSubstr("notes.txt"));
        for (const std::size_t piece : {std::size_t{5000}, large.size()}) {
            const auto scratch = files.open_for_output(U"between.txt");
            scratch->write(large.substr(0, piece));
            EXPECT_THAT(failure_of([&] { scratch->close(); }), HasSubstr("between.txt"));
        }
    }
    EXPECT_EQ(installation.read("z1.xlsx"), "old");
    EXPECT_EQ(installation.read("notes.txt"), "line\r\n");
    EXPECT_EQ(entries(), 3U);
}

TEST_F(FilesTest, what_cannot_be_opened_keeps_no_leftover_from_going)
{
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const std::string number : {"1", "2", "3", "4", "5"}) {
        fs::create_symlink("nowhere", installation.path() / (".tarvik-" + number + "-1.tmp"));
        installation.write(".tarvik-" + number + "-2.tmp", "half");
        fs::last_write_time(installation.path() / (".tarvik-" + number + "-2.tmp"), old);
    }
    files.replace(U"a.txt", "a");
    EXPECT_EQ(entries(), 6U) << "the file and the links";
}

TEST_F(FilesTest, pipes_are_no_files)
{
    ASSERT_EQ(::mkfifo((installation.path() / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(failure_of([&] { files.read(U"pipe"); }), HasSubstr("pipe"));
    EXPECT_THAT(failure_of([&] { files.open_for_output(U"pipe"); }), HasSubstr("pipe"));
    EXPECT_THAT(failure_of([&] { files.append(U"pipe", "line"); }), HasSubstr("pipe"));
    EXPECT_THAT(failure_of([&] { files.replace(U"pipe", "line"); }), HasSubstr("pipe"));
    EXPECT_THAT(failure_of([&] { files.move_file(U"pipe", U"moved"); }), HasSubstr("pipe"));
}

TEST_F(FilesTest, a_walk_passes_over_what_is_no_file)
{
    const auto folder = installation.path() / "walk";
    fs::create_directory(folder);
    ASSERT_EQ(::mkfifo((folder / "pipe.xlsx").c_str(), 0600), 0);
    fs::create_symlink("loop.xlsx", folder / "loop.xlsx");
    fs::create_symlink(".", folder / "circle.xlsx");
    fs::create_symlink("nowhere", folder / "dangling.xlsx");
    fs::create_symlink("/dev/zero", folder / "device.xlsx");
    installation.write("walk/file.xlsx", "x");
    fs::create_symlink("file.xlsx", folder / "link.xlsx");
    EXPECT_EQ(files.file_names(U"walk"), (std::vector<Text>{U"file.xlsx", U"link.xlsx"}));
    EXPECT_THAT(failure_of([&] { files.read(U"walk\\loop.xlsx"); }), HasSubstr("loop.xlsx"));
    EXPECT_THAT(failure_of([&] { files.read(U"walk\\device.xlsx"); }), HasSubstr("device.xlsx"));
}

} // namespace
} // namespace tarvik::test
