#include "platform/path_lookup.h"

#include "platform/path_text.h"
#include "platform/utf8.h"

#include <dirent.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace tarvik {

namespace fs = std::filesystem;

// A run looks thousands of names up: paths are put together as the system's texts, not taken apart at every step.

namespace {

bool is_there(const std::string& path) noexcept
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

void append_name(std::string& path, std::string_view name)
{
    if (!path.empty() && path.back() != '/') path += '/';
    path += name;
}

std::string joined(std::string folder, std::string_view name)
{
    append_name(folder, name);
    return folder;
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

std::optional<std::string> without_case(const std::string& folder, TextView name)
{
    const Text wanted = upper(name);
    std::optional<std::string> found;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
    while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
        const std::string_view candidate = static_cast<const char*>(entry->d_name);
        if (!same_without_case(candidate, wanted) || candidate == "." || candidate == "..") continue;
        if (!found || candidate < *found) found = candidate;
    }
    return found;
}

} // namespace

fs::path look_up(fs::path root, TextView names)
{
    const std::vector<Text> parts = names_of(names);
    std::string as_written = root.native();
    for (const Text& part : parts) append_name(as_written, to_utf8(part));
    if (is_there(as_written)) return as_written;

    std::string path = root.native();
    bool there = true; // whether the folder reached so far is on the disk
    for (const Text& part : parts) {
        const std::string name = to_utf8(part);
        std::string next = joined(path, name);
        if (there && !is_there(next)) {
            const auto found = without_case(path, part);
            there = found.has_value();
            if (found) next = joined(path, *found);
        }
        path = std::move(next);
    }
    return path;
}

} // namespace tarvik
