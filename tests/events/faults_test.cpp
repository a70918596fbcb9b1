#include "tests/events/sample_desk.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <new>

/// Every report command over the sample files and the embedded engines, with one fault at one operation of the disk or
/// the office: a full disk and, where they are not too many, a failing office at each operation in turn, the others at
/// those at both ends of the run and some between, and with TARVIK_EVERY_FAULT in the environment at each.
namespace tarvik::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// A job that was done once with nothing in its way.
class Faults : public testing::TestWithParam<Job> {
protected:
    const Job& job = GetParam();
    SampleDesk desk;
    FaultyFiles& faulty = desk.started.faulty;
    std::vector<std::string> usual; ///< what an undisturbed run tells
    Disk after;                     ///< what it leaves
    std::string caption;
    std::size_t file_operations = 0, office_operations = 0;

    static void SetUpTestSuite() { TemporaryFolder::keep_in_memory(); }
    Faults()
    {
        if (job.prepare) job.prepare(desk);
        desk.keep_disk();
        desk.quiet();
        desk.play(job);
        file_operations = faulty.counted();
        office_operations = desk.office.counted();
        after = desk.disk();
        usual = desk.started.dialogs.take_messages();
        caption = to_utf8(desk.form1.window.caption());
    }
    void SetUp() override { ASSERT_NE(after, desk.kept()) << testing::PrintToString(usual); }

    std::vector<std::string> told() { return desk.told_beyond(usual); }
    /// Neither old nor new, nor one of the whole states between.
    std::vector<std::string> broken()
    {
        auto different = differences(desk.disk(), desk.kept(), after);
        if (job.in_stages) std::erase_if(different, [&](const std::string& path) { return desk.is_whole(path); });
        return different;
    }
    /// The same run with nothing in its way gives what it always gives.
    void expect_to_run_again()
    {
        desk.restore_disk();
        desk.quiet();
        desk.play(job);
        EXPECT_EQ(desk.started.dialogs.take_messages(), usual);
        if (!job.at_first_key) { // that one goes on with a count
            EXPECT_EQ(to_utf8(desk.form1.window.caption()), caption);
        }
        EXPECT_TRUE(differences(desk.disk(), after, after).empty());
    }

    enum class Turns { All, Some };
    /// Which of the operations get their turn.
    static std::vector<std::size_t> chosen(std::size_t operations, Turns turns)
    {
        constexpr std::size_t ends = 3, between = 6;
        const std::size_t step = turns == Turns::All || std::getenv("TARVIK_EVERY_FAULT")
                                     ? 1
                                     : std::max<std::size_t>(1, operations / between);
        std::vector<std::size_t> found;
        for (std::size_t turn = 1; turn <= operations; ++turn)
            if (turn <= ends || turn + ends > operations || turn % step == 0) found.push_back(turn);
        return found;
    }

    /// Plays with a fault at each of the operations; `check` looks at what came of it.
    template <typename Faulty, typename Set, typename Check>
    void each(const Faulty& counter, std::size_t operations, Turns turns, Set set, Check check)
    {
        for (const std::size_t turn : chosen(operations, turns)) {
            SCOPED_TRACE("operation " + std::to_string(turn));
            desk.restore_disk();
            set(turn);
            desk.play(job);
            const bool reached = counter.counted() >= turn;
            desk.quiet();
            if (!reached) { // the first run had to read what others find read
                desk.started.dialogs.messages.clear();
                break;
            }
            check();
            desk.expect_released();
            expect_to_run_again();
            if (HasFailure()) break;
        }
    }
    template <typename Check>
    void each_file_operation(Turns turns, const FaultyFiles::Trouble& trouble, Check check)
    {
        each(
            faulty, file_operations, turns, [&](std::size_t turn) { faulty.trouble_at(turn, trouble); }, check);
    }
};

TEST_P(Faults, of_the_disk_cost_one_message_and_nothing_else)
{
    each_file_operation(
        Turns::All, [](TextView) { throw Failure(U"磁盘已满。"); },
        [&] {
            EXPECT_THAT(told(), testing::ElementsAre(testing::HasSubstr("磁盘已满。")));
            EXPECT_THAT(broken(), IsEmpty());
        });
}

TEST_P(Faults, of_the_office_cost_one_message_and_nothing_else)
{
    const Turns turns = office_operations < 2000 ? Turns::All : Turns::Some;
    each(
        desk.office, office_operations, turns, [&](std::size_t turn) { desk.office.fail_at(turn); },
        [&] {
            EXPECT_THAT(told(), testing::ElementsAre(testing::HasSubstr("办公软件没有回应")));
            EXPECT_THAT(broken(), IsEmpty());
        });
}

