#include "engines/spreadsheets/calculation/formula.h"
#include "engines/spreadsheets/calculation/tokens.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvik::calculation {

namespace {

constexpr std::size_t longest_formula = 65'536;
constexpr int deepest_nesting = 300;
constexpr int levels_of_operators = 5;

struct BinaryOperator {
    std::string_view text;
    int level; ///< the higher binds the closer
    Operator meaning;
};

constexpr std::array<BinaryOperator, 12> binary_operators{{{"=", 0, Operator::Equal},
                                                           {"<>", 0, Operator::NotEqual},
                                                           {"<", 0, Operator::Less},
                                                           {"<=", 0, Operator::LessOrEqual},
                                                           {">", 0, Operator::Greater},
                                                           {">=", 0, Operator::GreaterOrEqual},
                                                           {"&", 1, Operator::Join},
                                                           {"+", 2, Operator::Add},
                                                           {"-", 2, Operator::Subtract},
                                                           {"*", 3, Operator::Multiply},
                                                           {"/", 3, Operator::Divide},
                                                           {"^", 4, Operator::Power}}};

class Parser {
public:
    Parser(std::string_view text, Place at) : tokens_(text), at_(at) { advance(); }

    Formula run()
    {
        formula_.root = parse_binary(0);
        if (token_.kind != TokenKind::End) throw CannotCalculate("syntax");
        return std::move(formula_);
    }

private:
    void advance() { token_ = tokens_.next(); }
    bool is_operator(std::string_view text) const { return token_.kind == TokenKind::Operator && token_.text == text; }
    bool skip(std::string_view text)
    {
        const bool is_there = is_operator(text);
        if (is_there) advance();
        return is_there;
    }
    void require(std::string_view text)
    {
        if (!skip(text)) throw CannotCalculate("syntax");
    }

    // Counts what takes stack, here and when it is calculated.
    void go_deeper()
    {
        if (++depth_ > deepest_nesting) throw CannotCalculate("nesting");
    }

    template <typename Content, typename... Children>
    static Node node_of(Content content, Children... children)
    {
        Node node{std::move(content), {}};
        (node.children.push_back(std::move(children)), ...);
        return node;
    }

    const BinaryOperator* binary_operator(int level) const
    {
        if (token_.kind != TokenKind::Operator) return nullptr;
        const auto* const found = std::ranges::find_if(binary_operators, [&](const BinaryOperator& entry) {
            return entry.level == level && entry.text == token_.text;
        });
        return found == binary_operators.end() ? nullptr : found;
    }

    Node parse_binary(int level)
    {
        if (level == levels_of_operators) return parse_signed();
        Node first = parse_binary(level + 1);
        if (!binary_operator(level)) return first;
        Chain chain;
        Node node = node_of(Missing{}, std::move(first));
        while (const auto* found = binary_operator(level)) {
            advance();
            chain.push_back(found->meaning);
            node.children.push_back(parse_binary(level + 1));
        }
        node.content = std::move(chain);
        return node;
    }

    Node parse_signed()
    {
        go_deeper();
        Node node = skip("-")   ? node_of(Sign::Minus, parse_signed())
                    : skip("+") ? node_of(Sign::Plus, parse_signed())
                                : parse_percent();
        --depth_;
        return node;
    }

    Node parse_percent()
    {
        Node node = parse_intersection();
        for (int count = 0; skip("%"); ++count) {
            if (count == deepest_nesting) throw CannotCalculate("nesting");
            node = node_of(Sign::Percent, std::move(node));
        }
        return node;
    }

    bool starts_reference() const
    {
        return (token_.kind >= TokenKind::Sheet && token_.kind <= TokenKind::Name) || is_operator("(");
    }

    Node parse_intersection()
    {
        Node node = parse_between();
        if (!token_.is_after_blank || !starts_reference()) return node;
        Node result = node_of(ReferenceOperator::Intersection, std::move(node));
        while (token_.is_after_blank && starts_reference()) result.children.push_back(parse_between());
        return result;
    }

    Node parse_between()
    {
        Node node = parse_operand();
        while (skip(":")) {
            Node other = parse_operand();
            auto* const first = std::get_if<AreaReference>(&node.content);
            const auto* const second = std::get_if<AreaReference>(&other.content);
            const auto is_cell = [](const AreaReference& area) {
                return area.first.is_cell() && area.first == area.last;
            };
            if (first && second && is_cell(*first) && is_cell(*second) && second->first_sheet.empty()) {
                first->last = second->last;
                continue;
            }
            node = node_of(ReferenceOperator::Between, std::move(node), std::move(other));
            formula_.is_volatile = true; // what lies between is only known when it is calculated
            if (++betweens_ > deepest_nesting) throw CannotCalculate("nesting");
        }
        return node;
    }

    Node parse_operand()
    {
        go_deeper();
        Node node = parse_leaf();
        --depth_;
        return node;
    }

    Node parse_leaf()
    {
        const Token token = token_;
        switch (token.kind) {
        case TokenKind::Number:
            advance();
            return {std::isfinite(token.number) ? Value(token.number) : Value(CellError::Number), {}};
        case TokenKind::Text: advance(); return {Value(from_utf8(undoubled(token.text))), {}};
        case TokenKind::Sheet: return parse_sheet();
        case TokenKind::Operator:
            if (skip("(")) return parse_parentheses();
            require("{");
            return parse_array();
        default: return parse_of_sheet({}, {});
        }
    }

