#include "engines/packages/damage.h"
#include "tests/engines/libreoffice/office_fixture.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tarvik::test {

namespace fs = std::filesystem;
using libreoffice::LibreOffice;
using libreoffice::Settings;
using std::chrono::milliseconds;

namespace {

/// The state letters of the group's threads; those that have ended and wait for their parent do not count.
std::string states_of(pid_t group)
{
    std::string states;
    std::error_code ignored;
    for (const auto& process : fs::directory_iterator("/proc"))
        for (fs::directory_iterator thread(process.path() / "task", ignored), end; thread != end; ++thread) {
            std::ifstream file(thread->path() / "stat");
            std::string pid, name, state;
            pid_t parent = 0, its_group = 0;
            if (file >> pid >> name >> state >> parent >> its_group && its_group == group && state != "Z")
                states += state;
        }
    return states;
}

bool is_gone(pid_t group)
{
    return states_of(group).empty();
}

/// The files of the sockets that the process has.
std::vector<fs::path> sockets_of(pid_t process)
{
    std::set<std::string> held;
    std::error_code ignored;
    for (const auto& file : fs::directory_iterator("/proc/" + std::to_string(process) + "/fd"))
        held.insert(fs::read_symlink(file.path(), ignored).string());
    std::vector<fs::path> found;
    std::ifstream table("/proc/net/unix");
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        std::string skipped, inode, path;
        for (int i = 0; i < 6; ++i) fields >> skipped;
        if (fields >> inode >> path && held.contains("socket:[" + inode + "]") && path.starts_with('/'))
            found.emplace_back(path);
    }
    return found;
}

Settings impatient()
{
    auto settings = office_settings();
    settings.call_limit = milliseconds(5'000);
    return settings;
}

} // namespace

class OfficeProcess : public OfficeTest {
protected:
    OfficeProcess() : OfficeTest(impatient()) {}

