#pragma once

#include "platform/text/text.h"

#include <memory>
#include <optional>
#include <variant>

/// The operations of a spreadsheet and a document application, with their object-model names. Every operation throws
/// Failure with a text for the user that names the file and the reason; what it was to change is then as it was, files
/// included. Whoever holds an application ends its work by quit(), or by letting go of it, which closes what is open
/// without saving. Everything happens in the calling thread, one operation at a time.
namespace tarvik {

/// What a cell is given: a text is stored as text ("00123" keeps its zeros, "=1+1" is no formula), a number as a
/// number.
using CellValue = std::variant<Text, double>;

/// The number that a text of at most 11 characters is when it reads back from it the same: of "12.5", not of "0012" or
/// "1.50".
inline std::optional<double> plain_number(const Text& text)
{
    constexpr std::size_t longest = 11;
    if (text.empty() || text.size() > longest) return std::nullopt;
    const auto held = number(text);
    return held && number_text(*held) == text ? held : std::nullopt;
}

/// Rows and columns count from 1.
class Worksheet {
public:
    virtual ~Worksheet() = default;
    /// The cell's value as text: a number as its shortest text, a date as its serial number, a formula as its result as
    /// of now, what was written and is not saved yet included, a logical value as "True" or "False", an error as its
    /// code. An empty cell gives the empty text. A formula that nothing at hand can calculate is a Failure, here and in
    /// whatever else looks at its value.
    virtual Text cell(int row, int column) const = 0;
    /// The same value as set_cell() takes it to keep what it is: a number, date or serial number as a number, anything
    /// else as text. An engine that does not tell the two apart takes for a number what reads as one and is written as
    /// one: "00123" is none.
    virtual CellValue value(int row, int column) const
    {
        Text text = cell(row, column);
        const auto held = number(text);
        return held && number_text(*held) == text ? CellValue(*held) : CellValue(std::move(text));
    }
    /// Whether the value is a number that the cell shows as a day or a time of day.
    virtual bool is_date(int /*row*/, int /*column*/) const { return false; }
    /// Whether the value is nothing or the empty text, a formula's result like any other.
    virtual bool is_empty(int row, int column) const = 0;
    /// Replaces the cell's value and formula; its format stays. The empty text empties it. A text for which
    /// plain_number() has a number is stored as that where the cell has a number format, or where a formula refers to
    /// it and it has no text format. In a merged range the empty text for a covered cell changes nothing, any other
    /// value for a covered cell goes to the range's first cell; a second value, for another cell of the range, splits
    /// it, and each goes to its own cell.
    virtual void set_cell(int row, int column, const CellValue& value) = 0;
    /// Empties every cell of the rectangle that is not empty, formulas last: one whose result is empty, or goes with
    /// what stood around it, is left alone. Gives how many it emptied.
    virtual int clear(int first_row, int last_row, int first_column, int last_column) = 0;
    /// Prints the workbook as it is now, saved or not. Blocks until Printer::print() has it; throws Failure.
    virtual void print_out() = 0;
};

class Workbook {
public:
    virtual ~Workbook() = default;
    virtual int worksheet_count() const = 0;
    /// `index` counts from 1, in the order of the workbook; what is no worksheet does not count. Valid until the
    /// workbook is closed. A sheet that could not be edited is a Failure here and not at some later write.
    virtual Worksheet& worksheet(int index) = 0;
    /// Writes the workbook to `path`, whole or not at all, replacing a file of that name; the workbook then stands for
    /// that file. The extension tells the format: .xlsx, .xlsm, .xls; behind any other .xlsx is added.
    virtual void save_as(TextView path) = 0;
    /// Ends the workbook. With `save_changes` it is written to the file that it stands for, unless it holds nothing
    /// that the file does not; when that fails the workbook stays open.
    virtual void close(bool save_changes) = 0;
};

class SpreadsheetApplication {
public:
    virtual ~SpreadsheetApplication() = default;
    /// The application keeps the workbook; it is valid until the application quits or goes. A file may be opened more
    /// than once; each is a workbook of its own.
    virtual Workbook& open(TextView path) = 0;
    /// Closes what is open without saving. The application can be used again.
    virtual void quit() = 0;
};

/// Table rows and columns count from 1.
class TextDocument {
public:
    virtual ~TextDocument() = default;
    /// Replaces the text of a cell of the document's first table. CR LF breaks the line.
    virtual void set_cell_text(int row, int column, TextView text) = 0;
    /// Puts the picture of a file into a cell of the first table beside what it holds, as large as it is unless the
    /// cell has less room.
    virtual void add_picture(int row, int column, TextView path) = 0;
    /// Writes the document to `path`, whole or not at all, replacing a file of that name; the document then stands for
    /// that file. It keeps the format in which it was opened, whatever the extension.
    virtual void save_as(TextView path) = 0;
    /// Prints the document as it is now, saved or not. Blocks until Printer::print() has it; throws Failure.
    virtual void print_out() = 0;
    /// Unsaved changes are dropped without a question.
    virtual void close() = 0;
};

class DocumentApplication {
public:
    virtual ~DocumentApplication() = default;
    /// As for a workbook.
    virtual TextDocument& open(TextView path) = 0;
    virtual void quit() = 0;
};

/// Makes the applications; both may be used side by side and several times over.
class OfficeEngines {
public:
    virtual ~OfficeEngines() = default;
    virtual std::unique_ptr<SpreadsheetApplication> create_spreadsheet() = 0;
    virtual std::unique_ptr<DocumentApplication> create_document() = 0;
};

} // namespace tarvik
