#pragma once

#include "platform/files/disk_file.h"
#include "platform/files/paths.h"
#include "platform/text/code_page.h"
#include "runs/engines.h"
#include "tests/events/faulty_office.h"
#include "tests/support/desk.h"
#include "tests/support/places.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

namespace tarvik::test {

namespace fs = std::filesystem;

class SampleDesk;

/// A report command as a clerk gives it over the sample files.
struct Job {
    const char* name;
    const char* document; ///< of the samples; the first lines of it make a short run
    std::u32string_view command;
    std::u32string_view picked{}; ///< the file that stands for its folder
    void (*prepare)(SampleDesk& desk) = nullptr;
    int lines = 9;
    bool at_first_key = false; ///< as if a run were at its first key, by which the command takes files
    bool in_stages = false;    ///< saves a file more than once: each of its states is whole

    friend void PrintTo(const Job& job, std::ostream* out) { *out << job.name; }
};

/// Files by their path.
using Disk = std::map<std::string, std::string>;
/// Files that hold neither what they held before nor what an undisturbed run makes of them.
inline std::vector<std::string> differences(const Disk& disk, const Disk& before, const Disk& after)
{
    std::vector<std::string> found;
    const auto is = [](const Disk& other, const std::string& path, const std::string* bytes) {
        const auto file = other.find(path);
        return file == other.end() ? !bytes : bytes && file->second == *bytes;
    };
    Disk all = before;
    all.insert(after.begin(), after.end());
    all.insert(disk.begin(), disk.end());
    for (const auto& [path, unused] : all) {
        const auto file = disk.find(path);
        const std::string* bytes = file == disk.end() ? nullptr : &file->second;
        if (!is(before, path, bytes) && !is(after, path, bytes)) found.push_back(path);
    }
    return found;
}

inline std::string without_counts(std::string message)
{
    std::erase_if(message, [](char character) { return character == '-' || (character >= '0' && character <= '9'); });
    return message;
}

/// The program over a copy of the sample files and the embedded engines, with faults at hand in the disk and in the
/// office.
class SampleDesk : public Desk<FaultyOffice> {
public:
    SampleDesk()
    {
        const fs::path from = fs::path(source_folder()) / "installation", to = started.installation.path();
        for (const auto& entry : fs::directory_iterator(from)) {
            const std::string name = utf8_of(entry.path().filename());
            if (name.ends_with(".play") || name.starts_with("牛津") || name.starts_with("现代")) continue;
            fs::copy(entry.path(), to / entry.path().filename(), fs::copy_options::recursive);
        }
        for (const auto& entry : fs::recursive_directory_iterator(to)) samples_.insert(utf8_of(entry.path()));
        office.start(make_engines(Engine::Ooxml, started.watched, started.printer, suite_));
    }

    /// Gives the command with the job's document open, and lets the timers tick to the end.
    void play(const Job& job, std::u32string_view folder = U"d:\\out\\")
    {
        const std::string report = started.installation.read(job.document);
        std::size_t end = 0;
        for (int line = 0; line < job.lines && end != std::string::npos; ++line) end = report.find('\n', end + 1);
        started.open_text(
            recognise_foreign(report.substr(0, end == std::string::npos ? end : end + 1)).document.text());
        started.dialogs.files = std::deque<std::optional<Text>>(3, Text(job.picked));
        if (job.at_first_key) {
            program.module1.keylist.set(0, U"20240101");
            form1.batchcursor = 0;
        }
        typed_folder = folder;
        Desk::play(job.command, {Answer::OK, Answer::OK, Answer::OK});
    }

    /// Nothing fails from now on, and operations are counted anew.
    void quiet()
    {
        started.faulty.fail_at(0);
        office.fail_at(0);
    }

    /// What was told beyond these messages, counts in them aside, and is forgotten.
    std::vector<std::string> told_beyond(const std::vector<std::string>& usual)
    {
        auto told = started.dialogs.take_messages();
        for (const std::string& message : usual)
            if (const auto found = std::ranges::find(told, without_counts(message), without_counts);
                found != told.end())
                told.erase(found);
        return told;
    }

    /// Every file by its path. Views of the tables, which any query writes anew, are left out, and so is what a run
    /// whose folder went away could not clear up.
    Disk disk() const
    {
        Disk held;
        for (const TemporaryFolder* folder : {&started.installation, &started.drive_d})
            for (const auto& entry : fs::recursive_directory_iterator(folder->path())) {
                const std::string path = utf8_of(entry.path());
                const std::string name = utf8_of(entry.path().lexically_relative(folder->path()));
                const bool view = folder == &started.installation && !samples_.contains(path) &&
                                  name.ends_with(".txt") && name != "3150.txt";
                std::error_code gone;
                if (entry.is_regular_file(gone) && !view && !is_unfinished(utf8_of(entry.path().filename())))
                    held[path] = folder->read(name);
            }
        return held;
    }