    Node parse_error_value()
    {
        const auto error = parse_error(from_utf8(token_.text));
        advance();
        if (!error) return {Uncalculable{"error value"}, {}};
        // "#REF!A1": the sheet is gone.
        if (!token_.is_after_blank && (token_.kind == TokenKind::Cell || token_.kind == TokenKind::Lines)) advance();
        if (!token_.is_after_blank && token_.kind == TokenKind::Error) advance();
        return {Value(*error), {}};
    }

    Node parse_sheet()
    {
        std::string names = token_.text.starts_with('\'') ? undoubled(token_.text) : std::string(token_.text);
        advance();
        const bool is_external = names.find('[') != std::string::npos;
        const auto colon = names.find(':');
        const Text first = lower(from_utf8(std::string_view(names).substr(0, colon)));
        const Text last =
            colon == std::string::npos ? first : lower(from_utf8(std::string_view(names).substr(colon + 1)));
        Node node = parse_of_sheet(first, last);
        return is_external ? Node{Uncalculable{"external workbook"}, {}} : node;
    }

    // Behind sheets, or without any.
    Node parse_of_sheet(const Text& first, const Text& last)
    {
        const Token token = token_;
        switch (token.kind) {
        case TokenKind::Cell:
        case TokenKind::Lines: advance(); return {AreaReference{first, last, token.first, token.last, at_}, {}};
        case TokenKind::Name: return parse_name(first);
        case TokenKind::Error: return parse_error_value();
        case TokenKind::Function: return parse_call();
        case TokenKind::Table: advance(); return table_leaf(token.text);
        default: throw CannotCalculate("syntax");
        }
    }

    Node parse_name(const Text& sheet)
    {
        const Text name = lower(from_utf8(token_.text));
        advance();
        if (name == U"true") return {Value(true), {}};
        if (name == U"false") return {Value(false), {}};
        return {NameReference{sheet, name}, {}};
    }

    Node parse_call()
    {
        std::string name = in_capitals(token_.text);
        for (const std::string_view prefix : {"_XLFN.", "_XLWS.", "_XLUDF.", "ORG.LIBREOFFICE.", "ORG.OPENOFFICE."})
            if (name.starts_with(prefix)) name.erase(0, prefix.size());
        const auto* const function = find_function(name);
        formula_.is_volatile = formula_.is_volatile || (function && function->is_volatile);
        formula_.has_subtotal = formula_.has_subtotal || name == "SUBTOTAL" || name == "AGGREGATE";
        advance();
        require("(");
        Node node;
        if (!skip(")")) {
            do {
                const bool is_left_out = is_operator(",") || is_operator(")");
                node.children.push_back(is_left_out ? Node{} : parse_binary(0));
            } while (skip(","));
            require(")");
        }
        const int count = static_cast<int>(node.children.size());
        if (function && (count < function->least || count > function->most))
            throw CannotCalculate("number of arguments of " + name);
        if (function) node.content = function;
        else node.content = Uncalculable{std::move(name)};
        return node;
    }

    Node parse_parentheses()
    {
        Node first = parse_binary(0);
        if (skip(")")) return first;
        Node node = node_of(ReferenceOperator::Union, std::move(first));
        while (skip(",")) node.children.push_back(parse_binary(0));
        require(")");
        return node;
    }

    Value parse_constant()
    {
        const bool is_negative = skip("-");
        if (!is_negative) skip("+");
        const Node node = parse_operand();
        const auto* const value = std::get_if<Value>(&node.content);
        if (!value) throw CannotCalculate("syntax");
        const auto* const number = std::get_if<double>(value);
        if (is_negative && !number) throw CannotCalculate("syntax");
        return is_negative ? Value(-*number) : *value;
    }

    Node parse_array()
    {
        std::vector<Value> values;
        std::size_t rows = 0, columns = 0;
        do {
            do values.push_back(parse_constant());
            while (skip(","));
            if (++rows == 1) columns = values.size();
            if (values.size() != rows * columns) throw CannotCalculate("syntax");
        } while (skip(";"));
        require("}");
        const auto array = std::make_shared<Array>(static_cast<int>(rows), static_cast<int>(columns));
        for (std::size_t i = 0; i < values.size(); ++i)
            array->stored(static_cast<int>(i / columns), static_cast<int>(i % columns)) = std::move(values[i]);
        return {ArrayPointer(array), {}};
    }

    Tokens tokens_;
    Place at_;
    Token token_;
    Formula formula_;
    int depth_ = 0;
    int betweens_ = 0;
};

} // namespace

FormulaPointer parse(std::string_view text, Place at)
{
    try {
        if (text.size() > longest_formula) throw CannotCalculate("length");
        return std::make_shared<Formula>(Parser(text, at).run());
    } catch (const CannotCalculate& error) {
        // What it depends on is not known.
        return std::make_shared<Formula>(Formula{{Uncalculable{error.what()}, {}}, true, false});
    }
}

} // namespace tarvik::calculation
