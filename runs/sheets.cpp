#include "runs/sheets.h"

#include "platform/files/paths.h"
#include "runs/batch_runner.h"

namespace tarvik {

namespace {

constexpr std::size_t added_extension = 5; // ".xlsx", which the saving adds where there is none

Text sheet_folder(Program& program, const Text& folder_text)
{
    if (folder_text.empty()) return program.form1.outfolder;
    Text folder = program.form1.outfolder + safe_file_name(folder_text) + U"\\";
    if (!program.platform.files.folder_exists(folder)) program.platform.files.create_folder(folder);
    return folder;
}

/// `head` is cut first and `tail` only when it is too long by itself; the extension stays.
Text fitted(TextView head, TextView tail, TextView extension, std::size_t whole = longest_name)
{
    const std::size_t room = whole - name_size(extension);
    const TextView kept_tail = cut_to_room(tail, room);
    return cut_to_room(head, room - name_size(kept_tail)).str() + kept_tail + extension;
}

Text numbered(const Text& folder, TextView name, int number, std::size_t room = longest_name)
{
    const auto [stem, extension] = split_extension(name);
    return folder + fitted(stem, U" (" + number_text(number) + U")", extension, room);
}

/// The file for the name `wanted`: `name` in the folder, or that with a number when another name of this run has it.
Text claimed(Program& program, const Text& folder, const Text& name, const Text& wanted,
             std::size_t room = longest_name)
{
    Text path = folder + name;
    for (int number = 2;; ++number) {
        const auto [owner, is_new] = program.run.names.try_emplace(lower(path), wanted);
        if (is_new || owner->second == wanted) return path;
        path = numbered(folder, name, number, room);
    }
}

void refuse_second(const void* application)
{
    if (application) throw Failure(U" 请注意：\r\n上一个报表任务还没有结束，请稍后再试。");
}

} // namespace

bool sheet_wanted(const Program& program, TextView command)
{
    return program.form1.dbresult && TextView(program.form1.query_box().text()).contains(command);
}

bool key_gets_sheet(Program& program, TextView command)
{
    if (sheet_wanted(program, command)) return true;
    if (program.form1.dbresult && program.form1.batchcursor >= 0)
        program.run.passed.push_back({run_key(program), U"框中已不是这个命令"});
    return false;
}

Text sheet_path(Program& program, const SheetName& name)
{
    Text folder_text = name.folder_text;
    std::erase(folder_text, U'.');
    Text tail;
    for (const Text& part : name.parts) tail += U"-" + part;
    tail += name.ending;
    const Text folder = sheet_folder(program, folder_text);
    const Text fitting = usable_name(fitted(safe_name_part(folder_text), safe_name_part(tail), name.extension));
    return claimed(program, folder, fitting, folder_text + U"\\" + folder_text + tail + name.extension);
}

Text plain_sheet_path(Program& program, const Text& name)
{
    const std::size_t room = longest_name - added_extension;
    return claimed(program, program.form1.outfolder, safe_file_name(name, room), name, room);
}

void move_into_folder(Program& program, const Text& file, const Text& folder, const Text& name)
{
    Text path = folder + name;
    for (int number = 2; !program.platform.files.move_file(file, path); ++number) path = numbered(folder, name, number);
}

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
