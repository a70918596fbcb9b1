#include "mainwindow/document_cache.h"

#include "platform/code_page.h"

#include <algorithm>

namespace tarvik {

namespace {

/// A docket run scans three files; a clerk looks words up in a dictionary or two beside it.
constexpr std::size_t most_documents = 8;

} // namespace

Document DocumentCache::load(const Files& files, TextView path)
{
    // The stamp is taken first: a change while the file is read then shows at the next look.
    const FileStamp stamp = files.stamp(path);
    const auto known = std::ranges::find_if(entries_, [path](const Entry& entry) { return entry.path == path; });
    if (known != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, known);
        // A stamp that had not settled may be that of a later state, too.
        if (known->stamp.settled && known->stamp == stamp) return known->document;
        entries_.pop_front();
    }
    entries_.push_front({path.str(), stamp, decode_foreign(files.read(path))});
    if (entries_.size() > most_documents) entries_.pop_back();
    return entries_.front().document;
}

} // namespace tarvik
