#include "tests/platform/files_fixture.h"

#include "platform/files/disk_file.h"
#include "platform/files/file_cache.h"
#include "platform/files/paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(FileName, stays_inside_its_folder)
{
    EXPECT_EQ(safe_name_part(U"../a\\b:c*?\"<>|\t"), U".._a_b_c_______");
    EXPECT_EQ(safe_name_part(U""), U"");
    EXPECT_EQ(safe_file_name(U"..\\..\\x"), U".._.._x");
    for (const TextView name : {U"", U".", U".."}) EXPECT_EQ(safe_file_name(name), U"_");
    EXPECT_EQ(safe_file_name(U" 甲 乙.x"), U" 甲 乙.x");
}

constexpr FileStamp settled{{true, false, 5, 100, 100, 7}, true};

TEST(FileCache, makes_contents_again_when_their_file_may_have_changed)
{
    struct Case {
        const char* name;
        FileStamp before, after;
        bool again;
    };
    const Case cases[] = {
        {"unchanged", settled, settled, false},
        {"of another size", settled, {{true, false, 6, 100, 100, 7}, true}, true},
        {"changed later", settled, {{true, false, 5, 101, 101, 7}, true}, true},
        {"changed, and its time set back", settled, {{true, false, 5, 100, 101, 7}, true}, true},
        {"another file of that name", settled, {{true, false, 5, 100, 100, 8}, true}, true},
        {"not settled when it was read", {{true, false, 5, 100, 100, 7}, false}, settled, true},
        {"never settled", {{true, false, 5, 100, 100, 7}, false}, {{true, false, 5, 100, 100, 7}, false}, true},
    };
    for (const Case& one : cases) {
        FileCache<int> cache;
        EXPECT_EQ(cache.get(U"a", one.before, [] { return 1; }), 1) << one.name;
        EXPECT_EQ(cache.get(U"a", one.after, [] { return 2; }), one.again ? 2 : 1) << one.name;
        EXPECT_EQ(cache.get(U"b", one.after, [] { return 3; }), 3) << one.name;
    }
}

TEST_F(FilesTest, maps_paths)
{
    const fs::path here = installation.path();
    EXPECT_EQ(to_utf8(files.installation_folder()), utf8_of(here));
    fs::create_directories(here / "photo");
    const std::pair<std::string, fs::path> cases[] = {
        {"3139.txt", here / "3139.txt"},
        {"photo\\x/y.jpg", here / "photo/x/y.jpg"},
        {"", here},
        {"d:\\Atarvik output\\", drive.path() / "Atarvik output"},
        {"D://fprino//一.doc", drive.path() / "fprino" / path_of(U"一.doc")},
        {"d:", drive.path()},
        {utf8_of(here) + "\\photo\\", here / "photo"},
    };
    for (const auto& [told, path] : cases)
        EXPECT_EQ(files.resolve(from_utf8(told)), fs::path(path).make_preferred()) << told;
    EXPECT_EQ(path_in(U"d:\\out\\", U"a"), U"d:\\out\\a");
    EXPECT_EQ(path_in(U"d:/out", U"a"), U"d:/out\\a");
    EXPECT_EQ(path_in(U"", U"a"), U"a");
}

TEST_F(FilesTest, looks_names_up_without_case)
{
    files.create_folder(U"d:\\Photo");
    files.replace(U"d:\\Photo\\牛津字典a.TXT", "one");
    EXPECT_EQ(files.read(U"D:\\PHOTO\\牛津字典A.txt"), "one");
    EXPECT_TRUE(files.file_exists(U"d:/photo/牛津字典A.TXT"));
    EXPECT_FALSE(files.file_exists(U"d:/photo"));
    EXPECT_TRUE(files.folder_exists(U"d:/pHOTO/"));
    files.create_folder(U"d:\\PHOTO"); // is there already
    files.replace(U"d:\\photo\\牛津字典A.txt", "two");
    EXPECT_THAT(files.file_names(U"d:\\PHOTO"), ElementsAre(U"牛津字典a.TXT"));
}

TEST_F(FilesTest, lists_plain_files_by_upper_cased_names)
{
    for (const char* name : {"b.txt", "A.txt", "a_.txt", "C.txt", "乙.txt", ".tarvik-1-1.tmp"})
        installation.write(name, name);
    fs::create_directory(installation.path() / "folder");
    EXPECT_THAT(files.file_names(files.installation_folder()),
                ElementsAre(U"A.txt", U"a_.txt", U"b.txt", U"C.txt", U"乙.txt"));
}

TEST_F(FilesTest, a_replacement_takes_its_place_at_the_end)
{
    installation.write("a.txt", "old");
    const auto file = files.begin_replacement(U"a.txt");
    file->write("new ");
    file->write("text");
    file->complete();
    EXPECT_EQ(installation.read("a.txt"), "old");
    file->take_place();
    EXPECT_EQ(installation.read("a.txt"), "new text");
    files.begin_replacement(U"a.txt")->write("never");
    EXPECT_EQ(installation.read("a.txt"), "new text");
    EXPECT_EQ(entries(), 1U);
    EXPECT_FALSE(files.stamp(U"a.txt").settled) << "another change might bear the same stamp";
}

