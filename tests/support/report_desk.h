#pragma once

#include "platform/files/paths.h"
#include "platform/text/code_page.h"
#include "tests/support/desk.h"
#include "tests/support/recorded_office.h"

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

class ReportDesk : public testing::Test, protected Desk<RecordedOffice> {
protected:
    void write_report(const std::string& name, const Report& report);
    void open_report(const Report& report);
    /// What boxes have said since the last call, questions aside.
    std::vector<Text> told();

    /// What a workbook of this name in the installation folder holds before the run.
    void preset(const Text& name, const Cells& cells) { office.files[installed(program, name)] = cells; }
    /// What the office's file holds, empty texts aside.
    Cells workbook(const Text& path) const;
    /// The files in the default output folder.
    std::vector<Text> saved() const;
    /// The default output folder holds these files and no others, cell by cell.
    void expect_saved(const std::map<Text, Cells>& expected) const;
    /// Nothing is left of a run besides its files.
    void expect_idle();
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
