#include "platform/files/paths.h"
#include "scripts/task_files.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>

namespace tarvik {

namespace {

namespace fs = std::filesystem;

void write_program(const test::TemporaryFolder& root, const std::string& name, const std::string& body)
{
    root.write(name, "#!/bin/sh\n" + body + "\n");
    fs::permissions(root.path() / name, fs::perms::owner_all);
}

} // namespace

// What is pasted comes to a player in a folder of an unkind name, with the task's name as it is.
TEST(NightLine, starts_the_player_with_the_task)
{
    const test::TemporaryFolder root;
    const fs::path folder = root.path() / "it's $HOME 100% \"x\"";
    fs::create_directory(folder);
    const std::string at = root.path().string();
    write_program(root, "player", "printf '%s|' \"$@\" > " + at + "/played");
    fs::rename(root.path() / "player", folder / "tarvik-play");
    write_program(root, "systemctl", "echo \"$@\" > " + at + "/switched");
    write_program(root, "systemd-escape", "echo escaped");
    const Text name = U"月报 '5%' $a \\";
    const auto run = [&](const std::string& line) {
        root.write("line.sh", line);
        return std::system(("HOME=" + at + " PATH=" + at + ":$PATH sh " + at + "/line.sh").c_str());
    };
    const std::vector<NightLine> lines = night_lines(folder / "tarvik-play", name);
    ASSERT_EQ(lines.size(), 2U);

    const std::string cron = to_utf8(lines[0].line), times = "0 2 * * * ";
    ASSERT_TRUE(cron.starts_with(times));
    EXPECT_FALSE(std::regex_search(cron, std::regex("[^\\\\]%"))) << "it would end the line";
    EXPECT_EQ(run(std::regex_replace(cron.substr(times.size()), std::regex("\\\\%"), "%")), 0);
    EXPECT_EQ(root.read("played"), to_utf8(name) + "|");

    EXPECT_EQ(run(to_utf8(lines[1].line)), 0);
    EXPECT_EQ(root.read("switched"), "--user enable --now tarvik-escaped.timer\n");
    EXPECT_EQ(root.read(".config/systemd/user/tarvik-escaped.service"),
              "[Service]\nType=oneshot\nExecStart=\"" + at +
                  "/it's $$HOME 100%% \\\"x\\\"/tarvik-play\" \"月报 '5%%' $$a \\\\\"\n");
    EXPECT_EQ(root.read(".config/systemd/user/tarvik-escaped.timer"),
              "[Timer]\nOnCalendar=02:00\nPersistent=true\n[Install]\nWantedBy=timers.target\n");
}

} // namespace tarvik
