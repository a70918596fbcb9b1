#include "engines/documents/cell_contents.h"

#include "engines/packages/xml_part.h"

#include <algorithm>
#include <array>
#include <set>

namespace tarvik::ooxml {

namespace {

pugi::xml_node append_like(pugi::xml_node parent, std::string_view local_name)
{
    return parent.append_child(name_like(parent, local_name).c_str());
}

// Removes the children with one of these local names.
void remove_named(pugi::xml_node parent, std::initializer_list<std::string_view> names)
{
    for (auto child = parent.first_child(); child;) {
        const auto next = child.next_sibling();
        const auto is_it = [child](std::string_view name) { return is_named(child, name); };
        if (std::ranges::any_of(names, is_it)) remove_element(parent, child);
        child = next;
    }
}

// Refuses, before anything is changed, what could not be removed.
void check_contents(pugi::xml_node element)
{
    for (const auto child : element.children()) check_removable(child);
}

// The content controls between a node and its row.
std::vector<pugi::xml_node> controls_around(pugi::xml_node node)
{
    std::vector<pugi::xml_node> controls;
    for (node = node.parent(); node && !is_named(node, "tr"); node = node.parent()) {
        if (is_named(node, "sdt")) controls.push_back(child_named(node, "sdtPr"));
    }
    return controls;
}

// The run properties that a text in place of the paragraph's own gets, or a null node. A placeholder's look is not
// that of its control's text.
pugi::xml_node run_look(pugi::xml_node paragraph)
{
    auto look = child_named(child_named(paragraph, "pPr"), "rPr");
    const auto runs = nearest(paragraph, "r");
    if (runs.empty()) return look;
    for (const auto control : controls_around(runs.front())) {
        if (!child_named(control, "showingPlcHdr")) continue;
        const auto of_control = child_named(control, "rPr");
        return of_control ? of_control : look;
    }
    return child_named(runs.front(), "rPr");
}

void append_look(pugi::xml_node run, pugi::xml_node look)
{
    if (!look) return;
    remove_named(run.append_copy(look), {"ins", "del", "moveFrom", "moveTo", "rPrChange"}); // told of the old
}

void append_piece(pugi::xml_node run, const Text& piece)
{
    if (piece.empty()) return;
    auto element = append_like(run, "t");
    if (piece.front() == U' ' || piece.back() == U' ') element.append_attribute("xml:space") = "preserve";
    set_raw_text(element, escaped(to_utf8(piece)));
}

void append_text(pugi::xml_node run, TextView text)
{
    Text piece;
    const auto append_element = [&](std::string_view name) {
        append_piece(run, piece);
        piece.clear();
        append_like(run, name);
    };
    for (const char32_t c : text.str()) {
        if (c == U'\n') append_element("br");
        else if (c == U'\t') append_element("tab");
        else piece += c;
    }
    append_piece(run, piece);
}

// The marks in the cell of ranges (bookmarks, comments, permissions) that begin or end outside of it: without its
// partner such a range would be broken.
std::vector<pugi::xml_node> marks_of_wider_ranges(pugi::xml_node cell, std::string_view side, std::string_view other)
{
    const auto identity = [](pugi::xml_node mark, std::string_view suffix) {
        std::string name = mark.name();
        name.resize(name.size() - suffix.size());
        return name + ' ' + value_of(mark, "id");
    };
    std::vector<pugi::xml_node> marks;
    std::set<std::string> partners;
    for (auto node = cell.first_child(); node;) {
        const std::string_view name = node.name();
        if (name.ends_with(side) && !value_of(node, "id").empty()) marks.push_back(node);
        if (name.ends_with(other)) partners.insert(identity(node, other));
        const auto inner = node.first_child();
        node = inner ? inner : node_behind(node, cell);
    }
    std::erase_if(marks, [&](auto mark) { return partners.contains(identity(mark, side)); });
    return marks;
}

// A control for a plain text of one line would show the lines as one. An attribute has a namespace by a prefix alone.
void allow_lines(const std::vector<pugi::xml_node>& controls)
{
    for (const auto control : controls) {
        const auto plain = child_named(control, "text");
        const auto name = name_like(plain, "multiLine");
        if (name.find(':') != std::string::npos) set_attribute(plain, name.c_str(), "1");
    }
}

pugi::xml_node append_paragraph(pugi::xml_node cell, pugi::xml_node model)
{
    auto paragraph = append_like(cell, "p");
    if (const auto look = child_named(model, "pPr")) paragraph.append_copy(look);
    return paragraph;
}

// Whether nothing in the paragraph shows.
bool is_blank(pugi::xml_node paragraph)
{
    for (const auto run : nearest(paragraph, "r")) {
        for (const auto child : run.children()) {
            const bool is_text = is_named(child, "t");
            if (child.type() != pugi::node_element || is_named(child, "rPr")) continue;
            if (!is_text || element_text(child).find_first_not_of(' ') != std::string::npos) return false;
        }
    }
    return true;
}

// The first paragraph when nothing shows in any, else the last one when nothing shows in that, else a null node.
pugi::xml_node blank_paragraph(const std::vector<pugi::xml_node>& paragraphs)
{
    if (paragraphs.empty()) return {};
    if (std::all_of(paragraphs.begin(), paragraphs.end(), is_blank)) return paragraphs.front();
    return is_blank(paragraphs.back()) ? paragraphs.back() : pugi::xml_node();
}

// Sets the line spacing to what the lines' contents need. A spacing of so many points would cut a picture off.
void set_single_spacing(pugi::xml_node paragraph)
{
    const std::string prefix = name_like(paragraph, "");
    if (prefix.empty()) return; // there is no telling how an attribute of the paragraph's namespace is written
    auto properties = child_named(paragraph, "pPr");
    if (!properties) properties = paragraph.prepend_child((prefix + "pPr").c_str());
    auto spacing = child_named(properties, "spacing");
    if (!spacing) {
        constexpr std::array<std::string_view, 13> behind{
            "ind",           "contextualSpacing", "mirrorIndents", "suppressOverlap", "jc",       "textDirection",
            "textAlignment", "textboxTightWrap",  "outlineLvl",    "divId",           "cnfStyle", "rPr",
            "pPrChange"};
        auto next = properties.first_child();
        const auto is_it = [&next](std::string_view name) { return is_named(next, name); };
        while (next && std::none_of(behind.begin(), behind.end(), is_it)) next = next.next_sibling();
        const auto name = prefix + "spacing";
        spacing = next ? properties.insert_child_before(name.c_str(), next) : properties.append_child(name.c_str());
    }
    set_attribute(spacing, (prefix + "line").c_str(), "240");
    set_attribute(spacing, (prefix + "lineRule").c_str(), "auto");
}

} // namespace

void replace_cell_text(pugi::xml_node cell, TextView text)
{
    check_contents(cell);
    const auto controls = controls_around(cell);
    for (const auto control : controls) check_contents(control);
    const auto paragraphs = nearest(cell, "p", {"tbl"});
    const auto model = paragraphs.empty() ? pugi::xml_node() : paragraphs.front();
    const auto beginnings = marks_of_wider_ranges(cell, "Start", "End");
    const auto ends = marks_of_wider_ranges(cell, "End", "Start");

    auto paragraph = append_paragraph(cell, model);
    for (const auto attribute : model.attributes()) paragraph.append_copy(attribute);
    for (const auto mark : beginnings) paragraph.append_copy(mark);
    auto run = append_like(paragraph, "r");
    append_look(run, run_look(model));
    append_text(run, text);
    for (const auto mark : ends) paragraph.append_copy(mark);

    for (auto child = cell.first_child(); child != paragraph;) {
        const auto next = child.next_sibling();
        if (!is_named(child, "tcPr")) remove_element(cell, child);
        child = next;
    }
    if (child_named(run, "br")) allow_lines(controls);
    for (const auto control : controls) remove_named(control, {"showingPlcHdr", "dataBinding"}); // override it
}

pugi::xml_node paragraph_for_picture(pugi::xml_node cell)
{
    check_contents(cell);
    const auto paragraphs = nearest(cell, "p", {"tbl"});
    auto paragraph = blank_paragraph(paragraphs);
    if (!paragraph) {
        paragraph = append_paragraph(cell, paragraphs.empty() ? pugi::xml_node() : paragraphs.back());
        remove_named(child_named(paragraph, "pPr"), {"numPr", "pPrChange"}); // the old one's
    }
    set_single_spacing(paragraph);
    return paragraph;
}

void append_drawing(pugi::xml_node paragraph, const std::string& drawing)
{
    auto run = append_like(paragraph, "r");
    append_like(append_like(run, "rPr"), "noProof");
    append_elements(append_like(run, "drawing"), drawing);
}

} // namespace tarvik::ooxml
