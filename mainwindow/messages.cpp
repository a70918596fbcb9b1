#include "mainwindow/mainwindow.h"

namespace tarvik {

Answer tell(Program& program, TextView text, TextView title, Icon icon)
{
    return ask(program, text, title, Buttons::OK, icon);
}

Answer ask(Program& program, TextView text, TextView title, Buttons buttons, Icon icon)
{
    const Answer answer = program.platform.dialogs.message({text.str(), title.str(), buttons, icon});
    program.form1.answer = static_cast<int>(answer);
    return answer;
}

Text installed(const Program& program, TextView name)
{
    return path_in(program.platform.files.installation_folder(), name);
}

} // namespace tarvik
