#include "tests/platform/files_fixture.h"

#include "platform/files/disk_file.h"
#include "platform/files/paths.h"

#include <gmock/gmock.h>

#include <fstream>
#include <thread>
#include <windows.h>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// Another program that has the file open and lets nobody else have it.
class Holder {
public:
    explicit Holder(const fs::path& path, DWORD shared = 0)
        : handle_(::CreateFileW(path.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~Holder() { ::CloseHandle(handle_); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

private:
    HANDLE handle_;
};

TEST_F(FilesTest, a_file_that_another_program_holds_is_reported_as_that)
{
    installation.write("z1.xlsx", "old");
    {
        const Holder holder(installation.path() / "z1.xlsx");
        EXPECT_EQ(failure_of([&] { files.read(U"z1.xlsx"); }), "无法读取文件“z1.xlsx”：文件正被别的程序使用。");
        EXPECT_EQ(failure_of([&] { files.append(U"z1.xlsx", "x"); }), "无法写入文件“z1.xlsx”：文件正被别的程序使用。");
    }
    {
        const Holder reader(installation.path() / "z1.xlsx", FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_EQ(failure_of([&] { files.replace(U"z1.xlsx", "new"); }),
                  "无法写入文件“z1.xlsx”：文件正被别的程序使用。");
    }
    EXPECT_EQ(installation.read("z1.xlsx"), "old");
    EXPECT_EQ(entries(), 1U) << "nothing is left beside it";
}

TEST_F(FilesTest, a_file_that_is_held_for_a_moment_is_replaced_all_the_same)
{
    installation.write("z1.xlsx", "old");
    auto scanner = std::make_unique<Holder>(installation.path() / "z1.xlsx", FILE_SHARE_READ | FILE_SHARE_WRITE);
    std::jthread release([&scanner] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        scanner.reset();
    });
    files.replace(U"z1.xlsx", "new");
    EXPECT_EQ(installation.read("z1.xlsx"), "new");
}

TEST_F(FilesTest, a_write_protected_file_stays)
{
    installation.write("z1.xlsx", "old");
    const fs::path file = installation.path() / "z1.xlsx";
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THAT(failure_of([&] { files.replace(U"z1.xlsx", "new"); }), HasSubstr("没有权限"));
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(installation.read("z1.xlsx"), "old");
}

TEST_F(FilesTest, names_that_no_file_has_are_refused)
{
    installation.write("a", "old");
    for (const TextView name : {U"CON", U"nul.xlsx", U"Lpt1 .txt", U"a.", U"a "}) {
        EXPECT_THAT(failure_of([&] { files.replace(name, "x"); }), HasSubstr("名称或文件类型不能用")) << to_utf8(name);
        EXPECT_THAT(failure_of([&] { files.append(name, "x"); }), HasSubstr("名称或文件类型不能用")) << to_utf8(name);
        EXPECT_THAT(failure_of([&] { files.create_folder(name); }), HasSubstr("名称或文件类型不能用")) << to_utf8(name);
    }
    EXPECT_EQ(installation.read("a"), "old");
    EXPECT_EQ(safe_file_name(U"con"), U"_con");
    EXPECT_EQ(safe_file_name(U"NUL.txt"), U"_NUL.txt");
    EXPECT_EQ(safe_file_name(U"甲 乙."), U"甲 乙_");
    EXPECT_EQ(safe_file_name(U"console"), U"console");
}

TEST(FileName, long_ones_are_cut_between_characters)
{
    EXPECT_EQ(safe_file_name(Text(85, U'中')), Text(85, U'中'));
    EXPECT_EQ(safe_file_name(Text(300, U'x') + U".xlsx"), Text(80, U'x') + U".xlsx");
    EXPECT_EQ(safe_file_name(Text(90, U'𠀀')), Text(42, U'𠀀')) << "each takes two units";
}

// Beyond these lengths some of the system's calls work and others do not, as do other programs.
TEST_F(FilesTest, paths_that_are_too_long_are_reported_as_that)
{
    const std::size_t here = installation.path().native().size() + 1;
    const Text deepest(247 - here, U'd'), longest(259 - here, U'f');
    files.create_folder(deepest);
    files.create_folder(U"d");
    files.append(longest, "x");
    EXPECT_EQ(files.read(longest), "x");
    EXPECT_TRUE(files.folder_exists(deepest));
    const Text reason = U"名称太长，连同所在的文件夹不能超过 259 个字符。";
    const Text folder = deepest + U"d", file = longest + U"f", deep = deepest + U"\\z1234567.xlsx";
    EXPECT_EQ(failure_of([&] { files.create_folder(folder); }), to_utf8(U"无法建立文件夹“" + folder + U"”：" + reason));
    for (const Text& path : {file, deep}) {
        EXPECT_EQ(failure_of([&] { files.append(path, "x"); }), to_utf8(U"无法写入文件“" + path + U"”：" + reason));
        EXPECT_EQ(failure_of([&] { files.replace(path, "x"); }), to_utf8(U"无法写入文件“" + path + U"”：" + reason));
        EXPECT_EQ(failure_of([&] { files.read(path); }), to_utf8(U"无法读取文件“" + path + U"”：" + reason));
    }
    EXPECT_EQ(failure_of([&] { files.move_file(longest, file); }),
              to_utf8(U"无法移动文件“" + longest + U"”：" + reason));
    EXPECT_EQ(entries(), 3U);
}

TEST_F(FilesTest, drives_and_paths_of_other_computers)
{
    EXPECT_EQ(files.resolve(U"e:\\x"), fs::path(L"E:\\x"));
    EXPECT_EQ(files.resolve(U"\\\\server\\share\\甲\\b"), path_of(U"\\\\server\\share\\甲\\b"));
    EXPECT_EQ(full_path(L"\\\\server\\share\\a\\..\\b").native(), L"\\\\server\\share\\b");
    EXPECT_EQ(Files(L"\\\\server\\share\\tarvik\\").installation_folder(), U"\\\\server\\share\\tarvik");
}

TEST_F(FilesTest, foreign_characters_in_names)
{
    const Text rare = U"𠀀甲é.txt";
    files.replace(rare, "x");
    EXPECT_EQ(files.file_names(files.installation_folder()), std::vector<Text>{rare});
    EXPECT_EQ(path_of(text_of(installation.path() / path_of(rare))), installation.path() / path_of(rare));
}

} // namespace
} // namespace tarvik::test
