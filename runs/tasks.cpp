#include "runs/tasks.h"

namespace tarvik {

namespace {

void refuse_second(const void* application)
{
    if (application) throw Failure(U" 请注意：\r\n上一个报表任务还没有结束，请稍后再试。");
}

} // namespace

SpreadsheetTask::SpreadsheetTask(Program& program) : program_(program)
{
    refuse_second(program_.form1.xlApp);
    application_ = program_.office.create_spreadsheet();
    program_.form1.xlApp = application_.get();
}

SpreadsheetTask::SpreadsheetTask(Program& program, TextView path) : SpreadsheetTask(program)
{
    open(path); // the object stands already, so its destructor lets go when this fails
}

void SpreadsheetTask::open(TextView path)
{
    Form1& form1 = program_.form1;
    form1.xlBook = &application_->open(path);
    form1.xlSheet = &form1.xlBook->worksheet(1);
}

Worksheet& SpreadsheetTask::take_sheet(int index)
{
    program_.form1.xlSheet = &book().worksheet(index);
    return sheet();
}

void SpreadsheetTask::save_as(TextView path)
{
    book().save_as(path);
    program_.run.files.push_back(path.str());
}

void SpreadsheetTask::finish(Changes changes)
{
    if (program_.form1.xlBook) book().close(changes == Changes::Save);
    application_->quit();
    release();
}

void SpreadsheetTask::release() noexcept
{
    if (!application_) return;
    Form1& form1 = program_.form1;
    form1.xlSheet = nullptr;
    form1.xlBook = nullptr;
    form1.xlApp = nullptr;
    application_.reset();
}

void blank_template(Program& program, TextView name, int first_row, int last_row)
{
    constexpr int last_column = 10;
    const Text path = installed(program, name);
    const Files& files = program.platform.files;
    const auto known = program.blank_templates.find(path);
    if (known != program.blank_templates.end() && files.file_exists(path) && files.stamp(path) == known->second) return;
    SpreadsheetTask task(program, path);
    task.sheet().clear(first_row, last_row, 1, last_column);
    task.finish(Changes::Save);
    program.blank_templates[path] = files.stamp(path);
}

DocumentTask::DocumentTask(Program& program) : program_(program)
{
    refuse_second(program_.form1.wdApp);
    application_ = program_.office.create_document();
    program_.form1.wdApp = application_.get();
}

DocumentTask::DocumentTask(Program& program, TextView path) : DocumentTask(program)
{
    program_.form1.wdDoc = &application_->open(path);
}

void DocumentTask::save_as(TextView path)
{
    document().save_as(path);
    program_.run.files.push_back(path.str());
}

void DocumentTask::finish()
{
    document().close();
    application_->quit();
    release();
}

void DocumentTask::release() noexcept
{
    if (!application_) return;
    program_.form1.wdDoc = nullptr;
    program_.form1.wdApp = nullptr;
    application_.reset();
}

} // namespace tarvik
