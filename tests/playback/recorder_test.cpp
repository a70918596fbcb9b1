#include "scripts/actions.h"
#include "tests/playback/random_desk.h"
#include "tests/support/places.h"
#include "tests/support/work_names.h"

#include <gtest/gtest.h>

namespace tarvik {

namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

void furnish(const TemporaryFolder& root)
{
    fs::create_directories(root.path() / "installation");
    fs::create_directories(root.path() / "d");
    root.write("installation/story.txt", "第一页。a story\r\nof a few lines，a\r\nand an end a。\r\n");
    root.write("installation/table.txt", "编号\t名称\tdate\r\n1\tab\t2024-01-02\r\n2\tac\t2024-01-05\r\n3\tab\t\r\n");
    root.write("installation/coclus.txt", "1\t2\r\n");
    for (const char* name : {"3137.txt", "3138.txt", "3139.txt", "z2.xlsx", "automation.bin"})
        fs::copy_file(fs::path(test::source_folder()) / "installation" / name, root.path() / "installation" / name);
}

std::string anywhere(std::string text, const TemporaryFolder& root)
{
    const std::string folder = root.path().string();
    for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;) text.replace(at, folder.size(), "$");
    return text;
}

/// What there is to see and what stands in the files, a line each.
std::vector<std::string> state(Program& program, const TemporaryFolder& root)
{
    std::vector<std::string> lines;
    for (const std::string& name : test::work_names(program))
        lines.push_back(anywhere(name + " = " + printed(resolve(program, name).read()), root));
    for (const auto& entry : fs::recursive_directory_iterator(root.path()))
        if (entry.is_regular_file()) {
            const std::string name = fs::relative(entry.path(), root.path()).string();
            lines.push_back(name + ": " + anywhere(root.read(name), root));
        }
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

} // namespace

// What a user does at random is recorded in one program and played in another.
TEST(Recording, plays_to_what_was_recorded)
{
    const char* const wished = std::getenv("TARVIK_SESSIONS");
    const unsigned first =
        std::getenv("TARVIK_SEED") ? static_cast<unsigned>(std::atoi(std::getenv("TARVIK_SEED"))) : 0;
    const unsigned sessions = wished ? static_cast<unsigned>(std::atoi(wished)) : 60;
    for (unsigned seed = first; seed < first + sessions; ++seed) {
        test::Random random(seed);
        const TemporaryFolder here, there;
        furnish(here);
        furnish(there);
        test::Desk desk(here, random);
        for (int acts = 0; acts < 40 && !desk.program().ended; ++acts) desk.act();
        desk.paste_by_menu();
        const std::vector<std::string> script = desk.finish();
        std::ostringstream transcript;
        Session session(test::options_of(there), transcript);
        session.start({});
        std::size_t line = 0;
        try {
            for (; line < script.size(); ++line) perform(session.stage, split_line(script[line], session.stage.holes));
        } catch (const std::exception& failure) {
            FAIL() << "seed " << seed << ": " << script[line] << ": " << failure.what() << "\n" << joined(script);
        }
        const auto recorded = state(desk.program(), here), played = state(session.program, there);
        std::vector<std::string> other;
        std::ranges::set_symmetric_difference(recorded, played, std::back_inserter(other));
        ASSERT_EQ(joined(other), "") << "seed " << seed << "\n" << joined(script);
    }
}

} // namespace tarvik
