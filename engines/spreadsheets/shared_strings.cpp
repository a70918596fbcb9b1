#include "engines/spreadsheets/shared_strings.h"

#include "engines/spreadsheets/cell_text.h"

#include <algorithm>
#include <cstring>

namespace tarvik::ooxml {

namespace {

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
