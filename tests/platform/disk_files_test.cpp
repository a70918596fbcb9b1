#include "platform/disk_files.h"

#include "platform/failure.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class DiskFilesTest : public testing::Test {
protected:
    TemporaryFolder installation, drive;
    DiskFiles files{installation.path() / "", {{'D', drive.path()}}};

    std::size_t entries() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(installation.path()), {}));
    }
    /// The words of the Failure that the work ends in.
    template <typename Work>
    static std::string failure(const Work& work)
    {
        try {
            work();
        } catch (const Failure& told) {
            return told.what();
        }
        return "no failure";
    }
};

/// No file of this process grows above the limit while this lives: a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t limit)
    {
        old_signal_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit full{limit, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*old_signal_)(int);
};

TEST_F(DiskFilesTest, MapsPaths)
{
    const fs::path here = installation.path();
    EXPECT_EQ(to_utf8(files.installation_folder()), here.string());
    fs::create_directories(here / "photo");
    std::ofstream(here / "a\\b.txt") << "x";
    const std::string own = (here / "a\\b.txt").string();
    const std::pair<std::string, fs::path> cases[] = {
        {"3139.txt", here / "3139.txt"},
        {"photo\\x/y.jpg", here / "photo/x/y.jpg"},
        {"PHOTO\\New.jpg", here / "photo/New.jpg"},
        {"", here},
        {"d:\\Atarvik output\\", drive.path() / "Atarvik output"},
        {"D://fprino//一.doc", drive.path() / "fprino/一.doc"},
        {"d:", drive.path()},
        {"e:\\x", fs::path(std::getenv("HOME")) / "x"},
        {here.string() + "\\photo\\", here / "photo"},
        {own, own},
        {"中:x", here / "中:x"},
    };
    for (const auto& [told, path] : cases) EXPECT_EQ(files.resolve(from_utf8(told)), path) << told;
    EXPECT_EQ(path_in(U"d:\\out\\", U"a"), U"d:\\out\\a");
    EXPECT_EQ(path_in(U"d:/out", U"a"), U"d:/out\\a");
    EXPECT_EQ(path_in(U"", U"a"), U"a");
}

TEST_F(DiskFilesTest, LooksNamesUpWithoutCase)
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

    drive.write("same.txt", "small");
    drive.write("SAME.txt", "capitals");
    EXPECT_EQ(files.read(U"d:\\same.txt"), "small");
    EXPECT_EQ(files.read(U"d:\\Same.txt"), "capitals") << "the first in the order of the bytes";
}

TEST_F(DiskFilesTest, ListsPlainFilesByUpperCasedNames)
{
    for (const char* name : {"b.txt", "A.txt", "a_.txt", "C.txt", "乙.txt", ".tarvik-1-1.tmp", "bad\xff.txt"})
        installation.write(name, name);
    fs::create_directory(installation.path() / "folder");
    EXPECT_THAT(files.file_names(files.installation_folder()),
                ElementsAre(U"A.txt", U"a_.txt", U"b.txt", U"bad\ufffd.txt", U"C.txt", U"乙.txt"));
    EXPECT_EQ(files.read(U"bad\ufffd.txt"), "bad\xff.txt") << "a listed name can be read";
}

TEST_F(DiskFilesTest, ReplaceKeepsPermissionsAndLinks)
{
    installation.write("old.bin", "old");
    const fs::path old = installation.path() / "old.bin";
    fs::permissions(old, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    fs::create_symlink("old.bin", installation.path() / "link.bin");
    const FileStamp before = files.stamp(U"old.bin");
    files.replace(U"link.bin", "newer");
    EXPECT_EQ(installation.read("old.bin"), "newer");
    EXPECT_TRUE(fs::is_symlink(installation.path() / "link.bin"));
    EXPECT_EQ(fs::status(old).permissions(), static_cast<fs::perms>(0640));
    EXPECT_NE(files.stamp(U"old.bin"), before);
    EXPECT_EQ(files.stamp(U"old.bin").size, 5U);
    EXPECT_EQ(entries(), 2U);
}

TEST_F(DiskFilesTest, ReplaceKeepsTheGroup)
{
    if (::geteuid() != 0) GTEST_SKIP() << "only root may give a file to a group of its choice";
    installation.write("z1.xlsx", "old");
    const fs::path path = installation.path() / "z1.xlsx";
    ASSERT_EQ(::chown(path.c_str(), 1234, 4321), 0);
    files.replace(U"z1.xlsx", "new");
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, 4321U);
    EXPECT_EQ(status.st_uid, 1234U);
}

