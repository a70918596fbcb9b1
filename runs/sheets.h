#pragma once

#include "mainwindow/mainwindow.h"

/// A sheet of a run: whether a key gets one, the workbook or document that is open for it, and the file that it
/// becomes.
namespace tarvik {

/// Whether the table comes from a scan and the query box still holds the command, without which no sheet is made.
bool sheet_wanted(const Program& program, TextView command);
/// The same for the key at hand of a run, which is passed over where the box holds the command no more.
bool key_gets_sheet(Program& program, TextView command);

/// The name that a sheet asks for. All of its texts may come from reports.
struct SheetName {
    Text folder_text;        ///< loses its points; names the sheet's folder below outfolder and begins its name
    std::vector<Text> parts; ///< each behind a "-"
    Text ending = {};        ///< behind the parts
    Text extension = U".xlsx";
};

/// The path of a sheet in its folder below outfolder, which is made if it is not there; without a folder text it lies
/// in outfolder itself. Nothing leads out of outfolder; the name is cut to what a file system takes, in the folder text
/// first, so that what tells sheets apart stays. Within a run, names that differ get files that differ: the second gets
/// a number.
Text sheet_path(Program& program, const SheetName& name);

/// The same for a file that lies in outfolder itself and bears one name, made of a field or of another file's name. It
/// leaves room for an extension that the saving may add.
Text plain_sheet_path(Program& program, const Text& name);

/// Moves a file into a folder: a name that the folder has already gets a number, so that nothing is replaced.
void move_into_folder(Program& program, const Text& file, const Text& folder, const Text& name);

/// What becomes of an open file's changes when its task ends.
enum class Changes { Save, Discard };

/// One spreadsheet task: an application of its own with at most one open workbook. While it lasts the main window's
/// members xlApp, xlBook and xlSheet show what it holds, and no second one can stand beside it. A task that is left
/// without finish() closes its workbook unsaved and lets go of the application, so that a failure half-way leaves every
/// file as it was. Every operation throws Failure with a text for the user.
class SpreadsheetTask {
public:
    /// Creates the application, with nothing open.
    explicit SpreadsheetTask(Program& program);
    /// Creates it, opens the workbook and takes its first worksheet.
    SpreadsheetTask(Program& program, TextView path);
    ~SpreadsheetTask() { release(); }
    SpreadsheetTask(const SpreadsheetTask&) = delete;
    SpreadsheetTask& operator=(const SpreadsheetTask&) = delete;

    void open(TextView path);
    Workbook& book() { return *program_.form1.xlBook; }
    Worksheet& sheet() { return *program_.form1.xlSheet; }
    /// Takes another worksheet of the workbook; `index` counts from 1.
    Worksheet& take_sheet(int index);
    /// Saves the workbook under another name, for which it then stands, and keeps the name for the run's report.
    void save_as(TextView path);
    /// Closes the workbook, if one is open, and quits the application.
    void finish(Changes changes);

private:
    void release() noexcept;

    Program& program_;
    std::unique_ptr<SpreadsheetApplication> application_;
};

/// The same for a document, which members wdApp and wdDoc show.
class DocumentTask {
public:
    DocumentTask(Program& program, TextView path);
    ~DocumentTask() { release(); }
    DocumentTask(const DocumentTask&) = delete;
    DocumentTask& operator=(const DocumentTask&) = delete;

    TextDocument& document() { return *program_.form1.wdDoc; }
    void save_as(TextView path);
    /// Closes the document, which drops what was not saved, and quits the application.
    void finish();

private:
    explicit DocumentTask(Program& program);
    void release() noexcept;

    Program& program_;
    std::unique_ptr<DocumentApplication> application_;
};

/// Empties columns 1 to 10 of these rows in a template of the installation folder; one that this program left empty and
/// that nobody has changed since is passed over.
void blank_template(Program& program, TextView name, int first_row, int last_row);

} // namespace tarvik
