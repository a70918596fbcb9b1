#include "mainwindow/mainwindow.h"

#include "platform/text/code_page.h"

#include <algorithm>
#include <array>

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

Document load_document(Program& program, TextView path)
{
    const Files& files = program.platform.files;
    return program.documents.get(path, files.stamp(path), [&] {
        return recognise_foreign([&] { return files.open_for_input(path); }).document;
    });
}

double min3to1(double a, double b, double c)
{
    std::array sorted{a, b, c};
    std::ranges::sort(sorted);
    const auto first = std::ranges::find_if(sorted, [](double value) { return value != 0; });
    return first == sorted.end() ? 0 : *first;
}

double min2to1(double a, double b)
{
    return std::min(a, b);
}

double ccnn(TextView text)
{
    if (text.empty()) return 0;
    const auto value = number(text);
    if (!value) throw Failure(U"不是数值：" + text);
    return *value;
}

} // namespace tarvik
