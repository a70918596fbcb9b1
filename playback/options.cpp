#include "playback/player.h"

#include "platform/files/paths.h"

#include <algorithm>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

using Values = std::span<const std::string>;

fs::path folder(const std::string& given)
{
    if (given.empty()) throw OptionError("an empty folder name");
    return full_path(path_of_utf8(given));
}

void set_installation(Options& options, Values values)
{
    options.installation = folder(values[0]);
    if (!fs::is_directory(options.installation))
        throw OptionError("there is no folder " + utf8_of(options.installation));
}

void set_drive(Options& options, Values values)
{
    const std::string_view given = values[0];
    const auto letter = given.empty() ? char32_t{} : lower(static_cast<unsigned char>(given[0]));
    if (given.size() < 3 || given[1] != '=' || letter < U'a' || letter > U'z')
        throw OptionError("--drive takes LETTER=DIR, not " + std::string(given));
    options.drives[static_cast<char>(letter)] = folder(std::string(given.substr(2)));
}

void set_clock(Options& options, Values values)
{
    const auto time = parse_time(values[0]);
    if (!time) throw OptionError("--clock takes \"YYYY-MM-DD hh:mm:ss\", not " + values[0]);
    options.clock = *time;
}

double twips(const std::string& given)
{
    const auto value = number(from_utf8(given));
    if (!value || *value <= 0) throw OptionError("--screen takes two sizes above 0, not " + given);
    return *value;
}

void set_engine(Options& options, Values values)
{
    const auto engine = engine_named(values[0]);
    if (!engine) throw OptionError("there is no engine " + values[0]);
    options.engine = *engine;
}

void set_value(Options& options, Values values)
{
    const Text given = from_utf8(values[0]);
    const std::size_t equals = given.find(U'=');
    if (equals == 0 || equals == Text::npos) throw OptionError("--set takes NAME=VALUE, not " + values[0]);
    options.values[given.substr(0, equals)] = given.substr(equals + 1);
}

template <Options::Request request>
void set_request(Options& options, Values)
{
    options.request = request;
}

struct OptionRow {
    std::string_view name;
    std::size_t values;
    void (*set)(Options& options, Values values);
};
constexpr OptionRow rows[] = {
    {"--install", 1, set_installation},
    {"--drive", 1, set_drive},
    {"--clock", 1, set_clock},
    {"--screen", 2, [](Options& o, Values v) { o.screen_width = twips(v[0]), o.screen_height = twips(v[1]); }},
    {"--print-to", 1, [](Options& o, Values v) { o.print_to = folder(v[0]); }},
    {"--engine", 1, set_engine},
    {"--set", 1, set_value},
    {"--names", 0, set_request<Options::Request::Names>},
    {"--help", 0, set_request<Options::Request::Help>},
    {"--version", 0, set_request<Options::Request::Version>},
};

// Takes one option or the script off the front.
void take(Options& options, Values& arguments)
{
    const std::string& word = arguments.front();
    arguments = arguments.subspan(1);
    if (const auto* row = std::ranges::find(rows, word, &OptionRow::name); row != std::end(rows)) {
        if (arguments.size() < row->values) throw OptionError(word + " lacks its value");
        row->set(options, arguments.first(row->values));
        arguments = arguments.subspan(row->values);
        return;
    }
    if (word.starts_with('-') && word != "-") throw OptionError("unknown option " + word);
    if (!options.script.empty()) throw OptionError("more than one script: " + word);
    options.script = word;
}

} // namespace

Options parse_options(Values arguments)
{
    Options options;
    options.clock = local_time_now();
    while (!arguments.empty()) take(options, arguments);
    if (options.script.empty() && options.request == Options::Request::Play) throw OptionError("no script is given");
    return options;
}

} // namespace tarvik
