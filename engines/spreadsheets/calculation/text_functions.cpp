#include "engines/spreadsheets/calculation/functions.h"
#include "engines/spreadsheets/calculation/number_format.h"

#include <algorithm>
#include <cmath>

namespace tarvik::calculation {

namespace {

constexpr std::size_t characters_of_step = 16; // compared in the time that a look at a cell takes
constexpr std::size_t usual_comparisons = 4'096;

// A count or place of characters, cut at the longest text.
std::size_t size_of(Call& call, std::size_t argument, double least, double otherwise)
{
    const double number = std::trunc(call.number(argument, otherwise));
    require(number >= least, CellError::Value);
    return static_cast<std::size_t>(std::min(number, static_cast<double>(longest_text)));
}

Operand right(Call& call)
{
    const Text& text = call.text(0);
    return Value(text.substr(text.size() - std::min(text.size(), size_of(call, 1, 0, 1))));
}

Operand middle(Call& call)
{
    const Text& text = call.text(0);
    const auto place = size_of(call, 1, 1, 1), count = size_of(call, 2, 0, 0);
    return Value(place > text.size() ? Text() : text.substr(place - 1, count));
}

Operand trim_blanks(Call& call)
{
    Text result;
    for (const char32_t c : call.text(0))
        if (c != U' ' || (!result.empty() && result.back() != U' ')) result += c;
    if (!result.empty() && result.back() == U' ') result.pop_back();
    return Value(std::move(result));
}

Operand clean(Call& call)
{
    Text text = call.text(0);
    std::erase_if(text, [](char32_t c) { return c < U' '; });
    return Value(std::move(text));
}

Operand proper(Call& call)
{
    Text text = call.text(0);
    bool is_in_word = false;
    for (char32_t& c : text) {
        const bool is_letter = lower(c) != upper(c) || c >= U'\u2e80'; // Chinese characters are letters
        c = is_in_word ? lower(c) : upper(c);
        is_in_word = is_letter;
    }
    return Value(std::move(text));
}

Operand substitute(Call& call)
{
    const Text& text = call.text(0);
    const Text& old = call.text(1);
    const bool is_one = call.size() > 3;
    const double which = std::trunc(call.number(3));
    require(!is_one || which >= 1, CellError::Value);
    if (old.empty()) return call.value(0);
    Text result;
    double count = 0;
    std::size_t at = 0;
    for (auto found = text.find(old); found != Text::npos; found = text.find(old, at)) {
        result.append(text, at, found - at);
        result += !is_one || ++count == which ? call.text(2) : old;
        require(result.size() <= longest_text, CellError::Value);
        at = found + old.size();
    }
    return result.append(text, at);
}

Operand replace(Call& call)
{
    Text text = call.text(0);
    const auto place = std::min(size_of(call, 1, 1, 1) - 1, text.size());
    return text.replace(place, size_of(call, 2, 0, 0), call.text(3));
}

template <bool takes_patterns>
Operand find(Call& call)
{
    const Text &wanted = call.text(0), &text = call.text(1);
    const auto from = size_of(call, 2, 1, 1) - 1;
    require(from <= text.size(), CellError::Value);
    const std::size_t comparisons = std::max(wanted.size() * text.size(), usual_comparisons) - usual_comparisons;
    call.evaluator.source.spend(comparisons / characters_of_step);
    const auto found = takes_patterns ? find_pattern(wanted, text, from) : text.find(wanted, from);
    require(found != npos, CellError::Value);
    return static_cast<double>(found) + 1;
}

Operand repeat(Call& call)
{
    const Text& text = call.text(0);
    const auto count = size_of(call, 1, 0, 0);
    require(text.size() * count <= longest_text, CellError::Value);
    Text result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return Value(std::move(result));
}

void append(Text& result, const Value& value)
{
    result += required<Text>(to_text(value));
    require(result.size() <= longest_text, CellError::Value);
}

Operand concatenate(Call& call)
{
    Text result;
    call.visit_values(0, call.size(), [&](const Value& value, bool /*is_written*/) { append(result, value); });
    return result;
}

// Absent cells count as well unless they are passed over.
Operand join(Call& call)
{
    const bool skips_empty = call.truth(1);
    Text result;
    bool is_first = true;
    const auto add = [&](const Value& value) {
        const auto* const text = std::get_if<Text>(&value);
        if (skips_empty && (std::holds_alternative<std::monostate>(value) || (text && text->empty()))) return;
        if (!is_first) result += call.text(0);
        is_first = false;
        append(result, value);
    };
    for (std::size_t i = 2; i < call.size(); ++i) {
        const auto* const areas = std::get_if<Areas>(&call.operand(i));
        if (!areas || skips_empty) {
            call.evaluator.visit_values(call.operand(i), add);
        } else {
            for (const auto& area : *areas) call.evaluator.visit_values(call.evaluator.array(Areas{area}), add);
        }
    }
    return Value(std::move(result));
}

Operand text_in_format(Call& call)
{
    Value value = call.value(0);
    if (std::holds_alternative<std::monostate>(value)) value = 0.0;
    if (const auto* const text = std::get_if<Text>(&value))
        if (const auto number = parse_number(*text, call.counts_from_1904())) value = *number;
    const auto* const number = std::get_if<double>(&value);
    if (!number) return Value(format_text(std::get<Text>(to_text(value)), call.text(1)));
    const auto formatted = format_number(*number, call.text(1), call.counts_from_1904());
    return formatted ? Value(*formatted) : CellError::Value;
}

Operand to_value(Call& call)
{
    if (std::holds_alternative<bool>(call.value(0))) return Value(CellError::Value);
    return to_number(call.value(0), call.counts_from_1904());
}

// Languages differ in what they count as two bytes.
Operand character(Call& call)
{
    const int code = call.whole(0);
    require(code >= 1 && code <= 255, CellError::Value);
    if (code > 0x7f) throw CannotCalculate("CHAR beyond ASCII");
    return Text(1, static_cast<char32_t>(code));
}

Operand code(Call& call)
{
    require(!call.text(0).empty(), CellError::Value);
    if (call.text(0)[0] > 0x7f) throw CannotCalculate("CODE beyond ASCII");
    return static_cast<double>(call.text(0)[0]);
}

Operand fixed(Call& call)
{
    const int decimals = call.whole(1, 2);
    require(decimals <= 127, CellError::Value);
    Text format = call.truth(2) ? U"0" : U"#,##0";
    if (decimals > 0) format += U"." + Text(static_cast<std::size_t>(decimals), U'0');
    return Value(format_number(rounded(call.number(0), decimals), format, false).value_or(Text()));
}

constexpr Function table[] = {
    {"CHAR", 1, 1, "n", character},
    {"CLEAN", 1, 1, "t", clean},
    {"CODE", 1, 1, "t", code},
    {"CONCAT", 1, 255, "r", concatenate},
    {"CONCATENATE", 1, 255, "v", concatenate},
    {"EXACT", 2, 2, "t", [](Call& call) -> Operand { return Value(call.text(0) == call.text(1)); }},
    {"FIND", 2, 3, "ttn", find<false>},
    {"FIXED", 1, 3, "nnl", fixed},
    {"LEFT", 1, 2, "tn", [](Call& call) -> Operand { return call.text(0).substr(0, size_of(call, 1, 0, 1)); }},
    {"LEN", 1, 1, "t", [](Call& call) -> Operand { return static_cast<double>(call.text(0).size()); }},
    {"LOWER", 1, 1, "t", [](Call& call) -> Operand { return Value(lower(TextView(call.text(0)))); }},
    {"MID", 3, 3, "tnn", middle},
    {"PROPER", 1, 1, "t", proper},
    {"REPLACE", 4, 4, "tnnt", replace},
    {"REPT", 2, 2, "tn", repeat},
    {"RIGHT", 1, 2, "tn", right},
    {"SEARCH", 2, 3, "ttn", find<true>},
    {"SUBSTITUTE", 3, 4, "tttn", substitute},
    {"TEXT", 2, 2, "vt", text_in_format},
    {"TEXTJOIN", 3, 255, "tlr", join},
    {"TRIM", 1, 1, "t", trim_blanks},
    {"UPPER", 1, 1, "t", [](Call& call) -> Operand { return Value(upper(TextView(call.text(0)))); }},
    {"VALUE", 1, 1, "v", to_value},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> text_functions = table;

} // namespace tarvik::calculation
