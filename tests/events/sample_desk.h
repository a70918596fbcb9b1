#pragma once

#include "runs/engines.h"
#include "tests/support/desk.h"
#include "tests/support/faulty_office.h"

#include <map>
#include <set>
#include <span>

namespace tarvik::test {

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

/// Every command that makes files.
std::span<const Job> jobs();
const Job& job_named(std::string_view name);

/// Files by their path.
using Disk = std::map<std::string, std::string>;
/// Files that hold neither what they held before nor what an undisturbed run makes of them.
std::vector<std::string> differences(const Disk& disk, const Disk& before, const Disk& after);

/// The program over a copy of the sample files and the embedded engines, with faults at hand in the disk and in the
/// office.
class SampleDesk : public Desk<FaultyOffice> {
public:
    SampleDesk();

    /// Gives the command with the job's document open, and lets the timers tick to the end.
    void play(const Job& job, std::u32string_view folder = U"d:\\out\\");

    /// Nothing fails from now on, and operations are counted anew.
    void quiet();

    /// What was told beyond these messages, counts in them aside, and is forgotten.
    std::vector<std::string> told_beyond(const std::vector<std::string>& usual);
    /// Every file by its path. Views of the tables, which any query writes anew, are left out, and so is what a run
    /// whose folder went away could not clear up.
    Disk disk() const;
    bool is_whole(const std::string& workbook);
    void keep_disk() { kept_ = disk(); }
    const Disk& kept() const { return kept_; }
    /// As it was kept. Files that hold that already stay untouched.
    void restore_disk();

private:
    libreoffice::LibreOffice suite_;
    std::set<std::string> samples_;
    Disk kept_;
};

} // namespace tarvik::test