TEST_F(FilesTest, writes_and_moves)
{
    const auto scratch = files.open_for_output(U"between.txt");
    std::string expected;
    for (int i = 0; i < 9; ++i) {
        const std::string piece(static_cast<std::size_t>(1) << (2 * i + 3), static_cast<char>('a' + i));
        scratch->write(piece);
        expected += piece;
    }
    scratch->close();
    EXPECT_EQ(files.read(U"between.txt"), expected);
    files.open_for_output(U"between.txt")->close();
    EXPECT_EQ(files.read(U"between.txt"), "");
    files.append(U"nofile.txt", "1\r\n");
    files.append(U"NOFILE.TXT", "2\r\n");
    EXPECT_EQ(files.read(U"nofile.txt"), "1\r\n2\r\n");

    EXPECT_FALSE(files.move_file(U"nofile.txt", U"BETWEEN.txt")) << "nothing is replaced";
    EXPECT_FALSE(files.move_file(U"nofile.txt", U"d:\\")) << "nor is a folder";
    EXPECT_EQ(files.read(U"between.txt"), "");
    EXPECT_TRUE(files.move_file(U"nofile.txt", U"d:\\between.txt"));
    EXPECT_EQ(files.read(U"d:\\between.txt"), "1\r\n2\r\n");
    EXPECT_EQ(entries(), 1U) << "the emptied file stays";
    if (!fs::exists("/dev/shm") || fs::path::preferred_separator != '/') return;
    const fs::path other = fs::path("/dev/shm") / installation.path().filename();
    const auto changed = fs::last_write_time(files.resolve(U"d:\\between.txt")) - std::chrono::hours(100);
    fs::last_write_time(files.resolve(U"d:\\between.txt"), changed);
    files.append(text_of(other), "1\r\n");
    EXPECT_FALSE(files.move_file(U"d:\\between.txt", text_of(other))) << "half of it is not it";
    fs::remove(other);
    EXPECT_TRUE(files.move_file(U"d:\\between.txt", text_of(other)));
    EXPECT_EQ(fs::last_write_time(other), changed) << "another file system";
    EXPECT_EQ(files.read(text_of(other)), "1\r\n2\r\n");
    // A run that was killed right here had left it in both places.
    files.append(U"d:\\between.txt", "1\r\n2\r\n");
    EXPECT_TRUE(files.move_file(U"d:\\between.txt", text_of(other)));
    fs::remove(other);
    EXPECT_FALSE(files.file_exists(U"d:\\between.txt"));
}

TEST_F(FilesTest, leftovers_of_killed_runs_go)
{
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* name : {".tarvik-1-1.tmp", ".tarvik-2-3-4.tmp", ".tarvik-5-6-7.tmp"}) {
        installation.write(name, "half");
        fs::last_write_time(installation.path() / name, old);
    }
    installation.write(".tarvik-8-9-10.tmp", "just begun");
    SystemFile written(installation.path() / ".tarvik-5-6-7.tmp", Opening::Append);
    ASSERT_TRUE(written.lock());
    files.replace(U"a.txt", "a");
    EXPECT_EQ(entries(), 3U) << "the file, the one in work and the one just begun";
}

TEST_F(FilesTest, failures_tell_the_path_and_the_reason)
{
    fs::create_directory(installation.path() / "folder");
    installation.write("plain", "x");
    EXPECT_EQ(failure_of([&] { files.read(U"d:\\没有.txt"); }), "无法读取文件“d:\\没有.txt”：找不到这个文件或文件夹。");
    EXPECT_THAT(failure_of([&] { files.read(U"folder"); }), HasSubstr("文件夹"));
    EXPECT_THAT(failure_of([&] { files.read(U"plain\\x"); }), HasSubstr("不是文件夹"));
    EXPECT_THAT(failure_of([&] { files.replace(U"folder", "x"); }), HasSubstr("folder"));
    EXPECT_THAT(failure_of([&] { files.replace(U"no\\x", "x"); }), HasSubstr("no\\x"));
    EXPECT_THAT(failure_of([&] { files.create_folder(U"plain"); }), HasSubstr("plain"));
    EXPECT_THAT(failure_of([&] { files.create_folder(U"no\\folder"); }), HasSubstr("no\\folder"));
    EXPECT_THAT(failure_of([&] { files.move_file(U"no", U"d:\\no"); }), HasSubstr("no"));
    EXPECT_THAT(failure_of([&] { files.file_names(U"no"); }), HasSubstr("no"));
    EXPECT_THAT(failure_of([&] { files.stamp(U"no"); }), HasSubstr("no"));
    EXPECT_THAT(failure_of([&] { files.read(Text(300, U'x')); }), HasSubstr("名称太长"));
    EXPECT_FALSE(files.file_exists(Text(300, U'x')));
    EXPECT_FALSE(files.file_exists(Text{U'p', U'l', U'a', U'i', U'n', U'\0', U'x'}));
    EXPECT_EQ(entries(), 2U);
}

} // namespace
} // namespace tarvik::test
