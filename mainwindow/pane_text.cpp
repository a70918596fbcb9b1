#include "mainwindow/pane_text.h"

#include "platform/text/code_page.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

using Lines = std::shared_ptr<const LineSource>;

constexpr std::u32string_view line_end = U"\r\n";
constexpr std::size_t usual_part = std::size_t{1} << 20;

std::size_t piece_size(const PaneText::Piece& piece)
{
    if (const auto* shared = std::get_if<SharedText>(&piece)) return shared->view.size();
    return std::get<Lines>(piece)->size();
}

SharedText built(TextBuilder& builder)
{
    const SharedBuffer buffer = builder.finish();
    return {buffer, buffer->view()};
}

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

std::size_t LineSource::hand_over(std::size_t offset, std::size_t count,
                                  const std::function<void(TextView)>& take) const
{
    std::size_t line = offset == 0 ? 0 : line_at(offset), taken = 0;
    std::size_t skip = offset == 0 ? 0 : offset - line_start(line);
    Text written;
    for (const std::size_t end = line_count(); line < end && taken < count; ++line) {
        append_line(line, written);
        written += line_end;
        const bool enough = written.size() - skip >= count - taken;
        if (!enough && written.size() < usual_part && line + 1 < end) continue;
        const TextView part = TextView(written).substr(skip, count - taken);
        take(part);
        taken += part.size();
        skip = 0;
        written.clear();
    }
    return taken;
}

PaneText::PaneText(TextView text)
{
    if (!text.empty()) pieces_.emplace_back(SharedText(text));
}

PaneText::PaneText(Document document)
{
    if (!document.empty()) pieces_.emplace_back(SharedText(document.buffer(), document.text()));
    whole_ = std::move(document);
}

PaneText::PaneText(std::shared_ptr<const LineSource> lines)
{
    if (lines->line_count() > 0) pieces_.emplace_back(std::move(lines));
}

const Document& PaneText::document() const
{
    if (whole_) return *whole_;
    const SharedText whole = slice(Position(), npos);
    const bool begins_its_buffer = whole.owner && whole.owner->view().data() == whole.view.data();
    whole_ = begins_its_buffer ? Document(whole.owner, whole.view.size()) : Document(whole.view);
    return *whole_;
}

std::size_t PaneText::size() const
{
    std::size_t size = 0;
    for (const Piece& piece : pieces_) size += piece_size(piece);
    return size;
}

// Calls `work` for each piece in which the characters from `offset` lie, with the offset in it and how many are still
// wanted; it gives how many there were.
template <typename Work>
void PaneText::walk(std::size_t offset, std::size_t length, Work&& work) const
{
    for (const Piece& piece : pieces_) {
        if (length == 0) return;
        const std::size_t skipped = offset == 0 ? 0 : piece_size(piece);
        if (offset == 0 || offset < skipped) length -= work(piece, std::exchange(offset, 0), length);
        else offset -= skipped;
    }
}

// The same characters, a text for each piece: source lines are written out, plain pieces cut and shared.
std::vector<SharedText> PaneText::parts(std::size_t offset, std::size_t length) const
{
    std::vector<SharedText> parts;
    walk(offset, length, [&parts](const Piece& piece, std::size_t from, std::size_t count) {
        if (const auto* shared = std::get_if<SharedText>(&piece)) {
            parts.emplace_back(shared->owner, shared->view.substr(from, count));
        } else {
            TextBuilder text;
            std::get<Lines>(piece)->hand_over(from, count, [&](TextView part) { text.append(part); });
            parts.push_back(built(text));
        }
        return parts.back().view.size();
    });
    return parts;
}

SharedText PaneText::slice(Position start, std::size_t length) const
{
    const std::vector<SharedText> parts = this->parts(start.offset(), length);
    if (parts.size() == 1) return parts.front();
    TextBuilder text;
    for (const SharedText& part : parts) text.append(part.view);
    return built(text);
}

void PaneText::for_each_part(const std::function<void(TextView)>& work, Position start, std::size_t length) const
{
    walk(start.offset(), length, [&work](const Piece& piece, std::size_t from, std::size_t count) {
        if (const auto* lines = std::get_if<Lines>(&piece)) return (*lines)->hand_over(from, count, work);
        const TextView part = std::get<SharedText>(piece).view.substr(from, count);
        for (std::size_t at = 0; at < part.size(); at += usual_part) work(part.substr(at, usual_part));
        return part.size();
    });
}

void PaneText::append(TextView text)
{
    if (text.empty()) return;
    pieces_.emplace_back(SharedText(text));
    whole_.reset();
}

void PaneText::replace(Position start, std::size_t length, TextView text)
{
    const std::size_t cut = std::clamp(start, Position(), Position::at_offset(size())).offset();
    std::vector<Piece> edited;
    for (SharedText& part : parts(0, cut)) edited.emplace_back(std::move(part));
    if (!text.empty()) edited.emplace_back(SharedText(text));
    if (length < npos - cut)
        for (SharedText& part : parts(cut + length, npos)) edited.emplace_back(std::move(part));
    pieces_ = std::move(edited);
    whole_.reset();
}

} // namespace tarvik
