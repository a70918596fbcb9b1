#pragma once

#include "engines/packages/xml_part.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Texts of cells as a part holds them: XML, with _xHHHH_ for what XML cannot hold.
namespace tarvik::ooxml {

/// The raw XML text. CR LF becomes LF, the line break of a cell; a control character becomes _xHHHH_, a text that looks
/// like that has its "_" written as _x005F_; a lone surrogate becomes U+FFFD. What goes beyond the longest text of a
/// cell is left out.
std::string encode_cell_text(TextView text);
/// The text that stands for `written`, which is UTF-8 with its XML entities resolved already.
Text decode_cell_text(std::string_view written);
/// Whether readers would trim the raw text unless it is marked with xml:space="preserve".
bool needs_preserving(std::string_view raw) noexcept;

/// The text of a string item or an inline string: its runs joined, phonetic readings left out.
Text rich_text(pugi::xml_node item);

/// The workbook's table of texts. It is only added to: a text never moves, and texts with formats stay as they are.
class SharedStrings {
public:
    explicit SharedStrings(XmlPart part);

    /// Texts count from 0.
    bool has(std::size_t index) const noexcept { return index < items_.size() + added_.size(); }
    /// The text with that index; empty if there is none.
    Text text(std::size_t index) const;
    bool is_empty(std::size_t index) const;
    /// The index of the raw cell text as a text without formats; it is added when the table has none such.
    std::size_t add(const std::string& raw);
    /// Cells came to refer to the table (positive) or ceased to.
    void count_references(int difference) noexcept { reference_difference_ += difference; }
    /// Brings the counts of the table up to date, and gives the part.
    const XmlPart& settle();

private:
    void index_plain_items();
    void lay_down_added();

    XmlPart part_;
    std::vector<pugi::xml_node> items_; // of the part as it was read
    pugi::xml_node last_;               // of the texts in the part
    std::deque<std::string> added_;     // raw texts; as elements they would take several times the memory
    std::size_t laid_down_ = 0;         // so many of those are in the part
    std::vector<bool> is_empty_;        // of the items: many cells may ask for one of a thousand runs
    std::unordered_map<std::string_view, std::size_t> plain_; // raw text, held by the tree or among the added, to index
    bool plain_is_indexed_ = false;
    long long reference_difference_ = 0;
};

} // namespace tarvik::ooxml
