#include "mainwindow/spreadsheet_task.h"

namespace tarvik {

SpreadsheetTask::SpreadsheetTask(Program& program, TextView path, bool visible) : program_(program)
{
    Form1& form1 = program_.form1;
    try {
        form1.xlApp = program_.office.create_spreadsheet();
        form1.xlBook = &form1.xlApp->open(path);
        form1.xlApp->set_visible(visible);
        form1.xlSheet = &form1.xlBook->worksheet(1);
    } catch (...) {
        release();
        throw;
    }
}

SpreadsheetTask::~SpreadsheetTask()
{
    release();
}

void SpreadsheetTask::finish(Changes changes)
{
    Form1& form1 = program_.form1;
    form1.xlSheet = nullptr;
    form1.xlBook->close(changes == Changes::Save);
    form1.xlBook = nullptr;
    form1.xlApp->quit();
    release();
}

void SpreadsheetTask::release()
{
    Form1& form1 = program_.form1;
    form1.xlSheet = nullptr;
    form1.xlBook = nullptr;
    form1.xlApp.reset();
}

} // namespace tarvik
