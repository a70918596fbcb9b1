#pragma once

#include "platform/document.h"
#include "platform/files.h"

#include <map>

namespace tarvik {

/// Foreign text files, decoded once and again only when the file has changed.
class DocumentCache {
public:
    /// Throws Failure when the file cannot be read.
    Document load(const Files& files, TextView path);
    void forget() { entries_.clear(); }

private:
    struct Entry {
        FileStamp stamp;
        Document document;
    };
    std::map<Text, Entry> entries_;
};

} // namespace tarvik