    bool is_whole(const std::string& workbook)
    {
        if (!fs::exists(path_of_utf8(workbook))) return false;
        try {
            const auto application = office.create_spreadsheet();
            application->open(from_utf8(workbook)).worksheet(1);
            return true;
        } catch (const Failure&) {
            return false;
        }
    }

    void keep_disk() { kept_ = disk(); }
    const Disk& kept() const { return kept_; }
    /// As it was kept. Files that hold that already stay untouched.
    void restore_disk()
    {
        Disk held = disk();
        for (const auto& [path, bytes] : held)
            if (!kept_.contains(path)) fs::remove(path_of_utf8(path));
        for (const auto& [path, bytes] : kept_)
            if (const auto file = held.find(path); file == held.end() || file->second != bytes)
                std::ofstream(path_of_utf8(path), std::ios::binary) << bytes;
    }

private:
    libreoffice::LibreOffice suite_;
    std::set<std::string> samples_;
    Disk kept_;
};

inline void transcripts(SampleDesk& desk)
{
    desk.play({.name = "", .document = "3159.txt", .command = U"An testsesame A"}, U"d:\\src\\");
    desk.started.dialogs.messages.clear();
}

inline void transcripts_and_their_design(SampleDesk& desk)
{
    transcripts(desk);
    Form4& form4 = desk.form4;
    for (TextBox* box : form4.design_boxes()) box->set_text(U"-1");
    form4.Text3.set_text(U"一班");
    form4.Text4.set_text(U"2");
    struct Pair {
        int index;
        std::u32string_view target, source;
    };
    for (const Pair& pair : {Pair{0, U"3", U"-1"}, {1, U"2", U"2"}, {2, U"18", U"-1"}, {3, U"2", U"5"}}) {
        form4.Text1[pair.index].set_text(Text(pair.target));
        form4.Text2[pair.index].set_text(Text(pair.source));
    }
}

inline void first_column_to_keep_by(SampleDesk& desk)
{
    transcripts(desk);
    desk.program.form3.Text1[5].set_text(U"2");
}

inline void docket_design(SampleDesk& desk)
{
    Form4& form4 = desk.form4;
    for (TextBox* box : form4.design_boxes()) box->set_text(U"-1");
    form4.Text3.set_text(U"4900");
    form4.Text4.set_text(U"3");
    form4.Text1[0].set_text(U"7");
    form4.Text1[1].set_text(U"2");
    form4.Text2[1].set_text(U"8");
    desk.started.dialogs.replies = {Answer::OK, Answer::Yes};
    desk.happen(EventKind::Click, form4.Command1);
    desk.started.dialogs.messages.clear();
}

constexpr Job over_transcripts(const char* name, std::u32string_view command, void (*prepare)(SampleDesk&),
                               bool at_first_key = false)
{
    return {name, "3160.txt", command, U"d:\\src\\20240101.xlsx", prepare, 1000, at_first_key};
}

/// Every command that makes files.
inline constexpr Job jobs[] = {
    {.name = "docket", .document = "3139.txt", .command = U"An docket"},
    {.name = "testdocket", .document = "3139.txt", .command = U"An testdocket", .prepare = docket_design},
    {.name = "bendocket", .document = "3138.txt", .command = U"An bendocket", .lines = 236},
    {.name = "dandocket", .document = "3160.txt", .command = U"An dandocket"},
    {.name = "wodben", .document = "3158.txt", .command = U"An wodben"},
    {.name = "dockword", .document = "3158.txt", .command = U"An dockword", .lines = 8},
    {.name = "testsesameA", .document = "3159.txt", .command = U"An testsesame A"},
    {.name = "testsesameB", .document = "3159.txt", .command = U"An testsesame B"},
    over_transcripts("tomation", U"An tomation", transcripts),
    over_transcripts("Excelfile", U"An Excelfile", transcripts_and_their_design),
    over_transcripts("SesameOpen", U"An Sesame Open", transcripts, true),
    over_transcripts("keptfile", U"An keptfile", first_column_to_keep_by),
    {.name = "label", .document = "z1型号.txt", .command = U"An label", .picked = U"z1.xlsx", .in_stages = true},
    {.name = "order",
     .document = "维修/维修记录.txt",
     .command = U"An order",
     .picked = U"维修/送修单/望海港务集团送修单.xlsx",
     .lines = 1000},
    {.name = "prices",
     .document = "维修/报价记录.txt",
     .command = U"An prices",
     .picked = U"维修/报价单/望海港务集团报价单.xlsx",
     .lines = 1000},
    {.name = "statistic", .document = "3137.txt", .command = U"An statistic"},
};

} // namespace tarvik::test
