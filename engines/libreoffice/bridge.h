#pragma once

#include "engines/automation.h"

#include <chrono>
#include <compare>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

/// What the plugin does for the program: LibreOffice's own calls in plain types. Everything here runs on one thread,
/// the one that made the connection; a call takes as long as LibreOffice does. What LibreOffice refuses is a
/// std::runtime_error with its own words in UTF-8. Rows, columns and sheets count from 1.
namespace tarvik::libreoffice {

/// The process at the other end is gone, or the connection to it is.
class ConnectionLost : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Area {
    int first_row = 1, first_column = 1, last_row = 0, last_column = 0;

    bool empty() const noexcept { return last_row < first_row || last_column < first_column; }
    int rows() const noexcept { return last_row - first_row + 1; }
    int columns() const noexcept { return last_column - first_column + 1; }
    bool contains(int row, int column) const noexcept
    {
        return row >= first_row && row <= last_row && column >= first_column && column <= last_column;
    }
    std::int64_t cells() const noexcept { return empty() ? 0 : std::int64_t{rows()} * columns(); }
    friend bool operator==(const Area&, const Area&) = default;
};

struct Place {
    int row = 0, column = 0;
    friend auto operator<=>(const Place&, const Place&) = default; // NOLINT(modernize-use-nullptr): of the checker
};

/// A cell that holds something: its value, a formula's result. An error is the text of its code.
struct HeldCell {
    Place place;
    CellValue value;
    bool is_formula = false;
};

struct SheetContent {
    std::vector<HeldCell> cells; ///< in ascending order
    std::vector<Area> notes;     ///< cells with a note, which is lost when its cell is written in a block
};

/// A rectangle of values, row by row. A text is stored as text; an empty one empties its cell. Formats stay.
struct Block {
    Area area;
    std::vector<CellValue> values;
};

/// The smallest area around another one that cuts no merged range through.
struct MergedArea {
    Area area;
    bool has_merged = false; ///< a merged range lies in it
};

enum class Printing { Done, PrinterUnknown, JobRefused };

/// A file held open; letting go of it closes it unsaved.
class OpenFile {
public:
    virtual ~OpenFile() = default;
    /// Writes a copy in a format that is named as LibreOffice names it; the file held open stays what it was.
    virtual void store(const std::filesystem::path& path, const std::string& filter) = 0;
    /// Calculates every formula of a workbook, whatever results the file brought along.
    virtual void calculate_all() = 0;
    /// To the printer of this name; returns when the document is handed over, or is not taken.
    virtual Printing print(const std::string& printer) = 0;
};

enum class ShownAs { Number, Logical, Date };

class OpenWorkbook : public OpenFile {
public:
    /// LibreOffice's name of the format that the file was read as.
    virtual const std::string& filter() const = 0;
    virtual int sheet_count() = 0;
    /// Whether no cell of it can be written, by a wish of the file's.
    virtual bool is_read_only() { return false; }
    /// Makes a protected sheet one that can be written; a file that is stored has it protected. False where that takes
    /// a password.
    virtual bool lift_protection(int /*sheet*/) { return true; }
    virtual SheetContent read(int sheet) = 0;
    /// What a cell that holds a number shows it as.
    virtual ShownAs shown_as(int sheet, int row, int column) = 0;
    virtual MergedArea merged_around(int sheet, const Area& area) = 0;
    virtual void split_merged(int sheet, const Area& area) = 0;
    /// The parts of the areas whose cells have a number format, or one that is none of texts and a formula that refers
    /// to them, as the file was read.
    virtual std::vector<Area> numeric_parts(int sheet, const std::vector<Area>& areas) = 0;
    virtual void write(int sheet, const Block& block) = 0;
    /// Keeps the cell's note.
    virtual void write_cell(int sheet, int row, int column, const CellValue& value) = 0;
};

struct Size {
    int width = 0, height = 0;
};

/// Cells are those of the document's first table. The cells of a row are counted one by one; one that a merged cell
/// above covers counts, but is not there.
class OpenDocument : public OpenFile {
public:
    virtual bool has_table() = 0;
    /// LF breaks the line. Gives whether the cell is there.
    virtual bool set_cell_text(int row, int column, const Text& text) = 0;
    /// What a picture in the cell may take, the cell's width and the height of the page's text, in 1/100 mm; nothing
    /// where the cell is not there.
    virtual std::optional<Size> room_in_cell(int row, int column) = 0;
    /// Puts a picture into the cell, behind the contents if there are any, as large as `size` in 1/100 mm.
    virtual void add_picture(int row, int column, const std::filesystem::path& picture, Size size) = 0;
};

class Connection {
public:
    virtual ~Connection() = default;
    /// A null pointer when LibreOffice takes the file for something else, or when a suite edits no files.
    virtual std::unique_ptr<OpenWorkbook> open_workbook(const std::filesystem::path& /*path*/) { return nullptr; }
    virtual std::unique_ptr<OpenDocument> open_document(const std::filesystem::path& /*path*/) { return nullptr; }
    /// Whatever it is; a null pointer when LibreOffice cannot read it.
    virtual std::unique_ptr<OpenFile> open(const std::filesystem::path& path) = 0;
    /// Called from another thread, again and again, while a call lasts longer than it may: makes the call fail where
    /// the end of the process does not. Gives what the user is to know of the reason, mostly nothing; no text at all as
    /// long as the call is to be waited for after all.
    virtual std::optional<Text> give_up(std::chrono::milliseconds /*waited*/) { return Text(); }
};

class Plugin {
public:
    virtual ~Plugin() = default;
    /// Where LibreOffice's programs lie.
    virtual std::filesystem::path program_folder() const = 0;
    /// Connects to the process that listens on the pipe; a null pointer as long as none does.
    virtual std::unique_ptr<Connection> connect(const std::string& pipe) = 0;
};

/// The one function that the plugin offers, by its name. The plugin stays as long as the program runs.
using PluginFunction = Plugin*();
inline constexpr const char* plugin_function = "tarvik_libreoffice_plugin";
inline constexpr const char* plugin_file = "tarvik-libreoffice.so";

} // namespace tarvik::libreoffice