TEST_F(DiskFilesTest, LeftoversOfKilledRunsGo)
{
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* name : {".tarvik-1-1.tmp", ".tarvik-2-3-4.tmp", ".tarvik-5-6-7.tmp"}) {
        installation.write(name, "half");
        fs::last_write_time(installation.path() / name, old);
    }
    installation.write(".tarvik-8-9-10.tmp", "just begun");
    const int written = ::open((installation.path() / ".tarvik-5-6-7.tmp").c_str(), O_WRONLY);
    ASSERT_EQ(::flock(written, LOCK_EX), 0);
    files.replace(U"a.txt", "a");
    EXPECT_EQ(entries(), 3U) << "the file, the one in work and the one just begun";
    ::close(written);
}

TEST_F(DiskFilesTest, AReplacementTakesItsPlaceAtTheEnd)
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

TEST_F(DiskFilesTest, AFullDiskLeavesTheOldFileWhole)
{
    installation.write("z1.xlsx", "old");
    installation.write("notes.txt", "line\r\n");
    const std::string large(300'000, 'x');
    {
        const FullDisk full(4096);
        EXPECT_THAT(failure([&] { files.replace(U"z1.xlsx", large); }), HasSubstr("无法写入文件“z1.xlsx”："));
        EXPECT_THAT(failure([&] { files.append(U"notes.txt", large); }), HasSubstr("notes.txt"));
        for (const std::size_t piece : {std::size_t{5000}, large.size()}) {
            const auto scratch = files.open_for_output(U"between.txt");
            scratch->write(large.substr(0, piece));
            EXPECT_THAT(failure([&] { scratch->close(); }), HasSubstr("between.txt"));
        }
    }
    EXPECT_EQ(installation.read("z1.xlsx"), "old");
    EXPECT_EQ(installation.read("notes.txt"), "line\r\n");
    EXPECT_EQ(entries(), 3U);
}

TEST_F(DiskFilesTest, WritesAndMoves)
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

    files.move_file(U"nofile.txt", U"between.txt");
    EXPECT_EQ(files.read(U"between.txt"), "1\r\n2\r\n");
    files.move_file(U"between.txt", U"d:\\");
    EXPECT_EQ(files.read(U"d:\\between.txt"), "1\r\n2\r\n");
    EXPECT_EQ(entries(), 0U);
    if (!fs::exists("/dev/shm")) return;
    const fs::path other = fs::path("/dev/shm") / installation.path().filename();
    const auto changed = fs::last_write_time(files.resolve(U"d:\\between.txt")) - std::chrono::hours(100);
    fs::last_write_time(files.resolve(U"d:\\between.txt"), changed);
    files.move_file(U"d:\\between.txt", from_utf8(other.string()));
    EXPECT_EQ(fs::last_write_time(other), changed) << "another file system";
    EXPECT_EQ(files.read(from_utf8(other.string())), "1\r\n2\r\n");
    fs::remove(other);
    EXPECT_FALSE(files.file_exists(U"d:\\between.txt"));
}

TEST_F(DiskFilesTest, FailuresTellThePathAndTheReason)
{
    fs::create_directory(installation.path() / "folder");
    installation.write("plain", "x");
    ASSERT_EQ(::mkfifo((installation.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(failure([&] { files.read(U"d:\\没有.txt"); }), "无法读取文件“d:\\没有.txt”：找不到这个文件或文件夹。");
    EXPECT_THAT(failure([&] { files.read(U"folder"); }), HasSubstr("文件夹"));
    EXPECT_THAT(failure([&] { files.read(U"pipe"); }), HasSubstr("pipe"));
    EXPECT_THAT(failure([&] { files.read(U"plain\\x"); }), HasSubstr("不是文件夹"));
    EXPECT_THAT(failure([&] { files.replace(U"folder", "x"); }), HasSubstr("folder"));
    EXPECT_THAT(failure([&] { files.replace(U"no\\x", "x"); }), HasSubstr("no\\x"));
    EXPECT_THAT(failure([&] { files.open_for_output(U"pipe"); }), HasSubstr("pipe"));
    EXPECT_THAT(failure([&] { files.create_folder(U"plain"); }), HasSubstr("plain"));
    EXPECT_THAT(failure([&] { files.create_folder(U"no\\folder"); }), HasSubstr("no\\folder"));
    EXPECT_THAT(failure([&] { files.move_file(U"no", U"d:\\no"); }), HasSubstr("no"));
    EXPECT_THAT(failure([&] { files.file_names(U"no"); }), HasSubstr("no"));
    EXPECT_THAT(failure([&] { files.stamp(U"no"); }), HasSubstr("no"));
    EXPECT_THAT(failure([&] { files.read(Text(300, U'x')); }), HasSubstr("名称太长"));
    EXPECT_FALSE(files.file_exists(Text(300, U'x')));
    EXPECT_FALSE(files.file_exists(Text{U'p', U'l', U'a', U'i', U'n', U'\0', U'x'}));
    EXPECT_EQ(entries(), 3U);
}

} // namespace
} // namespace tarvik::test
