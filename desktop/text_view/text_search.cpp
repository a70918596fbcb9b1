#include "desktop/text_view/text_search.h"

#include "desktop/look/qt_text.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t stretch = 1'000'000; // characters that are looked through at once
constexpr std::size_t beyond = 1000;       // of a place that begins in a stretch and ends behind it

// Where a stretch ends: at a line's beginning where the lines are not longer than it.
std::size_t stretch_end(const TextLines& lines, std::size_t from, std::size_t to)
{
    if (to - from <= stretch) return to;
    const std::size_t line = lines.line_start(lines.line_at(from + stretch));
    return line > from ? line : from + stretch;
}

} // namespace

Sought::Sought(const QString& text, bool whole_words, bool is_pattern)
{
    const QString pattern = is_pattern ? text : QRegularExpression::escape(text);
    pattern_.setPattern(text.isEmpty() || !whole_words ? pattern
                                                       : "(?<![A-Za-z0-9_])(?:" + pattern + ")(?![A-Za-z0-9_])");
    pattern_.setPatternOptions(QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    if (pattern_.isValid()) return;
    error_ = pattern_.errorString();
    pattern_ = {};
}

std::vector<TextRange> Sought::places(const TextLines& lines, std::size_t from, std::size_t to) const
{
    std::vector<TextRange> found;
    Text part;
    const std::size_t before = from > 0 ? 1 : 0; // what stands before a place can matter
    lines.append_to(from - before, to - from + beyond, part);
    const QString text = to_qt(part);
    qsizetype at = 0;
    std::size_t offset = from - before;
    const auto offset_of = [&](qsizetype place) { // places come in their order
        for (; at < place; ++at) offset += text[at].isHighSurrogate() ? 0 : 1;
        return offset;
    };
    for (auto matches = pattern_.globalMatch(text, qt_place(part, before)); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedLength() == 0) continue;
        const std::size_t start = offset_of(match.capturedStart());
        if (start >= to) break;
        found.push_back({start, offset_of(match.capturedEnd())});
    }
    return found;
}

std::optional<TextRange> Sought::next(const TextLines& lines, std::size_t from, bool forward) const
{
    if (is_empty()) return std::nullopt;
    const std::size_t size = lines.size();
    const TextRange parts[] = {forward ? TextRange{from, size} : TextRange{0, from},
                               forward ? TextRange{0, from} : TextRange{from, size}};
    for (TextRange part : parts)
        while (part.start < part.end) {
            TextRange now = part;
            if (forward) part.start = now.end = stretch_end(lines, part.start, part.end);
            else part.end = now.start = part.end - std::min(stretch, part.end - part.start);
            const auto found = places(lines, now.start, now.end);
            if (!found.empty()) return forward ? found.front() : found.back();
        }
    return std::nullopt;
}

bool Sought::count_on(const TextLines& lines)
{
    if (is_empty() || counted_to_ >= lines.size()) return false;
    const std::size_t end = stretch_end(lines, counted_to_, lines.size());
    for (const TextRange& place : places(lines, counted_to_, end)) starts_.push_back(place.start);
    counted_to_ = end;
    return counted_to_ < lines.size();
}

std::size_t Sought::number(std::size_t start) const
{
    return static_cast<std::size_t>(std::ranges::upper_bound(starts_, start) - starts_.begin());
}

} // namespace tarvik
