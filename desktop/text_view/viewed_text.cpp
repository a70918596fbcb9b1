#include "desktop/text_view/viewed_text.h"

#include <algorithm>

namespace tarvik {

namespace {

bool same_piece(const PaneText::Piece& a, const PaneText::Piece& b)
{
    if (a.index() != b.index()) return false;
    const auto* text = std::get_if<SharedText>(&a);
    if (!text) return std::get<1>(a) == std::get<1>(b);
    const auto& other = std::get<SharedText>(b);
    return text->owner == other.owner && text->view.data() == other.view.data() &&
           text->view.size() == other.view.size();
}

} // namespace

PaneText ViewedBox::content()
{
    if (text_ != box_.text()) {
        text_ = box_.text();
        content_ = PaneText(TextView(text_));
    }
    return content_;
}

bool same_pieces(const PaneText& a, const PaneText& b)
{
    return std::ranges::equal(a.pieces(), b.pieces(), same_piece);
}

bool same_first_piece(const PaneText& a, const PaneText& b)
{
    return !a.pieces().empty() && !b.pieces().empty() && same_piece(a.pieces().front(), b.pieces().front());
}

} // namespace tarvik
