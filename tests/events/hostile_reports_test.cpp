#include "platform/files/path_text.h"
#include "platform/text/code_page.h"
#include "tests/events/sample_desk.h"
#include "tests/support/quick_disk.h"

#include <gmock/gmock.h>

#include <algorithm>

/// Reports whose fields were never meant to become names of files and folders.
namespace tarvik::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

constexpr std::u32string_view out = U"d:\\1\\2\\3\\4\\out\\"; // "..", four times over, stays on drive d

std::vector<Text> split(const Text& text, TextView separator)
{
    std::vector<Text> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator.str(), start)) != Text::npos; start = end + separator.size())
        parts.push_back(text.substr(start, end - start));
    parts.push_back(text.substr(start));
    return parts;
}

std::vector<Text> hostile_fields()
{
    auto fields =
        split(U"a/b\\c\na:b\\c\na_b_c\n../../x\n..\\..\\x\n..\n.\n...\n \n/escaped/x\n\\escaped\nd:\\escaped\\x\n"
              U"d:escaped\n\\\\server\\share\n<>|\"*?\n__;__\nCON\nnul.txt\nCOM1.xlsx\nLPT9\naux \nname.\n"
              U"name \na\x1\x1f\x7f"
              U"b\na\x85\x2028\x202e"
              U"b\n\xd800x\nx\xdc00\n\xffff\n\x10ffff\ne\x301\n"
              U"\xe9\n$x\n`x`\n-rf\n~\n%n%s\n.tarvik-1-2-3.tmp\n{raw}x\nAn docket\n3139.txt",
              U"\n");
    for (const char32_t* endless : {U"x", U"长"})
        for (const char32_t* end : {U"1", U"2"}) fields.push_back(Text(300, *endless) + end);
    fields.emplace_back(U"a\0b", 3);
    return fields;
}

/// How a report's fields are filled; columns count from 1. Its first column holds what the command looks for.
struct HostileReport {
    const char* file;
    std::u32string_view marker;
    std::vector<std::size_t> keys;  ///< tell the sheets apart
    std::vector<std::size_t> names; ///< other columns that names are made of
    std::size_t link = 0;           ///< joins the line with that of another report
    std::u32string_view before_link{};
};

struct HostileJob {
    const char* name;
    std::vector<HostileReport> reports;

    friend void PrintTo(const HostileJob& job, std::ostream* stream) { *stream << job.name; }
};

const HostileJob hostile_jobs[] = {
    {"docket",
     {{"3139.txt", U"4900", {3}, {7}, 4, U"RMA"},
      {"3138.txt", U"4900", {3}, {7}, 4, U"RMA"},
      {"3137.txt", U"", {}, {12}, 3}}},
    {"testdocket",
     {{"3139.txt", U"4900", {3, 16}, {17, 24}}, {"3138.txt", U"4900", {3, 16}, {17, 24}}, {"3137.txt", U"", {}, {12}}}},
    {"bendocket", {{"3138.txt", U"自制品", {15}, {5, 20}}, {"3137.txt", U"", {15}, {23}}}},
    {"dandocket", {{"3160.txt", U"自制品", {15}, {6, 16}}}},
    {"dockword", {{"3158.txt", U"不可修复", {15}, {14}}}},
    {"testsesameA", {{"3159.txt", U"一班", {2}, {}}}},
    {"testsesameB", {{"3159.txt", U"2024上学期", {4}, {}}}},
};

std::string in_little_endian(const Text& text)
{
    std::string bytes = "\xff\xfe";
    const auto put = [&bytes](char32_t unit) {
        bytes += static_cast<char>(unit & 0xffU);
        bytes += static_cast<char>(unit >> 8U & 0xffU);
    };
    for (const char32_t character : text)
        if (character < 0x10000) put(character); // half a pair too
        else put(0xd800 + ((character - 0x10000) >> 10U)), put(0xdc00 + ((character - 0x10000) & 0x3ffU));
    return bytes;
}

std::string in_code_page(const Text& text)
{
    std::string bytes = encode(text);
    constexpr std::string_view mark = "{raw}", raw = "\xff\x80\x81";
    for (std::size_t at = 0; (at = bytes.find(mark, at)) != std::string::npos;) bytes.replace(at, mark.size(), raw);
    return bytes;
}

class HostileDesk : public testing::Test {
protected:
    static void SetUpTestSuite() { keep_temporary_folders_in_memory(); }

    SampleDesk desk;
    const fs::path folder = desk.started.drive_d.path() / "1/2/3/4/out";

    HostileDesk() { fs::create_directories(folder.parent_path()); }

    /// The report's widest line once for each of the fields. A scan knows only lines that end within 720 characters
    /// behind what it looks for, so that one field at most may be as long as it likes.
    Text filled(const HostileReport& report, const std::vector<Text>& fields, bool apart) const
    {
        constexpr std::size_t usual = 8, shortened = 60;
        const auto lines = split(decode_foreign(desk.started.installation.read(report.file)).text().str(), U"\r\n");
        std::vector<Text> widest;
        for (const Text& line : lines)
            if (auto cells = split(line, U"\t"); cells.size() > widest.size()) widest = std::move(cells);
        for (Text& cell : widest) cell.resize(std::min(cell.size(), usual));
        Text text = lines[0] + U"\r\n";
        for (std::size_t i = 0; i < fields.size(); ++i) {
            std::vector<Text> cells = widest;
            const Text number = number_text(7'000'000 + static_cast<double>(i));
            cells[0] = Text(report.marker);
            for (std::size_t name = 0; name < report.names.size(); ++name) {
                Text& cell = cells[report.names[name] - 1] = fields[i];
                if (name != i % report.names.size()) cell.resize(std::min(cell.size(), shortened));
            }
            for (const std::size_t column : report.keys) {
                Text& key = cells[column - 1] = fields[i];
                if (!report.names.empty()) key.resize(std::min(key.size(), shortened));
                if (apart) key += U"#" + number;
            }
            if (report.link != 0) cells[report.link - 1] = Text(report.before_link) + number;
            for (const Text& cell : cells) text += cell + U"\t";
            text += U"\r\n";
        }
        return text;
    }

