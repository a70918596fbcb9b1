#pragma once

#include "dictionary_tool/dictionary_source.h"
#include "platform/files/files.h"
#include "reading/dictionary_lookup.h"

#include <map>

namespace tarvik {

/// What the dictionary is for: lookups in the English dictionary, or all of it in the Chinese one.
enum class DictionaryUse { English, Chinese };

/// Lays entries out so that a lookup finds every head word. In the English dictionary a word stands in the file of its
/// first letter or in the one for other words; what neither serves (a word that begins with a digit) goes to the
/// Chinese dictionary, which any query searches. There and in the file for other words a head word is written in small
/// letters, since they are compared as they are.
class DictionaryFiles {
public:
    DictionaryFiles(DictionaryUse use, Text name) : use_(use), name_(std::move(name)) {}

    /// An entry that is longer than a lookup reads becomes several with the same head word. Gives false for an entry
    /// that has no head word, or one too long for any entry.
    bool add(const SourceEntry& entry);

    /// File names with the bytes to write.
    const std::map<Text, std::string>& bytes() const { return files_; }

private:
    std::string opening(const Dictionary& layout) const;

    DictionaryUse use_;
    Text name_;
    std::map<Text, std::string> files_;
};

} // namespace tarvik
