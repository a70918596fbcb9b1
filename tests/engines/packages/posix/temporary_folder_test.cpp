#include "engines/packages/temporary_folder.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;

/// The system's temporary files lie in a folder of the test's own while this lives.
class OwnTemporaryFiles {
public:
    OwnTemporaryFiles() { ::setenv("TMPDIR", path().c_str(), 1); }
    ~OwnTemporaryFiles() { ::setenv("TMPDIR", before_.c_str(), 1); }
    OwnTemporaryFiles(const OwnTemporaryFiles&) = delete;
    OwnTemporaryFiles& operator=(const OwnTemporaryFiles&) = delete;

    const fs::path& path() const { return folder_.path(); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(path())) found.push_back(entry.path().filename().string());
        return found;
    }

    /// What a killed program leaves.
    void leave(const std::string& name) const
    {
        fs::create_directory(path() / name);
        for (const char* file : {"/in-use", "/docket.xlsx"}) folder_.write(name + file, "a customer");
    }
    void make_old(const std::string& name) const
    {
        fs::last_write_time(path() / name, fs::file_time_type::clock::now() - std::chrono::minutes(2));
    }

private:
    std::string before_ = fs::temp_directory_path();
    TemporaryFolder folder_;
};

TEST(TemporaryFolder, goes_with_all_that_is_in_it)
{
    const OwnTemporaryFiles own;
    {
        const ooxml::TemporaryFolder folder;
        fs::create_directories(folder.path() / "profile/user");
        EXPECT_EQ(own.names().size(), 1U);
        EXPECT_EQ(fs::status(folder.path()).permissions() & (fs::perms::group_all | fs::perms::others_all),
                  fs::perms::none)
            << "reports name customers";
    }
    EXPECT_THAT(own.names(), testing::IsEmpty());
}

TEST(TemporaryFolder, the_next_one_removes_what_killed_programs_left_and_nothing_else)
{
    const OwnTemporaryFiles own;
    for (const char* old : {"tarvik-1", "tarvik-notes", "tarvik-test-5", "elsewhere"}) {
        own.leave(old);
        own.make_old(std::string(old) + "/in-use");
    }
    own.leave("tarvik-2");
    for (const char* empty : {"tarvik-3", "tarvik-4"}) fs::create_directory(own.path() / empty);
    own.make_old("tarvik-3");
    own.leave("tarvik-6");
    fs::remove(own.path() / "tarvik-6/in-use"); // not one of this program's
    own.make_old("tarvik-6");
    fs::create_directory_symlink("elsewhere", own.path() / "tarvik-7");
    const auto lives = std::make_unique<ooxml::TemporaryFolder>();
    const std::string living = lives->path().filename();
    own.make_old(living + "/in-use");

    const ooxml::TemporaryFolder next;
    EXPECT_THAT(own.names(),
                testing::UnorderedElementsAre(living, next.path().filename().string(), "tarvik-2", "tarvik-4",
                                              "tarvik-6", "tarvik-7", "tarvik-notes", "tarvik-test-5", "elsewhere"))
        << "the old ones go, which nobody holds";
    EXPECT_TRUE(fs::exists(own.path() / "elsewhere/docket.xlsx"));
}

} // namespace
} // namespace tarvik::test
