#pragma once

#include "platform/document.h"
#include "platform/files.h"

#include <list>

namespace tarvik {

/// Foreign text files, decoded once and again only when the file has changed. The ones used last are kept.
class DocumentCache {
public:
    /// Throws Failure when the file cannot be read.
    Document load(const Files& files, TextView path);

private:
    struct Entry {
        Text path;
        FileStamp stamp;
        Document document;
    };
    std::list<Entry> entries_; ///< the one used last in front
};

} // namespace tarvik
