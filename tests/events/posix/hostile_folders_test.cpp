#include "tests/events/sample_desk.h"

#include <sys/stat.h>

/// Folders that hold what no clerk would put there, walked by the commands that walk.
namespace tarvik::test {
namespace {

namespace fs = std::filesystem;

const char* const walking[] = {"tomation", "Excelfile", "SesameOpen", "keptfile", "order", "prices"};

class HostileFolders : public testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() { TemporaryFolder::keep_in_memory(); }

    SampleDesk desk;

    void lay_traps(const fs::path& folder, const std::string& stem) const
    {
        fs::create_symlink(stem + "-loop.xlsx", folder / (stem + "-loop.xlsx"));
        fs::create_symlink(".", folder / (stem + "-circle.xlsx"));
        fs::create_symlink("nowhere", folder / (stem + "-dangling.xlsx"));
        fs::create_symlink("/dev/zero", folder / (stem + "-device.xlsx"));
        fs::create_symlink("/dev/full", folder / (stem + "-full.xlsx"));
        fs::create_directory(folder / (stem + "-folder.xlsx"));
        ASSERT_EQ(::mkfifo((folder / (stem + "-pipe.xlsx")).c_str(), 0600), 0);
    }
    static void expect_traps(const fs::path& folder, const std::string& stem)
    {
        for (const char* link : {"-loop", "-circle", "-dangling", "-device", "-full"})
            EXPECT_TRUE(fs::is_symlink(folder / (stem + link + ".xlsx"))) << link;
        EXPECT_TRUE(fs::is_directory(folder / (stem + "-folder.xlsx")));
        EXPECT_TRUE(fs::is_fifo(folder / (stem + "-pipe.xlsx")));
    }
    /// Copies under names that are the disk's own business. Gives how many can be opened by their names.
    static std::size_t copy_under_hostile_names(const fs::path& file, const std::string& stem)
    {
        const std::string endless(255 - stem.size() - 5, 'x');
        std::size_t usable = 0;
        for (const std::string before : {"CON ", "a:b ", "a*b ", "a?b ", "<>|\" ", "\x01\x1f ", ".. ", " ", "-rf ",
                                         "%n%s ", "`x` ", endless.c_str()}) {
            fs::copy_file(file, file.parent_path() / (before + stem + ".xlsx"));
            ++usable;
        }
        for (const std::string before : {"back\\slash ", "\xff\xfe "})
            fs::copy_file(file, file.parent_path() / (before + stem + ".xlsx"));
        return usable;
    }
};

TEST_P(HostileFolders, cost_one_message_and_lose_nothing)
{
    const Job& job = job_named(GetParam());
    if (job.prepare) job.prepare(desk);
    const fs::path picked = desk.started.files.resolve(job.picked), folder = picked.parent_path();
    desk.play(job);
    const auto usual = desk.started.dialogs.take_messages();
    const std::size_t usual_files = desk.program.run.files.size();

    fs::remove_all(desk.started.drive_d.path() / "out");
    if (job.prepare) job.prepare(desk);
    const std::string stem = picked.stem().string();
    lay_traps(folder, stem);
    const std::size_t usable = copy_under_hostile_names(picked, stem);
    const Disk before = desk.disk();
    desk.play(job);
    const auto told = desk.told_beyond(usual);
    EXPECT_LE(told.size(), 1U) << told.size() << " messages";
    desk.expect_released();
    expect_traps(folder, stem);

    const Disk now = desk.disk();
    std::size_t made = 0;
    const std::string out = (desk.started.drive_d.path() / "out").string() + "/";
    for (const auto& [path, bytes] : now)
        if (!before.contains(path)) {
            EXPECT_TRUE(path.starts_with(out)) << path << " is outside";
            if (!path.ends_with(".txt")) ++made;
        }
    if (job.command == TextView(U"An keptfile")) { // they are moved
        std::multiset<std::string> contents_before, contents_now;
        for (const auto& [path, bytes] : before)
            if (path.ends_with(".xlsx")) contents_before.insert(bytes);
        for (const auto& [path, bytes] : now)
            if (path.ends_with(".xlsx")) contents_now.insert(bytes);
        EXPECT_EQ(contents_before, contents_now) << "a file is lost, or another has taken its place";
        EXPECT_GE(made, usable);
        return;
    }
    for (const auto& [path, bytes] : before)
        if (path.starts_with(folder.string())) {
            EXPECT_TRUE(now.contains(path) && now.at(path) == bytes) << path;
        }
    const auto& saved = desk.program.run.files;
    EXPECT_GE(saved.size(), usual_files + usable);
    EXPECT_EQ(std::set<Text>(saved.begin(), saved.end()).size(), saved.size());
    EXPECT_EQ(made, saved.size());
}

INSTANTIATE_TEST_SUITE_P(Commands, HostileFolders, testing::ValuesIn(walking),
                         [](const auto& name) { return std::string(name.param); });

} // namespace
} // namespace tarvik::test
