#include "mainwindow/pane_text.h"

#include "platform/text/text_builder.h"

#include <algorithm>

namespace tarvik {

namespace {

using Lines = std::shared_ptr<const LineSource>;

constexpr std::size_t usual_part = 1 << 16;

std::size_t piece_size(const PaneText::Piece& piece)
{
    if (const auto* shared = std::get_if<SharedText>(&piece)) return shared->view.size();
    return std::get<Lines>(piece)->size();
}

/// See LineSource::hand_over().
std::size_t hand_over_piece(const PaneText::Piece& piece, std::size_t offset, std::size_t count, std::size_t at_once,
                            const std::function<void(TextView)>& take)
{
    if (const auto* lines = std::get_if<Lines>(&piece)) return (*lines)->hand_over(offset, count, at_once, take);
    const TextView part = std::get<SharedText>(piece).view.substr(offset, count);
    for (std::size_t at = 0; at < part.size(); at += at_once) take(part.substr(at, at_once));
    return part.size();
}

std::size_t append_piece(const PaneText::Piece& piece, std::size_t offset, std::size_t count, TextBuilder& target)
{
    return hand_over_piece(piece, offset, count, usual_part, [&target](TextView part) { target.append(part); });
}

SharedText built(TextBuilder& builder)
{
    const SharedBuffer buffer = builder.finish();
    return {buffer, buffer->view()};
}

} // namespace

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

bool PaneText::empty() const
{
    return pieces_.empty();
}

const Document& PaneText::document() const
{
    if (whole_) return *whole_;
    if (pieces_.size() == 1 && std::holds_alternative<SharedText>(pieces_.front())) {
        const auto& piece = std::get<SharedText>(pieces_.front());
        if (piece.owner && piece.owner->view().data() == piece.view.data()) {
            whole_ = Document(piece.owner, piece.view.size());
            return *whole_;
        }
    }
    TextBuilder text;
    for (const Piece& piece : pieces_) append_piece(piece, 0, npos, text);
    const SharedText whole = built(text);
    whole_ = Document(whole.owner, whole.view.size());
    return *whole_;
}

std::size_t PaneText::size() const
{
    std::size_t size = 0;
    for (const Piece& piece : pieces_) size += piece_size(piece);
    return size;
}

SharedText PaneText::slice(Position start, std::size_t length) const
{
    TextBuilder text;
    const std::size_t wanted = length;
    std::size_t offset = start.offset();
    for (const Piece& piece : pieces_) {
        if (length == 0) break;
        const std::size_t size = piece_size(piece);
        if (offset < size) {
            const auto* shared = std::get_if<SharedText>(&piece);
            if (shared && length == wanted && size - offset >= length)
                return {shared->owner, shared->view.substr(offset, length)};
            length -= append_piece(piece, offset, length, text);
            offset = size;
        }
        offset -= size;
    }
    return built(text);
}

void PaneText::for_each_part(std::size_t characters, const std::function<void(TextView)>& work) const
{
    for (const Piece& piece : pieces_) hand_over_piece(piece, 0, npos, characters, work);
}

void PaneText::for_each_part_of(Position start, std::size_t length, const std::function<void(TextView)>& work) const
{
    std::size_t offset = start.offset();
    for (const Piece& piece : pieces_) {
        if (length == 0) break;
        const std::size_t size = piece_size(piece);
        if (offset < size) length -= hand_over_piece(piece, offset, length, usual_part, work);
        offset -= std::min(offset, size);
    }
}

void PaneText::append(TextView text)
{
    if (text.empty()) return;
    pieces_.emplace_back(SharedText(text));
    whole_.reset();
}

void PaneText::replace(Position start, std::size_t length, TextView text)
{
    const std::size_t size_before = size();
    const std::size_t cut = std::clamp(start, Position(), Position::at_offset(size_before)).offset();
    length = std::min(length, size_before - cut);
    // An edit needs characters, so source lines are written out. Plain pieces are cut and shared, not copied.
    for (Piece& piece : pieces_) {
        if (std::holds_alternative<SharedText>(piece)) continue;
        TextBuilder lines;
        append_piece(piece, 0, npos, lines);
        piece = built(lines);
    }
    std::vector<Piece> pieces;
    std::size_t offset = 0;
    bool inserted = false;
    const auto insert = [&] {
        if (!inserted && !text.empty()) pieces.emplace_back(SharedText(text));
        inserted = true;
    };
    for (const Piece& piece : pieces_) {
        const auto& shared = std::get<SharedText>(piece);
        const std::size_t end = offset + shared.view.size();
        if (offset < cut) {
            const std::size_t kept = std::min(end, cut) - offset;
            pieces.emplace_back(SharedText(shared.owner, shared.view.substr(0, kept)));
        }
        if (end >= cut) insert();
        if (end > cut + length) {
            const std::size_t skipped = std::max(offset, cut + length) - offset;
            pieces.emplace_back(SharedText(shared.owner, shared.view.substr(skipped)));
        }
        offset = end;
    }
    insert();
    pieces_ = std::move(pieces);
    whole_.reset();
}

} // namespace tarvik
