#include "scripts/names.h"

#include <charconv>

namespace tarvik {

namespace {

template <auto Member>
ScriptValue form1(const Program& program)
{
    return to_value(program.form1.*Member);
}

// The model keeps of some objects only whether they stand.
ScriptValue object(bool stands)
{
    return {stands ? "Object" : "Nothing"};
}

struct Member {
    std::string_view name;
    ScriptValue (*read)(const Program&);
};

constexpr Member members[] = {
    {"resultcount", form1<&Form1::resultcount>},
    {"lastpage", form1<&Form1::lastpage>},
    {"matchpos", form1<&Form1::matchpos>},
    {"resultpos", form1<&Form1::resultpos>},
    {"pageno", form1<&Form1::pageno>},
    {"needle", form1<&Form1::needle>},
    {"fso", [](const Program& p) { return object(p.form1.fso); }},
    {"textstream", [](const Program& p) { return object(p.form1.textstream); }},
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
    {"analysismode", [](const Program& p) { return to_value(p.module1.analysismode); }},
    {"designeropen", [](const Program& p) { return to_value(p.module1.designeropen); }},

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
    {"sugcol", [](const Program& p) { return p.form1.sugcol_set ? to_value(p.form3.Text1[4].text()) : object(false); }},
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
    {"scanfolder", [](const Program& p) { return object(!p.form1.scanfolder.empty()); }},
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

using Indices = std::vector<std::size_t>;

struct Array {
    std::string_view name;
    Indices (*last)(const Module1&);
    Text (*element)(const Module1&, const Indices& at);
};

template <auto Texts>
constexpr Array texts(std::string_view name)
{
    return {name, [](const Module1& module1) { return Indices{(module1.*Texts).last()}; },
            [](const Module1& module1, const Indices& at) {
                if constexpr (requires { (module1.*Texts).text(at[0]); }) return (module1.*Texts).text(at[0]);
                else return (module1.*Texts).get(at[0]).str();
            }};
}

template <auto Cells>
constexpr Array cells(std::string_view name)
{
    return {name,
            [](const Module1&) {
                return Indices{Table::last_row, Table::last_column};
            },
            [](const Module1& module1, const Indices& at) { return (module1.*Cells).cell(at[0], at[1]).str(); }};
}

constexpr Array arrays[] = {
    texts<&Module1::pages>("pages"),
    texts<&Module1::hits>("hits"),
    texts<&Module1::filehits>("filehits"),
    texts<&Module1::cnhits>("cnhits"),
    texts<&Module1::enhits>("enhits"),
    texts<&Module1::zhhits>("zhhits"),
    texts<&Module1::sufrow>("sufrow"),
    texts<&Module1::sugrow>("sugrow"),
    texts<&Module1::rowhits>("rowhits"),
    texts<&Module1::distinct>("distinct"),
    texts<&Module1::distinctn>("distinctn"),
    texts<&Module1::colcopy>("colcopy"),
    texts<&Module1::keylist>("keylist"),
    cells<&Module1::suf>("suf"),
    cells<&Module1::sug>("sug"),
};

// The numbers in round brackets; none when it is written in another way.
Indices indices_in(std::string_view written)
{
    if (!written.starts_with('(') || !written.ends_with(')')) return {};
    Indices indices;
    const char* const end = written.data() + written.size() - 1;
    for (const char* at = written.data() + 1;; ++at) {
        const auto [behind, error] = std::from_chars(at, end, indices.emplace_back());
        if (error != std::errc{} || (behind != end && *behind != ',')) return {};
        if (behind == end) return indices;
        at = behind;
    }
}

template <typename Rows>
auto* find_row(const Rows& rows, std::string_view name)
{
    for (const auto& row : rows)
        if (row.name == name) return &row;
    return static_cast<decltype(&*std::begin(rows))>(nullptr);
}

std::function<ScriptValue()> element_reader(const Program& program, std::string_view written)
{
    const std::size_t open = std::min(written.find('('), written.size());
    const Array* const array = find_row(arrays, written.substr(0, open));
    if (!array) return nullptr;
    const Module1& shared = program.module1;
    const Indices at = indices_in(written.substr(open)), last = array->last(shared);
    if (at.size() != last.size()) return nullptr;
    for (std::size_t i = 0; i < at.size(); ++i)
        if (at[i] > last[i])
            throw ScriptFailure("the index of " + std::string(written) + " is above " + std::to_string(last[i]));
    return [array, &shared, at] { return to_value(array->element(shared, at)); };
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
    for (const Array& array : arrays)
        names.push_back(std::string(array.name) + (array.last(program.module1).size() == 1 ? "(i)" : "(i,j)"));
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

void Watches::look(const Control* control)
{
    for (auto& [expression, last] : watches_) {
        if (expression.control != control) continue;
        ScriptValue now = expression.read();
        if (now == last) continue;
        last = std::move(now);
        transcript_.line(expression.written + " = " + last.shown);
    }
}

} // namespace tarvik
