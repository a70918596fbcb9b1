#include "desktop/text_view/text_lines.h"

#include <algorithm>

namespace tarvik {

namespace {

// Line ends stand at LF and at a CR that no LF follows.
std::vector<std::size_t> ends_in(TextView text)
{
    std::vector<std::size_t> ends;
    std::size_t lf = text.find(U'\n'), cr = text.find(U'\r');
    while (lf != npos || cr != npos)
        if (lf < cr) {
            ends.push_back(lf + 1);
            lf = text.find(U'\n', lf + 1);
        } else {
            if (cr + 1 != lf) ends.push_back(cr + 1);
            cr = text.find(U'\r', cr + 1);
        }
    return ends;
}

std::size_t count_up_to(const std::vector<std::size_t>& ends, std::size_t offset)
{
    return static_cast<std::size_t>(std::ranges::upper_bound(ends, offset) - ends.begin());
}

} // namespace

TextLines::TextLines(PaneText text, const TextLines& before) : text_(std::move(text))
{
    for (const PaneText::Piece& piece : text_.pieces()) {
        if (const auto* shared = std::get_if<SharedText>(&piece)) {
            add(*shared, before);
        } else {
            const auto& lines = std::get<Lines>(piece);
            pieces_.push_back({.lines = lines, .size = lines->size(), .breaks = lines->line_count()});
        }
    }
    // A CR LF that two pieces share is one line end: that of the LF.
    for (std::size_t i = 1; i < pieces_.size(); ++i) {
        const TextView view = pieces_[i - 1].view;
        const bool ends_in_cr = !view.empty() && view[view.size() - 1] == '\r';
        if (ends_in_cr && !pieces_[i].view.empty() && pieces_[i].view[0] == '\n') --pieces_[i - 1].breaks;
    }
    for (Piece& piece : pieces_) {
        piece.offset = size_;
        piece.first = line_count_ - 1;
        size_ += piece.size;
        line_count_ += piece.breaks;
    }
}

void TextLines::add(const SharedText& text, const TextLines& before)
{
    if (text.view.empty()) return;
    const TextView whole = text.owner->view();
    Ends& ends = ends_[text.owner.get()];
    if (const auto known = before.ends_.find(text.owner.get()); known != before.ends_.end()) ends = known->second;
    if (!ends) ends = std::make_shared<std::vector<std::size_t>>(ends_in(whole));
    const auto* const first = static_cast<const std::uint8_t*>(whole.data());
    const auto* const data = static_cast<const std::uint8_t*>(text.view.data());
    const std::size_t begin = static_cast<std::size_t>(data - first) / whole.width(), end = begin + text.view.size();
    // A CR that is cut off from its LF ends a line.
    const bool is_cut = end < whole.size() && whole[end - 1] == '\r' && whole[end] == '\n';
    const std::size_t breaks = count_up_to(*ends, end) - count_up_to(*ends, begin) + (is_cut ? 1 : 0);
    pieces_.push_back({.view = text.view, .ends = ends, .begin = begin, .size = text.view.size(), .breaks = breaks});
}

const TextLines::Piece& TextLines::piece_at(std::size_t offset) const
{
    return *(std::ranges::upper_bound(pieces_, offset, {}, &Piece::offset) - 1);
}

std::size_t TextLines::line_start(std::size_t line) const
{
    if (line == 0) return 0;
    if (line >= line_count_) return size_;
    const Piece& piece = *(std::ranges::lower_bound(pieces_, line, {}, &Piece::first) - 1);
    const std::size_t number = line - piece.first;
    if (piece.lines) return piece.offset + piece.lines->line_start(number);
    const std::size_t end = (*piece.ends)[count_up_to(*piece.ends, piece.begin) + number - 1];
    return piece.offset + std::min(end - piece.begin, piece.size);
}

std::size_t TextLines::line_end(std::size_t line) const
{
    const std::size_t start = line_start(line);
    if (line + 1 >= line_count_) return size_;
    std::size_t end = line_start(line + 1) - 1;
    if (end > start && at(end) == '\n' && at(end - 1) == '\r') --end;
    return end;
}

std::size_t TextLines::line_at(std::size_t offset) const
{
    if (pieces_.empty()) return 0;
    if (offset >= size_) return line_count_ - 1;
    const Piece& piece = piece_at(offset);
    if (piece.lines) return piece.first + piece.lines->line_at(offset - piece.offset);
    return piece.first + count_up_to(*piece.ends, piece.begin + offset - piece.offset) -
           count_up_to(*piece.ends, piece.begin);
}

void TextLines::append_to(std::size_t offset, std::size_t count, Text& target) const
{
    text_.for_each_part([&target](TextView part) { part.append_to(target); }, Position::at_offset(offset), count);
}

char32_t TextLines::at(std::size_t offset) const
{
    const Piece& piece = piece_at(offset);
    if (!piece.lines) return piece.view[offset - piece.offset];
    Text one;
    append_to(offset, 1, one);
    return one.front();
}

} // namespace tarvik
