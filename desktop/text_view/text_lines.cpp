#include "desktop/text_view/text_lines.h"

#include <algorithm>
#include <span>

namespace tarvik {

namespace {

constexpr std::size_t block_size = 4096;
constexpr std::size_t small_text = 4096; // read from end to end at every question

std::size_t characters_between(TextView buffer, TextView piece)
{
    const auto* first = static_cast<const std::uint8_t*>(buffer.data());
    const auto* begin = static_cast<const std::uint8_t*>(piece.data());
    return static_cast<std::size_t>(begin - first) / buffer.width();
}

// Line ends that stand at characters `from` to `to` - 1 of the whole; the character at `to` is looked at, too.
template <typename Char>
std::size_t count_in(std::span<const Char> text, std::size_t from, std::size_t to)
{
    const std::size_t inner = to == text.size() && to > from ? to - 1 : to;
    std::size_t count = 0;
    for (std::size_t i = from; i < inner; ++i) {
        const unsigned is_lf = text[i] == '\n';
        const unsigned lone_cr = static_cast<unsigned>(text[i] == '\r') & static_cast<unsigned>(text[i + 1] != '\n');
        count += is_lf | lone_cr;
    }
    if (inner < to && (text[inner] == '\n' || text[inner] == '\r')) ++count;
    return count;
}

std::size_t count_in(TextView text, std::size_t from, std::size_t to)
{
    return text.visit([&](auto characters) { return count_in(characters, from, to); });
}

std::size_t find_break(TextView text, std::size_t from, std::size_t number)
{
    return text.visit([&](auto characters) {
        std::size_t i = from;
        for (; i < characters.size(); ++i) {
            const bool lone_cr = characters[i] == '\r' && (i + 1 == characters.size() || characters[i + 1] != '\n');
            if ((characters[i] == '\n' || lone_cr) && --number == 0) return i + 1;
        }
        return i;
    });
}

// A CR at the very end counts, whatever may follow it elsewhere.
std::size_t count_breaks(TextView text)
{
    return count_in(text, 0, text.size());
}

std::size_t behind_break(TextView text, std::size_t number)
{
    return find_break(text, 0, number);
}

} // namespace

/// Where the lines of a large buffer end, at LF and at a CR that no LF follows, answered without reading all of it:
/// only the number of line ends before every 4096th character is kept.
class TextLines::BreakIndex {
public:
    explicit BreakIndex(SharedBuffer buffer);

    const SharedBuffer& buffer() const { return buffer_; }
    /// Line ends that stand wholly before `offset`; a CR directly before it counts, unless LF stands at the offset.
    std::size_t breaks_before(std::size_t offset) const;
    /// Offset behind the `number`-th line end of the buffer, counting from 1.
    std::size_t behind(std::size_t number) const;

private:
    SharedBuffer buffer_;
    std::vector<std::size_t> before_block_;
};

TextLines::BreakIndex::BreakIndex(SharedBuffer buffer) : buffer_(std::move(buffer))
{
    const TextView text = buffer_->view();
    before_block_.reserve(text.size() / block_size + 2);
    std::size_t count = 0;
    for (std::size_t from = 0; from < text.size(); from += block_size) {
        before_block_.push_back(count);
        count += count_in(text, from, std::min(from + block_size, text.size()));
    }
    before_block_.push_back(count);
}

std::size_t TextLines::BreakIndex::breaks_before(std::size_t offset) const
{
    const std::size_t block = offset / block_size;
    return before_block_[block] + count_in(buffer_->view(), block * block_size, offset);
}

std::size_t TextLines::BreakIndex::behind(std::size_t number) const
{
    const auto block = std::lower_bound(before_block_.begin(), before_block_.end(), number) - before_block_.begin() - 1;
    const auto index = static_cast<std::size_t>(block);
    return find_break(buffer_->view(), index * block_size, number - before_block_[index]);
}

TextLines::TextLines(PaneText text, const TextLines& before) : text_(std::move(text))
{
    for (const PaneText::Piece& piece : text_.pieces()) {
        if (const auto* shared = std::get_if<SharedText>(&piece)) add(*shared, before);
        else add(std::get<Lines>(piece));
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
    Piece piece;
    piece.view = text.view;
    piece.size = text.view.size();
    if (piece.size > small_text) {
        piece.index_offset = characters_between(text.owner->view(), text.view);
        for (const TextLines* known : {&before, static_cast<const TextLines*>(this)})
            for (const Piece& other : known->pieces_)
                if (other.index && other.index->buffer() == text.owner) piece.index = other.index;
        if (!piece.index) piece.index = std::make_shared<BreakIndex>(text.owner);
    }
    piece.breaks = breaks_before(piece, piece.size);
    pieces_.push_back(std::move(piece));
}

void TextLines::add(const Lines& lines)
{
    Piece piece;
    piece.lines = lines;
    piece.size = lines->size();
    piece.breaks = lines->line_count();
    pieces_.push_back(std::move(piece));
}

// Line ends that stand before an offset in the piece. At its end a CR counts as one.
std::size_t TextLines::breaks_before(const Piece& piece, std::size_t offset)
{
    if (piece.lines) return piece.lines->line_at(offset);
    if (!piece.index) {
        if (offset == piece.size) return count_breaks(piece.view);
        const bool split = offset > 0 && piece.view[offset - 1] == '\r' && piece.view[offset] == '\n';
        return count_breaks(piece.view.substr(0, offset)) - (split ? 1 : 0);
    }
    std::size_t count =
        piece.index->breaks_before(piece.index_offset + offset) - piece.index->breaks_before(piece.index_offset);
    const TextView whole = piece.index->buffer()->view();
    const std::size_t end = piece.index_offset + offset;
    const bool cut = offset == piece.size && end < whole.size() && whole[end - 1] == '\r' && whole[end] == '\n';
    if (cut) ++count;
    return count;
}

std::size_t TextLines::behind(const Piece& piece, std::size_t number)
{
    if (piece.lines) return piece.lines->line_start(number);
    if (!piece.index) return behind_break(piece.view, number);
    const std::size_t before = piece.index->breaks_before(piece.index_offset);
    return std::min(piece.index->behind(before + number) - piece.index_offset, piece.size);
}

const TextLines::Piece& TextLines::piece_at(std::size_t offset) const
{
    const auto next = std::upper_bound(pieces_.begin(), pieces_.end(), offset,
                                       [](std::size_t at, const Piece& piece) { return at < piece.offset; });
    return *(next - 1);
}

std::size_t TextLines::line_start(std::size_t line) const
{
    if (line == 0) return 0;
    if (line >= line_count_) return size_;
    const auto next = std::lower_bound(pieces_.begin(), pieces_.end(), line,
                                       [](const Piece& piece, std::size_t number) { return piece.first < number; });
    const Piece& piece = *(next - 1);
    return piece.offset + behind(piece, line - piece.first);
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
    return piece.first + std::min(breaks_before(piece, offset - piece.offset), piece.breaks);
}

void TextLines::append_to(std::size_t offset, std::size_t count, Text& target) const
{
    while (offset < size_ && count > 0) {
        const Piece& piece = piece_at(offset);
        const std::size_t before = target.size();
        const auto take = [&target](TextView part) { part.append_to(target); };
        if (piece.lines) piece.lines->hand_over(offset - piece.offset, count, count, take);
        else piece.view.substr(offset - piece.offset, count).append_to(target);
        const std::size_t taken = target.size() - before;
        offset += taken;
        count -= taken;
    }
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
