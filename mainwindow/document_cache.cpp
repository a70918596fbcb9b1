#include "mainwindow/document_cache.h"

#include "platform/code_page.h"

namespace tarvik {

Document DocumentCache::load(const Files& files, TextView path)
{
    const FileStamp stamp = files.stamp(path);
    Entry& entry = entries_[path.str()];
    if (!entry.document.buffer() || entry.stamp != stamp) entry = {stamp, decode_foreign(files.read(path))};
    return entry.document;
}

} // namespace tarvik
