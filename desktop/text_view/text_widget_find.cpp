#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t stretch = 1'000'000; // characters that are looked through at once

// The first or last place of the lower-cased needle that begins in [from, to).
std::size_t find_between(const TextLines& lines, TextView needle, std::size_t from, std::size_t to, bool forward)
{
    const std::size_t beyond = needle.size() - 1;
    Text part;
    while (from < to) {
        const std::size_t begin = forward ? from : to - std::min(stretch, to - from);
        const std::size_t end = forward ? std::min(to, from + stretch) : to;
        part.clear();
        lines.append_to(begin, end - begin + beyond, part);
        const Text lowered = lower(part), wanted = needle.str();
        const std::size_t found = forward ? lowered.find(wanted) : lowered.rfind(wanted);
        if (found != Text::npos) return begin + found;
        if (forward) from = end;
        else to = begin;
    }
    return npos;
}

} // namespace

bool TextWidget::find(TextView text, bool forward)
{
    refresh();
    const Text needle = tarvik::lower(text);
    const std::size_t size = area_.lines().size();
    if (needle.empty() || needle.size() > size) return false;
    const std::size_t here = forward ? selection_end() : selection_start();
    const TextLines& lines = area_.lines();
    std::size_t found =
        forward ? find_between(lines, needle, here, size, true) : find_between(lines, needle, 0, here, false);
    if (found == npos)
        found = forward ? find_between(lines, needle, 0, here, true) : find_between(lines, needle, here, size, false);
    if (found == npos) return false;
    anchor_ = found;
    shows_selection_ = true;
    move_caret(found + needle.size(), true);
    return true;
}

QString TextWidget::selected_line() const
{
    Text selected;
    area_.lines().append_to(selection_start(), std::min<std::size_t>(selection_end() - selection_start(), 200),
                            selected);
    return to_qt(TextView(selected).substr(0, std::min(selected.find_first_of(U"\r\n"), selected.size())));
}

void TextWidget::scroll_rows(int rows)
{
    refresh();
    area_.scroll_rows(rows);
    show_scroll_bars();
    viewport()->update();
}

} // namespace tarvik
