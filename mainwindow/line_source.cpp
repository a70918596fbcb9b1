#include "mainwindow/line_source.h"

#include "platform/text/code_page.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::u32string_view line_end = U"\r\n";

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
    while (starts_.size() <= line)
        starts_.push_back(starts_.back() + line_length(starts_.size() - 1) + line_end.size());
    return starts_[line];
}

std::size_t LineSource::line_at(std::size_t offset) const
{
    const std::size_t count = line_count();
    while (starts_.size() <= count && (starts_.empty() || starts_.back() <= offset)) line_start(starts_.size());
    return static_cast<std::size_t>(std::ranges::upper_bound(starts_, offset) - starts_.begin()) - 1;
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
