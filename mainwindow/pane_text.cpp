#include "mainwindow/pane_text.h"

#include <algorithm>

namespace tarvik {

namespace {

using Lines = std::shared_ptr<const LineSource>;

std::size_t piece_size(const PaneText::Piece& piece)
{
    if (const auto* shared = std::get_if<SharedText>(&piece)) return shared->view.size();
    return std::get<Lines>(piece)->size();
}

void append_piece(const PaneText::Piece& piece, std::size_t offset, std::size_t count, Text& target)
{
    if (const auto* shared = std::get_if<SharedText>(&piece)) shared->view.substr(offset, count).append_to(target);
    else std::get<Lines>(piece)->append_to(offset, count, target);
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
    Text text;
    for (const Piece& piece : pieces_) append_piece(piece, 0, npos, text);
    whole_ = Document(text);
    return *whole_;
}

std::size_t PaneText::size() const
{
    std::size_t size = 0;
    for (const Piece& piece : pieces_) size += piece_size(piece);
    return size;
}

Text PaneText::slice(std::size_t start, std::size_t length) const
{
    Text text;
    std::size_t offset = start - 1;
    for (const Piece& piece : pieces_) {
        if (length == 0) break;
        const std::size_t size = piece_size(piece);
        if (offset < size) {
            const std::size_t before = text.size();
            append_piece(piece, offset, length, text);
            length -= text.size() - before;
            offset = size;
        }
        offset -= size;
    }
    return text;
}

void PaneText::append(TextView text)
{
    if (text.empty()) return;
    pieces_.emplace_back(SharedText(text));
    whole_.reset();
}

void PaneText::replace(std::size_t start, std::size_t length, TextView text)
{
    const std::size_t size_before = size();
    start = std::clamp<std::size_t>(start, 1, size_before + 1);
    length = std::min(length, size_before + 1 - start);
    // An edit needs characters, so source lines are written out. Plain pieces are cut and shared, not copied.
    for (Piece& piece : pieces_) {
        if (std::holds_alternative<SharedText>(piece)) continue;
        Text text_of_lines;
        append_piece(piece, 0, npos, text_of_lines);
        piece = SharedText(text_of_lines);
    }
    std::vector<Piece> pieces;
    std::size_t position = 1;
    bool inserted = false;
    const auto insert = [&] {
        if (!inserted && !text.empty()) pieces.emplace_back(SharedText(text));
        inserted = true;
    };
    for (const Piece& piece : pieces_) {
        const auto& shared = std::get<SharedText>(piece);
        const std::size_t end = position + shared.view.size();
        if (position < start) {
            const std::size_t kept = std::min(end, start) - position;
            pieces.emplace_back(SharedText(shared.owner, shared.view.substr(0, kept)));
        }
        if (end >= start) insert();
        if (end > start + length) {
            const std::size_t skipped = std::max(position, start + length) - position;
            pieces.emplace_back(SharedText(shared.owner, shared.view.substr(skipped)));
        }
        position = end;
    }
    insert();
    pieces_ = std::move(pieces);
    whole_.reset();
}

} // namespace tarvik
