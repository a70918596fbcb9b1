// Calculates the formulas of strangers' workbooks and compares with what the applications stored that made them.
//
//     recalculate FOLDER
//
// Every stored result of every .xlsx and .xlsm file below FOLDER is taken for old, and all are calculated. Prints for
// each workbook the number of formulas, of equal, different and not calculated ones, and the sums. Formulas that depend
// on the present or on a reference that is only known when calculated are counted apart when they differ, and so are
// those whose stored result its own file shows to be none of a calculation: each is printed with the reason.

#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

using namespace tarvik;
using namespace tarvik::ooxml;
using Number = FormulaIndex::Number;
using calculation::Value;

struct Counts {
    std::size_t formulas = 0, without_result = 0, equal = 0, different = 0, volatile_different = 0, failed = 0;
    std::map<std::string, std::size_t> reasons, explained;

    void add(const Counts& other)
    {
        formulas += other.formulas;
        without_result += other.without_result;
        equal += other.equal;
        different += other.different;
        volatile_different += other.volatile_different;
        failed += other.failed;
        for (const auto& [reason, count] : other.reasons) reasons[reason] += count;
        for (const auto& [reason, count] : other.explained) explained[reason] += count;
    }
    void print(std::ostream& out) const
    {
        out << formulas << " formulas, " << equal << " equal, " << different << " different, " << volatile_different
            << " volatile and different, " << failed << " not calculated, " << without_result
            << " without a stored result\n";
        for (const auto& [reason, count] : explained) out << "    apart, " << reason << ": " << count << '\n';
        for (const auto& [reason, count] : reasons) out << "    not calculated, " << reason << ": " << count << '\n';
    }
};

// A truth value may be stored as 1 or 0.
bool are_equal(const Value& ours, const Value& theirs)
{
    constexpr double tolerance = 1e-9;
    if (const auto* truth = std::get_if<bool>(&ours); truth && std::holds_alternative<double>(theirs))
        return std::get<double>(theirs) == (*truth ? 1 : 0);
    const auto *one = std::get_if<double>(&ours), *other = std::get_if<double>(&theirs);
    if (!one || !other) return ours == theirs;
    return std::abs(*one - *other) <= tolerance * std::max({std::abs(*one), std::abs(*other), 1e-300});
}

std::string shown(const Value& value)
{
    if (const auto* error = std::get_if<calculation::CellError>(&value)) return to_utf8(error_text(*error));
    const auto text = to_utf8(std::get<Text>(calculation::to_text(value)));
    return std::holds_alternative<Text>(value) ? '"' + text + '"' : text;
}

bool is_zero(const Value& value)
{
    const auto* number = std::get_if<double>(&value);
    return number && *number == 0;
}

bool is_unknown_name(const Value& value)
{
    return value == Value(calculation::CellError::Name);
}

// "1" in the place of 1.
bool is_same_as_text(const Value& ours, const Value& stored)
{
    const auto* text = std::get_if<Text>(&stored);
    const auto held = text ? number(*text) : std::nullopt;
    return held && are_equal(ours, *held);
}

// In the formula's text constants: "0.00" of one country is "0,00" of another.
std::string with_marks_exchanged(std::string formula)
{
    bool is_quoted = false;
    for (char& c : formula) {
        if (c == '"') is_quoted = !is_quoted;
        if (is_quoted && (c == '.' || c == ',')) c = c == '.' ? ',' : '.';
    }
    return formula;
}

pugi::xml_node formula_element(WorkbookModel& model, const IndexedFormula& formula)
{
    return child_named(model.sheet(formula.sheet).cells().find(formula.place()), "f");
}

// The formulas of these numbers and what depends on them.
std::vector<bool> with_dependents(const FormulaIndex& index, std::vector<Number> met)
{
    std::vector<bool> marked(index.size());
    std::vector<RangeSet::Taken> taken(index.sheet_count());
    for (const auto number : met) marked[number] = true;
    while (!met.empty()) {
        const auto& formula = index[met.back()];
        met.pop_back();
        auto& of_sheet = taken[static_cast<std::size_t>(formula.sheet - 1)];
        index.areas(formula.sheet).take(formula.range, of_sheet, [&](std::size_t area) {
            const auto reader = index.reader(formula.sheet, area);
            if (!marked[reader]) met.push_back(reader);
            marked[reader] = true;
        });
    }
    return marked;
}

class Comparison {
public:
    explicit Comparison(const std::string& bytes)
        : package_(std::make_shared<const Package>(bytes)), model_(package_), index_(model_.recalculation().index())
    {
    }

    Counts run(std::ostream& differences)
    {
        counts_.formulas = index_.size();
        for (Number number = 0; number < index_.size(); ++number) stored_.push_back(values(model_, number));
        calculate(model_);
        for (Number number = 0; number < index_.size(); ++number) sort(number);
        const auto volatile_ones = index_.volatile_ones();
        const auto is_volatile = with_dependents(index_, {volatile_ones.begin(), volatile_ones.end()});
        std::erase_if(different_, [&](Number number) { return is_volatile[number]; });
        counts_.volatile_different =
            counts_.formulas - counts_.equal - counts_.failed - counts_.without_result - different_.size();
        explain();
        for (const auto number : different_) print(number, differences);
        return counts_;
    }

private:
    using Values = std::vector<Value>;

    static Values values(WorkbookModel& model, Number number)
    {
        const auto& formula = model.recalculation().index()[number];
        return model.sheet(formula.sheet).values(formula.range);
    }