    void SetUp() override
    {
        OfficeTest::SetUp();
        if (!IsSkipped()) make_workbook("t.xls", "<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    }

    std::string cell_after_opening()
    {
        auto application = engines.create_spreadsheet();
        return to_utf8(application->open(U"t.xls").worksheet(1).cell(1, 1));
    }
};

TEST_F(OfficeProcess, a_death_in_the_middle_is_told_and_the_next_task_gets_a_new_process)
{
    const auto bytes = folder.read("t.xls");
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    workbook.worksheet(1).set_cell(1, 1, 2.0);
    const auto group = office.process_group().value();
    ::kill(-group, SIGKILL);
    EXPECT_EQ(failure_of([&] { workbook.close(true); }), "无法处理工作簿“t.xls”：LibreOffice 意外退出，请重试。");
    EXPECT_EQ(folder.read("t.xls"), bytes);
    EXPECT_EQ(cell_after_opening(), "1");
    EXPECT_NE(office.process_group().value(), group);
    EXPECT_TRUE(is_gone(group));
    EXPECT_EQ(failure_of([&] { workbook.save_as(U"u.xls"); }),
              "无法处理工作簿“t.xls”：LibreOffice 已经重新启动，这个文件没有保存。");
}

TEST_F(OfficeProcess, a_death_between_two_tasks_goes_unnoticed)
{
    const auto group = office.process_group().value();
    ::kill(-group, SIGKILL);
    ASSERT_TRUE(comes_true([&] {
        siginfo_t told{};
        return ::waitid(P_PID, static_cast<id_t>(group), &told, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               told.si_pid == group;
    }));
    EXPECT_EQ(cell_after_opening(), "1");
}

TEST_F(OfficeProcess, a_hang_is_ended_within_the_limit)
{
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    const auto group = office.process_group().value();
    ::kill(-group, SIGSTOP);
    ASSERT_TRUE(comes_true([&] { return states_of(group).find_first_not_of('T') == std::string::npos; }));
    EXPECT_EQ(failure_of([&] { workbook.worksheet(1).cell(1, 1); }),
              "无法处理工作簿“t.xls”：LibreOffice 没有响应，已经将它结束，请重试。");
    EXPECT_TRUE(comes_true([&] { return is_gone(group); }));
    EXPECT_EQ(cell_after_opening(), "1");
}

// Without a thread of this process, whose stack would be the first one of the forked program's threads, too.
TEST_F(OfficeTest, leaves_nothing_behind_when_the_program_is_killed)
{
    folder.write("t.txt", "1");
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const auto temporary = folder.path() / "temporary";
    fs::create_directory(temporary);
    const pid_t program = ::fork();
    if (program == 0) {
        ::setenv("TMPDIR", temporary.c_str(), 1);
        LibreOffice own(office_settings());
        const auto file = own.open(folder.path() / "t.txt");
        if (!file) ::_exit(1);
        const auto told = std::to_string(own.process_group().value()) + "\n";
        [[maybe_unused]] const auto written = ::write(ends[1], told.data(), told.size());
        for (;;) ::pause();
    }
    ::close(ends[1]);
    std::string told;
    for (char letter = 0; ::read(ends[0], &letter, 1) == 1 && letter != '\n';) told += letter;
    ::close(ends[0]);
    const auto group = static_cast<pid_t>(std::stol(told));
    EXPECT_FALSE(is_gone(group));
    const auto sockets = sockets_of(group);
    EXPECT_GE(sockets.size(), 2U);
    EXPECT_FALSE(fs::is_empty(temporary));
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    EXPECT_TRUE(comes_true([&] { return is_gone(group); }));
    EXPECT_TRUE(comes_true([&] { return fs::is_empty(temporary); }));
    for (const auto& socket : sockets) EXPECT_TRUE(comes_true([&] { return !fs::exists(socket); })) << socket;
}

TEST(OfficeSettings, rest_and_wear_end_a_process)
{
    auto settings = office_settings();
    if (!fs::exists(settings.plugin)) GTEST_SKIP() << "the plugin was not built: no SDK of LibreOffice here";
    TemporaryFolder folder;
    folder.write("t.txt", "1");
    int looks = 0;
    settings.meanwhile = [&](auto) { ++looks; };
    settings.until_rest = milliseconds(300);
    settings.most_files = 2;
    fs::path own_folder;
    std::vector<fs::path> sockets;
    pid_t group = 0;
    {
        LibreOffice office(settings);
        EXPECT_FALSE(office.process_group());
        std::vector<pid_t> groups;
        for (int i = 0; i < 3; ++i) {
            ASSERT_TRUE(office.open(folder.path() / "t.txt"));
            groups.push_back(office.process_group().value());
        }
        EXPECT_EQ(groups[0], groups[1]);
        EXPECT_NE(groups[1], groups[2]);
        EXPECT_TRUE(is_gone(groups[0]));
        EXPECT_GT(looks, 3); // while the process started
        EXPECT_TRUE(comes_true([&] { return !office.process_group(); }));
        EXPECT_TRUE(is_gone(groups[2]));
        const auto file = office.open(folder.path() / "t.txt");
        std::this_thread::sleep_for(2 * settings.until_rest);
        EXPECT_TRUE(office.process_group()); // an open file keeps it
        group = office.process_group().value();
        own_folder = office.folder();
        sockets = sockets_of(group);
    }
    EXPECT_TRUE(is_gone(group));
    for (const auto& socket : sockets) EXPECT_FALSE(fs::exists(socket)) << socket;
    EXPECT_FALSE(fs::exists(own_folder));
}

TEST(OfficeSettings, what_is_missing_is_told)
{
    TemporaryFolder folder;
    Files files(folder.path());
    RecordedPrinter printer;
    auto settings = office_settings();
    settings.plugin = folder.path() / libreoffice::plugin_file;
    LibreOffice office(settings);
    HiddenEngines engines(libreoffice_files(office, files, printer));
    folder.write("t.xlsx", "PK\x03\x04");
    const auto open = [&] { engines.create_spreadsheet()->open(U"t.xlsx"); };
    EXPECT_EQ(failure_of(open),
              "无法处理工作簿“t.xlsx”：需要 LibreOffice，而程序缺少驱动它的插件 tarvik-libreoffice.so；"
              "请安装 tarvik-libreoffice；自行编译的程序，请安装 libreoffice-dev 后重新编译。");
    folder.write(libreoffice::plugin_file, "not a library");
    EXPECT_EQ(failure_of(open),
              "无法处理工作簿“t.xlsx”：没有找到 LibreOffice；请安装 libreoffice-calc 和 libreoffice-writer。");
}

} // namespace tarvik::test
