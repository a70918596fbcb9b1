#include "scripts/names.h"

#include <charconv>

namespace tarvik {

namespace {

constexpr std::string_view window_names[] = {"Form1", "Form3", "Form4"}; // by FormId

bool is_any(const Control&)
{
    return true;
}

template <typename Kind>
bool is(const Control& control)
{
    return dynamic_cast<const Kind*>(&control) != nullptr;
}

bool is_seen(const Control& control)
{
    return !is<Timer>(control);
}

bool has_caption(const Control& control)
{
    return is_seen(control) && !is<TextControl>(control);
}

template <typename Kind, auto Getter>
ScriptValue read(const Control& control)
{
    return to_value((dynamic_cast<const Kind&>(control).*Getter)());
}

const TextControl& box(const Control& control)
{
    return dynamic_cast<const TextControl&>(control);
}

ScriptValue marks_of(const Control& control)
{
    std::vector<Mark> marks = dynamic_cast<const Pane&>(control).marks();
    std::ranges::stable_sort(marks, {}, &Mark::start);
    std::string list = "[";
    for (const Mark& mark : marks) {
        if (list.size() > 1) list += ',';
        list += '[' + std::to_string(mark.start.number()) + ',' + std::to_string(mark.length) + ',' +
                std::to_string(mark.colour) + ',' + std::to_string(mark.size) + ']';
    }
    return {list + ']'};
}

/// A property of the controls of some kinds. They are read of no others.
struct ControlProperty {
    std::string_view name;
    bool (*has)(const Control& control);
    ScriptValue (*read)(const Control& control);
};
/// Each control has those that it has in this order.
constexpr ControlProperty properties[] = {
    {"Visible", is_seen, read<Control, &Control::visible>},
    {"Enabled", is_any, read<Control, &Control::enabled>},
    {"Left", is_seen, read<Control, &Control::left>},
    {"Top", is_seen, read<Control, &Control::top>},
    {"Width", is_seen, read<Control, &Control::width>},
    {"Height", is_seen, read<Control, &Control::height>},
    {"BackColor", is_seen, read<Control, &Control::back_color>},
    {"Interval", is<Timer>, read<Timer, &Timer::interval>},
    {"Text", is<TextControl>, [](const Control& c) { return to_value(box(c).content().view()); }},
    {"SelStart", is<TextControl>, [](const Control& c) { return to_value(box(c).selection().start.number()); }},
    {"SelLength", is<TextControl>, [](const Control& c) { return to_value(box(c).selection().length); }},
    {"SelText", is<TextControl>, [](const Control& c) { return to_value(box(c).selected_text().view); }},
    {"SelColor", is<Pane>, read<Pane, &Pane::selection_colour>},
    {"SelFontSize", is<Pane>, read<Pane, &Pane::selection_font_size>},
    {"Marks", is<Pane>, marks_of},
    {"Caption", has_caption, read<Control, &Control::caption>},
    {"WindowState", is<Window>, read<Window, &Window::window_state>},
    {"Value", is<OptionButton>, read<OptionButton, &OptionButton::value>},
};

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

template <auto Member>
constexpr Array array(std::string_view name)
{
    return {name,
            [](const Module1& module1) {
                if constexpr (requires { (module1.*Member).last(); }) return Indices{(module1.*Member).last()};
                else return Indices{Table::last_row, Table::last_column};
            },
            [](const Module1& module1, const Indices& at) {
                const auto& texts = module1.*Member;
                if constexpr (requires { texts.cell(at[0], at[1]); }) return texts.cell(at[0], at[1]).str();
                else if constexpr (requires { texts.text(at[0]); }) return texts.text(at[0]);
                else return texts.get(at[0]).str();
            }};
}

constexpr Array arrays[] = {
    array<&Module1::pages>("pages"),
    array<&Module1::hits>("hits"),
    array<&Module1::filehits>("filehits"),
    array<&Module1::cnhits>("cnhits"),
    array<&Module1::enhits>("enhits"),
    array<&Module1::zhhits>("zhhits"),
    array<&Module1::sufrow>("sufrow"),
    array<&Module1::sugrow>("sugrow"),
    array<&Module1::rowhits>("rowhits"),
    array<&Module1::distinct>("distinct"),
    array<&Module1::distinctn>("distinctn"),
    array<&Module1::colcopy>("colcopy"),
    array<&Module1::keylist>("keylist"),
    array<&Module1::suf>("suf"),
    array<&Module1::sug>("sug"),
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

std::string script_name(const Control& control)
{
    std::string name(control.name());
    const std::string window(window_names[static_cast<std::size_t>(control.form())]);
    if (control.form() != FormId::Form1 && name != window) name = window + "." + name;
    if (control.index() != no_index) name += "(" + std::to_string(control.index()) + ")";
    return name;
}

Control* find_control(const Program& program, std::string_view name)
{
    constexpr std::string_view main_window_prefix = "Form1.";
    if (name.starts_with(main_window_prefix)) {
        name.remove_prefix(main_window_prefix.size());
        if (name.starts_with("Form")) return nullptr;
    }
    const auto& controls = program.listeners.controls;
    const auto found = std::ranges::find(controls, name, [](const Control* one) { return script_name(*one); });
    return found == controls.end() ? nullptr : *found;
}

Expression resolve(const Program& program, std::string_view written)
{
    if (const Member* member = find_row(members, written))
        return {std::string(written), [member, &program] { return member->read(program); }};
    if (auto reader = element_reader(program, written)) return {std::string(written), std::move(reader)};
    const std::size_t dot = std::min(written.rfind('.'), written.size());
    const Control* const control = find_control(program, written.substr(0, dot));
    const auto* const property = find_row(properties, written.substr(std::min(dot + 1, written.size())));
    if (control && property && property->has(*control))
        return {std::string(written), [property, control] { return property->read(*control); }, control};
    throw ScriptFailure("unknown name " + std::string(written));
}

std::vector<std::string> all_names(const Program& program)
{
    std::vector<std::string> names;
    for (const Control* control : program.listeners.controls)
        for (const ControlProperty& property : properties)
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