// The output folder, then the one that is walked: a stick pulled out, a share that went away.
TEST_P(Faults, of_a_folder_that_goes_away_leave_its_files_whole)
{
    const fs::path stowed = desk.started.drive_d.path() / "stowed";
    for (const std::u32string_view name : {std::u32string_view(U"d:\\out"), job.picked}) {
        if (name.empty()) continue;
        fs::path folder = desk.started.files.resolve(name);
        if (name == job.picked) folder = folder.parent_path();
        if (folder == desk.started.installation.path()) continue;
        SCOPED_TRACE(utf8_of(folder));
        const auto go = [&](TextView) {
            if (fs::exists(folder)) fs::rename(folder, stowed);
        };
        const auto come_back = [&] {
            if (!fs::exists(stowed)) return;
            if (fs::exists(folder)) { // the run made it anew
                fs::copy(folder, stowed, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
                fs::remove_all(folder);
            }
            fs::rename(stowed, folder);
        };
        each_file_operation(Turns::Some, go, [&] {
            come_back();
            const auto messages = told();
            EXPECT_LE(messages.size(), 1U) << testing::PrintToString(messages);
            EXPECT_THAT(broken(), IsEmpty());
            if (messages.empty()) {
                EXPECT_THAT(differences(desk.disk(), after, after), IsEmpty()) << "nothing told of what is missing";
            }
        });
    }
}

// Somebody else works on the file that the program is about to use.
TEST_P(Faults, of_a_file_that_grows_or_shrinks_or_goes_leave_the_others_whole)
{
    std::string changed;
    const auto on_file = [&](const auto& change) {
        return [&](TextView path) {
            const fs::path file = desk.started.files.resolve(path);
            changed = utf8_of(file);
            if (fs::is_regular_file(file)) change(file);
        };
    };
    const auto check = [&] {
        const auto messages = told();
        EXPECT_LE(messages.size(), 1U) << testing::PrintToString(messages);
        for (const auto& [path, bytes] : desk.disk())
            if (path != changed && path.ends_with(".xlsx")) {
                EXPECT_TRUE(desk.is_whole(path)) << path;
            }
    };
    each_file_operation(Turns::Some, on_file([](const fs::path& file) { fs::remove(file); }), check);
    each_file_operation(Turns::Some,
                        on_file([](const fs::path& file) { fs::resize_file(file, fs::file_size(file) / 2); }), check);
    each_file_operation(Turns::Some, on_file([](const fs::path& file) {
                            std::ofstream(file, std::ios::binary | std::ios::app) << "900\t4900\t200\thalf a li";
                        }),
                        check);
}

TEST_P(Faults, of_an_output_folder_that_cannot_be_used_cost_one_message)
{
    desk.restore_disk();
    desk.started.drive_d.write("taken", "a file");
    desk.keep_disk();
    after[utf8_of(desk.started.drive_d.path() / "taken")] = "a file";
    Text deep = U"d:\\";
    for (int level = 0; level < 20; ++level) deep += Text(250, U'x') + U"\\";
    for (const Text& folder : // the second has few characters, but too many bytes and too many units of 16 bits
         {U"d:\\" + Text(300, U'x') + U"\\", U"d:\\" + Text(130, U'𠀀') + U"\\", deep, Text(U"d:\\taken\\"),
          Text(U"d:\\taken\\below\\"), Text(U"d:\\missing\\below\\"), Text(U"d:\\a\0b\\", 7)}) {
        SCOPED_TRACE(to_utf8(folder.substr(0, 20)));
        desk.restore_disk();
        desk.play(job, folder);
        const auto messages = told();
        if (job.command == TextView(U"An statistic"))
            continue; // writes into the installation folder, and asks for none
        EXPECT_THAT(messages, SizeIs(1));
        desk.expect_released();
        EXPECT_THAT(differences(desk.disk(), desk.kept(), desk.kept()), IsEmpty());
    }
    expect_to_run_again();
}

INSTANTIATE_TEST_SUITE_P(Commands, Faults, testing::ValuesIn(jobs),
                         [](const auto& job) { return std::string(job.param.name); });

// A failure or a lack of memory in whatever handler.
TEST(Events, whose_handlers_fail_are_reported_and_the_program_goes_on)
{
    Desk<NoOffice> desk;
    bool starved = true;
    desk.program.listeners.property_changed = [&](const Control&, Property) {
        if (starved) throw std::bad_alloc();
        throw Failure(U"没有完成。");
    };
    desk.happen(EventKind::Click, desk.form1.Option1);
    starved = false;
    desk.happen(EventKind::Click, desk.form1.Option2);
    EXPECT_THAT(desk.started.dialogs.take_messages(),
                testing::ElementsAre("Tarvik 计算| 请注意：\r\n内存不足，操作没有完成。", "Tarvik 计算|没有完成。"));
    desk.program.listeners.property_changed = nullptr;
    desk.form1.resultpos = 3;
    desk.happen(EventKind::Click, desk.form1.Option1);
    EXPECT_TRUE(desk.form1.Option1.value());
    EXPECT_EQ(desk.form1.resultpos, 0);
}

} // namespace
} // namespace tarvik::test