    static void calculate(WorkbookModel& model)
    {
        model.recalculation().forget_results();
        model.recalculation().update_all();
    }

    void sort(Number number)
    {
        const auto& failed = model_.recalculation().failed();
        if (const auto reason = failed.find(number); reason != failed.end()) {
            ++counts_.failed;
            ++counts_.reasons[reason->second];
        } else if (!index_[number].has_result) ++counts_.without_result;
        else if (std::ranges::equal(values(model_, number), stored_[number], are_equal)) ++counts_.equal;
        else different_.push_back(number);
    }

    // What shows that a stored result is none of a calculation, for each difference at most one reason.
    void explain()
    {
        const auto is_all_zero = [](const Values& all) { return std::ranges::all_of(all, is_zero); };
        const bool has_placeholders = std::ranges::all_of(stored_, is_all_zero);
        const bool is_to_be_calculated = package_->part("xl/workbook.xml").find("fullCalcOnLoad=\"1\"") != npos;
        for (const auto number : different_) {
            const auto& stored = stored_[number];
            if (is_to_be_calculated) explained_[number] = "a workbook that asks to be calculated when it is opened";
            else if (has_placeholders) explained_[number] = "a workbook in which every result is 0";
            else if (std::ranges::equal(values(model_, number), stored, is_same_as_text))
                explained_[number] = "a number stored as a text";
            else if (std::ranges::all_of(stored, is_unknown_name))
                explained_[number] = "a name that the file's writer did not know";
        }
        explain_by_country();
        std::vector<Number> roots;
        for (Number number = 0; number < index_.size(); ++number)
            if (contradicts(number)) roots.push_back(number);
        for (const auto number : different_)
            if (std::ranges::binary_search(roots, number))
                explained_.try_emplace(number, "another result than the one cell that it names");
        for (const auto& [number, reason] : explained_) roots.push_back(number);
        const auto follows = with_dependents(index_, roots);
        for (const auto number : different_)
            if (follows[number]) explained_.try_emplace(number, "depends on one of these");
        for (const auto& [number, reason] : explained_) ++counts_.explained[reason];
        counts_.different = different_.size() - explained_.size();
    }

    bool contradicts(Number number)
    {
        const auto place = parse_place(element_text(formula_element(model_, index_[number])));
        const auto named = place ? index_.find(index_[number].sheet, *place) : FormulaIndex::none;
        return named != FormulaIndex::none && !std::ranges::equal(stored_[number], stored_[named], are_equal);
    }

    void explain_by_country()
    {
        if (different_.empty()) return;
        WorkbookModel edited(package_);
        for (const auto number : different_) {
            auto element = formula_element(edited, index_[number]);
            const auto text = element_text(element);
            if (text.find("TEXT(") != npos) set_raw_text(element, escaped(with_marks_exchanged(text)));
        }
        PartChanges changes;
        for (int sheet = 1; sheet <= edited.sheet_count(); ++sheet) {
            const auto& part = edited.sheet(sheet).part();
            changes.written.emplace(part.name(), part.print());
        }
        WorkbookModel elsewhere(std::make_shared<const Package>(package_->with(changes)));
        calculate(elsewhere);
        for (const auto number : different_) {
            auto theirs = values(elsewhere, number);
            for (auto& value : theirs)
                if (auto* text = std::get_if<Text>(&value)) *text = from_utf8(exchanged(to_utf8(*text)));
            if (std::ranges::equal(theirs, stored_[number], are_equal))
                explained_.try_emplace(number, "a format of another country's");
        }
    }

    static std::string exchanged(const std::string& text) { return with_marks_exchanged('"' + text).substr(1); }

    void print(Number number, std::ostream& out)
    {
        const auto& formula = index_[number];
        const auto text = element_text(formula_element(model_, formula));
        const auto ours = values(model_, number);
        const auto differing = std::ranges::mismatch(ours, stored_[number], are_equal);
        out << "    " << formula.sheet << '!' << place_name(formula.place()) << " ="
            << (text.empty() ? "(shared)" : text) << "  ours " << shown(*differing.in1) << ", stored "
            << shown(*differing.in2);
        if (const auto why = explained_.find(number); why != explained_.end()) out << "  (" << why->second << ')';
        out << '\n';
    }

    std::shared_ptr<const Package> package_;
    WorkbookModel model_;
    const FormulaIndex& index_;
    std::vector<Values> stored_;
    std::vector<Number> different_;
    std::map<Number, std::string> explained_;
    Counts counts_;
};

std::string bytes_of(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::filesystem::path> workbooks_below(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const auto extension = entry.path().extension();
        if (entry.is_regular_file() && (extension == ".xlsx" || extension == ".xlsm")) files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "recalculate FOLDER\n";
        return 2;
    }
    Counts sum;
    std::size_t read = 0, passed_over = 0;
    for (const auto& file : workbooks_below(arguments[1])) {
        std::ostringstream differences;
        try {
            const auto counts = Comparison(bytes_of(file)).run(differences);
            ++read;
            if (counts.formulas == 0) continue;
            std::cout << file.string() << ": ";
            counts.print(std::cout);
            std::cout << differences.str() << std::flush;
            sum.add(counts);
        } catch (const std::exception& failure) {
            ++passed_over;
            std::cout << file.string() << ": passed over, " << failure.what() << '\n';
        }
    }
    std::cout << "sum of " << read << " workbooks, " << passed_over << " passed over: ";
    sum.print(std::cout);
    return 0;
}
