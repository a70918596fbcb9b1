#pragma once

#include "platform/files/file_cache.h"
#include "platform/text/document.h"

namespace tarvik {

/// Foreign text files, decoded once and again only when the file has changed.
class DocumentCache {
public:
    /// Throws Failure when the file cannot be read.
    Document load(const Files& files, TextView path);

private:
    FileCache<Document> documents_;
};

} // namespace tarvik
