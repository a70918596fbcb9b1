#include "mainwindow/line_source.h"

#include "platform/text/code_page.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::u32string_view line_end = U"\r\n";
constexpr std::size_t lines_a_mark = 64;

} // namespace

std::size_t LineSource::line_length(std::size_t index) const
{
    Text line;
    append_line(index, line);
    return line.size();
}

std::size_t LineSource::append_encoded(std::size_t first, std::size_t enough, std::string& target) const
{
    Text line;
    const std::size_t count = line_count();
    for (; first < count && target.size() < enough; ++first) {
        line.clear();
        append_line(first, line);
        line += line_end;
        encode_to(line, target);
    }
    return first;
}

bool LineSource::is_longer_than(std::size_t characters) const
{
    const std::size_t count = line_count();
    for (std::size_t line = 0, size = 0; line < count; ++line) {
        size += line_length(line) + line_end.size();
        if (size > characters) return true;
    }
    return false;
}

std::size_t LineSource::line_start(std::size_t line) const
{
    line = std::min(line, line_count());
    if (starts_.empty()) starts_.push_back(0);
    const auto length = [this](std::size_t i) { return line_length(i) + line_end.size(); };
    const std::size_t mark = line / lines_a_mark;
    while (starts_.size() <= mark) {
        std::size_t start = starts_.back();
        const std::size_t first = (starts_.size() - 1) * lines_a_mark;
        for (std::size_t i = first; i < first + lines_a_mark; ++i) start += length(i);
        starts_.push_back(start);
    }
    std::size_t start = starts_[mark];
    for (std::size_t i = mark * lines_a_mark; i < line; ++i) start += length(i);
    return start;
}

std::size_t LineSource::line_at(std::size_t offset) const
{
    const std::size_t count = line_count();
    while ((starts_.empty() || starts_.back() <= offset) && starts_.size() * lines_a_mark <= count)
        line_start(starts_.size() * lines_a_mark);
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto mark = behind == starts_.begin() ? 0 : static_cast<std::size_t>(behind - starts_.begin()) - 1;
    std::size_t line = mark * lines_a_mark;
    for (std::size_t end = line_start(line); line < count; ++line) {
        end += line_length(line) + line_end.size();
        if (end > offset) break;
    }
    return line;
}

std::size_t LineSource::hand_over(std::size_t offset, std::size_t count, std::size_t at_once,
                                  const std::function<void(TextView)>& take) const
{
    std::size_t line = offset == 0 ? 0 : line_at(offset), taken = 0;
    std::size_t skip = offset == 0 ? 0 : offset - line_start(line);
    Text written;
    for (const std::size_t end = line_count(); line < end && taken < count; ++line) {
        append_line(line, written);
        written += line_end;
        const bool enough = written.size() - skip >= count - taken;
        if (!enough && written.size() < at_once && line + 1 < end) continue;
        const TextView part = TextView(written).substr(skip, count - taken);
        take(part);
        taken += part.size();
        skip = 0;
        written.clear();
    }
    return taken;
}

} // namespace tarvik
