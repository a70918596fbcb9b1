#include "dockets/save_step.h"

#include "platform/file_name.h"

namespace tarvik {

namespace {

Text without_points(TextView text)
{
    Text result = text.str();
    std::erase(result, U'.');
    return result;
}

} // namespace

bool command_leads(const Program& program, TextView command)
{
    return TextView(program.form1.query_box().text()).starts_with(command);
}

Text sheet_folder(Program& program, TextView folder_text)
{
    Text folder = program.form1.outfolder + safe_file_name(without_points(folder_text)) + U"\\";
    program.form1.fso = true;
    if (!program.platform.files.folder_exists(folder)) program.platform.files.create_folder(folder);
    return folder;
}

Text sheet_name_head(TextView folder_text)
{
    return safe_name_part(without_points(folder_text));
}

} // namespace tarvik