    /// The files outside of the output folder, views aside.
    std::set<fs::path> outside() const
    {
        std::set<fs::path> found;
        for (const auto& place : {desk.started.installation.path(), desk.started.drive_d.path()})
            for (auto entry = fs::recursive_directory_iterator(place); entry != fs::recursive_directory_iterator();
                 ++entry)
                if (entry->path() == folder) entry.disable_recursion_pending();
                else if (entry->path().extension() != ".txt") found.insert(entry->path());
        return found;
    }

    void expect_kept_inside(const std::set<fs::path>& before)
    {
        EXPECT_EQ(outside(), before);
        for (const char* name : {"/escaped", "/server"}) EXPECT_FALSE(fs::exists(name));
        if (!fs::exists(folder)) return;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            const Text name = text_of(entry.path().filename());
            EXPECT_EQ(name.find_first_of(U"\\:*?\"<>|\n\r\t\x1\x1f"), Text::npos) << entry.path();
        }
    }

    static std::size_t distinct(const std::vector<Text>& paths)
    {
        return std::set<Text>(paths.begin(), paths.end()).size();
    }
};

class HostileReports : public HostileDesk, public testing::WithParamInterface<HostileJob> {};
using HostileSummary = HostileDesk;

TEST_P(HostileReports, make_a_sheet_for_each_key_inside_of_the_output_folder)
{
    const HostileJob& hostile = GetParam();
    Job job = job_named(hostile.name);
    job.lines = 1000;
    const auto fields = hostile_fields();
    if (job.prepare) job.prepare(desk);
    for (const auto bytes_of : {in_little_endian, in_code_page}) {
        SCOPED_TRACE(bytes_of == in_code_page ? "code page" : "UTF-16");
        fs::remove_all(folder);
        for (const HostileReport& report : hostile.reports)
            desk.started.installation.write(report.file, bytes_of(filled(report, fields, true)));
        const auto before = outside();
        const Disk held = desk.disk();
        desk.play(job, out);
        const std::vector<Text>& saved = desk.program.run.files;
        EXPECT_EQ(saved.size(), fields.size()) << to_utf8(desk.form1.window.caption());
        EXPECT_EQ(distinct(saved), saved.size()) << "no sheet takes another's place";
        for (const Text& path : saved) EXPECT_TRUE(desk.started.files.file_exists(path)) << to_utf8(path);
        EXPECT_TRUE(desk.form1.window.caption().ends_with(U" OK !")) << to_utf8(desk.form1.window.caption());
        EXPECT_LE(desk.started.dialogs.take_messages().size(), 2U) << "the command's own";
        desk.expect_idle();
        expect_kept_inside(before);
        const Disk now = desk.disk();
        for (const auto& [path, bytes] : held) {
            const std::string name = path_of_utf8(path).filename().string();
            const bool is_template = name.starts_with("z") && name.ends_with(".xlsx"); // emptied ahead of each sheet
            EXPECT_TRUE(is_template || now.at(path) == bytes) << path << " is another";
        }
    }
}

// Keys that stand in other lines as well make whatever sheet those lines give, or end the run with what is missing.
TEST_P(HostileReports, with_nothing_else_in_their_fields_stay_inside_of_the_output_folder)
{
    const HostileJob& hostile = GetParam();
    Job job = job_named(hostile.name);
    job.lines = 1000;
    if (job.prepare) job.prepare(desk);
    const auto before = outside();
    std::size_t files = 0;
    for (const Text& field : hostile_fields()) {
        SCOPED_TRACE(to_utf8(field));
        for (const HostileReport& report : hostile.reports)
            desk.started.installation.write(report.file, in_little_endian(filled(report, {field}, false)));
        desk.play(job, out);
        EXPECT_LE(desk.started.dialogs.take_messages().size(), 3U);
        desk.expect_idle();
        expect_kept_inside(before);
        files += desk.program.run.files.size();
    }
    EXPECT_GT(files, 30U);
}

INSTANTIATE_TEST_SUITE_P(Commands, HostileReports, testing::ValuesIn(hostile_jobs),
                         [](const auto& job) { return std::string(job.param.name); });

// One file for a whole report, named for its first record.
TEST_F(HostileSummary, lies_in_a_folder_of_its_own)
{
    const HostileReport report{"3158.txt", U"自制品", {}, {22}};
    const Job& job = job_named("wodben");
    for (const Text& field : hostile_fields()) {
        SCOPED_TRACE(to_utf8(field));
        fs::remove_all(folder);
        desk.started.installation.write(report.file, in_little_endian(filled(report, {field}, false)));
        const auto before = outside();
        desk.program.run.files.clear();
        desk.play(job, out);
        const auto told = desk.started.dialogs.take_messages();
        ASSERT_EQ(desk.program.run.files.size(), 1U) << told.size() << " messages";
        EXPECT_TRUE(desk.started.files.file_exists(desk.program.run.files[0]));
        expect_kept_inside(before);
        desk.expect_idle();
    }
}

} // namespace
} // namespace tarvik::test
