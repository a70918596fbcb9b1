#pragma once

#include "engines/automation.h"
#include "engines/spreadsheets/calculation/places.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// What the plugin does for the program: LibreOffice's own calls in plain types. One thread calls at a time; a call
/// takes as long as LibreOffice does. What LibreOffice refuses is a std::runtime_error with its own words in UTF-8,
/// where the call is made inside of perform(). Rows, columns and sheets count from 1.
namespace tarvik::libreoffice {

/// The process at the other end is gone, or the connection to it is.
class ConnectionLost : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
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

enum class Access { Granted, FileRefused, SheetRefused };

class OpenWorkbook : public OpenFile {
public:
    using Cells = std::vector<std::pair<ooxml::Place, CellValue>>;

    /// Whether the sheet can be written. A protected one is made so, and protected in a file that is stored; refused
    /// where that takes a password. A file is refused that asks for a password for changes.
    virtual Access take(int sheet) = 0;
    /// Splits the merged ranges and writes the cells, which come row by row. A text is stored as text; an empty one
    /// empties its cell. Formats and notes stay. Gives the first cell of those that LibreOffice does not write; it
    /// gives no reason.
    virtual std::optional<ooxml::Place> write(int sheet, const std::vector<ooxml::Range>& split,
                                              const Cells& cells) = 0;
};

/// In 1/100 mm.
struct Size {
    double width = 0, height = 0;
};

/// Cells are those of the document's first table. The cells of a row are counted one by one; one that a merged cell
/// above covers counts, but is not there.
class OpenDocument : public OpenFile {
public:
    virtual bool has_table() = 0;
    /// LF breaks the line. Gives whether the cell is there.
    virtual bool set_cell_text(int row, int column, const Text& text) = 0;
    /// Puts a picture into the cell, behind the contents if there are any, as large as `size` or as much smaller as the
    /// cell's width and the height of the page's text ask for. Gives whether the cell is there.
    virtual bool add_picture(int row, int column, const std::filesystem::path& picture, Size size) = 0;
};

class Connection {
public:
    virtual ~Connection() = default;
    /// A workbook or a document where LibreOffice takes it for one, and where the suite edits files; a null pointer
    /// when it cannot be read.
    virtual std::unique_ptr<OpenFile> open(const std::filesystem::path& path) = 0;
    /// Does work with what is open or opened here.
    virtual void perform(const std::function<void()>& work) { work(); }
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
