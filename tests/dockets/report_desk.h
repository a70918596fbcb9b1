#pragma once

#include "events/events.h"
#include "platform/files/file_name.h"
#include "platform/text/code_page.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <random>

/// A clerk's desk for the report commands, and a plain model of the table that they work on, by which a test predicts
/// whole workbooks.
namespace tarvik::test {

using Record = std::vector<Text>; ///< a report's line in fields; field 1 stands at index 0
using Report = std::vector<Record>;

/// A record with the fields "F1", "F2", ...
Record numbered_record(std::size_t fields);

/// The table of a report run, worked out row by row.
class PlainTable {
public:
    /// The lines that hold the key, lowered; of equal ones the last stays. They become the rows of the next split().
    std::size_t scan(const Report& report, const Text& key);
    /// Columns that a row does not reach keep what they held. A scan without lines splits nothing.
    void split();
    Text at(std::size_t row, std::size_t column) const;
    void set(std::size_t row, std::size_t column, const Text& text) { cells_[{row, column}] = text; }
    /// The distinct texts of a column.
    std::vector<Text> keys(std::size_t column) const;

private:
    std::vector<Record> rows_;
    std::map<std::pair<std::size_t, std::size_t>, Text> cells_;
};

class ReportDesk : public testing::Test {
protected:
    RecordedOffice office;
    TestProgram started{&office};
    Program& program = started.program;
    Form1& form1 = program.form1;

    void write_report(const std::string& name, const Report& report);
    void open_report(const Report& report);
    void open_text(const Text& text);
    /// Types the command and presses Enter, with the default output folder and OK to every question.
    void press_enter(TextView command);
    /// Ticks whichever timer is on until none is.
    void run();
    /// Presses Enter, and ticks to the end.
    void play(TextView command);

    /// What a workbook of this name in the installation folder holds before the run.
    void preset(const Text& name, const Cells& cells) { office.files[installed(program, name)] = cells; }
    /// What the office's file holds, empty texts aside.
    Cells workbook(const Text& path) const;
    /// The files that are no templates.
    std::vector<Text> saved() const;
    /// The output folder holds these files and no others, cell by cell.
    void expect_saved(const std::map<Text, Cells>& expected) const;
    /// Everything that a run leaves behind besides its files.
    void expect_idle();

    /// Plays the command with a failure at each operation of the office in turn, until a run comes through. After each
    /// there is one message, everything is idle, the files `untouched` hold what they held, and every document that was
    /// saved is one that a run without failures saves.
    void expect_clean_failures(TextView command, const std::vector<Text>& untouched);

private:
    Text opened_; // the runs load other reports into the pane
};

/// Random fields: missing, short, long, with "/", with points, with blanks.
class RandomFields {
public:
    explicit RandomFields(unsigned seed) : random_(seed) {}
    std::size_t below(std::size_t limit) { return random_() % limit; }
    Text field();
    /// A record of up to `fields` fields, with "" where one is missing; `key` stands in field `key_field`.
    Record record(std::size_t fields, std::size_t key_field, const Text& key);

private:
    std::mt19937 random_;
};

/// "a cell=value" lines for the report of a difference.
std::vector<std::string> lines_of(const Cells& cells);
Cells without_empty(const Cells& cells);
/// The path that a sheet gets in the default output folder when its name has this folder text and this behind it.
Text sheet_file(Text folder_text, const Text& tail, const Text& extension = U".xlsx");

} // namespace tarvik::test
