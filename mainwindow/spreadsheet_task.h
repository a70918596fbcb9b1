#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// One spreadsheet task: an application of its own with one open workbook, kept in the main window's members xlApp,
/// xlBook and xlSheet while it lasts. A task that is left without finish() closes the workbook unsaved and lets go of
/// the application, so that a failure half-way leaves every file as it was.
class SpreadsheetTask {
public:
    enum class Changes { Save, Discard };

    /// Opens the workbook and takes its first worksheet. Throws Failure, with no application left behind.
    SpreadsheetTask(Program& program, TextView path, bool visible = false);
    ~SpreadsheetTask();
    SpreadsheetTask(const SpreadsheetTask&) = delete;
    SpreadsheetTask& operator=(const SpreadsheetTask&) = delete;

    Workbook& book() { return *program_.form1.xlBook; }
    Worksheet& sheet() { return *program_.form1.xlSheet; }
    /// Closes the workbook and quits the application.
    void finish(Changes changes);

private:
    void release();
    Program& program_;
};

} // namespace tarvik
