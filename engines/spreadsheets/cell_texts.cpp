#include "engines/spreadsheets/cell_texts.h"

#include "engines/spreadsheets/calculation/coercion.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <charconv>

namespace tarvik::ooxml {

namespace {

constexpr std::size_t escape_length = 7; // of _xHHHH_

constexpr bool is_hexadecimal(char32_t c) noexcept
{
    return (c >= U'0' && c <= U'9') || (c >= U'A' && c <= U'F') || (c >= U'a' && c <= U'f');
}

// Whether "_xHHHH" stands there. Written so, whatever follows, it would be read as another character or could be.
template <typename Characters>
bool is_escape_begun_at(const Characters& text, std::size_t at) noexcept
{
    if (text.size() - at < escape_length - 1 || text[at] != '_' || text[at + 1] != 'x') return false;
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at) + 2,
                       text.begin() + static_cast<std::ptrdiff_t>(at) + 6,
                       [](auto c) { return is_hexadecimal(static_cast<char32_t>(c)); });
}

// What no XML text can hold.
constexpr bool is_forbidden(char32_t c) noexcept
{
    return (c < 0x20 && c != U'\t' && c != U'\n') || c == 0xFFFE || c == 0xFFFF;
}

void append_escape(char32_t c, std::string& raw)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    raw += "_x";
    for (int shift = 12; shift >= 0; shift -= 4) raw += digits[(c >> static_cast<unsigned>(shift)) & 0xFU];
    raw += '_';
}

void append_character(char32_t c, std::string& raw)
{
    if (is_forbidden(c)) return append_escape(c, raw);
    switch (c) {
    case U'&': raw += "&amp;"; break;
    case U'<': raw += "&lt;"; break;
    case U'>': raw += "&gt;"; break;
    default: append_utf8(c, raw);
    }
}

// The element with the text of an item's child; a null node when that is no run of the text.
pugi::xml_node text_of_run(pugi::xml_node child) noexcept
{
    if (is_named(child, "t")) return child;
    return is_named(child, "r") ? child_named(child, "t") : pugi::xml_node();
}

// The item's raw text when it is nothing but that, and a reader would not trim it; else nullptr.
const char* plain_text(pugi::xml_node item)
{
    const auto text = item.first_child();
    const auto characters = text.first_child();
    if (!is_named(text, "t") || text.next_sibling() || characters.next_sibling()) return nullptr;
    if (characters.type() != pugi::node_pcdata) return nullptr;
    if (!text.attribute("xml:space") && needs_preserving(characters.value())) return nullptr;
    return characters.value();
}

bool holds_nothing(pugi::xml_node item)
{
    const auto children = item.children();
    return std::all_of(children.begin(), children.end(), [](const auto& child) {
        const auto pieces = text_of_run(child).children();
        return std::all_of(pieces.begin(), pieces.end(), [](const auto& piece) { return *piece.value() == 0; });
    });
}

} // namespace

std::string encode_cell_text(TextView text)
{
    std::string raw;
    raw.reserve(text.size());
    text.visit([&raw](auto characters) {
        std::size_t units = 0; // of UTF-16
        for (std::size_t i = 0; i < characters.size(); ++i) {
            const auto c = static_cast<char32_t>(characters[i]);
            if (c == U'\r' && i + 1 < characters.size() && characters[i + 1] == U'\n') continue;
            units += c > 0xFFFF && c <= last_character ? 2 : 1;
            if (units > calculation::longest_text) break;
            if (is_escape_begun_at(characters, i)) append_escape(c, raw);
            else append_character(c, raw);
        }
    });
    return raw;
}

Text decode_cell_text(std::string_view written)
{
    Text text;
    std::size_t plain = 0; // where the piece without escapes begins
    for (auto at = written.find("_x"); at != std::string_view::npos; at = written.find("_x", at)) {
        if (!is_escape_begun_at(written, at) || written.substr(at + 6, 1) != "_") {
            ++at;
            continue;
        }
        text += from_utf8(written.substr(plain, at - plain));
        std::uint32_t unit = 0;
        std::from_chars(written.data() + at + 2, written.data() + at + 6, unit, 16);
        text += is_surrogate(unit) ? replacement_character : static_cast<char32_t>(unit);
        at += escape_length;
        plain = at;
    }
    text += from_utf8(written.substr(plain));
    return text;
}

bool needs_preserving(std::string_view raw) noexcept
{
    const auto breaks = [](char c) { return c == '\t' || c == '\n'; };
    return !raw.empty() && (raw.front() == ' ' || raw.back() == ' ' || std::ranges::any_of(raw, breaks));
}

Text rich_text(pugi::xml_node item)
{
    std::string written;
    for (const auto child : item.children()) written += element_text(text_of_run(child));
    return decode_cell_text(written);
}

SharedStrings::SharedStrings(XmlPart part) : part_(std::move(part))
{
    for (const auto child : part_.root().children()) {
        if (!is_named(child, "si")) continue;
        items_.push_back(child);
        is_empty_.push_back(holds_nothing(child));
    }
    if (!items_.empty()) last_ = items_.back();
}

Text SharedStrings::text(std::size_t index) const
{
    if (!has(index)) return {};
    if (index < items_.size()) return rich_text(items_[index]);
    return decode_cell_text(unescaped(added_[index - items_.size()]));
}

bool SharedStrings::is_empty(std::size_t index) const
{
    if (!has(index)) return true;
    if (index >= items_.size()) return added_[index - items_.size()].empty();
    return is_empty_[index];
}

void SharedStrings::index_plain_items()
{
    plain_.reserve(items_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (const char* text = plain_text(items_[i])) plain_.emplace(text, i);
    }
    plain_is_indexed_ = true;
}

std::size_t SharedStrings::add(const std::string& raw)
{
    if (!plain_is_indexed_) index_plain_items();
    const auto found = plain_.find(raw);
    if (found != plain_.end()) return found->second;

    const std::size_t index = items_.size() + added_.size();
    plain_.emplace(added_.emplace_back(raw), index);
    part_.changed = true;
    return index;
}

void SharedStrings::lay_down_added()
{
    constexpr std::size_t text_at_once = std::size_t{1} << 16;
    auto root = part_.root();
    const auto item = name_like(root, "si"), text = name_like(root, "t");
    const std::string beginning = "<" + item + "><" + text, end = "</" + text + "></" + item + ">";
    std::string items;
    while (laid_down_ < added_.size()) {
        const auto& raw = added_[laid_down_++];
        items.append(beginning).append(needs_preserving(raw) ? " xml:space=\"preserve\">" : ">");
        items.append(raw).append(end);
        if (items.size() < text_at_once && laid_down_ < added_.size()) continue;
        last_ = last_ ? root.insert_child_after(pugi::node_pcdata, last_) : root.prepend_child(pugi::node_pcdata);
        last_.set_value(items.c_str());
        items.clear();
    }
}

const XmlPart& SharedStrings::settle()
{
    lay_down_added();
    auto root = part_.root();
    if (reference_difference_ != 0 && root.attribute("count")) {
        constexpr long long most_references = 1LL << 40U; // whatever the part says
        const auto count = std::clamp(root.attribute("count").as_llong(), 0LL, most_references);
        root.attribute("count").set_value(std::max(count + reference_difference_, 0LL));
        part_.changed = true;
    }
    reference_difference_ = 0;
    if (part_.changed && root.attribute("uniqueCount")) {
        const unsigned long long count = items_.size() + added_.size();
        root.attribute("uniqueCount").set_value(count);
    }
    return part_;
}

} // namespace tarvik::ooxml
