#include "engines/spreadsheets/growing_rows.h"

#include "engines/packages/xml_part.h"

#include <utility>

namespace tarvik::ooxml {

namespace {

constexpr std::size_t text_at_once = std::size_t{1} << 16;

} // namespace

pugi::xml_node GrowingRows::begin(int number)
{
    turn_to_text();
    begun_ = number;
    auto row = row_.append_child(name_like(sheet_data_, "row").c_str());
    row.append_attribute("r").set_value(number);
    return row;
}

void GrowingRows::turn_to_text()
{
    if (begun_ == 0) return;
    append_printed(row_.first_child(), text_);
    row_.reset();
    last_ = std::exchange(begun_, 0);
    if (first_ == 0) first_ = last_;
    if (text_.size() >= text_at_once) put_text();
}

void GrowingRows::put_text()
{
    if (text_.empty()) return;
    texts_.push_back(sheet_data_.append_child(pugi::node_pcdata));
    texts_.back().set_value(text_.c_str());
    text_.clear();
}

void GrowingRows::lay_down()
{
    turn_to_text();
    put_text();
}

std::vector<pugi::xml_node> GrowingRows::take_out()
{
    lay_down();
    const auto last_text = sheet_data_.last_child();
    for (const auto text : texts_) append_elements(sheet_data_, text.value());
    std::vector<pugi::xml_node> rows;
    for (auto row = last_text.next_sibling(); row; row = row.next_sibling()) rows.push_back(row);
    for (const auto text : texts_) sheet_data_.remove_child(text);
    texts_.clear();
    first_ = last_ = 0;
    return rows;
}

} // namespace tarvik::ooxml
