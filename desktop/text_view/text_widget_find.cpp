#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <QLocale>

#include <algorithm>

namespace tarvik {

void TextWidget::seek(const Sought& sought)
{
    refresh();
    sought_ = sought;
    places_.begin(sought_);
    viewport()->update();
}

QString TextWidget::find(bool forward)
{
    refresh();
    const auto found = sought_.next(area_.lines(), forward ? selection_end() : selection_start(), forward);
    if (!found) return {};
    select_and_show(found->start, found->end);
    shows_selection_ = true;
    bool is_complete = false;
    return count_places(is_complete);
}

QString TextWidget::count_places(bool& is_complete)
{
    is_complete = !places_.go_on(area_.lines());
    const auto grouped = [](std::size_t number) { return QLocale::c().toString(static_cast<qulonglong>(number)); };
    const std::size_t number = places_.number(selection_start());
    const QString all = grouped(places_.count()) + (is_complete ? "" : "…");
    return number == 0 ? all : grouped(number) + " / " + all;
}

// Of a row that is much longer than the view only the part that shows is looked through.
std::vector<TextRange> TextWidget::found_in_view() const
{
    constexpr std::size_t around = 1000;
    std::vector<TextRange> found;
    if (sought_.is_empty()) return found;
    for (const auto& [row, y] : area_.shown()) {
        const std::size_t left = area_.rows().offset_at(row, area_.left() - TextArea::margin);
        const std::size_t right = area_.rows().offset_at(row, area_.left() + area_.width());
        const std::size_t from = std::max(row.start, left - std::min(left, around));
        for (const TextRange& place : sought_.places(area_.lines(), from, std::min(row.end, right + 1)))
            found.push_back(place);
    }
    return found;
}

QString TextWidget::selected_line() const
{
    Text selected;
    area_.lines().append_to(selection_start(), std::min<std::size_t>(selection_end() - selection_start(), 200),
                            selected);
    return to_qt(TextView(selected).substr(0, std::min(selected.find_first_of(U"\r\n"), selected.size())));
}

QString TextWidget::word_at_hand()
{
    if (selection_start() == selection_end()) select_word(caret_);
    return selected_line().trimmed();
}

void TextWidget::show_place(std::size_t offset)
{
    refresh();
    area_.scroll_to(offset);
    show_scroll_bars();
}

void TextWidget::make_room(int height)
{
    room_above_ = height;
    show_ruler();
}

bool TextWidget::scroll_by_key(int key)
{
    const int page = std::max(1, area_.whole_rows() - 1);
    const std::pair<int, int> steps[] = {
        {Qt::Key_Up, -1}, {Qt::Key_Down, 1}, {Qt::Key_PageUp, -page}, {Qt::Key_PageDown, page}};
    const auto* const step = std::ranges::find(steps, key, &std::pair<int, int>::first);
    if (step == std::end(steps)) return false;
    refresh();
    area_.scroll_rows(step->second);
    show_scroll_bars();
    return true;
}

} // namespace tarvik
