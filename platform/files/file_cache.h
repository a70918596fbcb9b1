#pragma once

#include "platform/files/files.h"

#include <algorithm>
#include <cstddef>
#include <list>

namespace tarvik {

/// What files held, made once and again only when the file has changed: the ones used last are kept. Only a stamp that
/// has settled is trusted, for one that has not may be that of a later state, too.
template <typename Contents>
class FileCache {
public:
    /// `make` gives the contents; what it throws passes through. `stamp` is taken before the file is read, so that a
    /// change meanwhile shows at the next look.
    template <typename Make>
    Contents get(TextView path, const FileStamp& stamp, Make&& make)
    {
        const auto known = std::ranges::find_if(entries_, [path](const Entry& entry) { return entry.path == path; });
        if (known != entries_.end()) {
            entries_.splice(entries_.begin(), entries_, known);
            if (stamp.settled && entries_.front().stamp == stamp) return entries_.front().contents;
            entries_.pop_front();
        }
        Contents contents = make();
        if (!stamp.settled) return contents;
        entries_.push_front({path.str(), stamp, contents});
        if (entries_.size() > most_files) entries_.pop_back();
        return contents;
    }

private:
    /// A docket run reads three reports and fills a template or two; a clerk looks words up in a dictionary or two.
    static constexpr std::size_t most_files = 8;

    struct Entry {
        Text path;
        FileStamp stamp;
        Contents contents;
    };
    std::list<Entry> entries_; ///< the one used last in front
};

} // namespace tarvik
