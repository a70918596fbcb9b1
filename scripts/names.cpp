#include "scripts/names.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace tarvik {

namespace {

using Reader = ScriptValue (*)(const Program&);

template <auto Member>
ScriptValue form1(const Program& program)
{
    return to_value(program.form1.*Member);
}
template <auto Member>
ScriptValue module1(const Program& program)
{
    return to_value(program.module1.*Member);
}
// The model keeps of these objects only what anybody asks of them.
template <auto Member>
ScriptValue standing_object(const Program& program)
{
    return ObjectValue{program.form1.*Member};
}

struct Member {
    std::string_view name;
    Reader read;
};

constexpr Member members[] = {
    {"resultcount", form1<&Form1::resultcount>},
    {"lastpage", form1<&Form1::lastpage>},
    {"matchpos", form1<&Form1::matchpos>},
    {"resultpos", form1<&Form1::resultpos>},
    {"pageno", form1<&Form1::pageno>},
    {"needle", form1<&Form1::needle>},
    {"fso", standing_object<&Form1::fso>},
    {"textstream", standing_object<&Form1::textstream>},
    {"answer", form1<&Form1::answer>},
    {"formready", form1<&Form1::formready>},
    {"cutopen", form1<&Form1::cutopen>},
    {"cutopenfile", form1<&Form1::cutopenfile>},
    {"menuonquery", form1<&Form1::menuonquery>},
    {"menuonnumber", form1<&Form1::menuonnumber>},
    {"focusnumber", form1<&Form1::focusnumber>},
    {"focusquery", form1<&Form1::focusquery>},
    {"focuspane1", form1<&Form1::focuspane1>},
    {"focuspane2", form1<&Form1::focuspane2>},
    {"focuspane3", form1<&Form1::focuspane3>},
    {"analysismode", module1<&Module1::analysismode>},
    {"designeropen", module1<&Module1::designeropen>},

    {"comp", form1<&Form1::comp>},
    {"showdata", form1<&Form1::showdata>},
    {"notcap", form1<&Form1::notcap>},
    {"dbresult", form1<&Form1::dbresult>},
    {"sufcount", form1<&Form1::sufcount>},
    {"sugcount", form1<&Form1::sugcount>},
    {"curcount", form1<&Form1::curcount>},
    {"sufrows", form1<&Form1::sufrows>},
    {"sugrows", form1<&Form1::sugrows>},
    {"sufcol", form1<&Form1::sufcol>},
    {"sugcol",
     [](const Program& program) -> ScriptValue {
         if (!program.form1.sugcol_set) return ObjectValue{};
         return program.form3.Text1[4].text();
     }},
    {"compcount", form1<&Form1::compcount>},
    {"daydiff", form1<&Form1::daydiff>},
    {"daterow", form1<&Form1::daterow>},
    {"fieldfrom", form1<&Form1::fieldfrom>},
    {"fieldto", form1<&Form1::fieldto>},
    {"kqdate", form1<&Form1::kqdate>},
    {"kqtime", form1<&Form1::kqtime>},
    {"kqweekday", form1<&Form1::kqweekday>},
    {"keycount", form1<&Form1::keycount>},

    {"outfolder", form1<&Form1::outfolder>},
    {"runtitle", form1<&Form1::runtitle>},
    {"runstart", form1<&Form1::runstart>},
    {"runnow", form1<&Form1::runnow>},
    {"jobstart", form1<&Form1::jobstart>},
    {"batchcursor", form1<&Form1::batchcursor>},
    {"sheetno", form1<&Form1::sheetno>},
    {"batchgate", form1<&Form1::batchgate>},
    {"allcount", form1<&Form1::allcount>},
    {"partcount", form1<&Form1::partcount>},
    {"recordcount", form1<&Form1::recordcount>},
    {"rowcount", form1<&Form1::rowcount>},
    {"sheetrow", form1<&Form1::sheetrow>},
    {"z1end", form1<&Form1::z1end>},
    {"z1end2", form1<&Form1::z1end2>},
    {"z6end", form1<&Form1::z6end>},
    {"scanfolderset", form1<&Form1::scanfolderset>},
    {"scanfolder", [](const Program& p) -> ScriptValue { return ObjectValue{!p.form1.scanfolder.empty()}; }},
    {"folderchosen", form1<&Form1::folderchosen>},
    {"sourcefolder", form1<&Form1::sourcefolder>},
    {"founddata", form1<&Form1::founddata>},
    {"filecount", form1<&Form1::filecount>},
    {"savedcount", [](const Program& p) { return to_value(p.run.files.size()); }},
    {"runstopped", [](const Program& p) { return to_value(p.run.stopped); }},

    {"xlApp", form1<&Form1::xlApp>},
    {"xlBook", form1<&Form1::xlBook>},
    {"xlSheet", form1<&Form1::xlSheet>},
    {"wdApp", form1<&Form1::wdApp>},
    {"wdDoc", form1<&Form1::wdDoc>},

    {"clipboard", [](const Program& p) { return to_value(p.platform.clipboard.text()); }},
};

struct Array {
    std::string_view name;
    std::size_t (*last)(const Module1&);
    Text (*element)(const Module1&, std::size_t index);
};

template <auto Texts>
constexpr Array texts(std::string_view name)
{
    return {name, [](const Module1& module1) { return (module1.*Texts).last(); },
            [](const Module1& module1, std::size_t index) { return (module1.*Texts).get(index).str(); }};
}

template <auto Rows>
constexpr Array rows(std::string_view name)
{
    return {name, [](const Module1& module1) { return (module1.*Rows).last(); },
            [](const Module1& module1, std::size_t index) { return (module1.*Rows).text(index); }};
}

constexpr Array arrays[] = {
    texts<&Module1::pages>("pages"),         texts<&Module1::hits>("hits"),
    texts<&Module1::filehits>("filehits"),   texts<&Module1::cnhits>("cnhits"),
    texts<&Module1::enhits>("enhits"),       texts<&Module1::zhhits>("zhhits"),
    rows<&Module1::sufrow>("sufrow"),        rows<&Module1::sugrow>("sugrow"),
    texts<&Module1::rowhits>("rowhits"),     texts<&Module1::distinct>("distinct"),
    texts<&Module1::distinctn>("distinctn"), texts<&Module1::colcopy>("colcopy"),
    texts<&Module1::keylist>("keylist"),
};

struct TableName {
    std::string_view name;
    Table Module1::*table;
};
constexpr TableName tables[] = {{"suf", &Module1::suf}, {"sug", &Module1::sug}};

// A name with its indices in round brackets; nothing when it is written in another way.
struct Indexed {
    std::string_view name;
    std::vector<std::size_t> indices;
};

std::optional<Indexed> split_indices(std::string_view written)
{
    const std::size_t open = written.find('(');
    if (open == std::string_view::npos || !written.ends_with(')')) return std::nullopt;
    Indexed result{written.substr(0, open), {}};
    const char* at = written.data() + open + 1;
    const char* const end = written.data() + written.size() - 1;
    while (true) {
        std::size_t index = 0;
        const auto [behind, error] = std::from_chars(at, end, index);
        if (error != std::errc{}) return std::nullopt;
        result.indices.push_back(index);
        if (behind == end) return result;
        if (*behind != ',') return std::nullopt;
        at = behind + 1;
    }
}

template <typename Rows>
auto* find_row(const Rows& rows, std::string_view name)
{
    for (const auto& row : rows)
        if (row.name == name) return &row;
    return static_cast<decltype(&*std::begin(rows))>(nullptr);
}

void check_index(std::size_t index, std::size_t last, std::string_view written)
{
    if (index > last) throw ScriptFailure("the index of " + std::string(written) + " is above " + std::to_string(last));
}

std::function<ScriptValue()> element_reader(const Program& program, std::string_view written)
{
    const auto indexed = split_indices(written);
    if (!indexed) return nullptr;
    const Module1& shared = program.module1;
    const auto& indices = indexed->indices;
    if (const Array* array = find_row(arrays, indexed->name); array && indices.size() == 1) {
        check_index(indices[0], array->last(shared), written);
        return [array, &shared, index = indices[0]]() -> ScriptValue { return array->element(shared, index); };
    }
    if (const TableName* table = find_row(tables, indexed->name); table && indices.size() == 2) {
        check_index(indices[0], Table::last_row, written);
        check_index(indices[1], Table::last_column, written);
        return [table, &shared, row = indices[0], column = indices[1]]() -> ScriptValue {
            return (shared.*(table->table)).cell(row, column).str();
        };
    }
    return nullptr;
}

} // namespace

