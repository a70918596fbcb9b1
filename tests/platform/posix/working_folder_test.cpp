#include "platform/files/working_folder.h"

#include "tests/support/full_disk.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

/// While it lives the permissions of files bind this process as they do any user.
class OrdinaryUser {
public:
    OrdinaryUser() { EXPECT_EQ(::setresuid(other_, other_, self_), 0); }
    ~OrdinaryUser() { EXPECT_EQ(::setresuid(self_, self_, self_), 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    uid_t self_ = ::geteuid(), other_ = self_ == 0 ? nobody : self_;
};

/// A program installed for everybody, and the home of one user.
class WorkingFolderTest : public testing::Test {
protected:
    WorkingFolderTest()
    {
        fs::create_directories(usr.path() / "bin");
        install("z5.xlsx", "template 1");
        install("photo/a.jpg", "picture 1");
        install("维修/送修单/甲.xlsx", "order 1");
    }

    void install(const std::string& name, std::string_view bytes) const
    {
        const fs::path file = usr.path() / "share/tarvik/installation" / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }
    WorkingFolder start(std::string_view version = "1") const
    {
        return open_working_folder(usr.path() / "bin", home.path(), version);
    }
    /// "name: bytes" of every file that the user has, the list aside.
    std::vector<std::string> own_files() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(own))
            if (entry.is_regular_file() && entry.path().filename() != ".handed-out") {
                const std::string name = entry.path().lexically_relative(own).string();
                found.push_back(name + ": " + home.read("tarvik/" + name));
            }
        std::sort(found.begin(), found.end());
        return found;
    }

    TemporaryFolder usr, home;
    fs::path own = home.path() / "tarvik";
};

} // namespace

TEST_F(WorkingFolderTest, the_first_start_fills_the_users_own_folder)
{
    const WorkingFolder folder = start();
    EXPECT_EQ(folder.path, own);
    EXPECT_EQ(to_utf8(folder.trouble), "");
    EXPECT_THAT(own_files(),
                ElementsAre("photo/a.jpg: picture 1", "z5.xlsx: template 1", "维修/送修单/甲.xlsx: order 1"));
    EXPECT_EQ(home.read("tarvik/.handed-out"), "1\tphoto/a.jpg\n1\tz5.xlsx\n1\t维修/送修单/甲.xlsx\n");

    const auto deep = home.path() / "local/share";
    open_working_folder(usr.path() / "bin", deep, "1");
    for (const auto& made : {own, deep, deep.parent_path()})
        EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all) << made;
}

TEST_F(WorkingFolderTest, a_later_version_adds_what_is_new_and_touches_nothing_of_the_users)
{
    start();
    home.write("tarvik/z5.xlsx", "the user's template");
    home.write("tarvik/Z9.XLSX", "the user's summary");
    fs::remove_all(own / "photo");
    install("z5.xlsx", "template 2");
    install("z9.xlsx", "summary 2");
    install("photo/b.jpg", "picture 2");
    install("维修/送修单/甲.xlsx", "order 2");

    for (int again = 0; again < 2; ++again) {
        EXPECT_EQ(to_utf8(start("2").trouble), "");
        EXPECT_THAT(own_files(), ElementsAre("Z9.XLSX: the user's summary", "photo/b.jpg: picture 2",
                                             "z5.xlsx: the user's template", "维修/送修单/甲.xlsx: order 1"));
    }
    EXPECT_EQ(home.read("tarvik/.handed-out"),
              "1\tphoto/a.jpg\n2\tphoto/b.jpg\n1\tz5.xlsx\n2\tz9.xlsx\n1\t维修/送修单/甲.xlsx\n");
    fs::remove(own / "Z9.XLSX");
    start("3");
    EXPECT_FALSE(fs::exists(own / "z9.xlsx")) << "what the user had under that name was deleted";
}

TEST_F(WorkingFolderTest, starts_at_the_same_time_give_whole_files)
{
    const std::string large(3'000'000, 'x');
    install("a.txt", large);
    std::vector<std::thread> starts;
    std::vector<WorkingFolder> folders(8);
    for (WorkingFolder& folder : folders)
        starts.emplace_back([&folder, &large, this] {
            folder = start();
            if (home.read("tarvik/a.txt") != large) folder.trouble += U"a.txt is not whole";
        });
    for (std::thread& one : starts) one.join();
    for (const WorkingFolder& folder : folders) {
        EXPECT_EQ(to_utf8(folder.trouble), "");
        EXPECT_EQ(folder.path, own);
    }
    EXPECT_EQ(own_files().size(), 4U) << "a file was left unfinished";
}

TEST_F(WorkingFolderTest, a_folder_that_cannot_be_made_leaves_the_installed_one_and_is_reported)
{
    std::ofstream(own) << "a file in the way";
    const WorkingFolder folder = start();
    EXPECT_EQ(folder.path, usr.path() / "share/tarvik/installation");
    EXPECT_THAT(to_utf8(folder.trouble), HasSubstr("无法建立文件夹“" + own.string() + "”："));
    EXPECT_THAT(to_utf8(folder.trouble), HasSubstr("不能在其中保存"));
}

TEST_F(WorkingFolderTest, a_full_disk_is_reported_and_the_next_start_goes_on)
{
    install("a.txt", "short");
    install("b.txt", std::string(5000, 'x'));
    {
        const FullDisk full(4096);
        const WorkingFolder folder = start();
        EXPECT_EQ(folder.path, own);
        EXPECT_THAT(to_utf8(folder.trouble), HasSubstr("无法写入文件“" + (own / "b.txt").string() + "”：文件太大"));
        EXPECT_THAT(own_files(), ElementsAre("a.txt: short"));
    }
    home.write("tarvik/a.txt", "changed");
    EXPECT_EQ(to_utf8(start().trouble), "");
    EXPECT_EQ(own_files().size(), 5U);
    EXPECT_EQ(home.read("tarvik/a.txt"), "changed");
}

TEST_F(WorkingFolderTest, a_list_that_cannot_be_read_brings_nothing_back)
{
    start();
    fs::remove(own / "z5.xlsx");
    fs::remove(own / ".handed-out");
    fs::create_directory(own / ".handed-out");
    EXPECT_THAT(to_utf8(start().trouble), HasSubstr(".handed-out”："));
    EXPECT_FALSE(fs::exists(own / "z5.xlsx"));
}

TEST_F(WorkingFolderTest, a_program_among_its_files_stays_there_where_it_may_write)
{
    const fs::path unpacked = usr.path() / "unpacked";
    fs::create_directories(unpacked);
    usr.write("unpacked/tarvik-play", "a program");
    usr.write("unpacked/3139.txt", "a report");
    EXPECT_EQ(open_working_folder(unpacked, home.path(), "1").path, unpacked);
    EXPECT_FALSE(fs::exists(own));

    // For somebody else it is a program that is installed, itself no part of what is handed out.
    ::chmod(unpacked.c_str(), 0555);
    ::chmod(usr.path().c_str(), 0755);
    ::chmod(home.path().c_str(), 0777);
    {
        const OrdinaryUser user;
        const WorkingFolder folder = open_working_folder(unpacked, home.path(), "1");
        EXPECT_EQ(folder.path, own) << to_utf8(folder.trouble);
    }
    EXPECT_THAT(own_files(), ElementsAre("3139.txt: a report"));
}

} // namespace tarvik::test
