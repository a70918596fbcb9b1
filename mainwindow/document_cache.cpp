#include "mainwindow/document_cache.h"

#include "platform/text/code_page.h"

namespace tarvik {

Document DocumentCache::load(const Files& files, TextView path)
{
    return documents_.get(path, files.stamp(path), [&] { return decode_foreign(files.read(path)); });
}

} // namespace tarvik
