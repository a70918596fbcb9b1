#include "engines/packages/xml_part.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace tarvik::ooxml {

namespace {

// Neither entities nor line ends are converted: see the class.
constexpr unsigned raw_parsing = pugi::parse_pi | pugi::parse_comments | pugi::parse_declaration | pugi::parse_doctype |
                                 pugi::parse_cdata | pugi::parse_ws_pcdata;
constexpr unsigned raw_printing = pugi::format_raw | pugi::format_no_escapes;
constexpr int deepest_nesting = 100; // of what is removed; removing recurses

struct Entity {
    std::string_view name;
    std::string_view text;
};
constexpr std::array<Entity, 5> entities{{{"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}}};

/// The text with these characters as entities.
std::string with_entities(std::string_view text, std::string_view characters)
{
    std::string raw;
    raw.reserve(text.size());
    for (const char c : text) {
        if (characters.find(c) == std::string_view::npos) raw += c;
        else raw.append("&").append(std::ranges::find(entities, std::string_view(&c, 1), &Entity::text)->name) += ';';
    }
    return raw;
}

// Values are printed between double quotes, whichever quotes they came in.
struct DoubleQuotes final : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override
    {
        for (auto attribute : node.attributes()) {
            if (std::strchr(attribute.value(), '"'))
                attribute.set_value(with_entities(attribute.value(), "\"").c_str());
        }
        return true;
    }
};

// The parser takes bytes that are no UTF-8 for characters.
bool is_valid_utf8(std::string_view bytes) noexcept
{
    const auto* at = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (const auto* const end = at + bytes.size(); at != end;) {
        if (eight_ascii(at, end)) {
            at += 8;
            continue;
        }
        const auto step = utf8_step(at, end);
        if (!step.valid) return false;
        at += step.size;
    }
    return true;
}

struct StringWriter final : pugi::xml_writer {
    explicit StringWriter(std::string& target) : text(target) {}
    void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
    std::string& text;
};

// What stands between & and ; as UTF-8; empty when it is nothing known.
std::string resolved(std::string_view reference)
{
    if (reference.starts_with('#')) {
        const bool is_hexadecimal = reference.size() > 1 && (reference[1] == 'x' || reference[1] == 'X');
        const auto digits = reference.substr(is_hexadecimal ? 2 : 1);
        std::uint32_t code = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), code, is_hexadecimal ? 16 : 10);
        if (error != std::errc() || end != digits.data() + digits.size()) return {};
        return to_utf8(Text(1, static_cast<char32_t>(code)));
    }
    const auto* const entity = std::ranges::find(entities, reference, &Entity::name);
    return entity == entities.end() ? std::string() : std::string(entity->text);
}

bool is_deep(pugi::xml_node node, int left) noexcept
{
    if (left == 0) return true;
    auto child = node.first_child();
    while (child && !is_deep(child, left - 1)) child = child.next_sibling();
    return !child.empty();
}

} // namespace

XmlPart::XmlPart(std::string name, const std::string& contents, std::string_view root) : name_(std::move(name))
{
    const auto result = document_.load_buffer(contents.data(), contents.size(), raw_parsing, pugi::encoding_auto);
    if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
    const auto nodes = document_.children();
    const bool has_type_declaration =
        std::any_of(nodes.begin(), nodes.end(), [](const auto& node) { return node.type() == pugi::node_doctype; });
    const auto element = document_.document_element();
    const bool is_legible = result.encoding != pugi::encoding_utf8 || is_valid_utf8(contents);
    if (!result || !is_legible || has_type_declaration || !is_named(element, root)) {
        throw Damage(U"部件" + in_quotes(name_) + U"已损坏。");
    }
    if (contents.find('\'') != std::string::npos) {
        DoubleQuotes walker;
        document_.traverse(walker);
    }
    const auto declaration = document_.first_child();
    if (declaration.type() != pugi::node_declaration) return;
    if (contents.starts_with("<?")) {
        const auto start = contents.find("?>") + 2;
        behind_declaration_ = contents.substr(start, contents.find('<', start) - start);
    }
    // The tree is UTF-8 whatever the part was.
    auto encoding = declaration.attribute("encoding");
    if (encoding && lower(from_utf8(encoding.value())) != U"utf-8") encoding.set_value("UTF-8");
}