Expression resolve(const Program& program, std::string_view written)
{
    if (const Member* member = find_row(members, written))
        return {std::string(written), [member, &program] { return member->read(program); }};
    if (auto reader = element_reader(program, written)) return {std::string(written), std::move(reader)};
    const std::size_t dot = std::min(written.rfind('.'), written.size());
    const Control* const control = find_control(program, written.substr(0, dot));
    const auto* const property = find_row(control_properties(), written.substr(std::min(dot + 1, written.size())));
    if (control && property && property->has(*control))
        return {std::string(written), [property, control] { return property->read(*control); }, control};
    throw ScriptFailure("unknown name " + std::string(written));
}

std::vector<std::string> all_names(const Program& program)
{
    std::vector<std::string> names;
    for (const Control* control : program.listeners.controls)
        for (const ControlProperty& property : control_properties())
            if (property.has(*control)) names.push_back(script_name(*control) + "." + std::string(property.name));
    for (const Array& array : arrays) names.push_back(std::string(array.name) + "(i)");
    for (const TableName& table : tables) names.push_back(std::string(table.name) + "(i,j)");
    for (const Member& member : members) names.emplace_back(member.name);
    return names;
}

void Watches::add(Expression expression)
{
    const auto same = [&](const Watch& watch) { return watch.expression.written == expression.written; };
    if (std::ranges::any_of(watches_, same)) return;
    ScriptValue now = expression.read();
    watches_.push_back({std::move(expression), std::move(now)});
}

void Watches::look_at(const Control& control)
{
    for (Watch& watch : watches_)
        if (watch.expression.control == &control) look(watch);
}

void Watches::look_at_members()
{
    for (Watch& watch : watches_)
        if (!watch.expression.control) look(watch);
}

void Watches::look(Watch& watch)
{
    ScriptValue now = watch.expression.read();
    if (now == watch.last) return;
    watch.last = std::move(now);
    transcript_.line(watch.expression.written + " = " + printed(watch.last));
}

} // namespace tarvik
