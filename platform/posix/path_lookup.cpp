#include "platform/path_lookup.h"

#include "platform/path_text.h"
#include "platform/utf8.h"

#include <optional>
#include <vector>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

bool is_there(const fs::path& path) noexcept
{
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

bool same_without_case(std::string_view name, TextView upper_cased) noexcept
{
    const auto* at = reinterpret_cast<const std::uint8_t*>(name.data());
    const auto* end = at + name.size();
    for (std::size_t i = 0; i < upper_cased.size(); ++i) {
        if (at == end) return false;
        const Utf8Step step = utf8_step(at, end);
        if (upper(step.character) != upper_cased[i]) return false;
        at += step.size;
    }
    return at == end;
}

std::optional<fs::path> without_case(const fs::path& folder, TextView name)
{
    const Text wanted = upper(name);
    std::optional<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        fs::path candidate = entry->path().filename();
        if (!same_without_case(candidate.native(), wanted)) continue;
        if (!found || candidate.native() < found->native()) found = std::move(candidate);
    }
    return found;
}

} // namespace

fs::path look_up(fs::path root, TextView names)
{
    const std::vector<Text> parts = names_of(names);
    fs::path as_written = root;
    for (const Text& part : parts) as_written /= path_of(part);
    if (is_there(as_written)) return as_written;

    bool there = true; // whether the folder reached so far is on the disk
    for (const Text& part : parts) {
        const fs::path name = path_of(part);
        if (there && !is_there(root / name)) {
            const auto found = without_case(root, part);
            there = found.has_value();
            root /= found.value_or(name);
        } else {
            root /= name;
        }
    }
    return root;
}

} // namespace tarvik