std::string XmlPart::print() const
{
    std::string text;
    for (const auto node : document_.children()) {
        append_printed(node, text);
        if (node.type() == pugi::node_declaration) text += behind_declaration_;
    }
    return text;
}

std::uint64_t tree_memory(std::string_view xml) noexcept
{
    // The nodes of the tree, an element's with what finds it. Texts stand there several times: packed out, parsed, as
    // they are given out.
    constexpr std::uint64_t of_element = 100, of_text = 64, of_attribute = 40;
    std::uint64_t attributes = xml.starts_with('=') ? 1 : 0, texts = 0, elements = 0;
    for (std::size_t i = 1; i < xml.size(); ++i) {
        const char before = xml[i - 1], c = xml[i];
        attributes += c == '=';
        texts += c == '<' && before != '>';
        elements += before == '<' && c != '/';
    }
    return xml.size() * least_tree_memory_per_byte + attributes * of_attribute + texts * of_text +
           elements * of_element;
}

bool is_named(pugi::xml_node node, std::string_view local_name) noexcept
{
    const std::string_view name = node.name();
    if (!name.ends_with(local_name)) return false;
    return name.size() == local_name.size() || name[name.size() - local_name.size() - 1] == ':';
}

pugi::xml_node child_named(pugi::xml_node parent, std::string_view local_name) noexcept
{
    auto child = parent.first_child();
    while (child && !is_named(child, local_name)) child = child.next_sibling();
    return child;
}

std::string name_like(pugi::xml_node relative, std::string_view local_name)
{
    const std::string_view name = relative.name();
    std::string full(name.substr(0, name.find(':') + 1)); // without a colon that is the empty text
    return full.append(local_name);
}

std::string unescaped(std::string_view raw)
{
    if (raw.find_first_of("&\r") == std::string_view::npos) return std::string(raw);
    std::string text;
    text.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '\r') {
            text += '\n';
            if (i + 1 < raw.size() && raw[i + 1] == '\n') ++i;
            continue;
        }
        if (raw[i] == '&') {
            constexpr std::size_t longest_reference = 12;
            const auto end = raw.substr(0, i + longest_reference).find(';', i);
            const auto character = end == std::string_view::npos ? "" : resolved(raw.substr(i + 1, end - i - 1));
            if (!character.empty()) {
                text += character;
                i = end;
                continue;
            }
        }
        text += raw[i];
    }
    return text;
}

std::string escaped(std::string_view text)
{
    return with_entities(text, "&<>\"");
}

std::string attribute_text(pugi::xml_node node, const char* name)
{
    return unescaped(node.attribute(name).value());
}

void set_attribute(pugi::xml_node node, const char* name, std::string_view text)
{
    auto attribute = node.attribute(name);
    if (!attribute) attribute = node.append_attribute(name);
    attribute.set_value(escaped(text).c_str());
}

void append_printed(pugi::xml_node element, std::string& target)
{
    StringWriter writer(target);
    element.print(writer, "", raw_printing, pugi::encoding_utf8);
}

void append_elements(pugi::xml_node parent, std::string_view printed)
{
    if (!parent.append_buffer(printed.data(), printed.size(), raw_parsing, pugi::encoding_utf8)) {
        throw std::bad_alloc(); // the XML is our own
    }
}

void append_raw_element(pugi::xml_node parent, const char* local_name, const std::string& raw)
{
    parent.append_child(name_like(parent, local_name).c_str()).append_child(pugi::node_pcdata).set_value(raw.c_str());
}

std::string element_text(pugi::xml_node element)
{
    std::string text;
    for (const auto child : element.children()) {
        if (child.type() == pugi::node_pcdata) text += unescaped(child.value());
        if (child.type() == pugi::node_cdata) text += child.value();
    }
    return text;
}

void set_raw_text(pugi::xml_node element, const std::string& raw)
{
    while (element.first_child()) remove_element(element, element.first_child());
    element.append_child(pugi::node_pcdata).set_value(raw.c_str());
}

void remove_element(pugi::xml_node parent, pugi::xml_node child)
{
    check_removable(child);
    parent.remove_child(child);
}

void check_removable(pugi::xml_node element)
{
    if (is_deep(element, deepest_nesting)) throw Damage(U"部件里的元素嵌套过深。");
}

} // namespace tarvik::ooxml
